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

struct StoredCase {
    const char* line;
    int number;
    const char* settings;
    std::size_t boxes;
};

TEST_F(LinkTest, StoredSettingsAreBroughtToWhatIsAllowedAndNotWrittenBack) {
    const StoredCase cases[] = {
        {"9,4800\r\n", 4, "9600,n,8,1", 1},      {"0,19200", 1, "19200,n,8,1", 1},
        {"3,19200\n", 3, "19200,n,8,1", 0},      {"2\n19200", 2, "9600,n,8,1", 0},
        {"2,\"fast\"", 2, "9600,n,8,1", 0},      {"COM3,19200", 1, "19200,n,8,1", 1},
        {"\r\n3,19200\r\n", 1, "9600,n,8,1", 0}, {"99999999999,19200", 4, "19200,n,8,1", 1},
    };
    std::filesystem::create_directories(folder / "Support");
    for (const StoredCase& one : cases) {
        SCOPED_TRACE(one.line);
        dialogs.shown.clear();
        WriteText(folder / "Support" / "RSPort.cfg", one.line);
        GoOnline();
        EXPECT_EQ(port.number, one.number);
        EXPECT_EQ(port.settings, one.settings);
        ASSERT_EQ(dialogs.shown.size(), one.boxes) << "a clamped number is told";
        if (one.boxes > 0) {
            const std::string stored(one.line, std::string(one.line).find(','));
            EXPECT_EQ(Shown().find("Comm Port|\"" + stored + "\" is stored"), 0U) << Shown();
        }
        EXPECT_EQ(FileText(folder / "Support" / "RSPort.cfg"), one.line);
    }
}

TEST_F(LinkTest, SettingsThatCannotBeReadKeepThePortClosed) {
    std::filesystem::create_directories(folder / "Support" / "RSPort.cfg");
    Open();
    EXPECT_TRUE(link.InitFailed());
    EXPECT_FALSE(link.OnlineMode() || port.IsOpen());
    EXPECT_EQ(Shown().substr(0, 45), "RSComm InitializeRSComm|Error Number = 75\nPat");
    for (const PortOverride& named : {PortOverride{.number = 2, .speed = "19200"},
                                      PortOverride{.number = {}, .speed = "19200", .leaveFileAlone = true}}) {
        link.SetPortOverride(named);
        GoOnline();
        EXPECT_EQ(port.settings, "19200,n,8,1") << "who names port and speed needs no file";
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
    EXPECT_EQ(link.TargetMode(), 0);
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
