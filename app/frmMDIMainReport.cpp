// The main frame's report: to the default printer, to one that the user chooses where none is the default, or to a PDF
// file.
#include "app/frmMDIMain.h"

#include "app/frmWaitDisplay.h"
#include "document/FileQuestions.h"
#include "document/frmMain.h"
#include "platform/QtPrinter.h"
#include "platform/RuntimeError.h"
#include "report/Report.h"
#include "text/PathText.h"

#include <string>
#include <utility>
#include <vector>

namespace vantrel {

void frmMDIMain::FilePrint() {
    PrintTo([this](const std::string& title) { return AskPrinter(title); });
}

void frmMDIMain::FileReportPdf() {
    PrintTo([this](const std::string& title) { return AskPdf(title, "Report to a PDF File"); });
}

void frmMDIMain::PrintTo(const std::function<Target(const std::string&)>& ask) {
    if (!editor_->FinishEntry()) return;
    try {
        const Target target = ask(ReportTitle(program_.document.BracketName));
        if (!target.printer) return;
        bool printed = false;
        frmWaitDisplay window(
            WaitSelector::Report, [&] { return ReportJob(*target.printer, printed); }, turns_, this);
        window.RunModal();
        if (printed) Notice(QString::fromStdString(target.done), LongNotice);
    } catch (const RuntimeError& error) {
        ReportRuntimeError(dialogs_, ReportProcedure, error);
    }
    FollowLink();
}

frmMDIMain::Target frmMDIMain::AskPrinter(const std::string& title) {
    std::string name = DefaultPrinterName();
    if (name.empty()) {
        std::vector<std::string> names = PrinterNames();
        const std::size_t printers = names.size();
        if (printers == 0) return AskPdf(title, "There Is No Printer: Print Report to a PDF File");
        names.emplace_back("A PDF file");
        const auto chosen =
            dialogs_.Choose("Print Report", "No printer is the default one. Print the report to:", names);
        if (!chosen) return {};
        if (*chosen >= printers) return AskPdf(title, "Report to a PDF File");
        name = names.at(*chosen);
    }
    return {PaperPrinter(name, title), "Handed to the printer \"" + name + "\""};
}

frmMDIMain::Target frmMDIMain::AskPdf(const std::string& title, const std::string& asked) {
    constexpr const char* extension = ".pdf";
    const Document& document = program_.document;
    FileQuestion question{.filters = {{.name = "PDF Files(*.pdf)", .pattern = "*.pdf"}}, .initial = {}, .title = asked};
    if (!document.IsUnnamed) question.initial = std::filesystem::path(document.FilePath).replace_extension(extension);
    const auto choice = dialogs_.SaveFile(question);
    if (!choice) return {};
    std::filesystem::path file = choice->path;
    if (!HasExtension(file, extension)) {
        file += extension;
        if (!MayReplace(file, dialogs_)) return {};
    }
    return {PdfPrinter(file, title), "Written to " + Utf8FromPath(file)};
}

Task frmMDIMain::ReportJob(Printer& printer, bool& printed) {
    try {
        // A braced temporary inside the co_await would be destroyed twice by g++ 12.
        ReportContents contents{.record = program_.document.CurrentConfiguration,
                                .name = program_.document.BracketName,
                                .generalDate = [this] { return GeneralDate(clock_.LocalNow()); }};
        Task report = PrintReport(std::move(contents), printer, turns_);
        co_await std::move(report);
        printed = true;
    } catch (const RuntimeError& error) {
        ReportRuntimeError(dialogs_, ReportProcedure, error);
    }
}

} // namespace vantrel
