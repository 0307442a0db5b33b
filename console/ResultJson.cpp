// The JSON of results, in the order in which a person would read it.
#include "console/ResultJson.h"

#include "link/TargetMap.h"
#include "link/TargetAddress.h"
#include "document/FieldTable.h"

#include <nlohmann/json.hpp>

#include <optional>

namespace vantrel {

namespace {

using Json = nlohmann::ordered_json;

constexpr int Indentation = 2;

std::string TextOf(const Json& json) {
    return json.dump(Indentation, ' ', false, Json::error_handler_t::replace) + "\n";
}

/// Where a setting stands in the record; nothing for any other word.
std::optional<std::size_t> SettingAt(const std::string& address) {
    const TargetAddress parsed = ParseAddress(address);
    for (std::size_t index = 0; index < ValueCount; ++index) {
        if (ParseAddress(DefaultTargetAddress(index)) == parsed) return index;
    }
    return std::nullopt;
}

void AddName(Json& json, std::size_t index) {
    if (index != StatusStackIndex) json["sequence"] = SequenceOf(index);
    json["field"] = index == StatusStackIndex ? "StatusStackAddress" : std::string(FieldTable().at(FieldOf(index)).name);
}

} // namespace

std::string ReadingsJson(const std::vector<NamedReading>& readings) {
    Json list = Json::array();
    for (const NamedReading& read : readings) {
        Json json;
        json["address"] = read.address;
        if (const auto index = SettingAt(read.address)) AddName(json, *index);
        if (const auto number = read.reading.Number()) {
            json["value"] = *number;
        } else {
            json["value"] = nullptr;
        }
        list.push_back(json);
    }
    return TextOf(list);
}

std::string ComparisonJson(const std::string& file, const BoardComparison& comparison) {
    Json differences = Json::array();
    for (const ValueDifference& difference : comparison.Differences()) {
        Json json;
        AddName(json, difference.index);
        json["file"] = difference.inRecord;
        json["board"] = difference.onBoard;
        differences.push_back(json);
    }
    Json unread = Json::array();
    for (const std::size_t index : comparison.Unread()) {
        Json json;
        AddName(json, index);
        unread.push_back(json);
    }
    Json json;
    json["file"] = file;
    json["compared"] = comparison.Compared();
    json["equal"] = nullptr;
    if (!differences.empty()) {
        json["equal"] = false;
    } else if (comparison.Complete() && unread.empty()) {
        json["equal"] = true;
    }
    json["differences"] = differences;
    json["unread"] = unread;
    return TextOf(json);
}

} // namespace vantrel
