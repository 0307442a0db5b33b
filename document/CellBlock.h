// Blocks of cells as in a spreadsheet: copied, pasted, cleared, filled, and whole sequences moved. Each gives the
// record as it would be, or the cells that were refused; nothing is stored here. Knows the record and the entry rules.
#pragma once

#include "document/Edit.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vantrel {

/// The columns of a sequence: its fields in their order, then its description.
inline constexpr std::size_t DescriptionColumn = FieldCount;
inline constexpr std::size_t CellColumns = FieldCount + 1;

/// The place that a column of a sequence is.
[[nodiscard]] EditPlace PlaceAt(std::size_t sequence, std::size_t column);

/// A rectangle of cells, both ends included.
struct CellBlock {
    std::size_t firstSequence = 0;
    std::size_t lastSequence = 0;
    std::size_t firstColumn = 0;
    std::size_t lastColumn = 0;
};

/// A cell that would not be taken, and why.
struct RefusedCell {
    std::size_t sequence = 0;
    std::string name; ///< "sequence 3, To Node".
    std::string reason;
};
using BlockAnswer = std::variant<Configuration, std::vector<RefusedCell>>;

/// Names the first ten cells, each with its text's refusal, and how many more there are.
[[nodiscard]] std::string RefusalText(const std::vector<RefusedCell>& refused);

/// What a cell shows in the editor.
[[nodiscard]] std::string CellText(const Configuration& record, const EditPlace& place);

/// The block for a spreadsheet: cells between tabs, a line a sequence.
[[nodiscard]] std::string CopiedCells(const Configuration& record, const CellBlock& block);

/// The cells of a spreadsheet's text from the block's first cell on; a single cell fills the whole block. A row of the
/// editor's headings is skipped; with it, so is a first column headed "Seq #". `lastColumn` is the last one of the
/// grid: cells to the right of it, but for descriptions under their heading, and those below the last sequence, are
/// refused.
[[nodiscard]] BlockAnswer PastedCells(const Configuration& record, const CellBlock& block, std::string_view text,
                                      std::size_t lastColumn);

/// Every cell takes its default; a description becomes empty.
[[nodiscard]] Configuration ClearedCells(const Configuration& record, const CellBlock& block);

/// The block's first row in all its rows.
[[nodiscard]] BlockAnswer FilledDown(const Configuration& record, const CellBlock& block);

/// From the third row on each number is the one above and the step of the first two. Needs three rows or more;
/// descriptions stay.
[[nodiscard]] BlockAnswer FilledSeries(const Configuration& record, const CellBlock& block);

/// Sequence `to` becomes what sequence `from` is, description and all.
[[nodiscard]] Configuration CopiedSequence(const Configuration& record, std::size_t from, std::size_t to);
/// Two sequences change places.
[[nodiscard]] Configuration SwappedSequences(const Configuration& record, std::size_t one, std::size_t other);
/// The first sequence behind `sequence`, or else the first of all, that holds nothing but defaults.
[[nodiscard]] std::optional<std::size_t> EmptySequence(const Configuration& record, std::size_t sequence);

} // namespace vantrel
