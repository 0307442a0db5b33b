// Files: what is written, what is shown, and when somebody is asked.
#include "tests/console/ConsoleFixture.h"

#include <nlohmann/json.hpp>

namespace vantrel {

namespace {

TEST_F(ConsoleTest, NewWritesTheDefaultsAndPrintsTheFullPathOfTheFileThatItWrote) {
    const Ended made = Run({"new", File("plant.cfg")});
    EXPECT_EQ(made.code, 0);
    EXPECT_NE(made.err.find("Note: the extension is .sdt always"), std::string::npos) << made.err;
    EXPECT_EQ(made.out, File("plant.sdt") + "\n");
    const Configuration record = RecordOf(File("plant.sdt"));
    EXPECT_EQ(record.Values.size(), ValueCount);
    EXPECT_EQ(record.Value(StatusStackIndex), 1);
}

TEST_F(ConsoleTest, TwoNamesInAFolderWithAPointStayTwoFilesInThatFolder) {
    std::filesystem::create_directory(folder / "my.dir");
    for (const std::string& name : {File("my.dir/lineA"), File("my.dir/lineB")}) {
        EXPECT_EQ(Run({"new", name, "--yes"}).out, name + ".sdt\n");
        EXPECT_EQ(Run({"upload", name + "-up", "--port", "1", "--yes"}).out, name + "-up.sdt\n");
        EXPECT_NE(Run({"show", name}).out.find(name + ".sdt"), std::string::npos);
    }
    EXPECT_FALSE(std::filesystem::exists(File("my.sdt")));
}

TEST_F(ConsoleTest, AFileIsFoundByTheNameThatItWasWrittenUnder) {
    EXPECT_EQ(Run({"new", File("line.2")}).out, File("line.sdt") + "\n");
    EXPECT_NE(Run({"show", File("line.2")}).out.find(File("line.sdt")), std::string::npos);
    Imported("line.2.sdt", TwoSequences);
    EXPECT_EQ(Run({"show", File("line.2")}).out.find(File("line.sdt")), std::string::npos) << "the longer name first";
}

TEST_F(ConsoleTest, AnImportSaysWhatItTookOver) {
    WriteText(File("import.vtl"), TwoSequences);
    const Ended imported = Run({"import", File("import.vtl"), File("plant.sdt")});
    EXPECT_EQ(imported.out, File("plant.sdt") + "\n");
    EXPECT_EQ(imported.err, "Imported: status stack V100, 2 of 31 sequences.\n");
}

TEST_F(ConsoleTest, AFileIsReplacedOnlyWhenTheUserAgrees) {
    struct Case {
        std::vector<std::string> options;
        std::optional<std::string> typed;
        int code;
    };
    const std::vector<Case> cases = {
        {{}, {}, 1}, {{}, "n\n", 1}, {{}, "", 1}, {{}, "perhaps\ny\n", 0}, {{"--yes"}, {}, 0}};
    for (const Case& each : cases) {
        const std::string file = Imported("plant.sdt", TwoSequences);
        std::vector<std::string> arguments{"new", file};
        arguments.insert(arguments.end(), each.options.begin(), each.options.end());
        const Ended ended = Run(arguments, each.typed);
        EXPECT_EQ(ended.code, each.code) << ended.err;
        EXPECT_NE(ended.err.find(file), std::string::npos) << "the question names the file";
        EXPECT_EQ(RecordOf(file).Value(StatusStackIndex), each.code == 0 ? 1 : 100);
    }
}

TEST_F(ConsoleTest, ShowGivesUsedSequencesInTheirNotationAndCountsTheOthers) {
    const std::string file = Imported("plant.sdt", TwoSequences);
    const Ended shown = Run({"show", file});
    EXPECT_EQ(shown.code, 0);
    for (const char* part : {"V100\n", "2026-03-14 09:05:07", "To Node", "V200", "W32", "2000H", "FFFEH", "V500",
                             "First, and foremost\n", "29 sequences are not used"}) {
        EXPECT_NE(shown.out.find(part), std::string::npos) << part << " in\n" << shown.out;
    }
    EXPECT_EQ(CountOf(Run({"show", file, "--all"}).out, "W32"), 30U + 29U) << "all sequences but one, both addresses";
}

TEST_F(ConsoleTest, TextsOfAFileCannotSteerTheTerminal) {
    Configuration record = RecordOf(Imported("plant.sdt", TwoSequences));
    record.SetNodeDescription(0, "a\x1B[2Jb");
    record.CreatorVersion = "v\x1B]0;x\x07";
    WriteRecord(File("plant.sdt"), record);
    const Ended shown = Run({"show", File("plant.sdt")});
    EXPECT_NE(shown.out.find("a?[2Jb"), std::string::npos);
    EXPECT_NE(shown.err.find("saved by v?]0;x?,"), std::string::npos) << shown.err;
    const Ended asked = Run({"download", File("plant.sdt"), "--port", "1"});
    EXPECT_NE(asked.err.find("version: v?]0;x?\n"), std::string::npos) << asked.err;
    record.CreatorVersion = "\r\nAll confirmed.\n" + std::string(65000, 'x');
    WriteRecord(File("plant.sdt"), record);
    for (const Ended& told : {Run({"show", File("plant.sdt")}), Run({"download", File("plant.sdt"), "--port", "1"})}) {
        EXPECT_NE(told.err.find("??All confirmed.?xxx"), std::string::npos);
        EXPECT_LT(told.err.size(), 600U) << "no message of tens of thousands of characters";
    }
    EXPECT_EQ(Run({"show", "a\x1B\xC2\x9B\x9B\xC3\xBC"}).err.find_first_of("\x1B\x9B"), std::string::npos);
    EXPECT_NE(Run({"show", "a\xC3\xBC"}).err.find("a\xC3\xBC"), std::string::npos) << "letters stay";
}

TEST_F(ConsoleTest, JsonHoldsTheWholeRecordInUtf8) {
    const std::string file = Imported("plant.sdt", "a,b,c,100,e,f,g,h,i\nN2,DK\xFChlung,1,2,34,5,64,7,HW\n");
    const Ended shown = Run({"show", file, "--json"});
    const auto json = nlohmann::json::parse(shown.out);
    EXPECT_EQ(json["creatorVersion"], RecordOf(file).CreatorVersion);
    EXPECT_EQ(json["savedDate"], "2026-03-14T09:05:07");
    EXPECT_EQ(json["values"].get<std::vector<int>>(), RecordOf(file).Values);
    EXPECT_EQ(json["values"].size(), 218U);
    EXPECT_EQ(json["targetAddresses"][217], "W31756");
    EXPECT_EQ(json["nodeDescriptions"].size(), 33U);
    EXPECT_EQ(json["nodeDescriptions"][0], "K\xC3\xBChlung");
    EXPECT_EQ(json["addressTypes"][4], "H");
    EXPECT_EQ(json["addressTypes"][6], "W");
}

TEST_F(ConsoleTest, AnImportThatFailsWritesNothingAndNamesFileAndLine) {
    WriteText(File("bad.vtl"), "a,b,c,99999999999,e,f,g,h,i\nN2\n");
    const Ended ended = Run({"import", File("bad.vtl"), File("plant.sdt")});
    EXPECT_EQ(ended.code, 4);
    EXPECT_NE(ended.err.find("bad.vtl"), std::string::npos);
    EXPECT_NE(ended.err.find("Line 1, item 4"), std::string::npos) << ended.err;
    EXPECT_FALSE(std::filesystem::exists(File("plant.sdt")));
    EXPECT_EQ(Run({"import", Imported("set-up.sdt", TwoSequences), File("plant.sdt")}).code, 4) << "no text file";
    WriteText(File("bad.vtl"), "");
    EXPECT_EQ(Run({"import", File("bad.vtl"), File("plant.sdt")}).code, 4);
    EXPECT_FALSE(std::filesystem::exists(File("plant.sdt")));
}

TEST_F(ConsoleTest, AMinusIsStandardInputAndStandardOutput) {
    const Ended made = Run({"import", "-", "-"}, TwoSequences);
    EXPECT_EQ(made.code, 0) << made.err;
    const auto bytes = std::vector<std::uint8_t>(made.out.begin(), made.out.end());
    EXPECT_EQ(ParseSetupFile(bytes).Value(StatusStackIndex), 100);
    EXPECT_EQ(SetupFileBytes(ParseSetupFile(bytes)), bytes) << "the record and nothing else";
    const Ended shown = Run({"show", "-"}, made.out);
    EXPECT_NE(shown.out.find("standard input\n"), std::string::npos) << shown.out;
    EXPECT_NE(shown.out.find("First, and foremost"), std::string::npos);
    EXPECT_NE(Run({"report", "-", "--output", "-"}, made.out).out.find("V100"), std::string::npos);
    EXPECT_EQ(Run({"download", "-", "--port", "1", "--yes"}, made.out).code, 0);
    EXPECT_EQ(board.PeekWord(6400), 100);
    const Ended set = Run({"set", "-", "0", "NodeNumber", "9"}, made.out);
    EXPECT_EQ(set.err, "sequence 0, NodeNumber: 9\n");
    const Ended fetched = Run({"upload", "-", "--port", "1", "--yes"});
    for (const auto& [file, node] : {std::pair(set.out, 9), std::pair(fetched.out, 2)}) {
        const std::vector<std::uint8_t> whole(file.begin(), file.end());
        EXPECT_EQ(ParseSetupFile(whole).Value(1), node);
        EXPECT_EQ(whole.size(), bytes.size() - (node == 2 ? 25 : 0)) << "nothing else, and no descriptions";
    }
    EXPECT_NE(Run({"read", "W6400", "--port", "1", "--trace", "-"}).out.find("  FF\n"), std::string::npos);
    const Ended none = Run({"show", "-"}, "no set-up file");
    EXPECT_EQ(none.code, 4);
    EXPECT_NE(none.err.find("standard input"), std::string::npos) << none.err;
    outIsTerminal = true;
    for (const std::vector<std::string>& command :
         std::vector<std::vector<std::string>>{{"new", "-"},
                                               {"upload", "-", "--port", "1", "--yes"},
                                               {"read", "W1", "--json", "--port", "1", "--trace", "-"}})
        EXPECT_EQ(Run(command).code, 2) << command.front() << ": nothing that nobody could tell apart";
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1) << "the settings of the port";
}

} // namespace

} // namespace vantrel
