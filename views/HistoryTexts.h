// The entries of a history as texts: a line for people, a table for spreadsheets. Knows the entries only.
#pragma once

#include "views/History.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vantrel {

/// The sequence that an entry is about; nothing for one of the board, the link or the program.
[[nodiscard]] std::optional<std::size_t> SequenceOf(const HistoryEntry& entry);

/// Whether a list of that sequence alone (nothing: of everything) holds the entry: a time without a look or without a
/// link was one for every sequence, and without it a list of one would read like an unbroken watch.
[[nodiscard]] bool Concerns(const HistoryEntry& entry, std::optional<std::size_t> sequence);

/// One of a few words that say what kind of entry it is: "Sequence", "Not looked at", "Fault", "Alarm", "Link",
/// "Transfer".
[[nodiscard]] std::string KindText(const HistoryEntry& entry);
/// What happened, without its time and sequence: "05: No Slave Response, Timeout (was 02: Comm to Node OK)".
[[nodiscard]] std::string WhatText(const HistoryEntry& entry);
/// When the sequence had been looked at before, if it had; empty for other entries.
[[nodiscard]] std::string LookBeforeText(const HistoryEntry& entry);

/// The headings of the table and of its lines' cells: Time, Sequence, Kind, State, What, Looked At Before.
[[nodiscard]] const std::vector<std::string>& HistoryHeadings();
[[nodiscard]] std::vector<std::string> HistoryCells(const HistoryEntry& entry);

/// The newest entry first, under its headings, and a last line for what the bound has taken. With the mark of UTF-8 in
/// front, by which spreadsheets know it; commas between the cells, lines end in CR LF. `sequence`: what concerns that
/// one alone; nothing: of all, and the rest.
[[nodiscard]] std::string HistoryCsv(const History& history, std::optional<std::size_t> sequence = {});

} // namespace vantrel
