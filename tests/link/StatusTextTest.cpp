// What status words mean, and where the words of a sequence are.
#include "link/StatusText.h"

#include <gtest/gtest.h>

namespace vantrel {

namespace {

TEST(StatusText, ACodeIsShownInHexadecimalWithItsText) {
    const std::pair<const char*, const char*> cases[] = {
        {"0", "00: Comm Disabled"},
        {"1", "01: Undefinded Error"},
        {"2", "02: Comm to Node OK"},
        {"3", "03: More Than One Bus Master"},
        {"4", "04: Xmitt Timeout, No Response"},
        {"5", "05: No Slave Response, Timeout"},
        {"6", "06: Invalid Command - Master"},
        {"7", "07: Receive Overflow"},
        {"8", "08: Receive Collision Detected"},
        {"9", "09: Receive Alignment Error"},
        {"10", "0A: Receive CRC Error"},
        {"11", "0B: Unknown Error"},
        {"12", "0C: Xmitt No Acknowledge"},
        {"13", "0D: Xmitt Underrun Error"},
        {"14", "0E: Xmitt Collision Detected"},
        {"15", "0F: Address Range Error"},
        {"16", "10: Unexpected Slave Response"},
        {"17", "11: TI-505/K5216 Read Error"},
        {"18", "12: TI-505/K5216 Write Error"},
        {"19", "13: Undefinded Error"},
        {"-1", "FFFFFFFF: Undefinded Error"},
        {"2.5 x", "02: Comm to Node OK"},
        {"", "00: Comm Disabled"},
    };
    for (const auto& [value, shown] : cases)
        EXPECT_EQ(StatusDisplay(value), shown) << value;
    EXPECT_NE(StatusDisplay("99999999999").find("Undefinded Error"), std::string::npos);
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
