// The port dialog: what it shows, what it refuses, and what saving leaves on the disk and of the port.
#include "link/PortSettingsEditor.h"

#include "platform/AsioSerialPort.h"
#include "platform/PseudoTerminal.h"
#include "platform/RuntimeError.h"
#include "platform/SystemClock.h"
#include "tests/link/LinkFixture.h"

namespace vantrel {
namespace {

namespace fs = std::filesystem;

class PortSettingsEditorTest : public LinkTest {
protected:
    PortSettingsEditorTest() { fs::create_directory(folder / "Support"); }
    PortSettingsEditor Dialog() { return {link, port, program, {1, 4}, dialogs}; }

    fs::path settingsFile = folder / "Support" / "RSPort.cfg";
    ProgramFolder program{folder.Path(), folder / "user"};
};

TEST_F(PortSettingsEditorTest, ShowsWhatTheNextOpeningTakesAlsoBeforeTheFirst) {
    EXPECT_EQ(Dialog().CurrentSettings(), PortSettings{});
    WriteText(settingsFile, "9,19200\r\n");
    EXPECT_EQ(Dialog().CurrentSettings(), (PortSettings{4, "19200"}));
    fs::remove(settingsFile);
    fs::create_directory(settingsFile);
    EXPECT_EQ(Dialog().CurrentSettings(), PortSettings{});
    EXPECT_EQ(Shown().substr(0, 47), "SetupComm CurrentSettings|Error Number = 75\nPat");
}

TEST_F(PortSettingsEditorTest, TakesOnlyWholeNumbersOfTheRange) {
    PortSettingsEditor dialog = Dialog();
    for (const char* text : {"1", "4", " 2 ", "03"})
        EXPECT_TRUE(dialog.AcceptsPort(text)) << text;
    for (const char* text : {"", " ", "0", "5", "-1", "2.5", "COM1", "1e0", "99999999999"}) {
        dialogs.shown.clear();
        EXPECT_FALSE(dialog.AcceptsPort(text)) << text;
        EXPECT_EQ(Shown(), "Comm Port|Only a Number Between 1 and 4 can be Entered") << text;
        EXPECT_EQ(dialog.DeviceLine(text), "");
    }
    EXPECT_FALSE(turns.RunToEnd(dialog.Save("5", "9600")) || fs::exists(settingsFile));
    EXPECT_EQ(dialog.Stepped("3", 1) + dialog.Stepped("4", 1) + dialog.Stepped("1", -1) + dialog.Stepped("x", 1) +
                  dialog.Stepped("2147483647", 1),
              "44114");
}

TEST_F(PortSettingsEditorTest, SavingWritesTheSettingsAndTheFilesOfTheToolsThatAreThereAndLeavesAClosedPortClosed) {
    fs::create_directory(folder / "trv96");
    WriteText(folder / "TRP51" / "torvik.sfg", "the old line, which was longer\r\n");
    PortSettingsEditor dialog = Dialog();
    EXPECT_TRUE(turns.RunToEnd(dialog.Save(" 3", "19200")));
    turns.RunToEnd(dialog.Finish());
    EXPECT_EQ(FileText(settingsFile), "3,19200\r\n");
    EXPECT_EQ(FileText(folder / "trv96" / "TORVIK.SFG") + FileText(folder / "TRP51" / "torvik.sfg"), "2\r\n2\r\n");
    EXPECT_TRUE(dialogs.shown.empty());
    EXPECT_EQ(port.opened, 0);
}

TEST_F(PortSettingsEditorTest, AFileThatCannotBeWrittenIsReportedAndKeepsTheDialog) {
    fs::create_directory(settingsFile);
    EXPECT_FALSE(turns.RunToEnd(Dialog().Save("2", "9600")));
    EXPECT_EQ(Shown().substr(0, 28), "SetupComm|Error Number = 75\n");
    fs::remove(settingsFile);
    fs::create_directories(folder / "TRV51" / "TORVIK.SFG");
    EXPECT_TRUE(turns.RunToEnd(Dialog().Save("2", "9600"))) << "the program's own settings are saved";
    EXPECT_EQ(Shown(1).substr(0, 28), "SetupComm|Error Number = 75\n");
}

TEST_F(PortSettingsEditorTest, SaysWhichDeviceANumberStandsForAndWhetherItCanBeUsed) {
    std::unique_ptr<PseudoTerminal> terminal;
    try {
        terminal = PseudoTerminal::Create();
    } catch (const RuntimeError& error) {
        GTEST_SKIP() << error.Description();
    }
    fs::create_symlink(terminal->Device(), folder / "Support" / "COM2");
    fs::create_symlink("/dev/null", folder / "Support" / "COM3");
    fs::create_symlink("/dev/not-plugged-in", folder / "Support" / "COM4");
    PortSettingsEditor dialog = Dialog();
    const std::string name = "COM2 (" + terminal->Device() + ")";
    EXPECT_EQ(dialog.DeviceLine("2"), name + ": there, and free.");
    EXPECT_NE(dialog.DeviceLine("3").find("is not a serial device"), std::string::npos);
    EXPECT_NE(dialog.DeviceLine("4").find("COM4 (/dev/not-plugged-in):\n"), std::string::npos);
    EXPECT_NE(dialog.DeviceLine("4").find("does not exist"), std::string::npos);

    SystemClock realTime;
    AsioSerialPort inUse(realTime, terminal->Device());
    inUse.Open();
    EXPECT_NE(dialog.DeviceLine("2").find("in use by another program"), std::string::npos);

    WriteText(settingsFile, "2,9600\r\n");
    GoOnline();
    EXPECT_EQ(dialog.DeviceLine("2"), name + ": open in this program.");
    EXPECT_EQ(PortSettingsEditor(link, port, program, {1, 4}, dialogs, "a simulated board").DeviceLine("2"),
              "The program was started with a simulated board as its port. The number counts from the next start.");

    port.otherwise = 0x55;
    ASSERT_TRUE(turns.RunToEnd(dialog.Save("2", "9600")));
    turns.RunToEnd(dialog.Finish());
    ASSERT_TRUE(dialog.PortIsOpen());
    port.lostAfter = 0;
    (void)turns.RunToEnd(link.RSRead("B105"));
    EXPECT_FALSE(dialog.PortIsOpen()) << "its device has gone";
}

TEST_F(PortSettingsEditorTest, KeepsTheDeviceThatWasTakenForANumberBesideEverythingElse) {
#ifdef _WIN32
    GTEST_SKIP() << "every port has a number here, and no device is taken for another one";
#endif
    const fs::path ini = folder / "Support" / "vantrel.ini";
    WriteText(ini,
              "[Ports]\nCOM1=/dev/old\nCOM4=\"/dev/with\\\\blank\"\n\n[Window]\nPlace=@ByteArray(x)\nCOM1=no port\n");
    fs::create_symlink("/dev/null", folder / "Support" / "COM2");
    PortSettingsEditor dialog = Dialog();
    const SerialDevice adapter{.number = 0, .device = "/dev/full", .description = {}};
    EXPECT_EQ(dialog.NumberFor("3", adapter) + dialog.NumberFor("9", adapter), "31") << "the number in the box";
    EXPECT_EQ(dialog.NumberFor("3", {.number = 2, .device = "/dev/null", .description = {}}), "2") << "its own";
    EXPECT_EQ(SerialDeviceOf(1, folder / "Support"), "/dev/old");
    ASSERT_TRUE(turns.RunToEnd(dialog.Save("1", "9600", "/dev/zero")));
    ASSERT_TRUE(turns.RunToEnd(dialog.Save("2", "9600", "/dev/full")));
    EXPECT_EQ(FileText(ini), "[Ports]\nCOM2=\"/dev/full\"\nCOM1=\"/dev/zero\"\nCOM4=\"/dev/with\\\\blank\"\n\n"
                             "[Window]\nPlace=@ByteArray(x)\nCOM1=no port\n");
    EXPECT_EQ(SerialDeviceOf(4, folder / "Support"), "/dev/with\\blank");
    EXPECT_EQ(dialog.DeviceName("2"), "COM2 (/dev/full)") << "before the link";
    EXPECT_TRUE(dialog.StandsFor("2", adapter));
    EXPECT_EQ(FileText(settingsFile), "2,9600\r\n");

    link.SetPortOverride({.number = 4, .speed = {}});
    EXPECT_EQ(dialog.CurrentSettings().number, 4) << "what the command line named";
    ASSERT_TRUE(turns.RunToEnd(dialog.Save("3", "9600")));
    EXPECT_EQ(dialog.CurrentSettings().number, 3);
}

TEST_F(PortSettingsEditorTest, ABoardBehindANetworkIsKeptForItsNumberUntilItIsTakenBack) {
    const std::string address = "rfc2217://plc-7:4001";
    PortSettingsEditor dialog = Dialog();
    EXPECT_TRUE(dialog.AcceptsAddress(address));
    EXPECT_EQ(dialog.DeviceLine("2", address), "COM2 (" + address + "):\nreached when the program goes ONLINE.");
    EXPECT_TRUE(turns.RunToEnd(dialog.Save("2", "19200", address)));
    EXPECT_EQ(SerialDeviceOf(2, folder / "Support"), address);
    EXPECT_EQ(dialog.AddressOf("2") + dialog.AddressOf("1") + dialog.AddressOf("9"), address);
    ASSERT_FALSE(dialog.Devices().empty());
    EXPECT_EQ(dialog.Devices().back(), (SerialDevice{2, address, "a board behind a network"}));
    EXPECT_TRUE(dialog.StandsFor("2", dialog.Devices().back()));
    EXPECT_TRUE(turns.RunToEnd(dialog.Save("2", "19200", PortSettingsEditor::NoChoice)));
    EXPECT_EQ(dialog.AddressOf("2"), "");
    for (const char* text : {"plc-7:4001", "rfc2217://plc-7", "socket://plc-7:0"}) {
        dialogs.shown.clear();
        EXPECT_FALSE(dialog.AcceptsAddress(text));
        EXPECT_EQ(Shown(), "Comm Port|\"" + std::string(text) +
                               "\" is no address of a board behind a network.\nWrite rfc2217://host:port or "
                               "socket://host:port, with a port from 1 to 65535.");
    }
}

} // namespace
} // namespace vantrel
