// Where the program finds its files and keeps its settings.
#include "platform/Folders.h"
#include "platform/SerialDevices.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vantrel {
namespace {

TEST(ProgramFolder, FindsSubFoldersAndFilesWithoutRegardToCase) {
    const TemporaryFolder home;
    std::filesystem::create_directories(home / "SUPPORT");
    WriteText(home.Path() / "SUPPORT" / "faulterrcodes.TXT", "");
    const ProgramFolder program(home.Path(), home / "user");
    EXPECT_EQ(program.File("Support", "FaultErrCodes.txt"), home.Path() / "SUPPORT" / "faulterrcodes.TXT");
    EXPECT_EQ(program.WritableSupportFile("RSPort.cfg"), home.Path() / "SUPPORT" / "RSPort.cfg");
    EXPECT_EQ(program.Entry("Help"), home / "Help") << "what is not there yet keeps the name that it will get";
}

TEST(ProgramFolder, KeepsSettingsWithTheUserWhereTheProgramFolderCannotBeWritten) {
    const TemporaryFolder home;
    const ProgramFolder program(home / "no such folder", home / "user");
    EXPECT_EQ(program.WritableSupportFile("RSPort.cfg"), home.Path() / "user" / "Support" / "RSPort.cfg");
}

TEST(SerialDevice, IsTheLinkOfTheSupportFolderBeforeTheMachinesOwn) {
    const TemporaryFolder support;
    EXPECT_EQ(SerialDeviceOf(3, support.Path()), "/dev/ttyS2");
    const int machine = HighestSerialPort(support.Path());
    std::filesystem::create_symlink("/dev/not-plugged-in", support / "COM3");
    std::filesystem::create_symlink("/dev/not-plugged-in", support / "COM12");
    EXPECT_EQ(SerialDeviceOf(3, support.Path()), (support / "COM3").string());
    EXPECT_EQ(HighestSerialPort(support.Path()), std::max(machine, 12));
}

} // namespace
} // namespace vantrel
