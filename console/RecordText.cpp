// The table of a record.
#include "console/RecordText.h"

#include "console/TextTable.h"
#include "document/MemoryMap.h"
#include "document/ValueDisplay.h"

#include <algorithm>
#include <vector>

namespace vantrel {

namespace {

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
    row.push_back(record.NodeDescription(sequence));
    return row;
}

std::string UnusedText(std::size_t count) {
    if (count == 0) return "";
    return std::to_string(count) + (count == 1 ? " sequence is" : " sequences are") +
           " not used; --all shows every one.\n";
}

} // namespace

std::string DateText(OleDate date) {
    std::string text = IsoText(date);
    std::ranges::replace(text, 'T', ' ');
    return text;
}

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
    return TableText({{"File:", file},
                      {"Program version:", record.CreatorVersion},
                      {"Saved:", IsoText(record.SavedDate).empty() ? "no date" : DateText(record.SavedDate)},
                      {"Status stack address:", DisplayValue(record, StatusStackIndex)}},
                     "ll") +
           "\n" + (shown > 0 ? TableText(rows, "rrrrrrrrl") : std::string()) + UnusedText(SequenceCount - shown);
}

} // namespace vantrel
