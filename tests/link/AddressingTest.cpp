// The notation of addresses, the boards' I/O names, and the checks by board.
#include "link/RSComm.h"

#include <gtest/gtest.h>

#include <map>

namespace vantrel {
namespace {

TEST(ParseAddress, ReadsEveryForm) {
    const std::pair<const char*, TargetAddress> cases[] = {
        // clang-format off
        {"1F40H", {'B', 8000, 0, false}}, {"40h", {'B', 64, 0, false}}, {"FFFFH", {'B', 65535, 0, false}},
        {"B8176.3", {'B', 8176, 8, true}}, {"W40.7", {'B', 40, 128, true}}, {".", {'B', 0, 1, true}},
        {"W32", {'W', 32, 0, false}}, {"w32", {'W', 32, 0, false}}, {"D100", {'D', 100, 0, false}},
        {"F0", {'B', 32, 1, true}}, {"F7", {'B', 32, 128, true}}, {"f13", {'B', 33, 32, true}},
        {"Z5", {'B', 32, 0, false}}, {"", {0, 0, 0, false}}, {"H", {'B', 0, 0, false}},
        {"W99999999999", {}}, {"10000H", {}}, {"F999999", {}},
        // clang-format on
    };
    for (const auto& [text, parsed] : cases)
        EXPECT_EQ(ParseAddress(text), parsed) << text;
}

TEST(AddressProblem, FindsTheSlipsThatTheParseForgives) {
    for (const char* good : {"W16384", "b105", "B8176.3", "F13", "1F40h", "D65530", "W65532", "B65534", "FFFEH"})
        EXPECT_EQ(AddressProblem(good), "") << good;
    for (const char* bad : {"", "Z5", "W", "16384", "W16x", "B8176.8", "B8176.", "W40.3", "XYH", "B-1", "B 5"})
        EXPECT_NE(AddressProblem(bad).find("is not an address of the board"), std::string::npos) << bad;
    for (const char* last : {"B65535", "FFFFH", "W65534", "D65532", "B65535.1"})
        EXPECT_NE(AddressProblem(last).find("cannot be reached"), std::string::npos) << last;
    for (const char* outside : {"W65535", "D65533", "B65536", "10000H", "F999999", "B99999999999999999999"})
        EXPECT_NE(AddressProblem(outside).find("outside the board's memory"), std::string::npos) << outside;
}

TEST(EquateAdd, TranslatesInputsAndOutputsByBoard) {
    std::vector<int> slots;
    for (int ten = 0; ten <= 150; ten += 10)
        slots.insert(slots.end(), {ten, ten + 1});
    // Every point of every board: board, letter, numbers in the order of their bytes, the first byte.
    const std::tuple<std::int16_t, char, std::vector<int>, int> rows[] = {
        // clang-format off
        {49, 'X', {30, 31, 50, 51, 60, 61, 70, 71, 80}, 49},
        {49, 'Y', {81, 90, 100, 110, 111, 120, 121, 130, 140, 141}, 58},
        {50, 'X', slots, 160}, {50, 'Y', slots, 160}, {50, 'I', slots, 192},
        {58, 'X', {10, 11}, 51}, {58, 'Y', {0, 1}, 49},
        {59, 'X', {10, 11, 20, 21}, 51}, {59, 'Y', {0, 1}, 49},
        {60, 'X', {10, 11, 20}, 51}, {60, 'Y', {0, 1}, 49}, {60, 'Y', {21}, 54},
        {61, 'X', {0, 1, 10}, 49}, {61, 'Y', {11}, 52},
        {65, 'X', {10, 11, 20}, 51}, {65, 'Y', {0, 1}, 49}, {65, 'Y', {21}, 54},
        {66, 'X', {10, 11, 20, 21}, 51}, {66, 'Y', {0, 1}, 49},
        // clang-format on
    };
    std::map<std::pair<std::int16_t, std::string>, std::string> points;
    for (const auto& [board, letter, numbers, firstByte] : rows) {
        int byte = firstByte;
        for (const int number : numbers)
            points[{board, letter + std::to_string(number)}] = "B" + std::to_string(byte++);
    }
    for (std::int16_t board = 40; board < 80; ++board) {
        for (int number = 0; number < 4 * 200; ++number) {
            const std::string variable = "XYIZ"[number / 200] + std::to_string(number % 200);
            const auto point = points.find({board, variable});
            EXPECT_EQ(RSComm::EquateAdd(variable, board), point == points.end() ? variable : point->second) << board;
        }
    }
    EXPECT_EQ(RSComm::EquateAdd("X30.2", 49), "B49.2");
    EXPECT_EQ(RSComm::EquateAdd("X31.9", 49), "B50.7");
    EXPECT_EQ(RSComm::EquateAdd("", 49), "");
}

TEST(ValidAdd, HasLimitsByLetterAndBoard) {
    using Texts = std::vector<const char*>;
    const std::tuple<std::vector<std::int16_t>, Texts, Texts> cases[] = {
        {{49},
         {"B32", "B255", "B32.7", "W254", "D32", "F120", "X21", "X150", "I151", "Q0"},
         {"B31", "B256", "W33", "W256", "F121", "X22", "X152", "Q1", "b40", ""}},
        {{50}, {"B8275", "W8274", "F991", "I151"}, {"B8276", "D8276", "F992"}},
        {{68}, {"B8275", "W8274"}, {"X0", "Y1", "I0", "W8275"}},
        {{51, 52, 53}, {"I21"}, {"B256"}},
        {{54}, {"B255", "X21", "I21"}, {"B256", "X30", "I30", "I12"}},
        {{58, 59, 60, 61, 65, 66}, {"B255"}, {"B256", "I0"}},
        {{56}, {"B255", "F120", "I21"}, {"B256", "F121"}},
        {{57}, {"B65535", "W65534", "D65534", "F991", "X21"}, {"I0", "X30", "W65536", "F992"}},
        {{69}, {"X21"}, {"X30"}},
        {{0}, {"B65535"}, {"X0", "Y0"}},
    };
    for (const auto& [boards, valid, invalid] : cases) {
        for (const std::int16_t board : boards) {
            for (const char* text : valid)
                EXPECT_TRUE(RSComm::ValidAdd(text, board)) << text << " on " << board;
            for (const char* text : invalid)
                EXPECT_FALSE(RSComm::ValidAdd(text, board)) << text << " on " << board;
        }
    }
}

TEST(Octal, HandlesTwoDigitsExactlyAndNoMore) {
    for (const auto& [decimal, octal] : {std::pair{15, 17}, {63, 77}, {100, 124}, {-9, -11}})
        EXPECT_EQ(RSComm::Dec2Octal(static_cast<std::int16_t>(decimal)), octal);
    for (const auto& [octal, decimal] : {std::pair{17, 15}, {77, 63}, {124, 100}})
        EXPECT_EQ(RSComm::Octal2Dec(static_cast<std::int16_t>(octal)), decimal);
}

} // namespace
} // namespace vantrel
