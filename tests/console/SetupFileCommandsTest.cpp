// Files: what is written, what is shown, and when somebody is asked.
#include "console/RecordText.h"
#include "tests/console/ConsoleFixture.h"

#include <nlohmann/json.hpp>

#include <tuple>

namespace vantrel {

namespace {

TEST_F(ConsoleTest, NewWritesTheDefaultsAndPrintsTheFullPathOfTheFileThatItWrote) {
    EXPECT_EQ(Expect(0, "new @plant.cfg", {"Note: The extension is .sdt always"}).out, File("plant.sdt") + "\n");
    EXPECT_EQ(RecordOf(File("plant.sdt")).Values.size(), ValueCount);
    EXPECT_EQ(RecordOf(File("plant.sdt")).Value(StatusStackIndex), 1);
}

TEST_F(ConsoleTest, TwoNamesInAFolderWithAPointStayTwoFilesInThatFolder) {
    std::filesystem::create_directory(folder / "my.dir");
    for (const std::string name : {"my.dir/lineA", "my.dir/lineB"}) {
        EXPECT_EQ(Expect(0, "new @" + name + " --yes").out, File(name) + ".sdt\n");
        EXPECT_EQ(Expect(0, "upload @" + name + "-up --port 1 --yes").out, File(name) + "-up.sdt\n");
        Expect(0, "show @" + name, {File(name) + ".sdt"});
    }
    EXPECT_FALSE(std::filesystem::exists(File("my.sdt")));
}

TEST_F(ConsoleTest, AFileIsFoundByTheNameThatItWasWrittenUnder) {
    Expect(0, "new @line.2", {File("line.sdt")});
    Expect(0, "show @line.2", {File("line.sdt")});
    Imported("line.2.sdt");
    Expect(0, "show @line.2", {File("line.2.sdt")});
}

TEST_F(ConsoleTest, AFileIsReplacedOnlyWhenTheUserAgrees) {
    const std::vector<std::tuple<const char*, std::optional<std::string>, int>> cases = {
        {"", {}, 1}, {"", "n\n", 1}, {"", "", 1}, {"", "perhaps\ny\n", 0}, {"--yes", {}, 0}};
    for (const auto& [option, typed, code] : cases) {
        const std::string file = Imported("plant.sdt");
        Expect(code, std::string("new @plant.sdt ") + option, {"\"" + file + "\""}, typed);
        EXPECT_EQ(RecordOf(file).Value(StatusStackIndex), code == 0 ? 1 : 100);
    }
}

TEST_F(ConsoleTest, ShowGivesUsedSequencesInTheirNotationAndCountsTheOthers) {
    Imported("plant.sdt");
    Expect(0, "show @plant.sdt",
           {"V100\n", "2026-03-14 09:05:07", "To Node", "V200", "W32", "2000H", "FFFEH", "V500",
            "First, and foremost\n", "29 sequences are not used"});
    EXPECT_EQ(CountOf(Expect(0, "show @plant.sdt --all").out, "W32"), 30U + 29U) << "all but one, both addresses";
    Configuration nearly = RecordOf(File("plant.sdt"));
    for (std::size_t sequence = 1; sequence < SequenceCount; ++sequence)
        nearly.SetValue(ValueIndex(sequence, SequenceField::NodeNumber), 1);
    nearly.SetValue(ValueIndex(0, SequenceField::NodeNumber), 0);
    EXPECT_NE(RecordTable("", nearly, Sequences::Used).find("\n1 sequence is not used"), std::string::npos);
}

TEST_F(ConsoleTest, TextsOfAFileCannotSteerTheTerminal) {
    Configuration record = RecordOf(Imported("plant.sdt"));
    record.SetNodeDescription(0, "a\x1B[2Jb");
    record.CreatorVersion = "v\x1B]0;x\x07";
    WriteRecord(File("plant.sdt"), record);
    Expect(0, "show @plant.sdt", {"a?[2Jb", "saved by v?]0;x?,"});
    Expect(1, "download @plant.sdt --port 1", {"version: v?]0;x?\n"});
    record.CreatorVersion = "\r\nAll confirmed.\n" + std::string(65000, 'x');
    WriteRecord(File("plant.sdt"), record);
    for (const char* told : {"show @plant.sdt", "download @plant.sdt --port 1"})
        EXPECT_LT(Run(Words(told)).err.size(), 600U) << "no message of tens of thousands of characters";
    EXPECT_EQ(Run({"show", "a\x1B\xC2\x9B\x9B\xC3\xBC"}).err.find_first_of("\x1B\x9B"), std::string::npos);
    Expect(4, "show a\xC3\xBC", {"a\xC3\xBC"}); // Letters stay.
}

TEST_F(ConsoleTest, JsonHoldsTheWholeRecordInUtf8) {
    const std::string file = Imported("plant.sdt", "a,b,c,100,e,f,g,h,i\nN2,DK\xFChlung,1,2,34,5,64,7,HW\n");
    const auto json = nlohmann::json::parse(Run({"show", file, "--json"}).out);
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
    Imported("set-up.sdt");
    WriteText(File("bad.vtl"), "a,b,c,99999999999,e,f,g,h,i\nN2\n");
    WriteText(File("empty.vtl"), "");
    Expect(4, "import @bad.vtl @plant.sdt", {"bad.vtl", "Line 1, item 4"});
    for (const char* file : {"@set-up.sdt", "@empty.vtl"})
        Expect(4, std::string("import ") + file + " @plant.sdt");
    EXPECT_FALSE(std::filesystem::exists(File("plant.sdt")));
}

TEST_F(ConsoleTest, AMinusIsStandardInputAndStandardOutput) {
    const Ended made = Expect(0, "import - -", {}, TwoSequences);
    const auto bytes = std::vector<std::uint8_t>(made.out.begin(), made.out.end());
    EXPECT_EQ(ParseSetupFile(bytes).Value(StatusStackIndex), 100);
    EXPECT_EQ(SetupFileBytes(ParseSetupFile(bytes)), bytes) << "the record and nothing else";
    Expect(0, "show -", {"standard input\n", "First, and foremost"}, made.out);
    Expect(0, "report - --output -", {"V100"}, made.out);
    Expect(0, "download - --port 1 --yes", {}, made.out);
    EXPECT_EQ(board.PeekWord(6400), 100);
    const Ended set = Expect(0, "set - 0 NodeNumber 9", {"sequence 0, NodeNumber: 9\n"}, made.out);
    const Ended fetched = Expect(0, "upload - --port 1 --yes");
    for (const auto& [file, node] : {std::pair(set.out, 9), std::pair(fetched.out, 2)}) {
        const std::vector<std::uint8_t> whole(file.begin(), file.end());
        EXPECT_EQ(ParseSetupFile(whole).Value(1), node);
        EXPECT_EQ(whole.size(), bytes.size() - (node == 2 ? 25 : 0)) << "nothing else, and no descriptions";
    }
    Expect(0, "read W6400 --port 1 --trace -", {"  FF\n"});
    Expect(4, "show -", {"standard input"}, "no set-up file");
    outIsTerminal = true;
    for (const char* command : {"new -", "upload - --port 1 --yes", "read W1 --json --port 1 --trace -"})
        Expect(2, command);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1) << "the settings of the port";
}

TEST_F(ConsoleTest, ASetupTravelsAsTextAndComesBackTheSame) {
    Imported("plant.sdt");
    for (const std::string text : {"plant.json", "plant.CSV"}) {
        Expect(0, "export @plant.sdt @" + text, {File(text)});
        Expect(0, "import @" + text + " @back.sdt --yes", {"status stack V100, 2 of 31"});
        Expect(0, "compare @plant.sdt @back.sdt", {"Values and descriptions of both files are the same."});
    }
    Expect(2, "export @plant.sdt @plant.txt", {".json or .csv"});
    WriteText(File("plant.json"), "{\"values\": [1.5]}");
    Expect(4, "import @plant.json @back.sdt --yes", {"plant.json", "\"values\" holds 1.5"});
    Expect(0, "set @back.sdt 1 SendToNode W34");
    Expect(1, "compare @plant.sdt @back.sdt", {"sequence 1, SendToNode: 2000H | W34\n"});
    Expect(2, "compare @plant.sdt", {"a second file, or --port"});
    Expect(2, "compare @plant.sdt @back.sdt --port 1", {"a second file, or --port"});
}

TEST_F(ConsoleTest, ACheckNamesWhatOverlaps) {
    Imported("plant.sdt");
    Expect(1, "check @plant.sdt", {"sequence 1, From Node:", "FFFEH to 10000H end behind FFFEH"});
    Expect(0, "set @plant.sdt 1 ReceiveFromNode 20H");
    Expect(0, "check @plant.sdt", {"Nothing was found."});
    Expect(0, "set @plant.sdt 1 ReceiveToTI V319");
    Expect(1, "check @plant.sdt", {"Error  sequence 1, To TI:", "V319 to V320, overwrite those of sequence 0"});
    Expect(1, "check @plant.sdt --json", {"\"severity\": \"error\"", "\"field\": \"ReceiveToTI\""});
}

} // namespace

} // namespace vantrel
