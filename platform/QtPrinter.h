// The host's printer and PDF files as a Printer, and the host's way to write a date. Qt stays inside.
#pragma once

#include "platform/Printer.h"

#include <chrono>
#include <filesystem>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace vantrel {

/// Empty when no printer is the default one.
[[nodiscard]] std::string DefaultPrinterName();
[[nodiscard]] std::vector<std::string> PrinterNames();
/// A job of that title for one of the host's printers, on the paper that is its own. EndDocument also throws when the
/// printer's queue refuses the job. Throws RuntimeError 482 when there is no such printer.
[[nodiscard]] std::unique_ptr<Printer> PaperPrinter(const std::string& name, const std::string& title);
/// A PDF document of that title; paper as it is usual where the host stands. The file is written, or replaced, as a
/// whole by EndDocument.
[[nodiscard]] std::unique_ptr<Printer> PdfPrinter(const std::filesystem::path& file, const std::string& title);
/// The same into a stream.
[[nodiscard]] std::unique_ptr<Printer> PdfStreamPrinter(std::ostream& out, const std::string& title);

/// The host's short date and long time, without the time zone.
[[nodiscard]] std::string GeneralDate(std::chrono::local_seconds time);

/// Lets this process print to files where there is no screen. Call before the application object is made.
void PrintWithoutScreen();

} // namespace vantrel
