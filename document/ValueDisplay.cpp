// Notations of values: prefixes, and hexadecimal as the board's users write it. Knows the record only.
#include "document/ValueDisplay.h"

#include "text/NumberText.h"

namespace vantrel {

namespace {

bool IsHexadecimal(std::string_view type) { return type == "H" || type == "h"; }

} // namespace

std::string DisplayValue(std::int32_t value, std::string_view type) {
    // A negative number shows by its 32 bits.
    if (IsHexadecimal(type)) return HexText(static_cast<std::uint32_t>(value)) + "H";
    if (type == "V" || type == "v") return "V" + std::to_string(value);
    if (type == "W" || type == "w") return "W" + std::to_string(value);
    return std::to_string(value);
}

std::string DisplayValue(std::size_t index, std::int32_t value, std::string_view type) {
    const char usual = DefaultNotation(index);
    return DisplayValue(value, usual == 'W' && IsHexadecimal(type) ? "H" : std::string(1, usual));
}

std::string DisplayValue(const Configuration& record, std::size_t index) {
    return DisplayValue(index, record.Value(index), record.AddressType(index));
}

} // namespace vantrel
