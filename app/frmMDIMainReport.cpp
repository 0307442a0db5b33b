// The main frame's printed report: to the default printer, or to a PDF file where there is none.
#include "app/frmMDIMain.h"

#include "app/frmWaitDisplay.h"
#include "document/FileQuestions.h"
#include "document/frmMain.h"
#include "platform/QtPrinter.h"
#include "platform/RuntimeError.h"
#include "report/Report.h"

#include <utility>

namespace vantrel {

void frmMDIMain::FilePrint() {
    if (!editor_->FinishEntry()) return;
    try {
        const std::string title = ReportTitle(program_.document.BracketName);
        const std::unique_ptr<Printer> printer = HasDefaultPrinter() ? DefaultPrinter(title) : AskPdf(title);
        if (!printer) return;
        frmWaitDisplay window(
            WaitSelector::Report, [&] { return ReportJob(*printer); }, turns_, this);
        window.RunModal();
    } catch (const RuntimeError& error) {
        ReportRuntimeError(dialogs_, ReportProcedure, error);
    }
    FollowLink();
}

std::unique_ptr<Printer> frmMDIMain::AskPdf(const std::string& title) {
    constexpr const char* extension = ".pdf";
    const Document& document = program_.document;
    FileQuestion question{.filters = {{.name = "PDF Files(*.pdf)", .pattern = "*.pdf"}},
                          .initial = {},
                          .title = "There Is No Printer: Print Report to a PDF File"};
    if (!document.IsUnnamed) question.initial = std::filesystem::path(document.FilePath).replace_extension(extension);
    const auto choice = dialogs_.SaveFile(question);
    if (!choice) return nullptr;
    std::filesystem::path file = choice->path;
    std::error_code error;
    if (!HasExtension(file, extension)) {
        file += extension;
        if (std::filesystem::exists(file, error) && dialogs_.Show(ReplaceQuestion(file)) != MessageAnswer::Yes)
            return nullptr;
    }
    return PdfPrinter(file, title);
}

Task frmMDIMain::ReportJob(Printer& printer) {
    try {
        // A braced temporary inside the co_await would be destroyed twice by g++ 12.
        ReportContents contents{.record = program_.document.CurrentConfiguration,
                                .name = program_.document.BracketName,
                                .generalDate = [this] { return GeneralDate(clock_.LocalNow()); }};
        Task report = PrintReport(std::move(contents), printer, turns_);
        co_await std::move(report);
    } catch (const RuntimeError& error) {
        ReportRuntimeError(dialogs_, ReportProcedure, error);
    }
}

} // namespace vantrel
