// The record as text for other programs: JSON, which holds all of it, and a table for spreadsheets. Knows the record
// and the entry rules; no disk.
#pragma once

#include "document/Configuration.h"

#include <string>
#include <string_view>

namespace vantrel {

/// The whole record, its arrays in the sizes that it has: creatorVersion, savedDate ("2026-03-14T09:05:07", empty for a
/// value that is no date), values, targetAddresses, nodeDescriptions, addressTypes. UTF-8.
[[nodiscard]] std::string RecordJson(const Configuration& record);

/// The record that RecordJson wrote. What is left out has its default; what is there must be of the right kind.
/// Throws RuntimeError 321 (bad file format) that says where it stopped making sense.
[[nodiscard]] Configuration RecordFromJson(std::string_view text, const Configuration& defaults);

/// A line of headings, as the editor's, a line for each sequence with its description, and one for the status stack
/// address. With the mark of UTF-8 in front, by which spreadsheets know it; commas between the cells, lines end in CR
/// LF.
[[nodiscard]] std::string RecordCsv(const Configuration& record);

/// The record of a table that a spreadsheet saved: columns by their headings in any order, separated by commas,
/// semicolons or tabs; UTF-8 or Windows-1252. Columns and sequences that are missing keep their defaults. Every cell
/// goes through the entry rules. Throws BadImportFile with the line and cell of the first one that is refused, also for
/// an unknown heading, a sequence that is there twice, or no headings at all.
[[nodiscard]] Configuration RecordFromCsv(std::string_view bytes, const Configuration& defaults);

} // namespace vantrel
