// The data words of one sequence as the communication interface view shows them: their notation, which of them the
// sequence uses, and which have changed a moment ago. Knows the memory map and times; no link, no toolkit.
#pragma once

#include "link/StatusText.h"
#include "link/TargetMap.h"
#include "platform/Clock.h"

#include <array>
#include <chrono>
#include <compare>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

/// How a 16-bit word is written.
enum class WordNotation { Decimal, Signed, Hexadecimal, Binary };
inline constexpr std::array WordNotations{WordNotation::Decimal, WordNotation::Signed, WordNotation::Hexadecimal,
                                          WordNotation::Binary};
/// For the choice, and for the settings: "Decimal", "Signed", "Hexadecimal", "Binary".
[[nodiscard]] std::string_view WordNotationName(WordNotation notation);
/// Decimal for a name that is none of them.
[[nodiscard]] WordNotation WordNotationNamed(std::string_view name);

/// 64536 is "64536", "-1000", "FC18H" and "1111 1100 0001 1000".
[[nodiscard]] std::string WordText(std::uint16_t word, WordNotation notation);
inline constexpr std::string_view WidestWordText = "0000 0000 0000 0000";

/// `row`: 1..120, the number of the word.
struct WordPlace {
    int row;
    DataDirection column;
    auto operator<=>(const WordPlace&) const = default;
};

class DataWords {
public:
    /// So long a word counts as changed.
    static constexpr MonotonicTime ChangeShown = std::chrono::seconds(1);

    /// What is known is another sequence's, or another board's. The word counts go with it.
    void Clear() { *this = {}; }

    /// What the board says of the number of words; nothing when that is not known.
    void SetCount(DataDirection column, std::optional<int> count) { CountOf(column) = count; }
    /// Behind the count: the board does not move this word. Never where the count is not known.
    [[nodiscard]] bool IsBeyond(WordPlace place) const;

    /// A word was read at `now`; nothing: it stayed doubtful. It has changed when it is not what it was when it was
    /// last known.
    void Take(WordPlace place, std::optional<std::uint16_t> word, MonotonicTime now);
    /// Empty when it was not read yet, "-" when it could not be relied on.
    [[nodiscard]] std::string Text(WordPlace place, WordNotation notation) const;
    /// It changed less than ChangeShown ago, or Fade() was not asked since.
    [[nodiscard]] bool HasChanged(WordPlace place) const { return changed_.contains(place); }
    /// The words whose change is ChangeShown old by now; they count as changed no more.
    [[nodiscard]] std::vector<WordPlace> Fade(MonotonicTime now);

private:
    struct Word {
        std::optional<std::uint16_t> shown;
        std::optional<std::uint16_t> lastKnown;
    };

    [[nodiscard]] std::optional<int>& CountOf(DataDirection column) {
        return column == DataDirection::Send ? counts_[0] : counts_[1];
    }

    std::map<WordPlace, Word> words_;
    std::map<WordPlace, MonotonicTime> changed_;
    std::array<std::optional<int>, 2> counts_{};
};

} // namespace vantrel
