// A board behind a network: addresses, the telnet stream with RFC 2217 in it, and the port against a server on the
// loopback address.
#include "platform/HostSerialPort.h"
#include "platform/NetworkSerialPort.h"
#include "platform/NetworkServer.h"
#include "platform/Rfc2217.h"
#include "platform/SystemClock.h"
#include "platform/TurnQueue.h"
#include "tests/support/Thrown.h"

#include <gtest/gtest.h>

#include <numeric>

namespace vantrel {
namespace {

using namespace std::chrono_literals;
using telnet::Bytes;

Bytes AllBytes() {
    Bytes all(256);
    std::iota(all.begin(), all.end(), std::uint8_t{0});
    return all;
}

TEST(NetworkAddress, IsReadAsSerialToolsSpellItAndRefusedOtherwise) {
    using Kind = NetworkAddress::Kind;
    for (const auto& [text, address] :
         {std::pair<std::string, NetworkAddress>{"rfc2217://plc-7.plant:4001", {Kind::Rfc2217, "plc-7.plant", 4001}},
          {"SOCKET://10.0.0.5:23/", {Kind::Raw, "10.0.0.5", 23}},
          {"socket://[fe80::1]:65535", {Kind::Raw, "fe80::1", 65535}}}) {
        EXPECT_EQ(ParseNetworkAddress(text), address) << text;
        EXPECT_EQ(ParseNetworkAddress(NetworkAddressText(address)), address);
    }
    for (const char* text : {"rfc2217://", "rfc2217://host", "rfc2217://:4001", "socket://host:", "socket://host:65536",
                             "socket://host:40x", "socket://a b:1", "socket://::1:4001", "socket://user@host:1"}) {
        EXPECT_TRUE(MeantAsNetworkAddress(text));
        EXPECT_FALSE(ParseNetworkAddress(text)) << text;
    }
    EXPECT_FALSE(MeantAsNetworkAddress("/dev/ttyUSB0"));
}

/// Both ends, with what one sends handed to the other in pieces of `piece` bytes, until both have nothing to say.
struct Pair {
    explicit Pair(std::uint32_t speed) : client(speed) {}
    void Talk(std::size_t piece) {
        Bytes toServer = client.Begin();
        Bytes toClient = server.Begin();
        for (int round = 0; round < 100 && !(toServer.empty() && toClient.empty()); ++round) {
            const Bytes answers = Hand(server, std::exchange(toServer, {}), piece).replies;
            toServer = Hand(client, std::exchange(toClient, {}), piece).replies;
            toClient = answers;
        }
        EXPECT_TRUE(toServer.empty() && toClient.empty()) << "two ends that answer each other's answers";
    }
    template <typename End> static Rfc2217Client::Taken Hand(End& end, const Bytes& bytes, std::size_t piece) {
        Rfc2217Client::Taken all;
        for (std::size_t at = 0; at < bytes.size(); at += piece) {
            const auto taken = end.Take(std::span(bytes).subspan(at, std::min(piece, bytes.size() - at)));
            all.data.insert(all.data.end(), taken.data.begin(), taken.data.end());
            all.replies.insert(all.replies.end(), taken.replies.begin(), taken.replies.end());
        }
        return all;
    }
    Rfc2217Client client;
    Rfc2217Server server;
};

TEST(Rfc2217, AgreesOnASpeedInWhateverPiecesItComesAndCarriesEveryByteBothWays) {
    // 65535 holds the escape byte.
    for (const std::uint32_t speed : {9600U, 19200U, 65535U}) {
        for (const std::size_t piece : {1U, 2U, 3U, 1000U}) {
            Pair ends(speed);
            ends.Talk(piece);
            EXPECT_EQ(ends.client.Now(), Rfc2217Client::State::Ready);
            EXPECT_EQ(ends.server.Speed(), static_cast<int>(speed));
            EXPECT_EQ(Pair::Hand(ends.server, telnet::Escaped(AllBytes()), piece).data, AllBytes());
            EXPECT_EQ(Pair::Hand(ends.client, telnet::Escaped(AllBytes()), piece).data, AllBytes());
            const auto purge = Pair::Hand(ends.server, Rfc2217Client::PurgeReceived(), piece);
            EXPECT_EQ(purge.replies, (Bytes{255, 250, 44, 112, 1, 255, 240}));
            EXPECT_TRUE(purge.data.empty());
        }
    }
}

TEST(Rfc2217, SaysWhenTheServerCannotSetTheLineOrDoesNotWantTo) {
    using State = Rfc2217Client::State;
    const Bytes agrees{255, 253, 44, 255, 253, 0, 255, 250, 44, 101, 0, 0, 37, 128, 255, 240};
    EXPECT_EQ(Rfc2217Client(9600).Begin(), (Bytes{255, 251, 0, 255, 251, 3, 255, 251, 44, //
                                                  255, 253, 0, 255, 253, 3, 255, 253, 44}))
        << "WILL and DO";
    const auto after = [](const Bytes& heard) {
        Rfc2217Client client(9600);
        (void)client.Begin();
        (void)client.Take(heard);
        return client.Now();
    };
    EXPECT_EQ(after({}), State::Asking);
    EXPECT_EQ(after({'o', 'k', '\r', '\n'}), State::Asking) << "no telnet at all";
    EXPECT_EQ(after(agrees), State::Asking) << "parity and bits are not confirmed";
    EXPECT_EQ(after({255, 254, 44}), State::NoControl);
    EXPECT_EQ(after({255, 253, 44, 255, 254, 0}), State::NoControl);
    Bytes other = agrees;
    other[12] = 38; // Not 9600 any more.
    EXPECT_EQ(after(other), State::Refused);
}

TEST(Rfc2217, ADemandWithoutAnEndIsNotKept) {
    Rfc2217Client endless(9600);
    EXPECT_TRUE(endless.Take(Bytes{255, 250}).data.empty());
    for (int i = 0; i < 1000; ++i)
        EXPECT_TRUE(endless.Take(Bytes(1000, 65)).data.empty());
}

class NetworkPort : public testing::TestWithParam<NetworkAddress::Kind> {
protected:
    NetworkPort() { port.SetSettings("19200,n,8,1"); }
    /// Until it is open, or is not.
    static void OpenAgainst(SerialPort& opened, NetworkServer& served) {
        opened.BeginOpen();
        while (opened.Opening())
            (void)served.Read(1ms);
        opened.FinishOpen();
    }
    Bytes ServerHears(std::size_t count) {
        Bytes heard;
        for (const MonotonicTime end = clock.Now() + 5s; heard.size() < count && clock.Now() < end;) {
            const Bytes some = server.Read(100ms);
            heard.insert(heard.end(), some.begin(), some.end());
        }
        return heard;
    }
    SystemClock clock;
    NetworkServer server{{.kind = GetParam(), .host = "127.0.0.1", .port = 0}};
    HostSerialPort port{clock, server.Device()};
};

TEST_P(NetworkPort, CarriesEveryByteBothWaysWithItsSpeedAndIsLostWhenTheServerGoes) {
    OpenAgainst(port, server);
    EXPECT_EQ(server.Speed(), GetParam() == NetworkAddress::Kind::Rfc2217 ? std::optional(19200) : std::nullopt);
    port.Write(AllBytes());
    EXPECT_EQ(ServerHears(256), AllBytes());
    server.Write(AllBytes());
    Bytes heard;
    while (heard.size() < 256 && port.WaitForByte(clock.Now() + 5s) == PortWait::ByteReceived)
        heard.push_back(port.ReadByte());
    EXPECT_EQ(heard, AllBytes());
    EXPECT_EQ(port.WaitForByte(clock.Now() + 1ms), PortWait::TimedOut);

    server.Close();
    EXPECT_EQ(port.WaitForByte(clock.Now() + 60s), PortWait::Lost);
    EXPECT_TRUE(port.IsLost());
    EXPECT_NO_THROW(port.Write(AllBytes()));
    const std::string refused = ErrorText([&] { port.Open(); });
    EXPECT_NE(refused.find("refused"), std::string::npos) << refused;
    EXPECT_FALSE(port.IsOpen());
}

TEST_P(NetworkPort, IsOpenedByATaskThatHoldsUpNobody) {
    TurnQueue turns(clock);
    auto wait = [](TurnQueue& queue, SerialPort& opened) -> TaskOf<PortWait> {
        opened.BeginOpen();
        co_return co_await queue.WaitForByte(opened, std::chrono::hours(10000));
    };
    auto task = wait(turns, port);
    task.Start();
    EXPECT_FALSE(task.Done());
    while (!task.Done()) {
        (void)server.Read(1ms);
        (void)turns.RunOne();
    }
    EXPECT_EQ(task.TakeResult(), PortWait::Opened);
    EXPECT_NO_THROW(port.FinishOpen());
    EXPECT_TRUE(port.IsOpen() && !port.IsLost());
}

TEST_P(NetworkPort, BelongsToOneProgramAtATime) {
    OpenAgainst(port, server);
    HostSerialPort second(clock, server.Device());
    const std::string error = ErrorText([&] { OpenAgainst(second, server); });
    EXPECT_NE(error.find("Another program uses its serial port"), std::string::npos) << error;
    port.Close();
    (void)server.Read(100ms);
    EXPECT_NO_THROW(OpenAgainst(second, server));
}

INSTANTIATE_TEST_SUITE_P(Both, NetworkPort, testing::Values(NetworkAddress::Kind::Raw, NetworkAddress::Kind::Rfc2217));

/// Time that runs a thousand times faster whenever it is looked at.
class HastyClock final : public Clock {
public:
    [[nodiscard]] MonotonicTime Now() const override { return now_ += 20ms; }
    void SleepUntil(MonotonicTime time) override { now_ = std::max(now_, time); }
    [[nodiscard]] std::chrono::local_seconds LocalNow() const override { return {}; }

private:
    mutable MonotonicTime now_{0};
};

TEST(NetworkPortOpen, GivesUpAfterFiveSecondsOnAServerThatNeverAnswersAndSaysWhy) {
    // It takes the connection and no telnet.
    NetworkServer raw({.kind = NetworkAddress::Kind::Raw, .host = "127.0.0.1", .port = 0});
    HastyClock clock;
    HostSerialPort port(clock, "rfc2217" + raw.Device().substr(raw.Device().find(':')));
    port.BeginOpen();
    while (port.Opening())
        (void)raw.Read(1ms);
    EXPECT_GE(clock.Now(), 5s);
    const std::string error = ErrorText([&] { port.FinishOpen(); });
    EXPECT_NE(error.find("does not answer as a server of RFC 2217"), std::string::npos) << error;
    EXPECT_NE(error.find("use socket://127.0.0.1:"), std::string::npos);
}

} // namespace
} // namespace vantrel
