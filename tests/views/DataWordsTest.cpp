// The data words as they are shown: notations, what is beyond the count, and how long a change is marked.
#include "views/DataWords.h"

#include "tests/support/VirtualClock.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace std::chrono_literals;

constexpr WordPlace First{1, DataDirection::Send};
constexpr WordPlace Second{2, DataDirection::Send};
constexpr WordPlace Received{2, DataDirection::Receive};

TEST(DataWordsTest, AWordIsWrittenInFourNotations) {
    struct Case {
        std::uint16_t word;
        std::array<const char*, 4> texts;
    };
    for (const Case& one : {Case{0, {"0", "0", "0000H", "0000 0000 0000 0000"}},
                            Case{32767, {"32767", "32767", "7FFFH", "0111 1111 1111 1111"}},
                            Case{32768, {"32768", "-32768", "8000H", "1000 0000 0000 0000"}},
                            Case{64536, {"64536", "-1000", "FC18H", "1111 1100 0001 1000"}}}) {
        for (std::size_t i = 0; i < WordNotations.size(); ++i)
            EXPECT_EQ(WordText(one.word, WordNotations.at(i)), one.texts.at(i));
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

} // namespace
} // namespace vantrel
