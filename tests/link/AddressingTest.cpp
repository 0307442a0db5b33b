// The notation of addresses, the boards' I/O names, and the checks by board.
#include "link/RSComm.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

TEST(ParseAddress, ReadsEveryForm) {
    struct Case {
        const char* text;
        TargetAddress parsed;
    };
    const Case cases[] = {
        {"1F40H", {'B', 8000, 0, false}},  {"40h", {'B', 64, 0, false}},    {"FFFFH", {'B', 65535, 0, false}},
        {"B8176.3", {'B', 8176, 8, true}}, {"W40.7", {'B', 40, 128, true}}, {"W32", {'W', 32, 0, false}},
        {"w32", {'W', 32, 0, false}},      {"D100", {'D', 100, 0, false}},  {"F0", {'B', 32, 1, true}},
        {"F7", {'B', 32, 128, true}},      {"F8", {'B', 33, 1, true}},      {"f13", {'B', 33, 32, true}},
        {"Z5", {'B', 32, 0, false}},       {"", {0, 0, 0, false}},          {".", {'B', 0, 1, true}},
        {"B1", {'B', 1, 0, false}},        {"H", {'B', 0, 0, false}},
    };
    for (const Case& one : cases)
        EXPECT_EQ(ParseAddress(one.text), one.parsed) << one.text;
}

TEST(AddressProblem, FindsTheSlipsThatTheParseForgives) {
    for (const char* good : {"W16384", "b105", "B8176.3", "F13", "1F40h", "D65532", "W65534", "B65535", "FFFFH"}) {
        EXPECT_EQ(AddressProblem(good), "") << good;
    }
    for (const char* bad : {"", "Z5", "W", "16384", "W16x", "B8176.8", "B8176.", "W40.3", "XYH", "B-1", "B 5"}) {
        EXPECT_NE(AddressProblem(bad).find("is not an address of the board"), std::string::npos) << bad;
    }
    for (const char* outside : {"W65535", "D65533", "B65536", "10000H", "F999999", "B99999999999999999999"}) {
        EXPECT_NE(AddressProblem(outside).find("outside the board's memory"), std::string::npos) << outside;
    }
}

TEST(EquateAdd, TranslatesInputsAndOutputsByBoard) {
    struct Case {
        std::int16_t board;
        const char* variable;
        const char* address;
    };
    const Case cases[] = {
        {49, "X30.2", "B49.2"}, {49, "X31.9", "B50.7"}, {49, "X80", "B57"},   {49, "Y141", "B67"},
        {49, "X32", "X32"},     {50, "X0", "B160"},     {50, "Y151", "B191"}, {50, "I0.0", "B192.0"},
        {50, "I11", "B195"},    {50, "I151", "B223"},   {58, "X11", "B52"},   {59, "X21", "B54"},
        {60, "Y21", "B54"},     {60, "X21", "X21"},     {61, "X10", "B51"},   {61, "Y11.3", "B52.3"},
        {65, "X20", "B53"},     {66, "X21", "B54"},     {66, "Y1", "B50"},    {51, "X10", "X10"},
        {49, "I30", "I30"},     {49, "", ""},
    };
    for (const Case& one : cases)
        EXPECT_EQ(RSComm::EquateAdd(one.variable, one.board), one.address) << one.variable;
}

TEST(ValidAdd, HasLimitsByLetterAndBoard) {
    struct Case {
        std::int16_t board;
        std::vector<const char*> valid;
        std::vector<const char*> invalid;
    };
    const Case cases[] = {
        {49,
         {"B32", "B255", "B32.7", "W254", "D32", "F120", "X21", "X150", "I151", "Q0"},
         {"B31", "B256", "W33", "W256", "F121", "X22", "X152", "Q1", "b40", ""}},
        {50, {"B8275", "W8274", "F991", "I151"}, {"B8276", "D8276", "F992"}},
        {68, {"B8275", "W8274"}, {"X0", "Y1", "I0", "W8275"}},
        {54, {"B255", "X21", "I21"}, {"B256", "X30", "I30", "I12"}},
        {56, {"B255", "F120", "I21"}, {"B256", "F121"}},
        {57, {"B65535", "W65534", "D65534", "F991", "X21"}, {"I0", "X30", "W65536", "F992"}},
        {69, {"X21"}, {"X30"}},
        {0, {"B65535"}, {"X0", "Y0"}},
    };
    for (const Case& one : cases) {
        for (const char* text : one.valid)
            EXPECT_TRUE(RSComm::ValidAdd(text, one.board)) << text << " on " << one.board;
        for (const char* text : one.invalid)
            EXPECT_FALSE(RSComm::ValidAdd(text, one.board)) << text << " on " << one.board;
    }
}

TEST(Octal, HandlesTwoDigitsExactlyAndNoMore) {
    EXPECT_EQ(RSComm::Octal2Dec(17), 15);
    EXPECT_EQ(RSComm::Dec2Octal(15), 17);
    EXPECT_EQ(RSComm::Dec2Octal(63), 77);
    EXPECT_EQ(RSComm::Octal2Dec(77), 63);
    EXPECT_EQ(RSComm::Dec2Octal(100), 124);
    EXPECT_EQ(RSComm::Octal2Dec(124), 100);
    EXPECT_EQ(RSComm::Dec2Octal(-9), -11);
}

} // namespace
} // namespace vantrel
