// The state of the board on a terminal, what the command sets there, and what is said of the line to it.
#include "link/TargetMap.h"
#include "tests/console/ConsoleFixture.h"

namespace vantrel {
namespace {

class BoardCommandTest : public ConsoleTest {
protected:
    BoardCommandTest() {
        WriteText(File("Program/K5216-505.TRV"), "6");
        WriteText(File("Program/K5216-505.REV"), "K52165050401\n");
        WriteText(File("Support/FaultErrCodes.txt"), "00,No fault.\n45,User program\n");
        board.Poke(LastFaultByte, 0x45);
        board.Poke(SerialSetupByte, 200);
    }
};

TEST_F(BoardCommandTest, PrintsWhatTheBoardReports) {
    const Ended shown =
        Expect(0, "board --port 1",
               {"Firmware revision:              23\n", "Last Fault: Code = 45H          User program\n",
                "Network address:                01\n", "Serial set-up word:             200\n",
                "Board time:                     00 : 00 : 0",
                "User program in the board:      K5216505, revision numbers 1 and 4\n",
                "User program on disk:           K5216505, revision numbers 1 and 4\n"});
    EXPECT_EQ(shown.out.find("CO-CPU"), std::string::npos);
    WriteText(File("Program/K5216-505.TRV"), "2");
    Expect(0, "board --port 1", {"CO-CPU Slot: 0\n"});
    Expect(1, "board --port 1 --set-clock", {"no clock"});
    WriteText(File("Program/K5216-505.REV"), "K5216505-5+1\n");
    Expect(0, "board --port 1",
           {"K5216-505.REV\": \"+1\" is no revision number (00 to FF).", "on disk:           not known\n"});
}

TEST_F(BoardCommandTest, SetsWhatItIsToldToAndShowsTheResult) {
    Expect(0, "board --port 1 --reset-faults --set-clock --network-address 32",
           {"Network address:                32\n"}, "y\n");
    EXPECT_EQ(board.Peek(LastFaultByte), 0);
    EXPECT_EQ(board.Peek(NetworkAddressByte), 32);
    EXPECT_EQ(board.Peek(ClockYearByte, clock.Now()), 26);
}

TEST_F(BoardCommandTest, TellsHowFarTheBoardsClockIsOff) {
    Expect(0, "board --port 1 --set-clock",
           {"Board clock:                    the same as the computer's clock (to within"});
    board.Poke(ClockMinuteByte, static_cast<std::uint8_t>(board.Peek(ClockMinuteByte, clock.Now()) - 2), clock.Now());
    Expect(0, "board --port 1",
           {"Board clock:                    00:02:0", " behind the computer's clock (to within "});
    Expect(0, "board --port 1 --json", {"\"secondsAhead\": -12", "\"toWithinSeconds\": "});
}

TEST_F(BoardCommandTest, NothingIsSentForWhatIsRefused) {
    Expect(1, "board --port 1 --network-address 33 --yes",
           {"Network Address Set-up: Only a Number Between 1 and 32 can be Entered"});
    Expect(1, "board --port 1 --reset-faults", {}, "n\n");
    EXPECT_TRUE(NothingWasSent());
}

TEST_F(ConsoleTest, TheDoctorTellsAHealthyLineAndGivesItsFiguresToOtherPrograms) {
    Expect(0, "doctor --port simulated", {"55 came back", "200 exchanges went without a flaw"});
    Expect(0, "doctor --port simulated --json",
           {"\"exchanges\": 200", "\"lost\": 0", "\"medianMs\":", "\"p99Ms\":", "\"board\":"});
}

TEST_F(ConsoleTest, TheDoctorEndsWithTheCodeOfAFailedLinkAtTheWrongSpeed) {
    boardSpeed = 19200;
    Expect(3, "doctor --port simulated --speed 9600", {"answers at 19200 baud; the program is set to 9600."});
    Expect(0, "doctor --port simulated --speed 19200");
}

} // namespace
} // namespace vantrel
