// A comparison on paper. Knows the comparison and the printer; asks and shows nothing.
#pragma once

#include "document/Comparison.h"
#include "platform/Printer.h"

#include <functional>
#include <string>

namespace vantrel {

/// What stands at the head of every page; also the title of the document.
inline constexpr const char* ComparisonTitle = "Comparison of Set-ups";

/// Prints the list and ends the document. `generalDate` as for the report. Throws RuntimeError as the printer does.
void PrintComparison(const ComparisonReport& report, Printer& printer, std::function<std::string()> generalDate);

} // namespace vantrel
