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
    std::string linked;
    whenFlushed = [&] {
        if (linked.empty()) linked = std::filesystem::canonical(link).string();
        clock.interrupted = true;
    };
    const std::string said = Expect(0, "simulate --link @board").out;
    EXPECT_EQ(said, linked + "\n" + link + "\n");
    EXPECT_TRUE(linked.starts_with("/dev/")) << linked;
    EXPECT_FALSE(std::filesystem::is_symlink(link));
}

TEST_F(ConsoleTest, EveryFaultAndHabitIsInTheHelpAndBehindAnUnknownOne) {
    std::vector<std::string> faults;
    std::vector<std::string> habits{"there is no habit \"idle=loud\""};
    for (const FaultName& each : FaultNames())
        faults.emplace_back(each.sentence);
    for (const HabitName& each : HabitNames())
        habits.emplace_back(each.sentence);
    Expect(2, "simulate --fault spoilt", faults);
    Expect(2, "simulate --habit idle=echo idle=loud", habits);
    habits.erase(habits.begin());
    for (const auto& sentences : {faults, habits})
        Expect(0, "simulate --help", sentences);
}

TEST_F(ConsoleTest, ALinkReplacesOnlyWhatAnEarlierRunLeftBehind) {
    WriteText(File("file"), "precious");
    std::filesystem::create_symlink(folder / "file", folder / "link");
    clock.interrupted = true;
    for (const char* name : {"file", "link", "."})
        EXPECT_EQ(Expect(4, std::string("simulate --link @") + name, {"something else is there"}).out, "");
    EXPECT_EQ(FileText(File("link")), "precious");

    std::filesystem::create_symlink("/dev/pts/0", folder / "earlier");
    {
        const DeviceLink link(folder / "earlier", "/dev/pts/987654");
        EXPECT_TRUE(std::filesystem::read_symlink(folder / "earlier").string().ends_with("/dev/pts/987654"));
        std::filesystem::remove(folder / "earlier");
        WriteText(File("earlier"), "somebody else's");
    }
    EXPECT_EQ(FileText(File("earlier")), "somebody else's");
}

TEST_F(ConsoleTest, TheLinkOfARunningSimulatorIsLeftAloneAndThatOfAKilledOneReplaced) {
    const std::filesystem::path path = folder / "board";
    clock.interrupted = true;
    {
        const DeviceLink running(path, "/dev/null");
        Expect(4, "simulate --link @board", {"another simulated board is running there"});
        EXPECT_EQ(std::filesystem::canonical(path), "/dev/null");
    }
    // No process has such a number; the device of that one may be somebody else's by now.
    std::filesystem::create_symlink("/proc/2147483647/../../dev/null", path);
    Expect(0, "simulate --link @board");
}

#endif

TEST_F(ConsoleTest, ABoardIsNotServedWhereTheAddressIsNone) {
    for (const char* address : {"127.0.0.1:0x1", "127.0.0.1:70000", "rfc2217://127.0.0.1", "plant:"})
        Expect(2, std::string("simulate --listen ") + address, {"write HOST:PORT, PORT alone for this computer only"});
    Expect(2, "simulate --listen 4001 --link @board", {"--link is for a device; with --listen there is none."});
}

TEST_F(ConsoleTest, TheDemonstrationTellsWhetherTheSampleCameBackAsItWasSent) {
    WriteText(File("samples/bottling-line.vtl"), TwoSequences);
    Expect(0, "demo", {" bytes on the line in 2.3 s.", "Result: they came back as they were sent."});
    EXPECT_EQ(board.PeekWord(6400), 100) << "the sample was what travelled";
    board.AddFault({.kind = FaultKind::WrongData, .firstTimeOnly = true});
    Expect(1, "demo", {" in 2.3 s.", "came back otherwise"});
}

} // namespace

} // namespace vantrel
