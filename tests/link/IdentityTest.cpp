// Which board answers, what its faults and status codes are called, and whether it is ready.
#include "link/StatusText.h"
#include "tests/link/LinkFixture.h"

namespace vantrel {

struct RSCommPeer {
    static TaskOf<bool> PLSReady(RSComm& link) { return link.PLSReady(); }
};

namespace {

TEST_F(LinkTest, BoardTypesAreCharacterCodes) {
    EXPECT_EQ(RSComm::TargetboardName('6') + RSComm::LCFBoardIndex('6'), "K5216D");
    EXPECT_EQ(RSComm::TargetboardName(57) + RSComm::LCFBoardIndex(57), "Not Defined");
    EXPECT_EQ(RSComm::TargetboardName(68) + RSComm::LCFBoardIndex(68), "Q6700(PLC)G");
    EXPECT_EQ(RSComm::TargetboardName(70) + RSComm::LCFBoardIndex(70), "F Is Not Defined.");
    EXPECT_EQ(RSComm::MarkHex2HEX("0:;9<=>?@A"), "0AB9CDEF@A");
}

TEST_F(LinkTest, RevisionAndFaultCodeAreReadOnlyOverALinkThatStands) {
    EXPECT_EQ(turns.RunToEnd(link.FirmwareRev()), 0);
    EXPECT_FALSE(link.LinkFailed()) << "nothing was sent";
    GoOnline();
    Expect("FF>55 01>55 1F DF>17 1F F0>45");
    EXPECT_EQ(turns.RunToEnd(link.FirmwareRev()), 23);
    EXPECT_EQ(turns.RunToEnd(link.FaultCode()), 0x45);
    EXPECT_TRUE(AsExpected());
    EXPECT_EQ(turns.RunToEnd(link.FaultCode()), 0) << "a silent board";
}

TEST_F(LinkTest, FaultsAreDescribedByTheFirstRecordOfTheFile) {
    link.SetFaultFile(folder / "FaultErrCodes.txt");
    EXPECT_EQ(link.FaultDescription(10), "Fault Code (0AH): --- Fault File Not Found ---");
    WriteText(folder / "FaultErrCodes.txt", "01\r\n\r\n0a,Watchdog\r\n0A,later\r\n3F,\"Slot, and \xE9\"\r\n\x1A"
                                            "FF,behind the end\r\n");
    for (const std::string text : {"0AWatchdog", "01", "3FSlot, and \xC3\xA9", "FF"}) {
        const auto code = static_cast<std::int16_t>(std::stoi(text.substr(0, 2), nullptr, 16));
        EXPECT_EQ(link.FaultDescription(code), "Fault Code (" + text.substr(0, 2) + "H): " + text.substr(2));
    }
    WriteText(folder / "FaultErrCodes.txt", "\xEF\xBB\xBF"
                                            "00,St\xC3\xB6rung\n");
    EXPECT_EQ(link.FaultDescription(0), "Fault Code (00H): St\xC3\xB6rung") << "as today's editors write it";
    EXPECT_TRUE(dialogs.shown.empty());
    link.SetFaultFile(folder.Path());
    EXPECT_EQ(link.FaultDescription(2), "Fault Code (02H): ");
    EXPECT_EQ(Shown().substr(0, 41), "RSComm FaultDescription|Error Number = 75");
}

TEST_F(LinkTest, TheReadyCheckGoesOnUntilTheBoardIsReadyOrTheUserGivesUp) {
    GoOnline();
    Expect("38>00 38>55 55 38>55 55>12 38>55 55>00");
    EXPECT_TRUE(turns.RunToEnd(RSCommPeer::PLSReady(link)));
    EXPECT_TRUE(AsExpected());
    EXPECT_EQ(port.sent.size(), 8U);
    EXPECT_EQ(port.sent.back(), 0x55);

    port.otherwise = 0x55;
    dialogs.answers = {MessageAnswer::Retry, MessageAnswer::Cancel};
    const double start = Seconds();
    EXPECT_FALSE(turns.RunToEnd(RSCommPeer::PLSReady(link)));
    EXPECT_TRUE(link.LinkFailed());
    EXPECT_NEAR(Seconds() - start, 3.0 + 2.0, 0.02);
    EXPECT_EQ(Shown(1), "WARNING - Communication Error!|Cannot Determine PLS READY Mode Within Target Board.");
}

TEST(StatusText, ACodeIsShownInHexadecimalWithItsText) {
    const std::pair<const char*, const char*> cases[] = {
        // clang-format off
        {"0", "00: Comm Disabled"}, {"1", "01: Undefinded Error"}, {"2", "02: Comm to Node OK"},
        {"3", "03: More Than One Bus Master"}, {"4", "04: Xmitt Timeout, No Response"},
        {"5", "05: No Slave Response, Timeout"}, {"6", "06: Invalid Command - Master"},
        {"7", "07: Receive Overflow"}, {"8", "08: Receive Collision Detected"},
        {"9", "09: Receive Alignment Error"}, {"10", "0A: Receive CRC Error"}, {"11", "0B: Unknown Error"},
        {"12", "0C: Xmitt No Acknowledge"}, {"13", "0D: Xmitt Underrun Error"},
        {"14", "0E: Xmitt Collision Detected"}, {"15", "0F: Address Range Error"},
        {"16", "10: Unexpected Slave Response"}, {"17", "11: TI-505/K5216 Read Error"},
        {"18", "12: TI-505/K5216 Write Error"}, {"19", "13: Undefinded Error"},
        {"-1", "FFFFFFFF: Undefinded Error"}, {"2.5 x", "02: Comm to Node OK"}, {"", "00: Comm Disabled"},
        // clang-format on
    };
    for (const auto& [value, shown] : cases)
        EXPECT_EQ(StatusDisplay(value), shown) << value;
    EXPECT_NE(StatusDisplay("99999999999").find("Undefinded Error"), std::string::npos);
}

TEST(StatusText, EachSequenceHasItsOwnWords) {
    EXPECT_EQ(StatusWordAddress(0) + StatusWordAddress(30), "W6914W6974");
    EXPECT_EQ(DataWordAddress(0, DataDirection::Send, 1), "W16400");
    EXPECT_EQ(DataWordAddress(30, DataDirection::Send, 120), "W31998");
    EXPECT_EQ(DataWordAddress(30, DataDirection::Receive, 1), "W32000");
}

} // namespace
} // namespace vantrel
