// Texts of the sequence editor's grids, from the field table and the record. No toolkit.
#include "document/GridTexts.h"

#include "document/ValueDisplay.h"
#include "link/StatusText.h"
#include "link/TargetMap.h"

#include <span>

namespace vantrel {

namespace {

constexpr int SequenceColumnWidth = 900;
/// Kept free at the right of the columns, for the grid's border.
constexpr int SpareWidth = 200;
constexpr int WidthBehindNode = EditorGridWidth - SpareWidth - 2 * SequenceColumnWidth;
constexpr const char* NoNode = "-";
constexpr const char* NoStatus = "-- : -";

std::string FieldText(const Configuration& record, std::size_t sequence, SequenceField field) {
    return DisplayValue(record, ValueIndex(sequence, field));
}

} // namespace

std::string EditorTabCaption(EditorTab tab) {
    switch (tab) {
    case EditorTab::CommStatus:
        return "COMM &Status";
    case EditorTab::Configuration:
        return "&Configuration";
    case EditorTab::Descriptions:
        return "&Descriptions";
    }
    return {};
}

std::string EditorTabHint(EditorTab tab) {
    switch (tab) {
    case EditorTab::CommStatus:
        return "The state of each sequence, read from the target board while ONLINE.";
    case EditorTab::Configuration:
        return "The settings of each sequence. Node number 0 means that the sequence is not used.";
    case EditorTab::Descriptions:
        return "Your own note on the slave node of each sequence.";
    }
    return {};
}

std::string EditorGridFormat(EditorTab tab) {
    std::string format = "^Seq #";
    for (const FieldDescription& field : FieldTable()) {
        format.append("|^").append(field.heading);
        if (tab != EditorTab::Configuration) break;
    }
    if (tab == EditorTab::CommStatus) format += "|<Communication Status";
    if (tab == EditorTab::Descriptions) format += "|< Communication Description";
    return format;
}

std::vector<int> EditorColumnWidths(EditorTab tab) {
    std::vector<int> widths{SequenceColumnWidth, SequenceColumnWidth};
    if (tab != EditorTab::Configuration) {
        widths.push_back(WidthBehindNode);
        return widths;
    }
    constexpr int columns = static_cast<int>(FieldCount) - 1;
    widths.insert(widths.end(), columns, (WidthBehindNode + columns / 2) / columns);
    return widths;
}

std::vector<std::string> EditorWidestTexts(EditorTab tab) {
    const std::string node = std::to_string(FieldTable().front().maximum);
    std::vector<std::string> texts{std::to_string(SequenceCount - 1), node};
    // The longest of the status texts. Descriptions have no end; they are scrolled in their box.
    if (tab == EditorTab::CommStatus) texts.emplace_back("08 : Receive Collision Detected");
    if (tab != EditorTab::Configuration) return texts;
    for (const FieldDescription& field : std::span(FieldTable()).subspan(1)) {
        const bool switches = field.hexadecimalMaximum != field.maximum;
        const std::size_t index = ValueIndex(0, field.field);
        texts.push_back(DisplayValue(index, switches ? field.hexadecimalMaximum : field.maximum,
                                     switches ? "H" : std::string(1, field.notation)));
    }
    return texts;
}

std::vector<std::string> EditorRowTexts(const Configuration& record, EditorTab tab, std::size_t sequence) {
    std::vector<std::string> texts{std::to_string(sequence)};
    switch (tab) {
    case EditorTab::CommStatus:
        texts.insert(texts.end(), {NoNode, NoStatus});
        break;
    case EditorTab::Configuration:
        for (const FieldDescription& field : FieldTable())
            texts.push_back(FieldText(record, sequence, field.field));
        break;
    case EditorTab::Descriptions:
        texts.push_back(FieldText(record, sequence, SequenceField::NodeNumber));
        texts.push_back(record.NodeDescription(sequence));
        break;
    }
    return texts;
}

SequenceAddresses StatusWordAddressTable() {
    SequenceAddresses addresses;
    for (std::size_t sequence = 0; sequence < SequenceCount; ++sequence)
        addresses.at(sequence) = StatusWordAddress(sequence);
    return addresses;
}

SequenceAddresses NodeNumberAddressTable() {
    SequenceAddresses addresses;
    for (std::size_t sequence = 0; sequence < SequenceCount; ++sequence)
        addresses.at(sequence) = SequenceWord(sequence, static_cast<std::size_t>(SequenceField::NodeNumber));
    return addresses;
}

} // namespace vantrel
