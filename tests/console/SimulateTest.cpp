// The simulated board at a device of its own, and the demonstration.
#include "tests/console/ConsoleFixture.h"

#include "console/DeviceLink.h"
#include "platform/RuntimeError.h"

namespace vantrel {

namespace {

// Links to devices are for hosts that have devices of their own making.
#ifdef __unix__

TEST_F(ConsoleTest, ASimulatedBoardSaysWhereItIsAndTakesItsLinkAwayAgain) {
    const std::string link = File("board");
    std::filesystem::create_symlink(folder / "gone", link);
    WatchedOutput written;
    std::ostream out(&written);
    std::string linked;
    written.flushed = [&] {
        if (linked.empty()) linked = std::filesystem::canonical(link).string();
        clock.interrupted = true;
    };
    std::istringstream in;
    std::ostringstream err;
    ConsoleHost host{.in = in,
                     .out = out,
                     .err = err,
                     .clock = clock,
                     .catchInterrupts = [this]() -> const std::atomic<bool>& { return clock.interrupted; },
                     .reachBoard = {}};
    EXPECT_EQ(RunConsole({"simulate", "--link", link, "--program-folder", folder.string()}, host), 0) << err.str();
    EXPECT_EQ(written.str(), linked + "\n" + link + "\n");
    EXPECT_TRUE(linked.starts_with("/dev/")) << linked;
    EXPECT_FALSE(std::filesystem::is_symlink(link));
}

TEST_F(ConsoleTest, EveryFaultAndHabitIsInTheHelpAndBehindAnUnknownOne) {
    const std::string help = Run({"simulate", "--help"}).out;
    const Ended fault = Run({"simulate", "--fault", "spoilt"});
    const Ended habit = Run({"simulate", "--habit", "idle=echo", "idle=loud"});
    EXPECT_EQ(fault.code, 2);
    EXPECT_EQ(habit.code, 2);
    EXPECT_NE(habit.err.find("there is no habit \"idle=loud\""), std::string::npos) << habit.err;
    for (const FaultName& each : FaultNames()) {
        EXPECT_NE(help.find(each.sentence), std::string::npos) << each.name;
        EXPECT_NE(fault.err.find(each.sentence), std::string::npos) << each.name;
    }
    for (const HabitName& each : HabitNames()) {
        EXPECT_NE(help.find(each.sentence), std::string::npos) << each.name;
        EXPECT_NE(habit.err.find(each.sentence), std::string::npos) << each.name;
    }
}

TEST_F(ConsoleTest, ALinkReplacesOnlyWhatAnEarlierRunLeftBehind) {
    WriteText(File("file"), "precious");
    std::filesystem::create_symlink(folder / "file", folder / "link");
    clock.interrupted = true;
    for (const char* name : {"file", "link", "."}) {
        const Ended refused = Run({"simulate", "--link", File(name)});
        EXPECT_EQ(refused.code, 4) << name;
        EXPECT_NE(refused.err.find("something else is there"), std::string::npos) << refused.err;
        EXPECT_EQ(refused.out, "");
    }
    EXPECT_EQ(TextOf(File("link")), "precious");

    std::filesystem::create_symlink("/dev/pts/0", folder / "earlier");
    {
        const DeviceLink link(folder / "earlier", "/dev/pts/987654");
        EXPECT_TRUE(std::filesystem::read_symlink(folder / "earlier").string().ends_with("/dev/pts/987654"));
        std::filesystem::remove(folder / "earlier");
        WriteText(File("earlier"), "somebody else's");
    }
    EXPECT_EQ(TextOf(File("earlier")), "somebody else's");
}

TEST_F(ConsoleTest, TheLinkOfARunningSimulatorIsLeftAloneAndThatOfAKilledOneReplaced) {
    const std::filesystem::path path = folder / "board";
    clock.interrupted = true;
    {
        const DeviceLink running(path, "/dev/null");
        const Ended refused = Run({"simulate", "--link", path.string()});
        EXPECT_EQ(refused.code, 4);
        EXPECT_NE(refused.err.find("another simulated board is running there"), std::string::npos) << refused.err;
        EXPECT_EQ(std::filesystem::canonical(path), "/dev/null");
    }
    // No process has such a number; the device of that one may be somebody else's by now.
    std::filesystem::create_symlink("/proc/2147483647/../../dev/null", path);
    EXPECT_EQ(Run({"simulate", "--link", path.string()}).code, 0);
}

#endif

TEST_F(ConsoleTest, TheDemonstrationEndsWithTwoEqualFilesAndLeavesNothingBehind) {
    std::filesystem::create_directory(folder / "samples");
    WriteText(File("samples/bottling-line.vtl"), TwoSequences);
    const Ended shown = Run({"demo"});
    EXPECT_EQ(shown.code, 0) << shown.err;
    EXPECT_NE(shown.out.find("Result: both set-up files hold the same record."), std::string::npos) << shown.out;
    EXPECT_EQ(board.PeekWord(6400), 100) << "the sample was what travelled";
    const std::size_t at = shown.out.find('"') + 1;
    const std::filesystem::path sent = shown.out.substr(at, shown.out.find('"', at) - at);
    EXPECT_EQ(sent.filename(), "bottling-line.sdt");
    EXPECT_FALSE(std::filesystem::exists(sent.parent_path()));

    board.AddFault({.kind = FaultKind::WrongData, .firstTimeOnly = true});
    const Ended garbled = Run({"demo"});
    EXPECT_EQ(garbled.code, 1);
    EXPECT_NE(garbled.out.find("differ in values"), std::string::npos) << garbled.out;
}

} // namespace

} // namespace vantrel
