// Transfers: what reaches the board or the file, and what the user is told when it does not.
#include "tests/console/ConsoleFixture.h"

namespace vantrel {

namespace {

constexpr std::uint16_t WriteThrough = 105;

/// The bytes that a trace shows as written, "address=value" in decimal: a 255 in the place of an address is a probe or
/// a sync, the mode behind it says whether three exchanges write a byte or two read one.
std::string BytesWritten(const std::string& trace) {
    std::istringstream lines(trace);
    std::vector<int> sent;
    std::string written;
    std::size_t exchanges = 0;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with('#')) continue;
        const int byte = std::stoi(line.substr(line.find('.') + 9, 2), nullptr, 16);
        if (byte != 255 || sent != std::vector{255}) sent.push_back(byte);
        const bool sync = sent[0] == 255;
        if (sent.size() < (sync ? 2 : exchanges)) continue;
        if (sync) exchanges = byte == 2 ? 3 : 2;
        if (sent.size() == 3) written += std::to_string(sent[0] * 256 + sent[1]) + "=" + std::to_string(sent[2]) + " ";
        sent.clear();
    }
    return written;
}

TEST_F(ConsoleTest, WhatIsDownloadedComparesEqualAndComesBackByUpload) {
    const std::string file = Imported("plant.sdt");
    Expect(0, "download @plant.sdt --port simulated --yes --verify", {"All 218 values"});
    EXPECT_EQ(board.PeekWord(6400), 100);
    EXPECT_EQ(board.PeekWord(16896), 3);
    EXPECT_EQ(board.Peek(WriteThrough), 0);
    Expect(0, "compare @plant.sdt --port simulated");
    const Ended fetched = Expect(0, "upload @fetched --port simulated --yes",
                                 {"Uploaded the test's board to \"" + File("fetched.sdt") + "\": 218 values"});
    EXPECT_EQ(fetched.out, File("fetched.sdt") + "\n");
    EXPECT_EQ(RecordOf(File("fetched.sdt")).Values, RecordOf(file).Values);
    EXPECT_EQ(RecordOf(File("fetched.sdt")).NodeDescription(0), "") << "descriptions are not on the board";
}

TEST_F(ConsoleTest, AnUploadIntoAnExistingFileKeepsItsDescriptionsAndNotations) {
    const std::string file = Imported("plant.sdt");
    for (const auto& [typed, code] : {std::pair("y\nn\n", 1), std::pair("y\ny\n", 0)}) {
        Expect(code, "upload @plant --port simulated", {}, typed);
        EXPECT_EQ(RecordOf(file).Value(StatusStackIndex), code == 0 ? 1 : 100) << "two questions";
    }
    EXPECT_EQ(RecordOf(file).NodeDescription(1), "Second");
    EXPECT_EQ(RecordOf(file).AddressType(ValueIndex(1, SequenceField::SendToNode)), "H");
}

TEST_F(ConsoleTest, EveryDifferenceIsNamedWithBothValues) {
    Imported("plant.sdt");
    Expect(0, "download @plant.sdt --port simulated --yes");
    Expect(0, "write W16384 7 --port simulated", {"W16384 7\n"});
    Expect(0, "write W6400 1,000 --port simulated", {"W6400 1000\n"});
    Expect(1, "compare @plant.sdt --port simulated",
           {"status stack address: file 100, board 1000\nsequence 0, NodeNumber: file 2, board 7\n2 of 218 values"});
    EXPECT_EQ(Expect(0, "read W16384 B8176.0 --port simulated").out, "W16384 7\nB8176.0 0\n");
}

TEST_F(ConsoleTest, OfADownloadOfChangesOnlyTheChangesAreSent) {
    Imported("plant.sdt");
    Expect(0, "download @plant.sdt --port simulated --yes");
    Expect(0, "download @plant.sdt --port simulated --yes --changes", {"Nothing was sent."});
    Expect(0, "set @plant.sdt 1 NodeNumber 9");
    board.PokeWord(31744, 7);
    Expect(0, "download @plant.sdt --port simulated --yes --changes --trace @trace.txt",
           {"sequence 1, NodeNumber: file 9, board 3\nsequence 30, NodeNumber: file 0, board 7\n",
            "2 values, all confirmed.", "2 values of", "are on the board."});
    EXPECT_EQ(board.PeekWord(16896) + board.PeekWord(31744) + board.Peek(WriteThrough), 9);
    EXPECT_EQ(BytesWritten(FileText(File("trace.txt"))), "105=1 16896=9 16897=0 31744=0 31745=0 105=0 ");
    Expect(0, "backup @kept.sdt --port simulated --yes", {"read twice with the same result"});
    EXPECT_EQ(RecordOf(File("kept.sdt")).Value(ValueIndex(1, SequenceField::NodeNumber)), 9);
    EXPECT_EQ(RecordOf(File("kept.sdt")).NodeDescription(1), "");
}

TEST_F(ConsoleTest, WithoutATerminalAndWithoutYesNothingIsSent) {
    const std::string file = Imported("plant.sdt");
    Expect(
        1, "download @plant.sdt --port simulated",
        {"Data Download: You are about to Download Data to the PLC", "\"" + file + "\" to the test's board", "--yes"});
    Expect(1, "upload @new.sdt --port simulated");
    EXPECT_FALSE(std::filesystem::exists(File("new.sdt")));
    EXPECT_TRUE(NothingWasSent());
}

TEST_F(ConsoleTest, AFileOfAnotherVersionIsSentOnlyWhenTheUserAcceptsIt) {
    Configuration record = RecordOf(Imported("plant.sdt"));
    record.CreatorVersion = "VANTREL_R0.0.1";
    WriteRecord(File("plant.sdt"), record);
    const Ended refused = Expect(1, "download @plant.sdt --port simulated",
                                 {"ANCNF: File created by set-up program version: VANTREL_R0.0.1"}, "n\n");
    EXPECT_TRUE(NothingWasSent());
    EXPECT_EQ(CountOf(refused.err, "[y/n"), 1U) << "the transfer is not asked about any more";
    Expect(0, "download @plant.sdt --port simulated", {}, "y\ny\n");
    for (const char* look : {"show @plant.sdt", "compare @plant.sdt --port simulated"})
        Expect(0, look, {"Note: "});
}

TEST_F(ConsoleTest, ValuesThatTheBoardDoesNotConfirmAreNamed) {
    Configuration record = RecordOf(Imported("plant.sdt"));
    record.SetValue(ValueIndex(3, SequenceField::SendToNode), -5);
    WriteRecord(File("plant.sdt"), record);
    Expect(1, "download @plant.sdt --port simulated --yes",
           {"Warning: The board holds 0 to 65535 only.", "\nsequence 3, To Node: -5\n",
            "\nsequence 3, SendToNode: not confirmed by the board\n1 of 218 values"});
    EXPECT_EQ(board.PeekWord(31756), 1) << "the others arrived";
}

TEST_F(ConsoleTest, ATraceHoldsEveryExchangeAndReplacesOnlyATraceUnasked) {
    const char* command = "read W6400 --port simulated --trace @trace.txt";
    WriteText(File("trace.txt"), "precious\n");
    Expect(1, command);
    EXPECT_EQ(FileText(File("trace.txt")), "precious\n");
    EXPECT_TRUE(NothingWasSent());
    for (const char* typed : {"y\n", ""}) {
        Expect(0, command, {}, typed);
        const std::string trace = FileText(File("trace.txt"));
        // Probe, sync, mode, two exchanges a byte, goodbye.
        EXPECT_EQ(CountOf(trace, "\n") - CountOf(trace, "#"), 3U + 4U + 1U) << trace;
        EXPECT_NE(trace.find("  19  19"), std::string::npos) << "high byte of 6400\n" << trace;
    }
    if (!std::filesystem::exists("/dev/full")) return;
    const Ended full = Expect(4, "read W6400 --port simulated --trace /dev/full",
                              {"The trace \"/dev/full\" cannot be written: No space left"});
    EXPECT_EQ(full.out, "W6400 1\n");
}

TEST_F(ConsoleTest, OnATerminalABarShowsHowFarItIsAndHowLongItTakes) {
    Imported("plant.sdt");
    EXPECT_EQ(Expect(1, "compare @plant.sdt --port simulated").err, "") << "no terminal, no bar";
    drawsProgress = true;
    Expect(0, "download @plant.sdt --port simulated --yes",
           {"Downloading Data, Please Standby...\n", "] 50 %, 2 s left", "] 100 %"});
}

} // namespace

} // namespace vantrel
