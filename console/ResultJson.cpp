// The JSON of values and their names.
#include "console/ResultJson.h"

#include "console/CommandContext.h"
#include "document/FieldTable.h"
#include "text/NumberText.h"

namespace vantrel {

std::string JsonText(const Json& json) {
    constexpr int indentation = 2;
    return json.dump(indentation, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string JsonLine(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n"; }

Json NameJson(std::size_t index) {
    if (index == StatusStackIndex) return {{"field", StatusStackField}};
    return {{"sequence", SequenceOf(index)}, {"field", FieldTable().at(FieldOf(index)).name}};
}

Json ValueJson(const std::string& text) {
    if (text.find_first_not_of("-: ") == std::string::npos) return nullptr;
    if (const auto number = WholeNumber(text)) return *number;
    return text;
}

} // namespace vantrel
