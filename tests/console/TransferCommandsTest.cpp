// Transfers: what reaches the board or the file, and what the user is told when it does not.
#include "document/ValueDisplay.h"
#include "tests/console/ConsoleFixture.h"

namespace vantrel {

namespace {

constexpr std::uint16_t WriteThrough = 105;

TEST_F(ConsoleTest, WhatIsDownloadedComparesEqualAndComesBackByUpload) {
    const std::string file = Imported("plant.sdt", TwoSequences);
    const Ended sent = Run({"download", file, "--port", "simulated", "--yes", "--verify"});
    EXPECT_EQ(sent.code, 0) << sent.err;
    EXPECT_NE(sent.out.find("All 218 values"), std::string::npos) << sent.out;
    EXPECT_EQ(board.PeekWord(6400), 100);
    EXPECT_EQ(board.PeekWord(16896), 3);
    EXPECT_EQ(board.Peek(WriteThrough), 0);

    EXPECT_EQ(Run({"compare", file, "--port", "simulated"}).code, 0);
    const Ended fetched = Run({"upload", File("fetched"), "--port", "simulated", "--yes"});
    EXPECT_EQ(fetched.code, 0) << fetched.err;
    EXPECT_EQ(fetched.out, File("fetched.sdt") + "\n");
    EXPECT_NE(fetched.err.find("Uploaded the test's board to \"" + File("fetched.sdt") + "\": 218 values"),
              std::string::npos)
        << fetched.err;
    EXPECT_EQ(RecordOf(File("fetched.sdt")).Values, RecordOf(file).Values);
    EXPECT_EQ(RecordOf(File("fetched.sdt")).NodeDescription(0), "") << "descriptions are not on the board";
}

TEST_F(ConsoleTest, AnUploadIntoAnExistingFileKeepsItsDescriptionsAndNotations) {
    const std::string file = Imported("plant.sdt", TwoSequences);
    EXPECT_EQ(Run({"upload", File("plant"), "--port", "simulated"}, "y\nn\n").code, 1) << "two questions";
    EXPECT_EQ(RecordOf(file).Value(StatusStackIndex), 100);
    EXPECT_EQ(Run({"upload", File("plant"), "--port", "simulated"}, "y\ny\n").code, 0);
    EXPECT_EQ(RecordOf(file).Value(StatusStackIndex), 1);
    EXPECT_EQ(RecordOf(file).NodeDescription(1), "Second");
    EXPECT_EQ(RecordOf(file).AddressType(ValueIndex(1, SequenceField::SendToNode)), "H");
}

TEST_F(ConsoleTest, EveryDifferenceIsNamedWithBothValues) {
    const std::string file = Imported("plant.sdt", TwoSequences);
    ASSERT_EQ(Run({"download", file, "--port", "simulated", "--yes"}).code, 0);
    EXPECT_EQ(Run({"write", "W16384", "7", "--port", "simulated"}).out, "W16384 7\n");
    EXPECT_EQ(Run({"write", "W6400", "1,000", "--port", "simulated"}).out, "W6400 1000\n");
    const Ended compared = Run({"compare", file, "--port", "simulated"});
    EXPECT_EQ(compared.code, 1);
    EXPECT_TRUE(compared.out.starts_with("status stack address: file 100, board 1000\n"
                                         "sequence 0, NodeNumber: file 2, board 7\n"
                                         "2 of 218 values differ"))
        << compared.out;
    EXPECT_EQ(Run({"read", "W16384", "B8176.0", "--port", "simulated"}).out, "W16384 7\nB8176.0 0\n");
}

TEST_F(ConsoleTest, WithoutATerminalAndWithoutYesNothingIsSent) {
    const std::string file = Imported("plant.sdt", TwoSequences);
    const Ended refused = Run({"download", file, "--port", "simulated"});
    EXPECT_EQ(refused.code, 1);
    EXPECT_NE(refused.err.find("Data Download: You are about to Download Data to the PLC"), std::string::npos);
    EXPECT_NE(refused.err.find("\"" + file + "\" to the test's board"), std::string::npos) << refused.err;
    EXPECT_NE(refused.err.find("--yes"), std::string::npos);
    EXPECT_EQ(Run({"upload", File("new.sdt"), "--port", "simulated"}).code, 1);
    EXPECT_FALSE(std::filesystem::exists(File("new.sdt")));
    EXPECT_TRUE(NothingWasSent());
}

TEST_F(ConsoleTest, AFileOfAnotherVersionIsSentOnlyWhenTheUserAcceptsIt) {
    const std::string file = Imported("plant.sdt", TwoSequences);
    Configuration record = RecordOf(file);
    record.CreatorVersion = "VANTREL_R0.0.1";
    WriteRecord(file, record);
    const Ended refused = Run({"download", file, "--port", "simulated"}, "n\n");
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(NothingWasSent());
    EXPECT_NE(refused.err.find("ANCNF: File created by set-up program version: VANTREL_R0.0.1"), std::string::npos);
    EXPECT_EQ(CountOf(refused.err, "[y/n"), 1U) << "the transfer is not asked about any more";
    EXPECT_EQ(Run({"download", file, "--port", "simulated"}, "y\ny\n").code, 0);
    EXPECT_EQ(Run({"show", file}).code, 0) << "looking at it needs no consent";
    const Ended compared = Run({"compare", file, "--port", "simulated"});
    EXPECT_EQ(compared.code, 0) << "nor does comparing it";
    EXPECT_NE(compared.err.find("Note: "), std::string::npos);
}

TEST_F(ConsoleTest, ValuesThatTheBoardDoesNotConfirmAreNamed) {
    Configuration record = RecordOf(Imported("plant.sdt", TwoSequences));
    record.SetValue(ValueIndex(3, SequenceField::SendToNode), -5);
    WriteRecord(File("plant.sdt"), record);
    const Ended sent = Run({"download", File("plant.sdt"), "--port", "simulated", "--yes"});
    EXPECT_EQ(sent.code, 1);
    EXPECT_NE(sent.err.find("Warning: sequence 3, SendToNode is -5, which the board cannot hold"), std::string::npos);
    EXPECT_NE(sent.err.find("\nsequence 3, SendToNode: not confirmed by the board\n1 of 218 values"), std::string::npos)
        << sent.err;
    EXPECT_EQ(board.PeekWord(31756), 1) << "the others arrived";
}

TEST_F(ConsoleTest, ATraceReplacesOnlyATraceUnasked) {
    const std::string trace = File("trace.txt");
    const std::vector<std::string> command{"read", "W6400", "--port", "simulated", "--trace", trace};
    WriteText(trace, "precious\n");
    EXPECT_EQ(Run(command).code, 1);
    EXPECT_EQ(TextOf(trace), "precious\n");
    EXPECT_TRUE(NothingWasSent());
    EXPECT_EQ(Run(command, "y\n").code, 0);
    const std::string first = TextOf(trace);
    EXPECT_EQ(Run(command).code, 0);
    EXPECT_EQ(CountOf(TextOf(trace), "\n"), CountOf(first, "\n"));
    if (!std::filesystem::exists("/dev/full")) return;
    const Ended full = Run({"read", "W6400", "--port", "simulated", "--trace", "/dev/full"});
    EXPECT_EQ(full.code, 4);
    EXPECT_NE(full.err.find("The trace \"/dev/full\" cannot be written: No space left"), std::string::npos) << full.err;
    EXPECT_EQ(full.out, "W6400 1\n");
}

TEST_F(ConsoleTest, TheTraceHoldsEveryExchange) {
    EXPECT_EQ(Run({"read", "W6400", "--port", "simulated", "--trace", File("trace.txt")}).code, 0);
    const std::string trace = TextOf(File("trace.txt"));
    // Probe, sync, mode, two exchanges a byte, goodbye.
    EXPECT_EQ(CountOf(trace, "\n") - CountOf(trace, "#"), 3U + 4U + 1U) << trace;
    EXPECT_NE(trace.find("  19  19"), std::string::npos) << "high byte of 6400\n" << trace;
}

TEST_F(ConsoleTest, OnATerminalABarShowsHowFarItIsAndHowLongItTakes) {
    const std::string file = Imported("plant.sdt", TwoSequences);
    EXPECT_EQ(Run({"compare", file, "--port", "simulated"}).err, "") << "no terminal, no bar";
    drawsProgress = true;
    const Ended sent = Run({"download", file, "--port", "simulated", "--yes"});
    EXPECT_NE(sent.err.find("Downloading Data, Please Standby...\n"), std::string::npos);
    EXPECT_NE(sent.err.find("] 50 %, 2 s left"), std::string::npos) << sent.err;
    EXPECT_NE(sent.err.find("] 100 %"), std::string::npos);
}

TEST(ValueDisplay, ReadsInItsNotation) {
    EXPECT_EQ(DisplayValue(34463, "V"), "V34463");
    EXPECT_EQ(DisplayValue(8174, "W"), "W8174");
    EXPECT_EQ(DisplayValue(416, "H"), "1A0H");
    EXPECT_EQ(DisplayValue(-1, "h"), "FFFFFFFFH");
    EXPECT_EQ(DisplayValue(-7, "#"), "-7");
    Configuration record = DefaultRecord("", {});
    record.SetAddressType(ValueIndex(0, SequenceField::SendToNode), "x");
    EXPECT_EQ(DisplayValue(record, ValueIndex(0, SequenceField::SendToNode)), "W32");
    record.SetAddressType(ValueIndex(0, SequenceField::SendFromTI), "H");
    EXPECT_EQ(DisplayValue(record, ValueIndex(0, SequenceField::SendFromTI)), "V1");
}

} // namespace

} // namespace vantrel
