// The JSON of results, in the order in which a person would read it.
#include "console/ResultJson.h"

#include "console/CommandContext.h"
#include "document/FieldTable.h"
#include "link/TargetAddress.h"
#include "text/NumberText.h"

#include <nlohmann/json.hpp>

#include <charconv>
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
    json["field"] = index == StatusStackIndex ? StatusStackField : std::string(FieldTable().at(FieldOf(index)).name);
}

Json ValueOf(const std::string& text) {
    if (text.find_first_not_of("-: ") == std::string::npos) return nullptr;
    if (const auto number = WholeNumber(text)) return *number;
    return text;
}

/// The code in front of the text of a status.
Json CodeOf(const std::string& status) {
    int code = 0;
    const auto [end, error] = std::from_chars(status.data(), status.data() + status.size(), code, 16);
    const bool found = error == std::errc{} && end != status.data() + status.size() && *end == ':';
    return found ? Json(code) : Json(nullptr);
}

void AddStatus(Json& json, std::size_t sequence, const SequenceStatus& status) {
    json["sequence"] = sequence;
    json["NodeNumber"] = ValueOf(status.node);
    json["statusCode"] = CodeOf(status.status);
    json["status"] = ValueOf(status.status);
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

std::string StatusJson(const std::vector<SequenceStatus>& sequences) {
    Json list = Json::array();
    for (std::size_t i = 0; i < sequences.size(); ++i) {
        Json json;
        AddStatus(json, i, sequences[i]);
        list.push_back(json);
    }
    return TextOf(list);
}

std::string SequenceJson(std::size_t sequence, const std::string& description, const SequenceStatus& status,
                         const std::array<std::array<std::string, 3>, 2>& settings,
                         const std::array<std::vector<std::string>, 2>& data) {
    constexpr std::array first{SequenceField::SendWordCount, SequenceField::ReceiveWordCount};
    constexpr std::array names{"sendData", "receiveData"};
    Json json;
    AddStatus(json, sequence, status);
    json["description"] = ValueOf(description);
    for (std::size_t way = 0; way < settings.size(); ++way) {
        for (std::size_t i = 0; i < settings.at(way).size(); ++i) {
            const auto& field = FieldTable().at(static_cast<std::size_t>(first.at(way)) + i);
            json[std::string(field.name)] = ValueOf(settings.at(way).at(i));
        }
    }
    for (std::size_t way = 0; way < data.size(); ++way) {
        Json words = Json::array();
        for (const std::string& word : data.at(way))
            words.push_back(ValueOf(word));
        json[names.at(way)] = words;
    }
    return TextOf(json);
}

std::string ObjectJson(const std::vector<std::pair<std::string, std::string>>& members) {
    Json json;
    for (const auto& [name, text] : members) {
        const std::size_t point = name.find('.');
        Json& object = point == std::string::npos ? json : json[name.substr(0, point)];
        object[point == std::string::npos ? name : name.substr(point + 1)] = ValueOf(text);
    }
    return TextOf(json);
}

} // namespace vantrel
