// What stands beside a sequence's status: the columns behind it, its hint, and the line on those that fail. Knows the
// log's records and the status texts; no toolkit.
#pragma once

#include "document/StatusLog.h"

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace vantrel {

/// Behind the editor's three columns of the status tab, in its grid's notation: Description, Errors, Last Error, Since.
[[nodiscard]] std::string StatusColumnsFormat();
/// Twips.
[[nodiscard]] std::vector<int> StatusColumnsWidths();
[[nodiscard]] std::vector<std::string> StatusColumnsWidestTexts();
/// Empty where nothing is known. A time of another day than `now` has its day in front.
[[nodiscard]] std::vector<std::string> StatusColumnsTexts(const SequenceRecord& record, const std::string& description,
                                                          std::chrono::local_seconds now);

/// Several lines: status, cause and remedy, since when, what has been read since ONLINE.
[[nodiscard]] std::string StatusHint(const SequenceRecord& record, std::size_t sequence,
                                     std::chrono::local_seconds now);

/// "3 sequences were failing when last read: 4, 9, 17."; empty when none is.
[[nodiscard]] std::string FailingLine(const StatusLog& log);

} // namespace vantrel
