// What makes a value or a mode begin anew: echoes that do not match, silences, gaps, a long rest.
#include "tests/link/LinkFixture.h"

namespace vantrel {
namespace {

const std::string Read40 = "FF>55 01>55 00 28>05 ";
const std::string Write40 = "FF>55 02>55 00 28 07 ";

TEST_F(LinkTest, AMismatchedEchoRepeatsAReadOrAWriteOnceAndQuietly) {
    GoOnline();
    Expect("FF>55 01>55 00>01 FF>55 01>55 00>01");
    EXPECT_EQ(Told("W32"), "doubtful");
    EXPECT_EQ(link.TargetMode(), 0);
    EXPECT_TRUE(AsExpected()) << "what is doubtful is read once more";
    Expect("FF>55 02>55 00>01 FF>55 02>55 00>01");
    EXPECT_EQ(Write("B40", "7").outcome, WriteOutcome::NotConfirmed);
    EXPECT_EQ(link.TargetMode(), 0);
    EXPECT_FALSE(link.LinkFailed() || link.Busy());
    Expect("FF>55 02>55 00 28 09");
    EXPECT_EQ(Write("B40", "9").outcome, WriteOutcome::Written);
    EXPECT_TRUE(AsExpected()) << "an earlier mismatch makes no later write go out twice";
    EXPECT_TRUE(dialogs.shown.empty());
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

TEST_F(LinkTest, AGapInsideAValueMakesItBeginAnewUnlessTheLineIsSlowThroughout) {
    GoOnline();
    port.pauseBefore = {4, std::chrono::milliseconds(60)};
    Expect(Write40 + Write40);
    const WriteResult result = Write("B40", "7");
    EXPECT_TRUE(result.outcome == WriteOutcome::Written && result.repeated);
    EXPECT_TRUE(AsExpected());
    Close();
    port.answerTime = std::chrono::milliseconds(60);
    GoOnline();
    Expect(Write40);
    EXPECT_FALSE(Write("B40", "7").repeated);
    EXPECT_TRUE(AsExpected());
}

TEST_F(LinkTest, TheRepeatOfABitWriteSendsTheByteOfTheFirstGoodRead) {
    GoOnline();
    // The echo of the low byte is lost; the sync byte that asks again lands as data.
    Expect("FF>55 01>55 00 21>FF FF>55 02>55 00 21>-- FF FF>55 02>55 00 21 DF");
    const WriteResult result = Write("F13", "0");
    EXPECT_TRUE(result.outcome == WriteOutcome::Written && result.repeated);
    EXPECT_EQ(result.mayHaveReached, (std::vector<std::uint16_t>{0x00FF}));
    EXPECT_TRUE(AsExpected());
}

} // namespace
} // namespace vantrel
