// From a file to the file of its report.
#include "app/ReportFile.h"

#include "app/Program.h"
#include "document/Document.h"
#include "document/DocumentFiles.h"
#include "document/FileQuestions.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "platform/TurnQueue.h"
#include "report/Report.h"
#include "text/PrintableText.h"

#include <algorithm>
#include <fstream>
#include <ostream>
#include <system_error>

namespace vantrel {

namespace {

namespace fs = std::filesystem;

constexpr int FileErrorCode = 4;

/// A PDF, or nothing at all yet. What is no file at all is refused when it is written, without being opened here: that
/// could wait for ever.
bool MayBeReplaced(const fs::path& file) {
    std::error_code error;
    if (!fs::is_regular_file(file, error)) return true;
    const std::string magic = "%PDF-";
    std::string start(magic.size(), '\0');
    std::ifstream bytes(file, std::ios::binary);
    bytes.read(start.data(), static_cast<std::streamsize>(start.size()));
    return bytes.gcount() == 0 || start == magic;
}

void Open(Document& document, const ReportFileJob& job, std::ostream& err) {
    document.InitDefaults();
    if (MeansTextFile(job.setupFile)) {
        ImportTextFileByName(document, job.setupFile, "Give it the extension .sdt.");
        return;
    }
    ReadSetupFileByName(document, job.setupFile,
                        "If it is a text file of the older format, give it the extension .vtl.", job.in);
    const bool fromInput = job.in && IsStandardStream(job.setupFile);
    const std::string note = OtherVersionNote(document, fromInput ? StandardInput : QuotedPath(job.setupFile));
    if (!note.empty()) err << PrintableText(note, Layout::Drop) << '\n';
    document.ApplyLoadedFile();
}

void Write(const ReportFileJob& job, const Clock& clock, std::ostream& err) {
    if (!IsStandardStream(job.reportFile) && !MayBeReplaced(job.reportFile)) {
        throw RuntimeError(ErrorNumber::PathFileAccess,
                           QuotedPath(job.reportFile) +
                               " is there already and no PDF file. Give the report another name.");
    }
    Document document(ProgramVersion(), clock);
    Open(document, job, err);
    const auto printer = job.makePrinter(job.reportFile, ReportTitle(document.BracketName));
    PrintWholeReport(document, *printer, clock, job.generalDate);
}

} // namespace

void PrintWholeReport(const Document& document, Printer& printer, const Clock& clock,
                      const std::function<std::string(std::chrono::local_seconds)>& generalDate) {
    TurnQueue turns(clock);
    Task task = PrintReport({.record = document.CurrentConfiguration,
                             .name = document.BracketName,
                             .generalDate = [&] { return generalDate(clock.LocalNow()); }},
                            printer, turns);
    turns.RunToEnd(task);
}

int WriteReportFile(const ReportFileJob& job, const Clock& clock, std::ostream& err) {
    try {
        Write(job, clock, err);
        return 0;
    } catch (const RuntimeError& error) {
        err << "vantrel: " << PrintableText(error.Description(), Layout::Keep) << '\n';
        return FileErrorCode;
    }
}

} // namespace vantrel
