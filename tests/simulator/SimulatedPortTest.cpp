// The paced line in the same process: exact times on the virtual clock.
#include "simulator/SimulatedPort.h"
#include "platform/RuntimeError.h"
#include "simulator/WrongSpeed.h"
#include "tests/support/VirtualClock.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace vantrel {
namespace {

using namespace std::chrono_literals;

constexpr MonotonicTime Byte9600 = 1041666ns;

class Port : public testing::Test {
protected:
    void Send(std::initializer_list<std::uint8_t> bytes) { port.Write(std::span(bytes.begin(), bytes.size())); }

    /// The next byte, and that it came exactly at `at`.
    int ByteAt(MonotonicTime at) {
        EXPECT_EQ(port.WaitForByte(1h), PortWait::ByteReceived);
        EXPECT_EQ(clock.Now(), at);
        return port.ReadByte();
    }

    VirtualClock clock;
    SimulatedBoard board;
    SimulatedPort port{board, clock, LinePacing::LineSpeed};
};

TEST_F(Port, AnswersAfterOneByteTimeEachWay) {
    port.Open();
    clock.Advance(1s);
    Send({0xFF});
    EXPECT_EQ(port.WaitForByte(1s + 2 * Byte9600 - 1ns), PortWait::TimedOut);
    EXPECT_EQ(clock.Now(), 1s + 2 * Byte9600 - 1ns);
    EXPECT_EQ(port.ReceivedCount(), 0U);
    EXPECT_EQ(ByteAt(1s + 2 * Byte9600), 0x55);

    port.SetSettings("19200,n,8,1");
    port.Open();
    const MonotonicTime start = clock.Now();
    Send({0xFF});
    EXPECT_EQ(ByteAt(start + 2 * 520833ns), 0x55);
}

TEST_F(Port, BytesFollowEachOtherOnBothWires) {
    board.AddFault({FaultKind::DoubledByte, true, 0});
    port.Open();
    Send({0xFF, 0x01});
    Send({0x20});
    EXPECT_EQ(ByteAt(2 * Byte9600), 0x55);
    EXPECT_EQ(ByteAt(3 * Byte9600), 0x55);
    EXPECT_EQ(ByteAt(4 * Byte9600), 0x55) << "the doubled byte holds the next answer up";
    EXPECT_EQ(ByteAt(5 * Byte9600), 0x20);
}

TEST_F(Port, LateAnswerComesLate) {
    board.AddFault({FaultKind::LateAnswer, false, 0});
    port.Open();
    Send({0xFF});
    EXPECT_EQ(port.WaitForByte(1s), PortWait::TimedOut);
    EXPECT_EQ(ByteAt(1500ms + 2 * Byte9600), 0x55);
}

TEST_F(Port, ClearsWhatHasArrivedAndNothingElse) {
    port.Open();
    Send({0xFF, 0x01});
    clock.Advance(2 * Byte9600);
    port.ClearReceived();
    EXPECT_EQ(port.ReceivedCount(), 0U);
    EXPECT_EQ(ByteAt(3 * Byte9600), 0x55);
    EXPECT_THROW(static_cast<void>(port.ReadByte()), RuntimeError);

    Send({0xFF});
    clock.Advance(1s);
    EXPECT_EQ(port.ReceivedCount(), 1U);
    port.Open();
    EXPECT_EQ(port.ReceivedCount(), 0U);
}

TEST_F(Port, UnpacedTakesAMicrosecondEachWay) {
    SimulatedPort unpaced(board, clock, LinePacing::None);
    unpaced.Open();
    const std::uint8_t sync = 0xFF;
    unpaced.Write(std::span(&sync, 1));
    EXPECT_EQ(unpaced.WaitForByte(1s), PortWait::ByteReceived);
    EXPECT_EQ(clock.Now(), 2us);
}

TEST_F(Port, IsLostInTheMiddleOfAWaitWhenTheBoardHangsUp) {
    board.AddFault({FaultKind::DoubledByte, true, 0});
    board.AddFault({FaultKind::HangUp, true, 1});
    port.Open();
    Send({0xFF, 0x01, 0x20});
    EXPECT_EQ(ByteAt(2 * Byte9600), 0x55);
    EXPECT_EQ(port.WaitForByte(5s), PortWait::Lost) << "the second answer is lost on the wire";
    EXPECT_EQ(clock.Now(), 2 * Byte9600);
    clock.Advance(1s);
    EXPECT_EQ(port.ReceivedCount(), 0U);
    EXPECT_TRUE(port.IsOpen());
    EXPECT_TRUE(port.IsLost());
}

TEST_F(Port, IsLostUntilTheLineIsMendedAndThePortOpenedAgain) {
    port.Open();
    EXPECT_FALSE(port.IsLost());
    port.CutLine();
    EXPECT_EQ(port.WaitForByte(5s), PortWait::Lost);
    EXPECT_EQ(clock.Now(), 0s);
    Send({0xFF});
    port.MendLine();
    EXPECT_TRUE(port.IsLost());
    Send({0xFF});
    EXPECT_EQ(port.WaitForByte(5s), PortWait::Lost);

    port.Open();
    EXPECT_FALSE(port.IsLost());
    Send({0xFF});
    EXPECT_EQ(ByteAt(2 * Byte9600), 0x55);
    port.Close();
    Send({0xFF});
    EXPECT_EQ(port.WaitForByte(5s), PortWait::Lost);
}

TEST_F(Port, APauseOfTheHostCountsAsSilenceOnTheLine) {
    struct Pause {
        MonotonicTime time;
        std::optional<MonotonicTime> limit;
        int stored;
    };
    for (const Pause& pause : {Pause{30ms, 40ms, 0xAB}, Pause{60ms, 40ms, 0}, Pause{60ms, 500ms, 0xAB},
                               Pause{10min, 500ms, 0}, Pause{10min, std::nullopt, 0xAB}}) {
        BoardHabits habits;
        habits.halfSentLimit = pause.limit;
        board = SimulatedBoard({}, habits);
        port.Open();
        Send({0xFF, 0x02, 0x20, 0x05});
        clock.Advance(4 * Byte9600 + pause.time);
        EXPECT_EQ(port.ReceivedCount(), 4U);
        Send({0xAB});
        EXPECT_EQ(board.Peek(0x2005), pause.stored) << pause.time.count();
        EXPECT_EQ(port.WaitForByte(0s), PortWait::ByteReceived) << "what came during the pause is there";
        clock.Advance(1s);
    }
}

TEST_F(Port, ABoardOfAnotherSpeedIsNotUnderstood) {
    port.SetBoardSpeed(19200);
    port.Open();
    Send({0xFF});
    EXPECT_EQ(ByteAt(2 * Byte9600), 0xF8) << "it heard FE, and answered 00";
    port.SetSettings("19200,n,8,1");
    port.Open();
    const MonotonicTime start = clock.Now();
    Send({0xFF});
    EXPECT_EQ(ByteAt(start + 2 * 520833ns), 0x55);
}

TEST(WrongSpeed, MakesGarbageOrNothingOfAByte) {
    using Bytes = std::vector<std::uint8_t>;
    EXPECT_EQ(HeardAtSpeed(0xFF, 9600, 19200), Bytes{0xFE});
    EXPECT_EQ(HeardAtSpeed(0x00, 19200, 9600), Bytes{0xF8});
    EXPECT_EQ(HeardAtSpeed(0xFF, 19200, 9600), Bytes{});
    EXPECT_EQ(HeardAtSpeed(0xF0, 1200, 9600), Bytes{}) << "a byte without a stop bit is none";
    EXPECT_EQ(HeardAtSpeed(0x55, 1200, 9600), Bytes(5, 0x80));
    for (int byte = 0; byte <= 0xFF; ++byte) {
        const auto sent = static_cast<std::uint8_t>(byte);
        EXPECT_EQ(HeardAtSpeed(sent, 9600, 9700), Bytes{sent}) << "clocks are never quite equal";
        EXPECT_EQ(HeardAtSpeed(sent, 9600, 9500), Bytes{sent});
    }
}

TEST_F(Port, RefusesACutLineAndNonsensicalSettings) {
    const auto errorOfOpening = [&] {
        try {
            port.Open();
        } catch (const RuntimeError& error) {
            EXPECT_FALSE(port.IsOpen());
            return error.Number();
        }
        return 0;
    };
    for (const char* settings : {"", "fast", "0,n,8,1", "-9600,n,8,1", "9600", "9600,e,7,1", "99999999999,n,8,1"}) {
        port.SetSettings(settings);
        EXPECT_EQ(errorOfOpening(), 5) << settings;
    }
    port.SetSettings("9600,n,8,1");
    port.CutLine();
    EXPECT_EQ(errorOfOpening(), 53);
    port.MendLine();
    EXPECT_EQ(errorOfOpening(), 0);
}

} // namespace
} // namespace vantrel
