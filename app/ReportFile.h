// The report of a set-up file without any window. Knows files, the document and the report; what prints is handed in.
#pragma once

#include "document/Document.h"
#include "platform/Clock.h"
#include "platform/Printer.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>

namespace vantrel {

struct ReportFileJob {
    std::filesystem::path setupFile; ///< .sdt, or a text file (.vtl); "-" for a set-up file on `in`.
    std::filesystem::path reportFile; ///< "-": no file; the printer knows where its report goes.
    /// Makes the printer that writes `reportFile` as a document of that title.
    std::function<std::unique_ptr<Printer>(const std::filesystem::path& reportFile, const std::string& title)>
        makePrinter;
    std::function<std::string(std::chrono::local_seconds)> generalDate;
    std::istream* in = nullptr; ///< Nothing: "-" is a name like every other.
};

/// Prints the report of the document, and returns when it is printed.
void PrintWholeReport(const Document& document, Printer& printer, const Clock& clock,
                      const std::function<std::string(std::chrono::local_seconds)>& generalDate);

/// Prints the report of a file. Returns the process's exit code: 0 done, 4 for a file that cannot be read or written;
/// errors and notes are told on `err`. A file that is there and no PDF is never written over.
[[nodiscard]] int WriteReportFile(const ReportFileJob& job, const Clock& clock, std::ostream& err);

} // namespace vantrel
