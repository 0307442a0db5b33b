// Tables as spreadsheets copy and save them: cells between tabs, commas or semicolons, quoted where they must be. Uses
// nothing.
#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

using TextRow = std::vector<std::string>;

/// The cells of a table. A cell in double quotes may hold separators, line ends and, doubled, quotes; an unclosed quote
/// runs to the end. Lines end in LF, CR LF or CR; a last line that is empty is none. Stops after `most` rows.
[[nodiscard]] std::vector<TextRow> DelimitedRows(std::string_view text, char separator,
                                                 std::size_t most = std::numeric_limits<std::size_t>::max());

/// One line with CR LF; cells are quoted where the separator, a quote or a line end asks for it.
[[nodiscard]] std::string DelimitedLine(const TextRow& cells, char separator);

/// What separates the cells of a saved table, told by its first line: the most frequent of comma, semicolon and tab.
[[nodiscard]] char SeparatorOf(std::string_view text);

} // namespace vantrel
