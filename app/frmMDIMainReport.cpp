// The main frame's printed report: to the default printer, or to a PDF file where there is none.
#include "app/frmMDIMain.h"

#include "app/frmWaitDisplay.h"
#include "document/FileQuestions.h"
#include "document/frmMain.h"
#include "platform/QtPrinter.h"
#include "platform/RuntimeError.h"
#include "report/Report.h"

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
    FileQuestion question{.filters = {{.name = "PDF Files(*.pdf)", .pattern = "*.pdf"}}, .initial = {}};
    if (!document.IsUnnamed) question.initial = std::filesystem::path(document.FilePath).replace_extension(extension);
    const auto choice = dialogs_.SaveFile(question);
    if (!choice) return nullptr;
    std::filesystem::path file = choice->path;
    if (!file.has_extension()) {
        file += extension;
        std::error_code error;
        if (std::filesystem::exists(file, error) && dialogs_.Show(ReplaceQuestion(file)) != MessageAnswer::Yes)
            return nullptr;
    }
    return PdfPrinter(file, title);
}

Task frmMDIMain::ReportJob(Printer& printer) {
    try {
        co_await PrintReport({.record = program_.document.CurrentConfiguration,
                              .name = program_.document.BracketName,
                              .generalDate = [this] { return GeneralDate(clock_.LocalNow()); }},
                             printer, turns_);
    } catch (const RuntimeError& error) {
        ReportRuntimeError(dialogs_, ReportProcedure, error);
    }
}

} // namespace vantrel
