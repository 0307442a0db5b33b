// The settings file, opening with its probe, closing with its goodbye.
#include "tests/link/LinkFixture.h"

namespace vantrel {
namespace {

TEST_F(LinkTest, AMissingOrEmptySettingsFileIsWrittenWithTheDefaults) {
    for (int opening = 0; opening < 2; ++opening) {
        GoOnline();
        EXPECT_EQ(FileText(folder / "Support" / "RSPort.cfg"), "1,9600\r\n");
        WriteText(folder / "Support" / "RSPort.cfg", "");
    }
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(LinkTest, StoredSettingsAreBroughtToWhatIsAllowedAndNotWrittenBack) {
    // What is stored, what the port is opened with, and whether the user is told of a number out of the range.
    const std::tuple<std::string, int, const char*, bool> cases[] = {
        {"9,4800\r\n", 4, "9600,n,8,1", true},       {"0,19200", 1, "19200,n,8,1", true},
        {"3,19200\n", 3, "19200,n,8,1", false},      {"2\n19200", 2, "9600,n,8,1", false},
        {"2,\"fast\"", 2, "9600,n,8,1", false},      {"COM3,19200", 1, "19200,n,8,1", true},
        {"\r\n3,19200\r\n", 1, "9600,n,8,1", false}, {"99999999999,19200", 4, "19200,n,8,1", true},
    };
    for (const auto& [line, number, settings, told] : cases) {
        dialogs.shown.clear();
        WriteText(folder / "Support" / "RSPort.cfg", line);
        GoOnline();
        EXPECT_EQ(port.number, number) << line;
        EXPECT_EQ(port.settings, settings) << line;
        const std::string stored = "Comm Port|\"" + line.substr(0, line.find(',')) + "\" is stored";
        EXPECT_EQ(Shown().substr(0, stored.size()), told ? stored : "none") << line;
        EXPECT_EQ(FileText(folder / "Support" / "RSPort.cfg"), line);
    }
}

TEST_F(LinkTest, SettingsThatCannotBeReadKeepThePortClosed) {
    std::filesystem::create_directories(folder / "Support" / "RSPort.cfg");
    Open();
    EXPECT_TRUE(link.InitFailed());
    EXPECT_FALSE(link.OnlineMode() || port.IsOpen());
    EXPECT_EQ(Shown().substr(0, 45), "RSComm InitializeRSComm|Error Number = 75\nPat");
    for (const PortOverride& named :
         {PortOverride{.number = 2, .speed = "19200"},
          PortOverride{.number = {}, .speed = "19200", .leaveFileAlone = true},
          PortOverride{.number = {}, .speed = {}, .leaveFileAlone = true, .anySpeed = true}}) {
        link.SetPortOverride(named);
        GoOnline();
        EXPECT_EQ(port.settings, named.speed.value_or("9600") + ",n,8,1") << "nothing of the file is needed";
    }
    link.SetPortOverride({});
    std::filesystem::remove(folder / "Support" / "RSPort.cfg");
    GoOnline();
    EXPECT_FALSE(link.InitFailed());
}

TEST_F(LinkTest, APortThatCannotBeOpenedIsReportedAndLeavesTheProgramOffline) {
    port.openError.emplace(ErrorNumber::PermissionDenied, "not yours", "COM1");
    link.SetOnlineMode(true);
    Open();
    EXPECT_FALSE(link.OnlineMode());
    EXPECT_EQ(Shown(), "Comm Port Error|Error Number = 70\nError Source = COM1\n\nnot yours");
    EXPECT_EQ(Told("W6400"), "failed");
    EXPECT_EQ(dialogs.shown.size(), 1U) << "a port that is not open fails silently";
}

TEST_F(LinkTest, ClosingSaysGoodbyeAndWaitsASecondForItsAnswer) {
    for (const auto& [answer, time] : {std::pair{"FF>00", 0.0}, {"FF>--", 1.0}}) {
        GoOnline();
        Expect(answer);
        const double start = Seconds();
        Close();
        EXPECT_EQ(port.sent, Bytes{0xFF});
        EXPECT_NEAR(Seconds() - start, time, 0.01);
        EXPECT_FALSE(port.IsOpen() || link.OnlineMode());
    }
    EXPECT_TRUE(dialogs.shown.empty());
}

} // namespace
} // namespace vantrel
