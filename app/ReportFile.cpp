// From a file to the file of its report.
#include "app/ReportFile.h"

#include "app/Program.h"
#include "document/Document.h"
#include "document/DocumentFiles.h"
#include "platform/RuntimeError.h"
#include "platform/TurnQueue.h"
#include "report/Report.h"

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

void Open(Document& document, const fs::path& file, std::ostream& err) {
    document.InitDefaults();
    if (MeansTextFile(file)) {
        ImportTextFileByName(document, file, "Give it the extension .sdt.");
        return;
    }
    ReadSetupFileByName(document, file, "If it is a text file of the older format, give it the extension .vtl.");
    if (document.LoadedByOtherVersion()) {
        err << "Note: " << QuotedPath(file) << " was saved by another program version.\n";
    }
    document.ApplyLoadedFile();
}

void Write(const ReportFileJob& job, const Clock& clock, std::ostream& err) {
    if (!MayBeReplaced(job.reportFile)) {
        throw RuntimeError(ErrorNumber::PathFileAccess,
                           QuotedPath(job.reportFile) +
                               " is there already and no PDF file. Give the report another name.");
    }
    Document document(ProgramVersion(), clock);
    Open(document, job.setupFile, err);
    const auto printer = job.makePrinter(job.reportFile, ReportTitle(document.BracketName));
    TurnQueue turns(clock);
    Task task = PrintReport({.record = document.CurrentConfiguration,
                             .name = document.BracketName,
                             .generalDate = [&] { return job.generalDate(clock.LocalNow()); }},
                            *printer, turns);
    turns.RunToEnd(task);
}

} // namespace

int WriteReportFile(const ReportFileJob& job, const Clock& clock, std::ostream& err) {
    try {
        Write(job, clock, err);
        return 0;
    } catch (const RuntimeError& error) {
        err << "vantrel: " << error.Description() << '\n';
        return FileErrorCode;
    }
}

} // namespace vantrel
