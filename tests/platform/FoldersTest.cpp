// What the host says: where the program finds its files and keeps its settings, its serial devices, its clock,
// and interrupts, each in a process of its own.
#include "platform/Folders.h"
#include "platform/Registry.h"
#include "platform/SerialDevices.h"
#include "platform/SystemClock.h"
#include "platform/Terminal.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#ifdef __unix__
#include <csignal>
#include <unistd.h>
#endif

namespace vantrel {
namespace {

TEST(ProgramFolder, FindsSubFoldersAndFilesWithoutRegardToCase) {
    const TemporaryFolder home;
    WriteText(home.Path() / "SUPPORT" / "faulterrcodes.TXT", "");
    const ProgramFolder program(home.Path(), home / "user");
    WriteText(home.Path() / "SUPPORT" / "RSPORT.CFG", "");
    using std::filesystem::equivalent;
    EXPECT_TRUE(equivalent(program.File("Support", "FaultErrCodes.txt"), home / "SUPPORT" / "faulterrcodes.TXT"));
    EXPECT_TRUE(equivalent(program.WritableSupportFile("RSPort.cfg"), home / "SUPPORT" / "RSPORT.CFG"));
    EXPECT_EQ(program.Entry("Help"), home / "Help") << "what is not there yet keeps the name that it will get";
    const ProgramFolder other(home / "no such folder", home / "user");
    EXPECT_EQ(other.WritableSupportFile("RSPort.cfg"), home.Path() / "user" / "Support" / "RSPort.cfg");
    EXPECT_EQ(other.SupportFile("FaultErrCodes.txt").parent_path().parent_path(), home / "no such folder");
    WriteText(home / "user" / "Support" / "FaultErrCodes.txt", "");
    EXPECT_EQ(other.SupportFile("FaultErrCodes.txt").parent_path().parent_path(), home / "user") << "the user's own";
}

TEST(SerialDevice, HasOnWindowsTheNameThatPeopleThereTypeForIt) {
#ifdef _WIN32
    EXPECT_EQ(SerialDeviceOf(3, {}), R"(\\.\COM3)");
    EXPECT_EQ(SerialDeviceNamed("com12"), R"(\\.\COM12)");
#else
    EXPECT_EQ(SerialDeviceNamed("COM12"), std::nullopt);
#endif
    for (const char* other : {"COM", "COM1234", "COMA", "CON1", "12", "", R"(\\.\COM3)"})
        EXPECT_EQ(SerialDeviceNamed(other), std::nullopt) << other;
}

#ifdef __unix__
TEST(SerialDevice, IsTheLinkOfTheSupportFolderBeforeTheMachinesOwn) {
    const TemporaryFolder support;
    EXPECT_EQ(SerialDeviceOf(3, support.Path()), "/dev/ttyS2");
    const int machine = HighestSerialPort(support.Path());
    std::filesystem::create_symlink("/dev/not-plugged-in", support / "COM3");
    std::filesystem::create_symlink("/dev/not-plugged-in", support / "COM12");
    EXPECT_EQ(SerialDeviceOf(3, support.Path()), (support / "COM3").string());
    EXPECT_EQ(HighestSerialPort(support.Path()), std::max(machine, 12));

    std::filesystem::create_symlink("/dev/null", support / "COM14");
    const auto present = PresentSerialDevices(support.Path());
    const auto linked = std::ranges::find(present, 14, &SerialDevice::number);
    ASSERT_NE(linked, present.end());
    EXPECT_EQ(linked->device, "/dev/null");
    EXPECT_EQ(std::ranges::count(present, 3, &SerialDevice::number), 0) << "an adapter that is not plugged in";
}

/// Raises a signal twice; ends with 1 when the first one raised no flag, with 2 when the second one ended nothing.
[[noreturn]] void InterruptTwice(int signal) {
    SetLastWords("B105 may be up");
    const std::atomic<bool>& flag = CatchInterrupts();
    raise(signal);
    if (!flag) _exit(1);
    raise(signal);
    _exit(2);
}

TEST(Interrupts, TheFirstOneRaisesAFlagAndTheSecondOneEndsTheProcessWithItsLastWords) {
    EXPECT_EXIT(InterruptTwice(SIGINT), testing::ExitedWithCode(130), "^B105 may be up$");
    EXPECT_EXIT(InterruptTwice(SIGTERM), testing::ExitedWithCode(143), "^B105 may be up$");
}

TEST(Interrupts, WhatWasIgnoredStaysIgnored) {
    const auto ignored = std::signal(SIGHUP, SIG_IGN);
    EXPECT_EXIT(InterruptTwice(SIGHUP), testing::ExitedWithCode(1), "^$");
    std::signal(SIGHUP, ignored);
}

#elif defined(_WIN32)
TEST(Host, TellsWhatItsRegistryAndTheUsersFolderHold) {
    const std::string key = R"(SOFTWARE\Microsoft\Windows NT\CurrentVersion)";
    EXPECT_NE(GetKeyValue(RegistryRoot::LocalMachine, key, "CurrentVersion").value_or(""), "");
    EXPECT_EQ(GetKeyValue(RegistryRoot::LocalMachine, key, "No such value"), std::nullopt);
    EXPECT_EQ(GetKeyValue(RegistryRoot::CurrentUser, R"(Software\No such key)", ""), std::nullopt);
    EXPECT_EQ(UserDataFolder().filename(), "VANTREL");
    EXPECT_TRUE(FolderIsWritable(UserDataFolder().parent_path()));
    EXPECT_FALSE(FolderIsWritable(UserDataFolder() / "no such folder"));
}
#endif

TEST(SystemClock, SleepsOnTheTimeThatItTellsAndCountsTheMachinesSleep) {
    using namespace std::chrono_literals;
    SystemClock clock;
    const MonotonicTime start = clock.Now();
    clock.SleepUntil(start + 2ms);
    EXPECT_GE(clock.Now(), start + 2ms);
    // Where the machine tells for how long it has been up, asleep or not.
    double uptime = 0;
    if (std::ifstream("/proc/uptime") >> uptime) {
        EXPECT_NEAR(std::chrono::duration<double>(clock.Now()).count(), uptime, 1);
    }
}

} // namespace
} // namespace vantrel
