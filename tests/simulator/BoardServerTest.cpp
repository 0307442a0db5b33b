// The board behind a real pseudo-terminal, opened as any other program would open it.
#ifndef _WIN32

#include "simulator/BoardServer.h"
#include "platform/PseudoTerminal.h"
#include "tests/support/VirtualClock.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <thread>
#include <unistd.h>

namespace vantrel {
namespace {

using namespace std::chrono_literals;

class Client {
public:
    explicit Client(const std::string& device) : file_(open(device.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        EXPECT_GE(file_, 0);
    }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;
    ~Client() { close(file_); }

    void Send(std::initializer_list<std::uint8_t> bytes) const {
        EXPECT_EQ(write(file_, bytes.begin(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    /// The next `count` bytes; fewer when the line dies or stays silent for five seconds.
    [[nodiscard]] std::vector<int> Receive(std::size_t count) const {
        std::vector<int> bytes;
        pollfd wait{file_, POLLIN, 0};
        std::uint8_t byte = 0;
        while (bytes.size() < count && poll(&wait, 1, 5000) > 0 && read(file_, &byte, 1) == 1)
            bytes.push_back(byte);
        return bytes;
    }
    void SetSpeed(speed_t speed) const {
        termios settings{};
        ASSERT_EQ(tcgetattr(file_, &settings), 0);
        cfsetspeed(&settings, speed);
        ASSERT_EQ(tcsetattr(file_, TCSANOW, &settings), 0);
    }
    [[nodiscard]] int File() const { return file_; }

private:
    int file_;
};

class Server : public testing::Test {
protected:
    void Start(int bitsPerSecond = 0) {
        server_.emplace(board, clock, bitsPerSecond);
        thread_ = std::thread([this] { server_->Run(stop_); });
    }
    void TearDown() override { Stop(); }
    void Stop() {
        stop_ = true;
        if (thread_.joinable()) thread_.join();
    }
    [[nodiscard]] const std::string& Device() const { return server_->Device(); }

    VirtualClock clock; ///< While the server runs, it belongs to the server.
    SimulatedBoard board;

private:
    std::optional<BoardServer> server_;
    std::atomic<bool> stop_ = false;
    std::thread thread_;
};

TEST_F(Server, CarriesControlCharactersUnchanged) {
    board.PokeWord(0x2000, 0x0D0A);
    board.PokeWord(0x2002, 0x1103);
    Start();
    const Client client(Device());
    client.Send({0xFF, 0x01, 0x20, 0x00, 0x20, 0x01, 0x20, 0x02, 0x20, 0x03});
    EXPECT_EQ(client.Receive(10), (std::vector<int>{0x55, 0x55, 0x20, 0x0A, 0x20, 0x0D, 0x20, 0x03, 0x20, 0x11}));
}

TEST_F(Server, ServesOneClientAfterTheOther) {
    Start();
    for (int visit = 0; visit < 5; ++visit) {
        const Client client(Device());
        client.Send({0xFF});
        EXPECT_EQ(client.Receive(1), std::vector<int>{0x55}) << visit;
    }
}

TEST_F(Server, PacesOnAnAbsoluteSchedule) {
    Start(9600);
    {
        const Client client(Device());
        for (int exchange = 0; exchange < 100; ++exchange) {
            client.Send({0xFF});
            ASSERT_EQ(client.Receive(1), std::vector<int>{0x55});
        }
    }
    Stop();
    EXPECT_EQ(clock.Now(), 200 * 1041666ns);
}

TEST_F(Server, UnderstandsItsOwnSpeedOnly) {
    Start(19200);
    const Client client(Device());
    for (const auto& [speed, answer] : {std::pair<speed_t, int>{B9600, 0xF8}, {B19200, 0x55}}) {
        client.SetSpeed(speed);
        client.Send({0xFF});
        EXPECT_EQ(client.Receive(1), std::vector<int>{answer});
    }
}

TEST_F(Server, TakesAnySpeedWhenItHasNone) {
    Start(0);
    const Client client(Device());
    client.SetSpeed(B9600);
    client.Send({0xFF});
    EXPECT_EQ(client.Receive(1), std::vector<int>{0x55});
}

TEST_F(Server, LetsTheClientSeeAHangUp) {
    board.AddFault({FaultKind::HangUp, true, 1});
    Start();
    const Client client(Device());
    client.Send({0xFF});
    EXPECT_EQ(client.Receive(1), std::vector<int>{0x55});
    client.Send({0xFF});
    EXPECT_TRUE(client.Receive(1).empty());
    pollfd wait{client.File(), POLLIN, 0};
    ASSERT_EQ(poll(&wait, 1, 5000), 1);
    EXPECT_TRUE(wait.revents & POLLHUP);
}

TEST(PseudoTerminalDevice, IsFreshForTheNextClient) {
    const auto terminal = PseudoTerminal::Create();
    const std::uint8_t stale[] = {'a', 'b', '\n'};
    {
        const Client first(terminal->Device());
        termios settings{};
        ASSERT_EQ(tcgetattr(first.File(), &settings), 0);
        EXPECT_EQ(settings.c_lflag & (ICANON | ECHO | ISIG), 0U);
        EXPECT_EQ(settings.c_oflag & OPOST, 0U);
        settings.c_lflag |= ICANON;
        ASSERT_EQ(tcsetattr(first.File(), TCSANOW, &settings), 0);
        ASSERT_EQ(ioctl(first.File(), TIOCEXCL), 0);
        EXPECT_EQ(terminal->Speed(), std::nullopt);
        first.SetSpeed(B19200);
        EXPECT_EQ(terminal->Speed(), 19200);
        terminal->Write(stale);
        first.Send({7});
    }
    std::vector<std::uint8_t> sentBeforeItLeft;
    for (int attempt = 0; attempt < 10 && sentBeforeItLeft.empty(); ++attempt)
        sentBeforeItLeft = terminal->Read(1s);
    EXPECT_EQ(sentBeforeItLeft, std::vector<std::uint8_t>{7});
    terminal->Write(stale);

    const Client second(terminal->Device());
    EXPECT_EQ(terminal->Speed(), std::nullopt);
    int exclusive = 1;
    ASSERT_EQ(ioctl(second.File(), TIOCGEXCL, &exclusive), 0);
    EXPECT_EQ(exclusive, 0);
    termios settings{};
    ASSERT_EQ(tcgetattr(second.File(), &settings), 0);
    EXPECT_EQ(settings.c_lflag & ICANON, 0U);
    const std::uint8_t fresh[] = {9};
    terminal->Write(fresh);
    EXPECT_EQ(second.Receive(1), std::vector<int>{9});
}

TEST(PseudoTerminalDevice, LosesWhatNobodyReadsInsteadOfWaiting) {
    const auto terminal = PseudoTerminal::Create();
    const Client client(terminal->Device());
    const std::vector<std::uint8_t> page(4096, 0xAA);
    for (int i = 0; i < 100; ++i)
        terminal->Write(page);
    client.Send({1});
    EXPECT_EQ(terminal->Read(1s), std::vector<std::uint8_t>{1});
    terminal->Close();
    EXPECT_TRUE(terminal->Read(1s).empty());
}

} // namespace
} // namespace vantrel

#endif
