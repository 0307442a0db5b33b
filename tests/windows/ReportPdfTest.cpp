// The report as a PDF file, in the wait window and without any window.
#include "app/ReportFile.h"
#include "app/frmWaitDisplay.h"
#include "platform/QtPrinter.h"
#include "report/Report.h"
#include "tests/windows/FrameFixture.h"

#include <sstream>

namespace vantrel {
namespace {

std::size_t PagesIn(const std::string& pdf) {
    std::size_t pages = 0;
    for (std::size_t at = pdf.find("/Type /Page\n"); at != std::string::npos; at = pdf.find("/Type /Page\n", at + 1))
        ++pages;
    return pages;
}

TEST_F(FrameTest, AReportIsPrintedInTheWaitWindowAndIsNoFileBeforeItIsComplete) {
    const ReportContents contents{DefaultRecord("VANTREL_R1.0.0", {}), "[plant.sdt]",
                                  [] { return std::string("today"); }};
    std::unique_ptr<Printer> printer = PdfPrinter(folder / "plant.pdf", "VANTREL Report: [plant.sdt]");
    QtTurnQueue turns(
        clock, [] { return true; }, [] { FAIL(); });
    frmWaitDisplay window(
        WaitSelector::Report, [&] { return PrintReport(contents, *printer, turns); }, turns, nullptr);
    EXPECT_TRUE(window.RunModal());
    const std::string pdf = FileText(folder / "plant.pdf");
    EXPECT_EQ(PagesIn(pdf), static_cast<std::size_t>(printer->PageNumber()));
    EXPECT_GE(PagesIn(pdf), 6U);

    Task stopped = PrintReport(contents, *(printer = PdfPrinter(folder / "half.pdf", "half")), turns);
    stopped.Start();
    stopped.Stop();
    printer.reset();
    EXPECT_FALSE(std::filesystem::exists(folder / "half.pdf"));
}

TEST(ReportPdf, OfAFileSaysWhyThereIsNoneAndReplacesOnlyPdfFiles) {
    const TemporaryFolder folder;
    const VirtualClock clock;
    WriteText(folder / "plant.vtl", "a,b,c,100,e,f,g,h,i\nN2,DFirst,10,200,32,20,64,300,WW\n");
    WriteText(folder / "letter.txt", "Dear all");
    WriteText(folder / "old.pdf", "%PDF-1.4 old");
    for (const auto& [from, to, code, message] : {std::tuple{"plant.vtl", "new.pdf", 0, ""},
                                                  {"plant.vtl", "old.pdf", 0, ""},
                                                  {"plant.vtl", "letter.txt", 4, "is there already and no PDF file"},
                                                  {"plant.vtl", "none/new.pdf", 4, "there is no folder"},
                                                  {"none.sdt", "none.pdf", 4, "File not found"}}) {
        std::ostringstream err;
        const ReportFileJob job{folder / from, folder / to, PdfPrinter, GeneralDate};
        EXPECT_EQ(WriteReportFile(job, clock, err), code);
        EXPECT_TRUE(err.str().find(message) != std::string::npos) << err.str();
        EXPECT_EQ(PagesIn(FileText(job.reportFile)) > 0, code == 0) << to;
    }
    EXPECT_EQ(FileText(folder / "letter.txt"), "Dear all");
}

TEST_F(FrameTest, WithoutAPrinterTheReportGoesToAPdfFileOfTheUsersChoice) {
    if (!PrinterNames().empty()) GTEST_SKIP() << "this host would print it";
    frame->OpenFile(Stored("plant.sdt", 500));
    WriteText(folder / "other.pdf", "precious");
    Answer({QMessageBox::No}, {(folder / "other").string()});
    Ctrl(Qt::Key_P);
    EXPECT_EQ(FileText(folder / "other.pdf"), "precious");
    EXPECT_EQ(user.shown.size(), 1U) << "the extension leads to another file";
    Answer({}, {(folder / "plant.sdt").string() + ".pdf"});
    Ctrl(Qt::Key_P);
    EXPECT_TRUE(FileText(folder / "plant.sdt.pdf").starts_with("%PDF-"));
    EXPECT_TRUE(user.shown.empty());
    ChangeDocument("V501");
    EXPECT_EQ(Value(0), 501) << "the program goes on";
}

} // namespace
} // namespace vantrel
