// The bytes on the wire, the times of silence and what is left after each failure.
#include "tests/link/LinkFixture.h"

namespace vantrel {
namespace {

TEST_F(LinkTest, AValueIsHighByteLowByteAndDataEachEchoed) {
    // The address, the value (none: it is read), the frames behind sync and mode, and what is told.
    const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
        {"W32", nullptr, "00 20>34 00 21>12", "4660"},
        {"B8176", nullptr, "1F F0>0A", "10"},
        {"B8176.3", nullptr, "1F F0>08", "1"},
        {"F13", nullptr, "00 21>DF", "0"},
        {"1F40h", nullptr, "1F 40>FF", "255"},
        {"d0", nullptr, "00 00>85 00 01>1A 00 02>39 00 03>30", "123456789"},
        {"W6400", " 1", "19 00 01 19 01 00", ""},
        {"W32", "1,000", "00 20 E8 00 21 03", ""},
        {"W32", "65535", "00 20 FF 00 21 FF", ""},
        {"B40", "12.5", "00 28 7D", ""},
        {"B40", "255", "00 28 FF", ""},
        {"B40", "20 %\xC2\xB0", "00 28 14", ""},
        {"D0", "123456789", "00 00 85 00 01 1A 00 02 39 00 03 30", ""},
        {"D0", "655359999", "00 00 0F 00 01 27 00 02 FF 00 03 FF", ""},
        // A bit write reads first and changes only its bit; each step has its own mode.
        {"B105.3", "1", "FF>55 01>55 00 69>A1 FF>55 02>55 00 69 A9", ""},
        {"F584", "0", "FF>55 01>55 00 69>A9 FF>55 02>55 00 69 A8", ""},
    };
    GoOnline();
    for (const auto& [address, value, frames, told] : cases) {
        SCOPED_TRACE(address + std::string(" ") + frames);
        const int mode = value ? 2 : 1;
        const bool own = link.TargetMode() == mode || std::string(frames).starts_with("FF");
        Expect((own ? "" : "FF>55 0" + std::to_string(mode) + ">55 ") + frames);
        if (value) {
            EXPECT_EQ(Write(address, value).outcome, WriteOutcome::Written);
        } else {
            EXPECT_EQ(Told(address), told);
        }
        EXPECT_TRUE(AsExpected());
        EXPECT_EQ(link.TargetMode(), mode);
    }
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(LinkTest, ValuesThatCannotBeWrittenAreRefusedAndSendNothing) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"W32", "-5", "Only Numerical Data Allowed."},
        {"W32", "1e3", "Only Numerical Data Allowed."},
        {"B105.3", "2", "Enter 0 or 1 Only."},
        {"B40", "256", "Entry out of Range (0-255)."},
        {"W32", "65536", "Entry out of Range (0-65,535)."},
        {"D0", "655360000", "Entry out of Range (0-655,359,999)."},
        {"D0", "18446744073709551616", "Entry out of Range (0-655,359,999)."},
    };
    GoOnline();
    Expect("FF>55 01>55 00 20>07 00 21>00");
    EXPECT_EQ(Told("W32"), "7");
    Expect("");
    for (const auto& [address, value, text] : cases) {
        dialogs.shown.clear();
        EXPECT_EQ(Write(address, value).outcome, WriteOutcome::Refused);
        EXPECT_EQ(Shown(), "ENTRY ALERT|Error:\n" + std::string(text)) << address << value;
    }
    EXPECT_EQ(Write("", "1").outcome, WriteOutcome::Refused);
    EXPECT_EQ(dialogs.shown.size(), 1U);
    EXPECT_TRUE(port.sent.empty());
    // The address read last is still the one that is remembered, and the board still in read mode.
    Expect("00 20>08 00 21>00");
    EXPECT_EQ(Told("w32"), "8");
    EXPECT_TRUE(AsExpected());
}

TEST_F(LinkTest, ASilentBoardIsAskedThreeTimesInFiveSecondsBeforeTheWarning) {
    GoOnline();
    const double start = Seconds();
    Expect("FF>55 01>55 19>--");
    dialogs.whileShown = [&](const MessageBox& box) {
        EXPECT_EQ(box.icon, MessageIcon::Critical);
        EXPECT_EQ(box.buttons, MessageButtons::RetryCancel);
        EXPECT_TRUE(link.Busy());
        EXPECT_NEAR(Seconds() - start, 5.0, 0.01);
    };
    EXPECT_EQ(Told("W6400"), "failed");
    EXPECT_EQ(Shown(), CableWarning);
    // What repeats an unanswered exchange is the sync byte, never the byte first sent.
    EXPECT_EQ(port.sent, (Bytes{0xFF, 0x01, 0x19, 0xFF, 0xFF}));
    EXPECT_TRUE(link.LinkFailed() && link.OnlineMode());
    EXPECT_EQ(link.TargetMode(), 0);

    Expect("");
    const double cancelled = Seconds();
    EXPECT_EQ(Told("W6400"), "failed");
    EXPECT_EQ(Write("W6400", "1").outcome, WriteOutcome::LinkFailed);
    Close();
    EXPECT_TRUE(port.sent.empty());
    EXPECT_EQ(Seconds(), cancelled);
    EXPECT_EQ(dialogs.shown.size(), 1U);
}

TEST_F(LinkTest, RetryAllowsThreeMoreAttemptsAndClearsTheFailure) {
    GoOnline();
    dialogs.answers = {MessageAnswer::Retry};
    // The board answers the second of the attempts that the retry allows; then the value is read once more.
    Expect("FF>55 01>55 00>-- FF>-- FF>-- FF>-- FF>00 FF>55 01>55 00 28>2A");
    EXPECT_EQ(Told("B40"), "42");

    // An answer that came while the box was up is taken, and nothing is sent again.
    dialogs.answers = {MessageAnswer::Retry};
    dialogs.whileShown = [&](const MessageBox&) { port.PutReceived(0x00); };
    Expect("00>-- FF>-- FF>-- FF>55 01>55 00 28>07");
    EXPECT_EQ(Told("B40"), "7");
    EXPECT_TRUE(AsExpected());
    dialogs.whileShown = nullptr;

    dialogs.shown.clear();
    dialogs.answers = {MessageAnswer::Retry, MessageAnswer::Cancel};
    const double start = Seconds();
    Expect("");
    EXPECT_EQ(Told("B40"), "failed");
    EXPECT_EQ(dialogs.shown.size(), 2U);
    // Three attempts, then the wait that was already running when the box came up, then two more.
    EXPECT_EQ(port.sent.size(), 5U);
    EXPECT_NEAR(Seconds() - start, 5.0 + 6.0, 0.01);
}

TEST_F(LinkTest, ABoardThatNeverAcknowledgesBringsTheModeWarningAfterTwoSeconds) {
    GoOnline();
    port.otherwise = 0x00;
    const double start = Seconds();
    std::vector<double> asked;
    dialogs.whileShown = [&](const MessageBox&) { asked.push_back(Seconds() - start); };
    dialogs.answers = {MessageAnswer::Retry, MessageAnswer::Cancel};
    EXPECT_EQ(Write("W32", "1").outcome, WriteOutcome::LinkFailed);
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_NEAR(asked[0], 2.0, 0.01);
    EXPECT_NEAR(asked[1], 4.0, 0.02);
    EXPECT_EQ(Shown(), ModeWarning);
    EXPECT_TRUE(link.LinkFailed());
    EXPECT_FALSE(link.OnlineMode() || port.IsOpen());
    EXPECT_EQ(port.sent, Bytes(port.sent.size(), 0xFF));
}

TEST_F(LinkTest, WhatLiesInTheReceiverIsTracedAndNeverTakenForAnAnswer) {
    GoOnline();
    std::ostringstream text;
    TextTrafficLog log(text);
    link.SetTrafficLog(&log);
    port.PutReceived(0x12);
    Expect("FF>55 02>55 00>--");
    EXPECT_EQ(Write("B40", "1").outcome, WriteOutcome::LinkFailed);
    EXPECT_EQ(text.str(), "# seconds  sent  received\n"
                          " 0.000000  --  12\n"
                          " 0.000000  FF  55\n"
                          " 0.001000  02  55\n"
                          " 0.002000  00  --\n"
                          " 1.002000  FF  --\n"
                          " 3.002000  FF  --\n");
}

TEST_F(LinkTest, ALostPortWarnsOnceAndRetryOpensItAgain) {
    GoOnline();
    const double start = Seconds();
    port.lostAfter = 3;
    dialogs.answers = {MessageAnswer::Retry};
    dialogs.whileShown = [&](const MessageBox&) {
        port.lostAfter.reset();
        port.noiseAtOpen = 0x42;
        port.script = Frames("FF>00 FF>55 01>55 00 28>05");
    };
    Expect("FF>55 01>55");
    EXPECT_EQ(Told("B40"), "5");
    EXPECT_TRUE(AsExpected()) << "the noise that the adapter brings along is no answer";
    EXPECT_EQ(Shown(), CableWarning);
    EXPECT_NEAR(Seconds() - start, 0.05, 0.02) << "a line that has gone is not waited for";

    dialogs.answers = {MessageAnswer::Retry};
    dialogs.shown.clear();
    dialogs.whileShown = nullptr;
    port.openError.emplace(ErrorNumber::FileNotFound, "gone");
    Expect("");
    port.lostAfter = 1;
    EXPECT_EQ(link.Reopened(), 1);
    EXPECT_EQ(Told("B40"), "failed");
    ASSERT_EQ(dialogs.shown.size(), 2U) << "a retry that cannot open the port counts as Cancel";
    EXPECT_EQ(Shown(1), "Comm Port Error|Error Number = 53\nError Source = VANTREL\n\ngone") << "and says why";
    EXPECT_TRUE(link.LinkFailed());
}

// What makes a value or a mode begin anew: echoes that do not match, silences, gaps, a long rest.

const std::string Read40 = "FF>55 01>55 00 28>05 ";
const std::string Write40 = "FF>55 02>55 00 28 07 ";

TEST_F(LinkTest, AMismatchedEchoRepeatsAWriteOnceAndNoLaterOne) {
    GoOnline();
    Expect("FF>55 01>55");
    EXPECT_EQ(Told(""), "doubtful");
    EXPECT_TRUE(AsExpected()) << "of no address nothing is asked, and the next value begins anew";
    Expect("FF>55 02>55 00>01 FF>55 02>55 00>01 FF>55 02>55 00 28 09");
    EXPECT_EQ(Write("B40", "7").outcome, WriteOutcome::NotConfirmed);
    EXPECT_EQ(link.TargetMode(), 0);
    EXPECT_EQ(Write("B40", "9").outcome, WriteOutcome::Written);
    EXPECT_TRUE(AsExpected());
}

TEST_F(LinkTest, AnAcknowledgementThatIsMissingOrOfARepeatedExchangeStartsOverWithSync) {
    GoOnline();
    Expect("FF>12 FF>55 01>00 " + Read40);
    EXPECT_EQ(Told("B40"), "5");
    clock.Advance(std::chrono::minutes(2));
    // Whether the mode byte or the answer to it was lost, the 0x55 answers the sync byte.
    Expect("FF>55 01>-- FF>55 " + Read40);
    EXPECT_EQ(Told("B40"), "5") << "after a long rest the mode is set anew";
    EXPECT_TRUE(dialogs.shown.empty());
    // Silences that use up the two seconds leave one clean try before the box.
    Expect("FF>-- FF>-- FF>55 FF>-- FF>55");
    EXPECT_EQ(Write("B40", "7").outcome, WriteOutcome::LinkFailed);
    EXPECT_EQ(Shown(), ModeWarning);
    EXPECT_TRUE(AsExpected());
}

TEST_F(LinkTest, AGapInsideAValueIsNoneWhereTheLineIsSlowThroughout) {
    port.answerTime = std::chrono::milliseconds(60);
    GoOnline();
    Expect(Write40);
    EXPECT_FALSE(Write("B40", "7").repeated);
    EXPECT_TRUE(AsExpected());
}

TEST_F(LinkTest, AGoodbyeThatComesSpoiledToABoardInWriteModeIsToldAsWell) {
    GoOnline();
    Expect("FF>55 02>55 00 21 05 FF>7F");
    EXPECT_TRUE(Write("B33", "5").Confirmed());
    Close();
    EXPECT_EQ(link.TakeMayHaveReached(), (std::vector<std::uint16_t>{0x7FFF, 0xFF7F}));
}

} // namespace
} // namespace vantrel
