// What the record answers about itself, whatever size a file gave its arrays. Uses the field table and the board's
// memory map.
#include "document/Configuration.h"

#include "link/TargetMap.h"

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

constexpr std::int32_t LargestWord = 65535;

template <typename Element> Element ElementOr(const std::vector<Element>& array, std::size_t index, Element missing) {
    return index < array.size() ? array[index] : std::move(missing);
}

template <typename Element> void Store(std::vector<Element>& array, std::size_t index, const Element& value) {
    if (index >= array.size()) array.resize(index + 1);
    array[index] = value;
}

std::string DefaultType(std::size_t index) { return {DefaultNotation(index)}; }

} // namespace

std::string Configuration::TargetAddress(std::size_t index) const { return ElementOr(TargetAddresses, index, {}); }

std::int32_t Configuration::Value(std::size_t index) const { return ElementOr(Values, index, 0); }

std::string Configuration::NodeDescription(std::size_t sequence) const {
    return ElementOr(NodeDescriptions, sequence, {});
}

std::string Configuration::AddressType(std::size_t index) const {
    return ElementOr(AddressTypes, index, DefaultType(index));
}

void Configuration::SetValue(std::size_t index, std::int32_t value) { Store(Values, index, value); }

void Configuration::SetNodeDescription(std::size_t sequence, const std::string& text) {
    Store(NodeDescriptions, sequence, text);
}

void Configuration::SetAddressType(std::size_t index, const std::string& letter) {
    // The types in between read as their defaults before; growing must not make them empty.
    while (AddressTypes.size() < index)
        AddressTypes.push_back(DefaultType(AddressTypes.size()));
    Store(AddressTypes, index, letter);
}

Configuration DefaultRecord(const std::string& creatorVersion, OleDate date) {
    Configuration record;
    record.CreatorVersion = creatorVersion;
    record.SavedDate = date;
    for (std::size_t index = 0; index < ValueCount; ++index) {
        record.TargetAddresses.push_back(DefaultTargetAddress(index));
        record.Values.push_back(index == StatusStackIndex ? 1 : FieldTable().at(FieldOf(index)).defaultValue);
        record.AddressTypes.push_back(DefaultType(index));
    }
    record.NodeDescriptions.resize(DescriptionCount);
    return record;
}

std::string DefaultTargetAddress(std::size_t index) {
    return index == StatusStackIndex ? StatusStackWord : SequenceWord(SequenceOf(index), FieldOf(index));
}

bool DocumentChanged(const Configuration& current, const Configuration& saved, const std::string& programVersion) {
    if (current.CreatorVersion != programVersion) return true;
    for (std::size_t index = 0; index < ValueCount; ++index) {
        if (current.Value(index) != saved.Value(index)) return true;
    }
    for (std::size_t index = 0; index < DescriptionCount; ++index) {
        if (current.NodeDescription(index) != saved.NodeDescription(index)) return true;
    }
    return false;
}

std::vector<std::size_t> ValuesNoWordCanHold(const Configuration& record) {
    std::vector<std::size_t> indices;
    for (std::size_t index = 0; index < ValueCount; ++index) {
        if (record.Value(index) < 0 || record.Value(index) > LargestWord) indices.push_back(index);
    }
    return indices;
}

std::string ValueList(const std::vector<std::size_t>& indices, const std::function<std::string(std::size_t)>& suffix) {
    constexpr std::size_t mostNamed = 10;
    const std::size_t named = std::min(indices.size(), mostNamed);
    std::string text;
    for (std::size_t i = 0; i < named; ++i)
        text += "\n" + ValueLabel(indices[i]) + suffix(indices[i]);
    if (indices.size() > named) text += "\nand " + std::to_string(indices.size() - named) + " more";
    return text;
}

std::string ValueName(std::size_t index) {
    if (index == StatusStackIndex) return "status stack address";
    return "sequence " + std::to_string(SequenceOf(index)) + ", " + std::string(FieldTable().at(FieldOf(index)).name);
}

std::string ValueLabel(std::size_t index) {
    if (index == StatusStackIndex) return ValueName(index);
    return "sequence " + std::to_string(SequenceOf(index)) + ", " +
           std::string(FieldTable().at(FieldOf(index)).heading);
}

} // namespace vantrel
