// The settings file, opening with its probe, closing with its goodbye.
#include "tests/link/LinkFixture.h"

namespace vantrel {
namespace {

TEST_F(LinkTest, AMissingOrEmptySettingsFileIsWrittenWithTheDefaults) {
    EXPECT_EQ(link.CommSettingsFile(), (folder / "Support" / "RSPort.cfg").string());
    GoOnline();
    EXPECT_EQ(FileText(folder / "Support" / "RSPort.cfg"), "1,9600\r\n");
    WriteText(folder / "Support" / "RSPort.cfg", "");
    GoOnline();
    EXPECT_EQ(FileText(folder / "Support" / "RSPort.cfg"), "1,9600\r\n");
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

TEST_F(LinkTest, AnOverrideReplacesTheStoredSettingsAndMayLeaveTheFileAlone) {
    link.SetPortOverride({.number = {}, .speed = "19200", .leaveFileAlone = true});
    GoOnline();
    EXPECT_EQ(port.settings, "19200,n,8,1");
    EXPECT_FALSE(std::filesystem::exists(folder / "Support"));
}

TEST_F(LinkTest, SettingsThatCannotBeReadKeepThePortClosed) {
    GoOnline();
    std::filesystem::remove(folder / "Support" / "RSPort.cfg");
    std::filesystem::create_directory(folder / "Support" / "RSPort.cfg");
    Open();
    EXPECT_TRUE(link.InitFailed());
    EXPECT_FALSE(link.OnlineMode());
    EXPECT_FALSE(port.IsOpen());
    ASSERT_EQ(dialogs.shown.size(), 1U);
    EXPECT_EQ(Shown().substr(0, 45), "RSComm InitializeRSComm|Error Number = 75\nPat");
    for (const PortOverride& named : {PortOverride{.number = 2, .speed = "19200"},
                                      PortOverride{.number = {}, .speed = "19200", .leaveFileAlone = true}}) {
        link.SetPortOverride(named);
        GoOnline();
        EXPECT_EQ(port.settings, "19200,n,8,1") << "who names port and speed needs no file";
    }
    link.SetPortOverride({});
    std::filesystem::remove(folder / "Support" / "RSPort.cfg");
    WriteText(folder / "Support" / "RSPort.cfg", "2,9600");
    GoOnline();
    EXPECT_FALSE(link.InitFailed());
}

TEST_F(LinkTest, APortThatCannotBeOpenedIsReportedAndLeavesTheProgramOffline) {
    port.openError.emplace(ErrorNumber::PermissionDenied, "not yours", "COM1");
    link.SetOnlineMode(true);
    Open();
    EXPECT_FALSE(link.OnlineMode());
    EXPECT_EQ(link.TargetMode(), 0);
    ASSERT_EQ(dialogs.shown.size(), 1U);
    EXPECT_EQ(Shown(), "Comm Port Error|Error Number = 70\nError Source = COM1\n\nnot yours");
    // A port that is not open fails silently.
    EXPECT_EQ(Told("W6400"), "failed");
    EXPECT_TRUE(link.LinkFailed());
    EXPECT_EQ(dialogs.shown.size(), 1U);
}

TEST_F(LinkTest, AProbeWithoutAnswerLeavesTheProgramOffline) {
    Open();
    EXPECT_EQ(Shown(), CableWarning);
    EXPECT_FALSE(link.OnlineMode());
    EXPECT_TRUE(link.LinkFailed());
}

TEST_F(LinkTest, ClosingSaysGoodbye) {
    GoOnline();
    port.Expect({{0xFF, 0x00}});
    Close();
    EXPECT_EQ(port.sent, (std::vector<std::uint8_t>{0xFF}));
    EXPECT_FALSE(port.IsOpen());
    EXPECT_FALSE(link.OnlineMode());

    GoOnline();
    port.Expect({{0xFF, std::nullopt}});
    const double start = Seconds();
    Close();
    EXPECT_NEAR(Seconds() - start, 1.0, 0.01) << "a board that does not answer is not waited for longer";
    EXPECT_TRUE(dialogs.shown.empty());
    EXPECT_FALSE(port.IsOpen());
}

} // namespace
} // namespace vantrel
