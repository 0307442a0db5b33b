// The record behind the plot: which readings it keeps, where a line may lead, and its table.
#include "views/WordRecorder.h"

#include "tests/support/VirtualClock.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace std::chrono_literals;
using Points = std::vector<WordRecorder::Point>;

constexpr RecordedWord Sent{3, {5, DataDirection::Send}};
constexpr RecordedWord Received{3, {5, DataDirection::Receive}};

class WordRecorderTest : public testing::Test {
protected:
    WordRecorderTest() {
        clock.Advance(1s);
        recorder = WordRecorder(clock.Now(), clock.LocalNow());
        recorder.Follow(0, Sent);
        recorder.Follow(2, Received);
    }
    void Take(const RecordedWord& word, std::optional<std::uint16_t> value, MonotonicTime step) {
        clock.Advance(step);
        recorder.Take(word, value, clock.Now());
    }

    VirtualClock clock;
    WordRecorder recorder{{}, {}};
};

TEST_F(WordRecorderTest, LinesLeadFromKnownToKnownValueWithoutALongSilence) {
    Take(Sent, 1, 0s);
    Take(Sent, 65535, 5s);
    Take(Sent, 3, 5001ms);
    Take(Sent, std::nullopt, 1s);
    Take(Sent, 4, 1s);
    Take({4, {5, DataDirection::Send}}, 9, 0s); // another sequence's
    const Points all{{0, 1, false}, {5, -1, true}, {10.001, 3, false}, {12.001, 4, false}};
    EXPECT_EQ(recorder.Points(0, WordNotation::Signed, clock.Now() - 1h), all);
    EXPECT_EQ(recorder.Points(0, WordNotation::Hexadecimal, clock.Now() - 6s),
              (Points{{5, 65535, false}, all[2], all[3]}))
        << "and the one that leads in";
    EXPECT_TRUE(recorder.Points(2, WordNotation::Decimal, {}).empty());
}

TEST_F(WordRecorderTest, TheTableHasARowForEachReadingAndAColumnForEachWord) {
    Take(Sent, 40000, 250ms);
    Take(Received, 7, 0ms);
    Take(Sent, std::nullopt, 61s);
    EXPECT_EQ(recorder.Csv(WordNotation::Signed), "\xEF\xBB\xBF"
                                                  "Time,Seconds,\"Send 5, sequence 3\",\"Receive 5, sequence 3\"\r\n"
                                                  "2026-03-14 09:05:08,0.250,-25536,\r\n"
                                                  "2026-03-14 09:05:08,0.250,,7\r\n"
                                                  "2026-03-14 09:06:09,61.250,-,\r\n");
    EXPECT_NE(recorder.Csv(WordNotation::Hexadecimal).find(",0.250,40000,\r\n"), std::string::npos);
    recorder.Follow(0, Sent);
    EXPECT_FALSE(recorder.Of(0).empty()) << "the same word goes on";
    recorder.Follow(0, Received);
    EXPECT_TRUE(recorder.Of(0).empty());
    recorder.Clear();
    EXPECT_TRUE(recorder.IsEmpty() && recorder.Followed(0) == Received && !recorder.Followed(1));
}

TEST_F(WordRecorderTest, TheOldestReadingsGoWhenThereAreTooMany) {
    for (std::size_t i = 0; i <= WordRecorder::MostReadings; ++i)
        Take(Sent, static_cast<std::uint16_t>(i % 1000), 1s);
    EXPECT_EQ(recorder.Of(0).size(), WordRecorder::MostReadings);
    EXPECT_EQ(recorder.Of(0).front().word, 1);
}

} // namespace
} // namespace vantrel
