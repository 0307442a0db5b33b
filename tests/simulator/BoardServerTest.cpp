// The board behind a real pseudo-terminal, opened as any other program would open it.
#ifndef _WIN32

#include "simulator/BoardServer.h"

#include "platform/AsioSerialPort.h"
#include "platform/SystemClock.h"
#include "tests/support/VirtualClock.h"

#include <gtest/gtest.h>

#include <thread>

namespace vantrel {
namespace {

using namespace std::chrono_literals;

class Server : public testing::Test {
protected:
    void Start(int bitsPerSecond = 0) {
        stop_ = false;
        server_.emplace(board, clock, bitsPerSecond);
        thread_ = std::thread([this] { server_->Run(stop_); });
        port.emplace(realTime, server_->Device());
        port->Open();
    }
    void TearDown() override { Stop(); }
    void Stop() {
        stop_ = true;
        if (thread_.joinable()) thread_.join();
    }
    /// What the board answers to a sync byte; -1 for nothing.
    int AnswerToSync() {
        port->Write(std::vector<std::uint8_t>{0xFF});
        return port->WaitForByte(realTime.Now() + 5s) == PortWait::ByteReceived ? port->ReadByte() : -1;
    }

    VirtualClock clock; ///< While the server runs, it belongs to the server.
    SystemClock realTime;
    SimulatedBoard board;
    std::optional<AsioSerialPort> port;

private:
    std::optional<BoardServer> server_;
    std::atomic<bool> stop_ = false;
    std::thread thread_;
};

TEST_F(Server, PacesOnAnAbsoluteSchedule) {
    Start(9600);
    for (int exchange = 0; exchange < 100; ++exchange)
        ASSERT_EQ(AnswerToSync(), 0x55);
    Stop();
    EXPECT_EQ(clock.Now(), 200 * 1041666ns);
}

TEST_F(Server, UnderstandsItsOwnSpeedOnlyAndEveryOneWhenItHasNone) {
    for (const int own : {19200, 0}) {
        Start(own);
        EXPECT_EQ(AnswerToSync(), own == 0 ? 0x55 : 0xF8) << "opened at 9600";
        port->SetSettings("19200,n,8,1");
        port->Open();
        EXPECT_EQ(AnswerToSync(), 0x55);
        Stop();
    }
}

TEST_F(Server, LetsTheClientSeeAHangUp) {
    board.AddFault({FaultKind::HangUp, true, 1});
    Start();
    EXPECT_EQ(AnswerToSync(), 0x55);
    EXPECT_EQ(AnswerToSync(), -1);
    EXPECT_TRUE(port->IsLost());
}

} // namespace
} // namespace vantrel

#endif
