// The bytes on the wire, the times of silence and what is left after each failure.
#include "tests/link/LinkFixture.h"

#include <sstream>

namespace vantrel {
namespace {

struct ReadCase {
    const char* address;
    Script frames; ///< Behind sync and mode.
    const char* value;
};

TEST_F(LinkTest, AReadIsHighByteEchoedThenLowByteAnsweredByTheData) {
    const ReadCase cases[] = {
        {"W32", {{0x00, 0x00}, {0x20, 0x34}, {0x00, 0x00}, {0x21, 0x12}}, "4660"},
        {"B8176", {{0x1F, 0x1F}, {0xF0, 0x0A}}, "10"},
        {"B8176.3", {{0x1F, 0x1F}, {0xF0, 0x08}}, "1"},
        {"F13", {{0x00, 0x00}, {0x21, 0xDF}}, "0"},
        {"1F40h", {{0x1F, 0x1F}, {0x40, 0xFF}}, "255"},
        {"d0",
         {{0x00, 0x00},
          {0x00, 0x85},
          {0x00, 0x00},
          {0x01, 0x1A},
          {0x00, 0x00},
          {0x02, 0x39},
          {0x00, 0x00},
          {0x03, 0x30}},
         "123456789"},
    };
    GoOnline();
    for (const ReadCase& one : cases) {
        SCOPED_TRACE(one.address);
        port.Expect(one.frames);
        if (link.TargetMode() != 1) PutInMode(1);
        EXPECT_EQ(Told(one.address), one.value);
        EXPECT_EQ(port.unexpected, 0);
        EXPECT_TRUE(port.script.empty());
        EXPECT_EQ(link.TargetMode(), 1);
    }
    EXPECT_TRUE(dialogs.shown.empty());
}

struct WriteCase {
    const char* address;
    const char* value;
    std::vector<std::uint8_t> bytes; ///< Behind sync and mode, each echoed.
};

TEST_F(LinkTest, AWriteIsHighByteLowByteDataEachEchoed) {
    const WriteCase cases[] = {
        {"W6400", " 1", {0x19, 0x00, 0x01, 0x19, 0x01, 0x00}},
        {"W32", "1,000", {0x00, 0x20, 0xE8, 0x00, 0x21, 0x03}},
        {"B40", "12.5", {0x00, 0x28, 0x7D}},
        {"B40", "20 %\xC2\xB0", {0x00, 0x28, 0x14}},
        {"D0", "123456789", {0x00, 0x00, 0x85, 0x00, 0x01, 0x1A, 0x00, 0x02, 0x39, 0x00, 0x03, 0x30}},
        {"D0", "655359999", {0x00, 0x00, 0x0F, 0x00, 0x01, 0x27, 0x00, 0x02, 0xFF, 0x00, 0x03, 0xFF}},
    };
    GoOnline();
    for (const WriteCase& one : cases) {
        SCOPED_TRACE(std::string(one.address) + " = " + one.value);
        port.Expect({});
        for (const std::uint8_t byte : one.bytes)
            port.script.push_back({byte, byte});
        if (link.TargetMode() != 2) PutInMode(2);
        EXPECT_EQ(Write(one.address, one.value).outcome, WriteOutcome::Written);
        EXPECT_EQ(port.unexpected, 0);
        EXPECT_TRUE(port.script.empty());
        EXPECT_EQ(link.TargetMode(), 2);
    }
}

TEST_F(LinkTest, ABitWriteReadsFirstAndChangesOnlyItsBit) {
    GoOnline();
    struct Case {
        const char* address;
        const char* value;
        std::uint8_t before;
        std::uint8_t after;
    };
    for (const Case& one : {Case{"B105.3", "1", 0xA1, 0xA9}, Case{"F584", "0", 0xA9, 0xA8}}) {
        SCOPED_TRACE(one.address);
        const std::uint8_t after = one.after;
        port.Expect({{0xFF, 0x55},
                     {0x01, 0x55},
                     {0x00, 0x00},
                     {0x69, one.before},
                     {0xFF, 0x55},
                     {0x02, 0x55},
                     {0x00, 0x00},
                     {0x69, 0x69},
                     {after, after}});
        EXPECT_EQ(Write(one.address, one.value).outcome, WriteOutcome::Written);
        EXPECT_EQ(port.unexpected, 0);
        EXPECT_TRUE(port.script.empty());
    }
    port.Expect({});
    port.otherwise = 0x00;
    EXPECT_EQ(Write("B105.3", "2").outcome, WriteOutcome::Refused);
    EXPECT_EQ(Shown(), "ENTRY ALERT|Error:\nEnter 0 or 1 Only.");
    EXPECT_TRUE(port.sent.empty());
}

TEST_F(LinkTest, ValuesThatCannotBeWrittenAreRefusedAndSendNothing) {
    struct Case {
        const char* address;
        const char* value;
        const char* text;
        MessageIcon icon;
    };
    const Case cases[] = {
        {"W32", "-5", "Only Numerical Data Allowed.", MessageIcon::Exclamation},
        {"W32", "1e3", "Only Numerical Data Allowed.", MessageIcon::Exclamation},
        {"B40", "256", "Entry out of Range (0-255).", MessageIcon::Critical},
        {"W32", "65536", "Entry out of Range (0-65,535).", MessageIcon::Critical},
        {"D0", "655360000", "Entry out of Range (0-655,359,999).", MessageIcon::Critical},
        {"D0", "18446744073709551616", "Entry out of Range (0-655,359,999).", MessageIcon::Critical},
    };
    GoOnline();
    port.Expect({{0xFF, 0x55}, {0x01, 0x55}, {0x00, 0x00}, {0x20, 0x07}, {0x00, 0x00}, {0x21, 0x00}});
    EXPECT_EQ(Told("W32"), "7");
    port.Expect({});
    for (const Case& one : cases) {
        SCOPED_TRACE(std::string(one.address) + " = " + one.value);
        dialogs.shown.clear();
        EXPECT_EQ(Write(one.address, one.value).outcome, WriteOutcome::Refused);
        ASSERT_EQ(dialogs.shown.size(), 1U);
        EXPECT_EQ(Shown(), "ENTRY ALERT|Error:\n" + std::string(one.text));
        EXPECT_EQ(dialogs.shown[0].icon, one.icon);
    }
    EXPECT_EQ(Write("", "1").outcome, WriteOutcome::Refused);
    EXPECT_EQ(dialogs.shown.size(), 1U);
    EXPECT_TRUE(port.sent.empty());
    // The address read last is still the one that is remembered, and the board still in read mode.
    port.Expect({{0x00, 0x00}, {0x20, 0x08}, {0x00, 0x00}, {0x21, 0x00}});
    EXPECT_EQ(Told("w32"), "8");
    EXPECT_EQ(port.unexpected, 0);
}

TEST_F(LinkTest, ASilentBoardIsAskedThreeTimesInFiveSecondsBeforeTheWarning) {
    GoOnline();
    const double start = Seconds();
    port.Expect({{0xFF, 0x55}, {0x01, 0x55}, {0x19, Silence}});
    dialogs.whileShown = [&](const MessageBox& box) {
        EXPECT_EQ(box.icon, MessageIcon::Critical);
        EXPECT_EQ(box.buttons, MessageButtons::RetryCancel);
        EXPECT_TRUE(link.Busy());
        EXPECT_NEAR(Seconds() - start, 5.0, 0.01);
    };
    EXPECT_EQ(Told("W6400"), "failed");
    ASSERT_EQ(dialogs.shown.size(), 1U);
    EXPECT_EQ(Shown(), CableWarning);
    // What repeats an unanswered exchange is the sync byte, never the byte first sent.
    EXPECT_EQ(port.sent, (std::vector<std::uint8_t>{0xFF, 0x01, 0x19, 0xFF, 0xFF}));
    EXPECT_TRUE(link.LinkFailed());
    EXPECT_TRUE(link.OnlineMode());
    EXPECT_EQ(link.TargetMode(), 0);

    port.Expect({});
    const double cancelled = Seconds();
    EXPECT_EQ(Told("W6400"), "failed");
    EXPECT_EQ(Write("W6400", "1").outcome, WriteOutcome::LinkFailed);
    Close();
    EXPECT_TRUE(port.sent.empty());
    EXPECT_EQ(Seconds(), cancelled);
    EXPECT_EQ(dialogs.shown.size(), 1U);
    EXPECT_FALSE(port.IsOpen());

    dialogs.whileShown = nullptr;
    port.otherwise = std::nullopt;
    GoOnline();
    EXPECT_FALSE(link.LinkFailed());
}

TEST_F(LinkTest, RetryAllowsThreeMoreAttemptsAndClearsTheFailure) {
    GoOnline();
    dialogs.answers = {MessageAnswer::Retry};
    // The board answers the second of the attempts that the retry allows; then the value is read once more.
    port.Expect(Joined(
        {{{0xFF, 0x55}, {0x01, 0x55}, {0x00, Silence}, {0xFF, Silence}, {0xFF, Silence}, {0xFF, Silence}, {0xFF, 0x00}},
         ReadFrames(0x00, 0x28, 0x00, 0x2A)}));
    EXPECT_EQ(Told("B40"), "42");
    EXPECT_FALSE(link.LinkFailed());
    EXPECT_EQ(dialogs.shown.size(), 1U);

    // An answer that came while the box was up is taken, and nothing is sent again.
    dialogs.answers = {MessageAnswer::Retry};
    dialogs.whileShown = [&](const MessageBox&) { port.PutReceived(0x00); };
    port.Expect(Joined({{{0x00, Silence}, {0xFF, Silence}, {0xFF, Silence}}, ReadFrames(0x00, 0x28, 0x00, 0x07)}));
    EXPECT_EQ(Told("B40"), "7");
    EXPECT_FALSE(link.LinkFailed());
    EXPECT_EQ(port.unexpected, 0);
    dialogs.whileShown = nullptr;

    GoOnline();
    dialogs.shown.clear();
    dialogs.answers = {MessageAnswer::Retry, MessageAnswer::Cancel};
    const double start = Seconds();
    port.Expect({});
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
    EXPECT_FALSE(link.OnlineMode());
    EXPECT_FALSE(port.IsOpen());
    EXPECT_EQ(std::count(port.sent.begin(), port.sent.end(), 0xFF), static_cast<std::ptrdiff_t>(port.sent.size()));
}

TEST_F(LinkTest, AModeByteThatIsNotAcknowledgedStartsOverWithSync) {
    GoOnline();
    port.Expect({{0xFF, 0x12}, {0xFF, 0x55}, {0x01, 0x00}, {0xFF, 0x55}, {0x01, 0x55}, {0x00, 0x00}, {0x28, 0x05}});
    EXPECT_EQ(Told("B40"), "5");
    EXPECT_EQ(port.unexpected, 0);
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(LinkTest, WhatLiesInTheReceiverIsNeverTakenForAnAnswer) {
    GoOnline();
    std::ostringstream text;
    TextTrafficLog log(text);
    link.SetTrafficLog(&log);
    port.PutReceived(0x12);
    port.Expect({{0xFF, 0x55}, {0x01, 0x55}, {0x00, 0x00}, {0x28, 0x05}});
    EXPECT_EQ(Told("B40"), "5");
    EXPECT_EQ(port.unexpected, 0);
    EXPECT_NE(text.str().find("  --  12\n"), std::string::npos) << "what is thrown away is traced";
    link.SetTrafficLog(nullptr);

    // An adapter that was plugged in again brings noise along.
    dialogs.answers = {MessageAnswer::Retry};
    dialogs.whileShown = [&](const MessageBox&) {
        port.lostAfter.reset();
        port.noiseAtOpen = 0x42;
        port.script = {{0xFF, 0x00}, {0xFF, 0x55}, {0x01, 0x55}, {0x00, 0x00}, {0x28, 0x05}};
    };
    port.lostAfter = 1;
    port.Expect({});
    EXPECT_EQ(Told("B40"), "5") << "read anew behind the answer to a repeated sync byte";
    EXPECT_EQ(port.unexpected, 0);
}

TEST_F(LinkTest, AnEmptyAddressReadsAsEmptyAndTheNextReadIsInOrderAgain) {
    GoOnline();
    port.Expect({{0xFF, 0x55}, {0x01, 0x55}, {0xFF, 0x55}, {0x01, 0x55}, {0x00, 0x00}, {0x28, 0x05}});
    EXPECT_EQ(Told(""), "doubtful");
    EXPECT_EQ(Told("B40"), "5");
    EXPECT_EQ(port.unexpected, 0);
}

TEST_F(LinkTest, ALostPortWarnsOnceAndRetryOpensItAgain) {
    GoOnline();
    const double start = Seconds();
    port.lostAfter = 3;
    dialogs.answers = {MessageAnswer::Retry};
    dialogs.whileShown = [&](const MessageBox&) {
        port.lostAfter.reset();
        port.script = {{0xFF, 0x00}, {0xFF, 0x55}, {0x01, 0x55}, {0x00, 0x00}, {0x28, 0x05}};
    };
    port.Expect({{0xFF, 0x55}, {0x01, 0x55}});
    EXPECT_EQ(Told("B40"), "5");
    EXPECT_EQ(dialogs.shown.size(), 1U);
    EXPECT_EQ(Shown(), CableWarning);
    EXPECT_EQ(port.opened, 2);
    EXPECT_NEAR(Seconds() - start, 0.05, 0.02) << "a line that has gone is not waited for";

    dialogs.answers = {MessageAnswer::Retry};
    dialogs.shown.clear();
    dialogs.whileShown = nullptr;
    port.openError.emplace(ErrorNumber::FileNotFound, "gone");
    port.Expect({});
    port.lostAfter = 1;
    EXPECT_EQ(link.Reopened(), 1);
    EXPECT_EQ(Told("B40"), "failed");
    ASSERT_EQ(dialogs.shown.size(), 2U) << "a retry that cannot open the port counts as Cancel";
    EXPECT_EQ(Shown(1), "Comm Port Error|Error Number = 53\nError Source = VANTREL\n\ngone") << "and says why";
    EXPECT_TRUE(link.LinkFailed());
}

TEST_F(LinkTest, EveryByteIsToldToTheTrafficLog) {
    GoOnline();
    std::ostringstream text;
    TextTrafficLog log(text);
    link.SetTrafficLog(&log);
    port.Expect({{0xFF, 0x55}, {0x02, 0x55}, {0x00, Silence}, {0xFF, Silence}});
    dialogs.answers = {MessageAnswer::Cancel};
    EXPECT_EQ(Write("B40", "1").outcome, WriteOutcome::LinkFailed);
    EXPECT_EQ(text.str(), "# seconds  sent  received\n"
                          " 0.000000  FF  55\n"
                          " 0.001000  02  55\n"
                          " 0.002000  00  --\n"
                          " 1.002000  FF  --\n"
                          " 3.002000  FF  --\n");
}

} // namespace
} // namespace vantrel
