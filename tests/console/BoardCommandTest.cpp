// The state of the board on a terminal, and what the command sets there.
#include "link/TargetMap.h"
#include "tests/console/ConsoleFixture.h"

namespace vantrel {
namespace {

class BoardCommandTest : public ConsoleTest {
protected:
    BoardCommandTest() {
        for (const char* name : {"Support", "Program"})
            std::filesystem::create_directory(folder / name);
        WriteText(File("Program/K5216-505.TRV"), "6");
        WriteText(File("Program/K5216-505.REV"), "K52165050401\n");
        WriteText(File("Support/FaultErrCodes.txt"), "00,No fault.\n45,User program\n");
        board.Poke(LastFaultByte, 0x45);
        board.Poke(SerialSetupByte, 200);
    }
    Ended Board(std::vector<std::string> options, const std::optional<std::string>& typed = {}) {
        options.insert(options.begin(), {"board", "--port", "simulated"});
        return Run(options, typed);
    }
};

TEST_F(BoardCommandTest, PrintsWhatTheBoardReports) {
    const Ended shown = Board({});
    EXPECT_EQ(shown.code, 0) << shown.err;
    for (const char* line : {"Firmware revision:              23\n", "Last Fault: Code = 45H          User program\n",
                             "Network address:                01\n", "Serial set-up word:             200\n",
                             "Board time:                     00 : 00 : 0",
                             "User program in the board:      K5216505, revision numbers 1 and 4\n",
                             "User program on disk:           K5216505, revision numbers 1 and 4\n"}) {
        EXPECT_NE(shown.out.find(line), std::string::npos) << line << "in\n" << shown.out;
    }
    EXPECT_EQ(shown.out.find("CO-CPU"), std::string::npos);
    WriteText(File("Program/K5216-505.TRV"), "2");
    EXPECT_NE(Board({}).out.find("CO-CPU Slot: 0\n"), std::string::npos);
    EXPECT_EQ(Board({"--set-clock"}).code, 1) << "a board without a clock";
    WriteText(File("Program/K5216-505.REV"), "K5216505-5+1\n");
    const Ended spoilt = Board({});
    EXPECT_NE(spoilt.err.find("K5216-505.REV\": \"+1\" is no revision number (00 to FF)."), std::string::npos)
        << spoilt.err;
    EXPECT_NE(spoilt.out.find("on disk:           not known\n"), std::string::npos) << "the board's own stays";
}

TEST_F(BoardCommandTest, SetsWhatItIsToldToAndShowsTheResult) {
    const Ended set = Board({"--reset-faults", "--set-clock", "--network-address", "32"}, "y\n");
    EXPECT_EQ(set.code, 0) << set.err;
    EXPECT_EQ(board.Peek(LastFaultByte), 0);
    EXPECT_EQ(board.Peek(NetworkAddressByte), 32);
    EXPECT_EQ(board.Peek(ClockYearByte, clock.Now()), 26);
    EXPECT_NE(set.out.find("Network address:                32\n"), std::string::npos) << set.out;
}

TEST_F(BoardCommandTest, NothingIsSentForWhatIsRefused) {
    const Ended outOfRange = Board({"--network-address", "33", "--yes"});
    EXPECT_EQ(outOfRange.code, 1);
    EXPECT_NE(outOfRange.err.find("Network Address Set-up: Only a Number Between 1 and 32 can be Entered"),
              std::string::npos);
    EXPECT_EQ(Board({"--reset-faults"}, "n\n").code, 1);
    EXPECT_TRUE(NothingWasSent());
}

} // namespace
} // namespace vantrel
