// Texts and numbers of the files: the code page, the item syntax, the number parse.
#include "text/NumberText.h"
#include "text/SequentialText.h"
#include "text/Utf8.h"
#include "text/Windows1252.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace vantrel {
namespace {

TEST(LeadingNumber, TakesTheLongestNumericPrefixAndIgnoresBlanks) {
    const std::pair<std::string_view, double> cases[] = {
        // clang-format off
        {"12abc", 12}, {" 1 6\t1\r\n5 th", 1615}, {"-3.5", -3.5}, {"+7", 7}, {"- 12", -12}, {"1.2.3", 1.2}, {".5", 0.5},
        {"5.", 5}, {"1e+", 1}, {"2E2x", 200}, {"2D-1", 0.2}, {"1d3", 1000},
        {"&HAaG", 170}, {"&hffff", 65535}, {"& H 1F", 31}, {"&O178", 15},
        {"1e400", HUGE_VAL}, {"-1e400", -HUGE_VAL}, {"1e99999999999999999999", HUGE_VAL},
        // clang-format on
    };
    for (const auto& [text, number] : cases)
        EXPECT_EQ(LeadingNumber(text), number) << text;
    for (const auto* nothing : {"", ".", "e5", "&", "&H", "-&H10", "inf", "nan", "0x10", "1e-400", "0e999999999999",
                                "1e-99999999999999999999"})
        EXPECT_EQ(LeadingNumber(nothing), 0) << nothing;
    EXPECT_EQ(LeadingNumber("0." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(LeadingNumber("&H" + std::string(400, 'F')), HUGE_VAL);
    EXPECT_EQ(LeadingNumber("0.001e+400"), HUGE_VAL);
}

TEST(LeadingInteger, RoundsHalvesToEvenAndRefusesWhatNoValueHolds) {
    const std::pair<std::string_view, std::optional<std::int32_t>> cases[] = {
        // clang-format off
        {"12.5", 12}, {"13.5", 14}, {"-0.5", 0}, {"-1.5", -2}, {"0.49999999999999994", 0},
        {"2147483647.4", 2147483647}, {"2147483647.5", std::nullopt}, {"1e400", std::nullopt},
        {"-2147483648.5", -2147483647 - 1}, {"-2147483649", std::nullopt},
        // clang-format on
    };
    for (const auto& [text, number] : cases)
        EXPECT_EQ(LeadingInteger(text), number) << text;
}

std::vector<std::string> Items(std::string_view bytes) {
    std::vector<std::string> items;
    for (SequentialText text(bytes); !text.AtEnd();)
        items.push_back(text.NextItem());
    return items;
}

TEST(SequentialText, SplitsItemsAtCommasAndLineEnds) {
    using List = std::vector<std::string>;
    EXPECT_EQ(Items("a, b c ,\td\r\ne\nf\rg"), (List{"a", "b c ", "d", "e", "f", "g"}));
    EXPECT_EQ(Items("\"a, b\nc \" rest,d\"e\"\n\"\""), (List{"a, b\nc ", "d\"e\"", ""}));
    EXPECT_EQ(Items(",a,,b,"), (List{"", "a", "", "b"}));
    EXPECT_EQ(Items("a\n\nb"), (List{"a", "", "b"})) << "a blank line between items is an empty item";
    EXPECT_EQ(Items("a\n \r\n\t\n\n"), (List{"a"})) << "blank lines at the end are the end";
    EXPECT_EQ(Items("a\n\x1A,b"), (List{"a"}));
    EXPECT_EQ(Items("\"a\x1A\",b"), (List{"a"})) << "a Ctrl-Z ends the text wherever it stands";
    EXPECT_EQ(Items("\"open\nto the end"), (List{"open\nto the end"}));
    EXPECT_EQ(Items("\x1A"), List{});
}

TEST(Windows1252, EveryByteComesBackUnchanged) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    EXPECT_EQ(Windows1252FromUtf8(Utf8FromWindows1252(all)), all);
    EXPECT_EQ(Utf8FromWindows1252("M\xFChle \x80 \x96 \x9F \x81"), "M\u00FChle \u20AC \u2013 \u0178 \u0081");
}

TEST(Windows1252, WhatTheCodePageDoesNotHoldBecomesAQuestionMark) {
    EXPECT_EQ(Windows1252FromUtf8("\u03A9m \U0001F600 \u0080 \uFFFD"), "?m ? ? ?");
    const std::string_view malformed[] = {"\x80",         "\xC3", "\xC1\xBF",        "\xE0\x9F\xBF",
                                          "\xED\xA0\x80", "\xF8", "\xF4\x90\x80\x80"};
    for (const auto text : malformed)
        EXPECT_EQ(Windows1252FromUtf8(std::string(text) + "x"), "?x") << text;
    std::string_view beyond = malformed[6];
    EXPECT_EQ(TakeCharacter(beyond).code, MalformedCharacter);
    EXPECT_EQ(Windows1252FromUtf8("\xE2\x82\xC3\xBC"), "?\xFC") << "a broken sequence takes nothing from the next";
}

} // namespace
} // namespace vantrel
