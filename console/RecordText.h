// A set-up record for reading: a table for people. Knows the record only.
#pragma once

#include "document/Configuration.h"

#include <cstddef>
#include <string>

namespace vantrel {

/// "2026-03-14 09:05:07", as everything on the console writes it, whatever the host's own way is; empty for no date.
[[nodiscard]] std::string DateText(OleDate date);

/// How many sequences are used: have a node number.
[[nodiscard]] std::size_t UsedSequences(const Configuration& record);

enum class Sequences { Used, All };

/// File name, version, date, status stack address and the communication sequences, a line each.
[[nodiscard]] std::string RecordTable(const std::string& file, const Configuration& record, Sequences which);

} // namespace vantrel
