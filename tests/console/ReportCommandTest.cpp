// The report as text: pages, columns, and the file that it is written to.
#include "tests/console/ConsoleFixture.h"

namespace vantrel {

namespace {

TEST_F(ConsoleTest, TheReportIsPagesOf66LinesAnd80ColumnsWithNoLabelTouchingItsValue) {
    const std::string file = Imported("plant.sdt");
    Configuration record = RecordOf(file);
    record.SetNodeDescription(4, std::string(70, '@') + "\n\x1B[2J" + std::string(70, '@'));
    record.SetValue(StatusStackIndex, -2147483647);
    WriteRecord(file, record);
    const Ended ended = Run({"report", file});
    EXPECT_EQ(ended.code, 0) << ended.err;
    EXPECT_TRUE(ended.out.starts_with("\n\n\n"
                                      "        VANTREL Report: [plant.sdt]\n"
                                      "\n"
                                      "        K5216-505 Communication Parameter List\n"
                                      "\n"
                                      "          A. Status Stack Address\n"
                                      "               1. Ti-505 Communications Status Stack Address:  V-2147483647\n"
                                      "\n"
                                      "          B. Configuration Parameters:\n"
                                      "             Sequence Number:  0\n"))
        << ended.out;
    EXPECT_NE(ended.out.find("From Starting Address in Slave Node:            FFFEH\n"), std::string::npos);
    EXPECT_EQ(CountOf(ended.out, "@"), 140U);
    EXPECT_EQ(ended.out.find('\x1B'), std::string::npos) << "a description must not steer the terminal";
    std::istringstream pages(ended.out);
    int number = 0;
    for (std::string page; std::getline(pages, page, '\f');) {
        EXPECT_EQ(CountOf(page, "\n"), 63U);
        EXPECT_NE(page.find("\n        Page " + std::to_string(++number) +
                            "                                        2026-03-14 09:05:07\n"),
                  std::string::npos)
            << page;
        std::istringstream lines(page);
        for (std::string line; std::getline(lines, line);)
            EXPECT_LE(line.size(), 80U) << line;
    }
    EXPECT_EQ(number, 7);
}

TEST_F(ConsoleTest, TheReportTakesTextFilesAndReplacesAFileOnlyWhenTheUserAgrees) {
    WriteText(File("line.VTL"), TwoSequences);
    const std::string text = Expect(0, "report @line.VTL").out;
    WriteText(File("line.txt"), "mine");
    Expect(1, "report @line.VTL --output @line.txt");
    EXPECT_EQ(FileText(File("line.txt")), "mine");
    EXPECT_EQ(Expect(0, "report @line.VTL --output @line.txt --yes").out, File("line.txt") + "\n");
    EXPECT_EQ(FileText(File("line.txt")), text);
    Imported("plant.sdt");
    for (const char* own : {"report @line.VTL --output @line.VTL --yes", "report @plant --output @plant"})
        Expect(2, own, {"must not take the place"});
    EXPECT_EQ(FileText(File("line.VTL")), TwoSequences);
}

} // namespace

} // namespace vantrel
