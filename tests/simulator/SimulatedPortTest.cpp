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

TEST_F(Port, BytesFollowEachOtherOnBothWiresAByteTimeEachWay) {
    board.AddFault({FaultKind::DoubledByte, true, 0});
    port.Open();
    Send({0xFF, 0x01});
    Send({0x20});
    EXPECT_EQ(port.WaitForByte(2 * Byte9600 - 1ns), PortWait::TimedOut);
    EXPECT_EQ(port.ReceivedCount(), 0U);
    EXPECT_EQ(ByteAt(2 * Byte9600), 0x55);
    EXPECT_EQ(ByteAt(3 * Byte9600), 0x55);
    EXPECT_EQ(ByteAt(4 * Byte9600), 0x55) << "the doubled byte holds the next answer up";
    EXPECT_EQ(ByteAt(5 * Byte9600), 0x20);
}

TEST_F(Port, ClearsWhatHasArrivedAndNothingElse) {
    port.Open();
    Send({0xFF, 0x01});
    clock.Advance(2 * Byte9600);
    port.ClearReceived();
    EXPECT_EQ(port.ReceivedCount(), 0U);
    EXPECT_EQ(ByteAt(3 * Byte9600), 0x55);
}

TEST_F(Port, IsLostInTheMiddleOfAWaitUntilTheLineIsMendedAndThePortOpenedAgain) {
    board.AddFault({FaultKind::DoubledByte, true, 0});
    board.AddFault({FaultKind::HangUp, true, 1});
    port.Open();
    Send({0xFF, 0x01, 0x20});
    EXPECT_EQ(ByteAt(2 * Byte9600), 0x55);
    EXPECT_EQ(port.WaitForByte(5s), PortWait::Lost) << "the second answer is lost on the wire";
    EXPECT_EQ(clock.Now(), 2 * Byte9600);
    port.MendLine();
    EXPECT_TRUE(port.IsOpen() && port.IsLost());
    Send({0xFF});
    EXPECT_EQ(port.WaitForByte(5s), PortWait::Lost);
    clock.Advance(1s);
    port.Open();
    EXPECT_FALSE(port.IsLost());
    Send({0xFF});
    EXPECT_EQ(ByteAt(1s + 4 * Byte9600), 0x55);
    port.Close();
    EXPECT_EQ(port.WaitForByte(5s), PortWait::Lost);
}

TEST(WrongSpeed, MakesGarbageOrNothingOfAByte) {
    using Bytes = std::vector<std::uint8_t>;
    EXPECT_EQ(HeardAtSpeed(0x00, 19200, 9600), Bytes{0xF8});
    EXPECT_EQ(HeardAtSpeed(0xFF, 19200, 9600), Bytes{});
    EXPECT_EQ(HeardAtSpeed(0xF0, 1200, 9600), Bytes{}) << "a byte without a stop bit is none";
    EXPECT_EQ(HeardAtSpeed(0x55, 1200, 9600), Bytes(5, 0x80));
    for (const int speed : {9500, 9700})
        EXPECT_EQ(HeardAtSpeed(0xA5, 9600, speed), Bytes{0xA5}) << "clocks are never quite equal";
}

TEST_F(Port, RefusesACutLineAndNonsensicalSettings) {
    port.CutLine();
    EXPECT_THROW(port.Open(), RuntimeError);
    port.MendLine();
    for (const char* settings : {"", "fast", "0,n,8,1", "-9600,n,8,1", "9600", "9600,e,7,1", "99999999999,n,8,1"}) {
        port.SetSettings(settings);
        EXPECT_THROW(port.Open(), RuntimeError) << settings;
    }
    EXPECT_FALSE(port.IsOpen());
}

} // namespace
} // namespace vantrel
