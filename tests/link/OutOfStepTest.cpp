// What makes a value or a mode begin anew: echoes that do not match, silences, gaps, a long rest.
#include "tests/link/LinkFixture.h"

namespace vantrel {
namespace {

TEST_F(LinkTest, AMismatchedEchoRepeatsAReadOrAWriteOnceAndQuietly) {
    GoOnline();
    const Script garbled = ReadFrames(0x00, 0x20, 0x01, 0);
    port.Expect(Joined({garbled, garbled}));
    EXPECT_EQ(Told("W32"), "doubtful");
    EXPECT_TRUE(port.script.empty()) << "what is doubtful is read once more";
    EXPECT_EQ(link.TargetMode(), 0);

    port.Expect({{0xFF, 0x55},
                 {0x02, 0x55},
                 {0x00, 0x00},
                 {0x28, 0x28},
                 {0x07, 0x08}, // first try
                 {0xFF, 0x55},
                 {0x02, 0x55},
                 {0x00, 0x00},
                 {0x28, 0x28},
                 {0x07, 0x07}});
    EXPECT_EQ(Write("B40", "7").outcome, WriteOutcome::Written);
    EXPECT_TRUE(port.script.empty());

    port.otherwise = 0x55;
    port.Expect({});
    EXPECT_EQ(Write("B40", "7").outcome, WriteOutcome::NotConfirmed);
    // Still in write mode: high byte; after the mismatch sync, mode and high byte once more, and then no more.
    EXPECT_EQ(port.sent, (std::vector<std::uint8_t>{0x00, 0xFF, 0x02, 0x00}));
    EXPECT_EQ(link.TargetMode(), 0);
    EXPECT_FALSE(link.LinkFailed());
    EXPECT_FALSE(link.Busy());
    port.Expect({{0xFF, 0x55}, {0x02, 0x55}, {0x00, 0x00}, {0x28, 0x28}, {0x09, 0x09}});
    EXPECT_EQ(Write("B40", "9").outcome, WriteOutcome::Written);
    EXPECT_EQ(port.sent.size(), 5U) << "an earlier mismatch makes no later write go out twice";
    EXPECT_TRUE(dialogs.shown.empty());
    EXPECT_EQ(port.unexpected, 0);
}

TEST_F(LinkTest, AValueWithASilenceInItBeginsAnew) {
    GoOnline();
    const Script silent{{0xFF, 0x55}, {0x01, 0x55}, {0x00, 0x00}, {0x28, Silence}, {0xFF, 0x55}};
    port.Expect(Joined({silent, silent}));
    EXPECT_EQ(Told("B40"), "doubtful: 85") << "the answers to repeated sync bytes are none";
    const Script write{{0xFF, 0x55}, {0x02, 0x55}, {0x00, 0x00}, {0x28, 0x28}};
    port.Expect(Joined({write, {{0x55, Silence}, {0xFF, 0x55}}, write, {{0x55, Silence}, {0xFF, 0x55}}}));
    EXPECT_EQ(Write("B40", "85").outcome, WriteOutcome::NotConfirmed);
    EXPECT_EQ(port.unexpected, 0);
    EXPECT_TRUE(port.script.empty());
}

TEST_F(LinkTest, NeitherAcknowledgementCountsFromARepeatedExchange) {
    GoOnline();
    // Whether the mode byte or the answer to it was lost, the 0x55 answers the sync byte.
    const Script read = ReadFrames(0x00, 0x28, 0x00, 0x05);
    port.Expect(Joined({{{0xFF, 0x55}, {0x01, Silence}, {0xFF, 0x55}}, read}));
    EXPECT_EQ(Told("B40"), "5");
    EXPECT_EQ(port.unexpected, 0);
    const Script write{{0xFF, 0x55}, {0x02, 0x55}, {0x00, 0x00}, {0x28, 0x28}, {0x07, 0x07}};
    port.Expect(Joined({{{0xFF, Silence}, {0xFF, 0x55}}, write}));
    EXPECT_EQ(Write("B40", "7").outcome, WriteOutcome::Written);
    EXPECT_EQ(port.unexpected, 0);
    // Silences that use up the two seconds leave one clean try before the box.
    port.Expect(Joined({{{0xFF, Silence}, {0xFF, Silence}, {0xFF, 0x55}}, read}));
    EXPECT_EQ(Told("B40"), "5");
    EXPECT_TRUE(dialogs.shown.empty());
    port.Expect({{0xFF, Silence}, {0xFF, Silence}, {0xFF, 0x55}, {0xFF, Silence}, {0xFF, 0x55}});
    EXPECT_EQ(Write("B40", "7").outcome, WriteOutcome::LinkFailed);
    EXPECT_EQ(Shown(), ModeWarning);
}

TEST_F(LinkTest, AGapInsideAValueMakesItBeginAnew) {
    GoOnline();
    const Script write{{0xFF, 0x55}, {0x02, 0x55}, {0x00, 0x00}, {0x28, 0x28}, {0x07, 0x07}};
    for (const std::size_t at : {std::size_t{3}, std::size_t{4}}) {
        SCOPED_TRACE(at);
        Close();
        GoOnline();
        port.pauseBefore = {at, std::chrono::milliseconds(60)};
        const Script first(write.begin(), write.begin() + static_cast<std::ptrdiff_t>(at) + 1);
        port.Expect(Joined({first, write}));
        const WriteResult result = Write("B40", "7");
        EXPECT_EQ(result.outcome, WriteOutcome::Written);
        EXPECT_TRUE(result.repeated);
        EXPECT_EQ(port.unexpected, 0);
        EXPECT_TRUE(port.script.empty());
    }
    Close();
    GoOnline();
    port.pauseBefore = {3, std::chrono::minutes(10)};
    const Script read = ReadFrames(0x00, 0x28, 0x00, 0x05);
    port.Expect(Joined({read, read}));
    EXPECT_EQ(Told("B40"), "5");
    EXPECT_TRUE(port.script.empty());
    // On a line that is slow throughout, slow is no gap.
    Close();
    port.answerTime = std::chrono::milliseconds(60);
    GoOnline();
    port.Expect(write);
    EXPECT_FALSE(Write("B40", "7").repeated);
    EXPECT_TRUE(port.script.empty());
}

TEST_F(LinkTest, AfterALongRestTheModeIsSetAnew) {
    GoOnline();
    const Script read = ReadFrames(0x00, 0x28, 0x00, 0x05);
    port.Expect(Joined({read, read}));
    EXPECT_EQ(Told("B40"), "5");
    clock.Advance(std::chrono::minutes(2));
    EXPECT_EQ(Told("B40"), "5");
    EXPECT_TRUE(port.script.empty());
    EXPECT_EQ(port.unexpected, 0);
}

TEST_F(LinkTest, ABitWhoseByteCannotBeReadIsNotWritten) {
    GoOnline();
    const Script garbled = ReadFrames(0x00, 0x69, 0x77, 0);
    port.Expect(Joined({garbled, garbled}));
    EXPECT_EQ(Write("B105.3", "1").outcome, WriteOutcome::NotConfirmed);
    EXPECT_TRUE(port.script.empty());
    EXPECT_EQ(std::count(port.sent.begin(), port.sent.end(), 0x02), 0) << "nothing was written";
    // The answers are one byte late: what looks like the byte is the echo before it. The second look tells the truth.
    port.surplusAfter = 4;
    port.Expect(Joined({ReadFrames(0x00, 0x69, 0x00, 0x00),
                        ReadFrames(0x00, 0x69, 0x00, 0xA0),
                        {{0xFF, 0x55}, {0x02, 0x55}, {0x00, 0x00}, {0x69, 0x69}, {0xA8, 0xA8}}}));
    EXPECT_EQ(Write("B105.3", "1").outcome, WriteOutcome::Written);
    EXPECT_EQ(port.unexpected, 0);
}

TEST_F(LinkTest, AGoodbyeThatComesSpoiledToABoardInWriteModeIsToldAsWell) {
    GoOnline();
    port.Expect({{0xFF, 0x55}, {0x02, 0x55}, {0x00, 0x00}, {0x21, 0x21}, {0x05, 0x05}, {0xFF, 0x7F}});
    EXPECT_TRUE(Write("B33", "5").Confirmed());
    Close();
    EXPECT_EQ(link.TakeMayHaveReached(), (std::vector<std::uint16_t>{0x7FFF, 0xFF7F}));
}

TEST_F(LinkTest, TheRepeatOfABitWriteSendsTheByteOfTheFirstGoodRead) {
    GoOnline();
    // The echo of the low byte is lost; the sync byte that asks again lands as data.
    port.Expect(Joined({ReadFrames(0x00, 0x21, 0x00, 0xFF),
                        {{0xFF, 0x55}, {0x02, 0x55}, {0x00, 0x00}, {0x21, Silence}, {0xFF, 0xFF}},
                        {{0xFF, 0x55}, {0x02, 0x55}, {0x00, 0x00}, {0x21, 0x21}, {0xDF, 0xDF}}}));
    const WriteResult result = Write("F13", "0");
    EXPECT_EQ(result.outcome, WriteOutcome::Written);
    EXPECT_TRUE(result.repeated);
    EXPECT_EQ(result.mayHaveReached, (std::vector<std::uint16_t>{0x00FF}));
    EXPECT_EQ(port.unexpected, 0);
    EXPECT_TRUE(port.script.empty());
}

} // namespace
} // namespace vantrel
