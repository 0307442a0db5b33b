// The address helpers of the link: user programs' input and output names, checks by board, two-digit octal. They belong
// to the link's interface for boards of every kind; nothing calls them yet but their tests.
#include "link/RSComm.h"

#include "text/NumberText.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace vantrel {

namespace {

/// A run of I/O points of one letter on one board: the numbers in order, on consecutive bytes from `firstByte` on.
struct IoRun {
    std::int16_t board;
    std::string_view letters;
    int firstByte;
    std::span<const int> numbers;
};

constexpr std::array<int, 9> Board49X{30, 31, 50, 51, 60, 61, 70, 71, 80};
constexpr std::array<int, 10> Board49Y{81, 90, 100, 110, 111, 120, 121, 130, 140, 141};
constexpr std::array<int, 2> Numbers0And1{0, 1};
constexpr std::array<int, 2> Numbers10And11{10, 11};
constexpr std::array<int, 3> Numbers10To20{10, 11, 20};
constexpr std::array<int, 4> Numbers10To21{10, 11, 20, 21};
constexpr std::array<int, 3> Numbers0To10{0, 1, 10};
constexpr std::array<int, 1> Number11{11};
constexpr std::array<int, 1> Number21{21};

/// 0, 1, 10, 11, ... 150, 151: two points for each of sixteen slots.
constexpr std::array<int, 32> AllSlots = [] {
    std::array<int, 32> numbers{};
    for (int i = 0; i < 32; ++i)
        numbers[static_cast<std::size_t>(i)] = i / 2 * 10 + i % 2;
    return numbers;
}();

// clang-format off
constexpr std::array IoMap{
    IoRun{49, "X", 49, Board49X},
    IoRun{49, "Y", 58, Board49Y},
    IoRun{50, "XY", 160, AllSlots},
    IoRun{50, "I", 192, AllSlots},
    IoRun{58, "X", 51, Numbers10And11},
    IoRun{58, "Y", 49, Numbers0And1},
    IoRun{59, "X", 51, Numbers10To21},
    IoRun{59, "Y", 49, Numbers0And1},
    IoRun{60, "X", 51, Numbers10To20},
    IoRun{60, "Y", 49, Numbers0And1},
    IoRun{60, "Y", 54, Number21},
    IoRun{61, "X", 49, Numbers0To10},
    IoRun{61, "Y", 52, Number11},
    IoRun{65, "X", 51, Numbers10To20},
    IoRun{65, "Y", 49, Numbers0And1},
    IoRun{65, "Y", 54, Number21},
    IoRun{66, "X", 51, Numbers10To21},
    IoRun{66, "Y", 49, Numbers0And1},
};
// clang-format on

/// The text behind the letter: the number before a point, and the bit behind it when there is one.
struct VariableNumber {
    std::optional<std::int32_t> number;
    std::optional<int> bit;
};

VariableNumber NumberIn(std::string_view variable) {
    const std::size_t point = variable.find('.');
    const std::string_view digits = variable.substr(std::min<std::size_t>(1, variable.size()));
    if (point == std::string_view::npos) return {LeadingInteger(digits), std::nullopt};
    const std::int32_t bit = LeadingInteger(variable.substr(point + 1)).value_or(7);
    return {LeadingInteger(point > 0 ? digits.substr(0, point - 1) : std::string_view{}), std::clamp(bit, 0, 7)};
}

bool InGroupA(int board) {
    constexpr std::array groupA{49, 51, 52, 53, 54, 56, 58, 59, 60, 61, 65, 66};
    return std::find(groupA.begin(), groupA.end(), board) != groupA.end();
}

bool HasSmallMemory(int board) { return board == 50 || board == 68; }

int HighestByteOn(int board) {
    if (InGroupA(board)) return 255;
    return HasSmallMemory(board) ? 8275 : 65535;
}

/// Highest number of an input or output; below 0 when the board has none of that letter.
int HighestPointOn(int board, char letter) {
    constexpr int allSlots = 151;
    constexpr int twoSlots = 21;
    const bool large = board == 49 || board == 50;
    if (letter == 'I') {
        const bool small = (board >= 51 && board <= 54) || board == 56;
        return large ? allSlots : small ? twoSlots : -1;
    }
    if (board == 0 || board == 68) return -1;
    return large ? allSlots : twoSlots;
}

bool Between(std::int32_t number, int minimum, int maximum) { return minimum <= number && number <= maximum; }

} // namespace

std::string RSComm::EquateAdd(const std::string& variable, std::int16_t board) {
    if (variable.empty()) return variable;
    const VariableNumber parsed = NumberIn(variable);
    if (!parsed.number) return variable;
    for (const IoRun& run : IoMap) {
        if (run.board != board || run.letters.find(variable.front()) == std::string_view::npos) continue;
        const auto found = std::find(run.numbers.begin(), run.numbers.end(), *parsed.number);
        if (found == run.numbers.end()) continue;
        const std::string byte = "B" + std::to_string(run.firstByte + (found - run.numbers.begin()));
        return parsed.bit ? byte + "." + std::to_string(*parsed.bit) : byte;
    }
    return variable;
}

bool RSComm::ValidAdd(const std::string& variable, std::int16_t board) {
    if (variable.empty()) return false;
    const std::optional<std::int32_t> parsed = NumberIn(variable).number;
    if (!parsed) return false;
    const std::int32_t number = *parsed;
    constexpr int lowest = 32;
    switch (const char letter = variable.front()) {
    case 'B':
        return Between(number, lowest, HighestByteOn(board));
    case 'W':
    case 'D':
        return Between(number, lowest, HighestByteOn(board) - 1) && number % 2 == 0;
    case 'F':
        return Between(number, 0, InGroupA(board) ? 120 : 991);
    case 'I':
    case 'X':
    case 'Y':
        return Between(number, 0, HighestPointOn(board, letter)) && number % 10 <= 1;
    default:
        return number == 0;
    }
}

std::int16_t RSComm::Dec2Octal(std::int16_t number) { return static_cast<std::int16_t>(number / 8 * 10 + number % 8); }

std::int16_t RSComm::Octal2Dec(std::int16_t number) { return static_cast<std::int16_t>(number / 10 * 8 + number % 10); }

} // namespace vantrel
