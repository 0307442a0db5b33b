// The report as text: pages, columns, and the file that it is written to; and the report for support, which is listed
// first and written when the user agrees.
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

TEST_F(ConsoleTest, AReportForSupportIsListedBeforeItIsWrittenAndTakesNoOtherFilesPlace) {
    const std::string plant = Imported("plant.sdt");
    WriteText(File("line.trace"), "traced");
    const auto archive = [&] {
        const std::vector<std::uint8_t> bytes = ReadWholeFile(File("out.zip"));
        return std::string(bytes.begin(), bytes.end());
    };
    const std::vector<std::string> listed{"versions.txt", "plant.sdt     the set-up file (",
                                          "line.trace    a file that was named (6 bytes)\n"};
    Expect(1, "support @out @plant --add @line.trace", listed, "n\n");
    EXPECT_FALSE(std::filesystem::exists(File("out.zip")));
    EXPECT_EQ(Expect(0, "support @out @plant --add @line.trace", listed, "y\n").out, File("out.zip") + "\n");
    EXPECT_TRUE(archive().starts_with("PK\3\4"));
    EXPECT_NE(archive().find("traced"), std::string::npos);
    Expect(1, "support @out.zip", {"out.zip"}, "y\nn\n");
    EXPECT_NE(archive().find("traced"), std::string::npos) << "asked once more before it is replaced";
    Expect(4, "support @out.zip --yes --add @gone", {"Left out: "});
    EXPECT_EQ(archive().find("traced"), std::string::npos);
}

} // namespace

} // namespace vantrel
