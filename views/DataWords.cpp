#include "views/DataWords.h"

#include "text/NumberText.h"

#include <algorithm>
#include <cstddef>

namespace vantrel {

namespace {

constexpr std::array<std::string_view, WordNotations.size()> Names{"Decimal", "Signed", "Hexadecimal", "Binary"};

constexpr std::size_t HexDigits = 4;
constexpr int Bits = 16;
constexpr int BitsInGroup = 4;

std::string BinaryText(std::uint16_t word) {
    std::string text;
    for (int bit = Bits - 1; bit >= 0; --bit) {
        text += (word >> bit & 1) != 0 ? '1' : '0';
        if (bit > 0 && bit % BitsInGroup == 0) text += ' ';
    }
    return text;
}

} // namespace

std::string_view WordNotationName(WordNotation notation) { return Names.at(static_cast<std::size_t>(notation)); }

WordNotation WordNotationNamed(std::string_view name) {
    const auto* found = std::find(Names.begin(), Names.end(), name);
    return found == Names.end() ? WordNotation::Decimal
                                : WordNotations.at(static_cast<std::size_t>(found - Names.begin()));
}

std::string WordText(std::uint16_t word, WordNotation notation) {
    switch (notation) {
    case WordNotation::Signed:
        return std::to_string(static_cast<std::int16_t>(word));
    case WordNotation::Hexadecimal:
        return HexText(word, HexDigits) + "H";
    case WordNotation::Binary:
        return BinaryText(word);
    case WordNotation::Decimal:
        break;
    }
    return std::to_string(word);
}

bool DataWords::IsBeyond(WordPlace place) const {
    const std::optional<int>& count = place.column == DataDirection::Send ? counts_[0] : counts_[1];
    return count && place.row > *count;
}

void DataWords::Take(WordPlace place, std::optional<std::uint16_t> word, MonotonicTime now) {
    Word& kept = words_[place];
    if (word && kept.lastKnown && *word != *kept.lastKnown) changed_[place] = now;
    kept.shown = word;
    if (word) kept.lastKnown = word;
}

std::string DataWords::Text(WordPlace place, WordNotation notation) const {
    const auto word = words_.find(place);
    if (word == words_.end()) return {};
    return word->second.shown ? WordText(*word->second.shown, notation) : "-";
}

std::vector<WordPlace> DataWords::Fade(MonotonicTime now) {
    std::vector<WordPlace> faded;
    for (const auto& [place, since] : changed_) {
        if (now - since >= ChangeShown) faded.push_back(place);
    }
    for (const WordPlace& place : faded)
        changed_.erase(place);
    return faded;
}

} // namespace vantrel
