// Every text goes through the rules of a single entry, into a copy of the record.
#include "document/CellBlock.h"

#include "document/Edit.h"
#include "document/ValueDisplay.h"
#include "platform/RuntimeError.h"
#include "text/AsciiCase.h"
#include "text/DelimitedText.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace vantrel {

namespace {

std::string PlaceName(const EditPlace& place) {
    return place.field ? ValueLabel(ValueIndex(place.sequence, *place.field))
                       : "sequence " + std::to_string(place.sequence) + ", Description";
}

/// Enters texts one by one and keeps what is refused.
class BlockEntry {
public:
    explicit BlockEntry(Configuration record) : record_(std::move(record)) {}

    void Enter(const EditPlace& place, const std::string& text) {
        try {
            const EditAnswer answer = EditOf(record_, place, text);
            if (const auto* edit = std::get_if<Edit>(&answer)) return Store(record_, *edit);
            Refuse(place.sequence, PlaceName(place), "\"" + text + "\": " + std::get<RefusedEntry>(answer).text);
        } catch (const RuntimeError& error) {
            Refuse(place.sequence, PlaceName(place), "\"" + text + "\": " + error.what());
        }
    }

    void Refuse(std::size_t sequence, std::string name, std::string reason) {
        refused_.push_back({sequence, std::move(name), std::move(reason)});
    }

    BlockAnswer Answer() && {
        if (!refused_.empty()) return std::move(refused_);
        return std::move(record_);
    }

private:
    Configuration record_;
    std::vector<RefusedCell> refused_;
};

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(" \t"), text.size());
    text.remove_prefix(first);
    return text.substr(0, text.find_last_not_of(" \t") + 1);
}

bool IsHeading(const std::string& cell, std::string_view heading) { return SameIgnoringCase(Trimmed(cell), heading); }

bool IsDescriptionHeading(const std::string& cell) {
    return IsHeading(cell, "Description") || IsHeading(cell, "Communication Description");
}

bool IsAnyHeading(const std::string& cell) {
    const auto is = [&](const FieldDescription& field) { return IsHeading(cell, field.heading); };
    return IsHeading(cell, "Seq #") || IsDescriptionHeading(cell) || std::ranges::any_of(FieldTable(), is);
}

bool AreHeadings(const std::vector<TextRow>& rows) {
    return !rows.empty() && std::ranges::all_of(rows.front(), IsAnyHeading);
}

/// Without a row of headings and, where that says so, without the sequence numbers.
std::vector<TextRow> WithoutHeadings(std::vector<TextRow> rows) {
    if (!AreHeadings(rows)) return rows;
    const bool numbered = IsHeading(rows.front().front(), "Seq #");
    rows.erase(rows.begin());
    if (numbered) std::ranges::for_each(rows, [](TextRow& row) { row.erase(row.begin()); });
    return rows;
}

template <typename Visit> void ForEachCell(const CellBlock& block, const Visit& visit) {
    for (std::size_t sequence = block.firstSequence; sequence <= block.lastSequence; ++sequence) {
        for (std::size_t column = block.firstColumn; column <= block.lastColumn; ++column)
            visit(sequence, column);
    }
}

void CopyCell(Configuration& record, const Configuration& source, const EditPlace& from, const EditPlace& to) {
    if (!from.field) return record.SetNodeDescription(to.sequence, source.NodeDescription(from.sequence));
    const std::size_t index = ValueIndex(from.sequence, *from.field);
    record.SetValue(ValueIndex(to.sequence, *to.field), source.Value(index));
    record.SetAddressType(ValueIndex(to.sequence, *to.field), source.AddressType(index));
}

void CopySequence(Configuration& record, const Configuration& source, std::size_t from, std::size_t to) {
    for (std::size_t column = 0; column < CellColumns; ++column)
        CopyCell(record, source, PlaceAt(from, column), PlaceAt(to, column));
}

} // namespace

EditPlace PlaceAt(std::size_t sequence, std::size_t column) {
    if (column == DescriptionColumn) return {sequence, std::nullopt};
    return {sequence, static_cast<SequenceField>(column)};
}

std::string RefusalText(const std::vector<RefusedCell>& refused) {
    constexpr std::size_t mostNamed = 10;
    const std::size_t named = std::min(refused.size(), mostNamed);
    std::string text;
    for (std::size_t i = 0; i < named; ++i)
        text += refused[i].name + ": " + refused[i].reason + "\n";
    if (refused.size() > named) text += "and " + std::to_string(refused.size() - named) + " more\n";
    return text + "\nNothing was stored.";
}

std::string CellText(const Configuration& record, const EditPlace& place) {
    if (!place.field) return record.NodeDescription(place.sequence);
    return DisplayValue(record, ValueIndex(place.sequence, *place.field));
}

std::string CopiedCells(const Configuration& record, const CellBlock& block) {
    std::string text;
    for (std::size_t sequence = block.firstSequence; sequence <= block.lastSequence; ++sequence) {
        TextRow row;
        for (std::size_t column = block.firstColumn; column <= block.lastColumn; ++column)
            row.push_back(CellText(record, PlaceAt(sequence, column)));
        text += DelimitedLine(row, '\t');
    }
    return text;
}

BlockAnswer PastedCells(const Configuration& record, const CellBlock& block, std::string_view text,
                        std::size_t lastColumn) {
    std::vector<TextRow> rows = DelimitedRows(text, '\t');
    if (AreHeadings(rows) && IsDescriptionHeading(rows.front().back())) lastColumn = DescriptionColumn;
    rows = WithoutHeadings(std::move(rows));
    BlockEntry entry(record);
    if (rows.size() == 1 && rows.front().size() == 1) {
        ForEachCell(block, [&](std::size_t sequence, std::size_t column) {
            entry.Enter(PlaceAt(sequence, column), rows.front().front());
        });
        return std::move(entry).Answer();
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        for (std::size_t j = 0; j < rows[i].size(); ++j) {
            const std::size_t sequence = block.firstSequence + i;
            const std::size_t column = block.firstColumn + j;
            if (sequence < SequenceCount && column <= lastColumn) {
                entry.Enter(PlaceAt(sequence, column), rows[i][j]);
            } else if (!Trimmed(rows[i][j]).empty()) {
                entry.Refuse(std::min(sequence, SequenceCount - 1),
                             "line " + std::to_string(i + 1) + ", cell " + std::to_string(j + 1),
                             "\"" + rows[i][j] + "\": The grid ends before it");
            }
        }
    }
    return std::move(entry).Answer();
}

Configuration ClearedCells(const Configuration& record, const CellBlock& block) {
    static const Configuration defaults = DefaultRecord({}, {});
    Configuration cleared = record;
    ForEachCell(block, [&](std::size_t sequence, std::size_t column) {
        const EditPlace place = PlaceAt(sequence, column);
        CopyCell(cleared, defaults, place, place);
    });
    return cleared;
}

BlockAnswer FilledDown(const Configuration& record, const CellBlock& block) {
    BlockEntry entry(record);
    ForEachCell(block, [&](std::size_t sequence, std::size_t column) {
        if (sequence == block.firstSequence) return;
        entry.Enter(PlaceAt(sequence, column), CellText(record, PlaceAt(block.firstSequence, column)));
    });
    return std::move(entry).Answer();
}

BlockAnswer FilledSeries(const Configuration& record, const CellBlock& block) {
    BlockEntry entry(record);
    ForEachCell(block, [&](std::size_t sequence, std::size_t column) {
        const EditPlace place = PlaceAt(sequence, column);
        if (!place.field || sequence < block.firstSequence + 2) return;
        const auto valueIn = [&](std::size_t row) -> std::int64_t {
            return record.Value(ValueIndex(block.firstSequence + row, *place.field));
        };
        const auto rows = static_cast<std::int64_t>(sequence - block.firstSequence);
        const std::int64_t value = valueIn(0) + rows * (valueIn(1) - valueIn(0));
        const std::size_t second = ValueIndex(block.firstSequence + 1, *place.field);
        // Far outside of every range it is refused all the same, whatever it shows as.
        const auto word = static_cast<std::int32_t>(std::clamp<std::int64_t>(value, -1, INT32_MAX));
        entry.Enter(place, word < 0 ? std::to_string(value) : DisplayValue(second, word, record.AddressType(second)));
    });
    return std::move(entry).Answer();
}

Configuration CopiedSequence(const Configuration& record, std::size_t from, std::size_t to) {
    Configuration copied = record;
    CopySequence(copied, record, from, to);
    return copied;
}

Configuration SwappedSequences(const Configuration& record, std::size_t one, std::size_t other) {
    Configuration swapped = CopiedSequence(record, one, other);
    CopySequence(swapped, record, other, one);
    return swapped;
}

std::optional<std::size_t> EmptySequence(const Configuration& record, std::size_t sequence) {
    for (std::size_t i = 1; i <= SequenceCount; ++i) {
        const std::size_t candidate = (sequence + i) % SequenceCount;
        const CellBlock whole{candidate, candidate, 0, DescriptionColumn};
        if (EditsBetween(record, ClearedCells(record, whole)).empty()) return candidate;
    }
    return std::nullopt;
}

} // namespace vantrel
