// The configuration report: what stands where on its pages. Knows the record and the printer; asks and shows nothing.
#pragma once

#include "document/Configuration.h"
#include "platform/Printer.h"
#include "platform/Task.h"
#include "platform/TurnQueue.h"

#include <functional>
#include <string>

namespace vantrel {

/// Inches from the paper's left edge; every horizontal position of the report is measured from it, and the right margin
/// is as wide.
inline constexpr double ReportLeftMargin = 0.75;

/// The procedure's name, for the box that shows an unexpected error.
inline constexpr const char* ReportProcedure = "Report PrintReport";

/// What stands at the head of every page; also the title of the document. `name`: of the set-up, in brackets.
[[nodiscard]] std::string ReportTitle(const std::string& name);

struct ReportContents {
    Configuration record;
    std::string name; ///< Of the set-up, in brackets.
    /// The present date and time as the host writes them; asked once a page, for its footer.
    std::function<std::string()> generalDate;
};

/// Prints the report and ends the document; yields once a sequence. Throws RuntimeError as the printer does. A task
/// that is stopped leaves the printer without the end of its document.
[[nodiscard]] Task PrintReport(ReportContents contents, Printer& printer, TurnQueue& turns);

} // namespace vantrel
