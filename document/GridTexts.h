// What stands in the sequence editor's three grids: headings, column widths, the text of every cell, and the target
// addresses behind the status tab. Knows the record and the board's memory map; no toolkit.
#pragma once

#include "document/Configuration.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vantrel {

/// The editor's tabs, by their index in the tab strip (from 1).
enum class EditorTab : std::int16_t { CommStatus = 1, Configuration = 2, Descriptions = 3 };
inline constexpr std::array EditorTabs{EditorTab::CommStatus, EditorTab::Configuration, EditorTab::Descriptions};

/// Rows of each grid: the heading row and one for each sequence; row r is sequence r - 1.
inline constexpr int EditorRowCount = static_cast<int>(SequenceCount) + 1;
inline constexpr int EditorRowsShown = 15; ///< At least, the heading row included.
// Places and widths on the screen, in twips.
inline constexpr int EditorGridTop = 2160;
inline constexpr int EditorGridLeft = 360;
inline constexpr int EditorGridWidth = 8535;

/// The tab's caption; "&" marks the access key.
[[nodiscard]] std::string EditorTabCaption(EditorTab tab);
/// One line on what the tab shows.
[[nodiscard]] std::string EditorTabHint(EditorTab tab);
/// The grid's format string: "|" separates columns, "^" centres, "<" aligns left.
[[nodiscard]] std::string EditorGridFormat(EditorTab tab);
/// Column widths in twips; the first two are the same in every grid.
[[nodiscard]] std::vector<int> EditorColumnWidths(EditorTab tab);
/// The widest texts that each column may have to show, its number first.
[[nodiscard]] std::vector<std::string> EditorWidestTexts(EditorTab tab);
/// The cells of a sequence's row, its number first. The status tab shows dashes: its data is on the board.
[[nodiscard]] std::vector<std::string> EditorRowTexts(const Configuration& record, EditorTab tab, std::size_t sequence);

using SequenceAddresses = std::array<std::string, SequenceCount>;
/// Where the board keeps the status word of each sequence: "W6914", "W6916" and so on.
[[nodiscard]] SequenceAddresses StatusWordAddressTable();
/// Where the board keeps the node number of each sequence: "W16384", "W16896" and so on.
[[nodiscard]] SequenceAddresses NodeNumberAddressTable();

} // namespace vantrel
