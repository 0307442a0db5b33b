// The data words as they are shown: notations, what is beyond the count, and how long a change is marked; and the
// record behind the plot: which readings it keeps, where a line may lead, and its table.
#include "views/DataWords.h"
#include "views/WordRecorder.h"

#include "tests/support/VirtualClock.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace std::chrono_literals;

constexpr WordPlace First{1, DataDirection::Send};
constexpr WordPlace Second{2, DataDirection::Send};
constexpr WordPlace Received{2, DataDirection::Receive};

TEST(DataWordsTest, AWordIsWrittenInFourNotations) {
    for (const auto& [word, texts] :
         {std::pair<std::uint16_t, std::array<const char*, 4>>{0, {"0", "0", "0000H", "0000 0000 0000 0000"}},
          {32767, {"32767", "32767", "7FFFH", "0111 1111 1111 1111"}},
          {32768, {"32768", "-32768", "8000H", "1000 0000 0000 0000"}},
          {64536, {"64536", "-1000", "FC18H", "1111 1100 0001 1000"}}}) {
        for (std::size_t i = 0; i < WordNotations.size(); ++i)
            EXPECT_EQ(WordText(word, WordNotations.at(i)), texts.at(i));
    }
    for (const WordNotation notation : WordNotations)
        EXPECT_EQ(WordNotationNamed(WordNotationName(notation)), notation);
    EXPECT_EQ(WordNotationNamed("octal"), WordNotation::Decimal) << "a settings file of another version";
}

TEST(DataWordsTest, WordsBehindAKnownCountAreBeyondIt) {
    DataWords words;
    EXPECT_FALSE(words.IsBeyond(Second)) << "not known";
    words.SetCount(DataDirection::Send, 1);
    EXPECT_TRUE(words.IsBeyond(Second) && !words.IsBeyond(First) && !words.IsBeyond(Received));
    words.SetCount(DataDirection::Receive, 0);
    EXPECT_TRUE(words.IsBeyond(Received));
    words.Clear();
    EXPECT_FALSE(words.IsBeyond(Second));
}

TEST(DataWordsTest, AChangedWordIsMarkedForASecondAndNoOtherIs) {
    VirtualClock clock;
    DataWords words;
    const auto take = [&](WordPlace place, std::optional<std::uint16_t> word) { words.Take(place, word, clock.Now()); };
    take(First, 5);
    take(Second, 7);
    EXPECT_FALSE(words.HasChanged(First)) << "the first look is no change";
    take(First, std::nullopt);
    EXPECT_EQ(words.Text(First, WordNotation::Binary), "-");
    take(First, 5);
    EXPECT_FALSE(words.HasChanged(First)) << "nor is what was unclear in between";
    take(First, std::nullopt);
    take(First, 6);
    take(Second, 7);
    EXPECT_TRUE(words.HasChanged(First) && !words.HasChanged(Second));
    clock.Advance(999ms);
    EXPECT_TRUE(words.Fade(clock.Now()).empty());
    take(Second, 8);
    clock.Advance(1ms);
    EXPECT_EQ(words.Fade(clock.Now()), (std::vector{First}));
    EXPECT_TRUE(!words.HasChanged(First) && words.HasChanged(Second));
    words.Clear();
    EXPECT_TRUE(words.Text(Second, WordNotation::Decimal).empty() && !words.HasChanged(Second));
    take(Second, 9);
    EXPECT_FALSE(words.HasChanged(Second)) << "of another sequence";
}

using Points = std::vector<WordRecorder::Point>;

constexpr RecordedWord SentWord{3, {5, DataDirection::Send}};
constexpr RecordedWord ReceivedWord{3, {5, DataDirection::Receive}};

class WordRecorderTest : public testing::Test {
protected:
    WordRecorderTest() {
        clock.Advance(1s);
        recorder = WordRecorder(clock.Now(), clock.LocalNow());
        recorder.Follow(0, SentWord);
        recorder.Follow(2, ReceivedWord);
    }
    void Take(const RecordedWord& word, std::optional<std::uint16_t> value, MonotonicTime step) {
        clock.Advance(step);
        recorder.Take(word, value, clock.Now());
    }

    VirtualClock clock;
    WordRecorder recorder{{}, {}};
};

TEST_F(WordRecorderTest, LinesLeadFromKnownToKnownValueWithoutALongSilence) {
    Take(SentWord, 1, 0s);
    Take(SentWord, 65535, 5s);
    Take(SentWord, 3, 5001ms);
    Take(SentWord, std::nullopt, 1s);
    Take(SentWord, 4, 1s);
    Take({4, {5, DataDirection::Send}}, 9, 0s); // another sequence's
    const Points all{{0, 1, false}, {5, -1, true}, {10.001, 3, false}, {12.001, 4, false}};
    EXPECT_EQ(recorder.Points(0, WordNotation::Signed, clock.Now() - 1h), all);
    EXPECT_EQ(recorder.Points(0, WordNotation::Hexadecimal, clock.Now() - 6s),
              (Points{{5, 65535, false}, all[2], all[3]}))
        << "and the one that leads in";
    EXPECT_TRUE(recorder.Points(2, WordNotation::Decimal, {}).empty());
}

TEST_F(WordRecorderTest, TheTableHasARowForEachReadingAndAColumnForEachWord) {
    Take(SentWord, 40000, 250ms);
    Take(ReceivedWord, 7, 0ms);
    Take(SentWord, std::nullopt, 61s);
    EXPECT_EQ(recorder.Csv(WordNotation::Signed), "\xEF\xBB\xBF"
                                                  "Time,Seconds,\"Send 5, sequence 3\",\"Receive 5, sequence 3\"\r\n"
                                                  "2026-03-14 09:05:08,0.250,-25536,\r\n"
                                                  "2026-03-14 09:05:08,0.250,,7\r\n"
                                                  "2026-03-14 09:06:09,61.250,-,\r\n");
    EXPECT_NE(recorder.Csv(WordNotation::Hexadecimal).find(",0.250,40000,\r\n"), std::string::npos);
    recorder.Follow(0, SentWord);
    EXPECT_FALSE(recorder.Of(0).empty()) << "the same word goes on";
    recorder.Follow(0, ReceivedWord);
    EXPECT_TRUE(recorder.Of(0).empty());
    recorder.Clear();
    EXPECT_TRUE(recorder.IsEmpty() && recorder.Followed(0) == ReceivedWord && !recorder.Followed(1));
}

TEST_F(WordRecorderTest, TheOldestReadingsGoWhenThereAreTooMany) {
    for (std::size_t i = 0; i <= WordRecorder::MostReadings; ++i)
        Take(SentWord, static_cast<std::uint16_t>(i % 1000), 1s);
    EXPECT_EQ(recorder.Of(0).size(), WordRecorder::MostReadings);
    EXPECT_EQ(recorder.Of(0).front().word, 1);
}

} // namespace
} // namespace vantrel
