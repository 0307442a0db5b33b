// What status words mean, and where the words of a sequence are.
#include "link/StatusText.h"

#include <gtest/gtest.h>

namespace vantrel {

namespace {

TEST(StatusText, ACodeIsShownInHexadecimalWithItsText) {
    const std::pair<const char*, const char*> cases[] = {
        {"0", "00: Comm Disabled"},     {"2", "02: Comm to Node OK"},    {"18", "12: TI-505/K5216 Write Error"},
        {"19", "13: Undefinded Error"}, {"255", "FF: Undefinded Error"}, {"2.5 x", "02: Comm to Node OK"},
        {"", "00: Comm Disabled"}};
    for (const auto& [value, shown] : cases)
        EXPECT_EQ(StatusDisplay(value), shown) << value;
    EXPECT_EQ(StatusText(-1), "Undefinded Error");
    EXPECT_NE(StatusDisplay("99999999999").find("Undefinded Error"), std::string::npos);
}

TEST(StatusText, EveryCodeHasItsOwn) {
    std::string all;
    for (std::int32_t code = 0; code < 20; ++code)
        all += StatusText(code) + "|";
    EXPECT_EQ(all, "Comm Disabled|Undefinded Error|Comm to Node OK|More Than One Bus Master|Xmitt Timeout, No Response|"
                   "No Slave Response, Timeout|Invalid Command - Master|Receive Overflow|Receive Collision Detected|"
                   "Receive Alignment Error|Receive CRC Error|Unknown Error|Xmitt No Acknowledge|Xmitt Underrun Error|"
                   "Xmitt Collision Detected|Address Range Error|Unexpected Slave Response|TI-505/K5216 Read Error|"
                   "TI-505/K5216 Write Error|Undefinded Error|");
}

TEST(StatusText, EachSequenceHasItsOwnWords) {
    EXPECT_EQ(StatusWordAddress(0), "W6914");
    EXPECT_EQ(StatusWordAddress(30), "W6974");
    EXPECT_EQ(DataWordAddress(0, DataDirection::Send, 1), "W16400");
    EXPECT_EQ(DataWordAddress(30, DataDirection::Send, 1), "W31760");
    EXPECT_EQ(DataWordAddress(30, DataDirection::Receive, 1), "W32000");
    EXPECT_EQ(DataWordAddress(30, DataDirection::Receive, 120), "W32238");
}

} // namespace

} // namespace vantrel
