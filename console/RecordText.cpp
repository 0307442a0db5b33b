// The table of a record.
#include "console/RecordText.h"

#include "console/PrintableText.h"
#include "document/MemoryMap.h"
#include "document/ValueDisplay.h"

#include <algorithm>
#include <vector>

namespace vantrel {

namespace {

constexpr std::size_t LabelWidth = 23;
constexpr std::size_t ColumnGap = 2;

std::string Printable(const std::string& text) { return PrintableText(text, Layout::Drop); }

std::string Padded(const std::string& text, std::size_t width) {
    return std::string(width > text.size() ? width - text.size() : 0, ' ') + text;
}

std::string Labelled(std::string label, const std::string& text) {
    label.resize(std::max(label.size(), LabelWidth), ' ');
    return label + text + "\n";
}

std::string DateText(OleDate date) {
    std::string text = IsoText(date);
    std::replace(text.begin(), text.end(), 'T', ' ');
    return text.empty() ? "no date" : text;
}

using Row = std::vector<std::string>;

Row HeadingRow() {
    Row row{"Seq #"};
    for (const FieldDescription& field : FieldTable())
        row.emplace_back(field.heading);
    row.emplace_back("Description");
    return row;
}

Row SequenceRow(const Configuration& record, std::size_t sequence) {
    Row row{std::to_string(sequence)};
    for (const FieldDescription& field : FieldTable()) {
        row.push_back(DisplayValue(record, ValueIndex(sequence, field.field)));
    }
    row.push_back(Printable(record.NodeDescription(sequence)));
    return row;
}

/// Columns to the right edge, but for the descriptions, which stand last.
std::string TableText(const std::vector<Row>& rows) {
    std::vector<std::size_t> widths(rows.front().size(), 0);
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], row[i].size());
    }
    std::string text;
    for (const Row& row : rows) {
        for (std::size_t i = 0; i + 1 < row.size(); ++i) {
            text += Padded(row[i], widths[i]) + std::string(ColumnGap, ' ');
        }
        text += row.back() + "\n";
    }
    return text;
}

std::string UnusedText(std::size_t count) {
    if (count == 0) return "";
    return std::to_string(count) + (count == 1 ? " sequence is" : " sequences are") +
           " not used; --all shows every one.\n";
}

} // namespace

std::size_t UsedSequences(const Configuration& record) {
    std::size_t count = 0;
    for (std::size_t sequence = 0; sequence < SequenceCount; ++sequence)
        count += IsUsed(record, sequence) ? 1 : 0;
    return count;
}

std::string RecordTable(const std::string& file, const Configuration& record, Sequences which) {
    std::vector<Row> rows{HeadingRow()};
    for (std::size_t sequence = 0; sequence < SequenceCount; ++sequence) {
        if (which == Sequences::All || IsUsed(record, sequence)) rows.push_back(SequenceRow(record, sequence));
    }
    const std::size_t shown = rows.size() - 1;
    return Labelled("File:", Printable(file)) + Labelled("Program version:", Printable(record.CreatorVersion)) +
           Labelled("Saved:", DateText(record.SavedDate)) +
           Labelled("Status stack address:", DisplayValue(record, StatusStackIndex)) + "\n" +
           (shown > 0 ? TableText(rows) : std::string()) + UnusedText(SequenceCount - shown);
}

} // namespace vantrel
