// How far the board's clock is off: judged from two passes that hold one whole reading, and not from anything less.
#include "views/ClockComparison.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace std::chrono;
using namespace std::chrono_literals;
using State = ClockComparison::State;

/// The computer's clock at the first pass.
constexpr local_seconds Computer = local_days{year{2026} / March / 14} + 9h + 5min + 7s;

/// What a pass reads of a board whose clock shows `board` while the computer's shows `now`.
ClockPass Pass(local_seconds board, local_seconds now) {
    const auto day = floor<days>(board);
    const year_month_day date(day);
    const hh_mm_ss time(board - day);
    return {static_cast<std::uint32_t>(time.hours().count()),
            static_cast<std::uint32_t>(time.minutes().count()),
            static_cast<std::uint32_t>(time.seconds().count()),
            static_cast<unsigned>(date.month()),
            static_cast<unsigned>(date.day()),
            static_cast<std::uint32_t>(static_cast<int>(date.year()) % 100),
            now,
            now};
}

TEST(ClockComparisonTest, TellsHowFarTheBoardIsOffWhenTwoPassesAgree) {
    for (const auto& [off, text] :
         {std::pair<seconds, const char*>{0s, "the same as the computer's clock (to within 1 s)"},
          {-72s, "00:01:12 behind the computer's clock (to within 1 s)"},
          {3h + 1s, "03:00:01 ahead of the computer's clock (to within 1 s)"},
          {-(24h + 5s), "1 day 00:00:05 behind the computer's clock (to within 1 s)"},
          {-days(365 * 40), "14600 days 00:00:00 behind the computer's clock (to within 1 s)"}}) {
        ClockComparison compared;
        EXPECT_EQ(compared.Text(), "not known yet");
        compared.Take(Pass(Computer + off, Computer));
        EXPECT_EQ(compared.What(), State::Unread) << "one reading alone may be torn";
        compared.Take(Pass(Computer + off + 1s, Computer + 1s));
        EXPECT_EQ(compared.Text(), text);
    }
}

TEST(ClockComparisonTest, AReadingThatIsTornOrImpossibleTellsNothing) {
    const ClockPass usual = Pass(Computer, Computer);
    const auto with = [&](std::uint32_t ClockPass::*part, std::uint32_t value) {
        ClockPass other = usual;
        other.*part = value;
        return other;
    };
    ClockPass late = usual;
    late.to += 60s;
    const auto after = [](const std::optional<ClockPass>& first, const std::optional<ClockPass>& second) {
        ClockComparison compared;
        compared.Take(first);
        compared.Take(second);
        return compared.What();
    };
    EXPECT_EQ(after(usual, usual), State::Known);
    // Seconds that have gone round, parts of two readings, and a pass that took a minute.
    for (const ClockPass& other :
         {with(&ClockPass::second, 6), with(&ClockPass::minute, 6), with(&ClockPass::day, 15), late})
        EXPECT_EQ(after(usual, other), State::Doubtful);
    EXPECT_EQ(after(usual, std::nullopt), State::Doubtful);
    EXPECT_EQ(after(std::nullopt, usual), State::Doubtful);
    for (const ClockPass& wrong :
         {with(&ClockPass::hour, 24), with(&ClockPass::minute, 60), with(&ClockPass::second, 60),
          with(&ClockPass::year, 100), with(&ClockPass::month, 0), with(&ClockPass::day, 32)})
        EXPECT_EQ(after(wrong, wrong), State::Impossible);
}

TEST(ClockComparisonTest, TheDifferenceStandsStillWhereTheSecondsBeginApartAndFollowsAClockThatIsSet) {
    ClockComparison compared;
    const auto take = [&](local_seconds board, local_seconds now) { compared.Take(Pass(board, now)); };
    // Half a second behind: now the one clock is first at the next second, now the other.
    for (int i = 0; i < 10; ++i) {
        take(Computer + seconds(i) - 5s, Computer + seconds(i));
        take(Computer + seconds(i) - 5s, Computer + seconds(i + 1));
        if (i > 0) {
            EXPECT_EQ(compared.Ahead(), -6s) << i;
        }
    }
    // The end of a minute is torn; what is known stays.
    compared.Take(Pass(Computer + 60s, Computer + 65s));
    EXPECT_EQ(compared.What(), State::Known);
    take(Computer + 200s, Computer + 66s);
    take(Computer + 200s, Computer + 66s);
    EXPECT_EQ(compared.Ahead(), 134s) << "somebody has set it";
    ClockPass slow = Pass(Computer + 202s, Computer + 68s);
    slow.from -= 2s;
    compared.Forget();
    compared.Take(slow);
    compared.Take(slow);
    EXPECT_EQ(compared.Within(), 2s) << "read at some time in two seconds";
}

} // namespace
} // namespace vantrel
