// The real serial port against a pseudo-terminal: binary, exclusive, and quick to notice that the line has gone.
#include "platform/AsioSerialPort.h"
#include "platform/PseudoTerminal.h"
#include "platform/SystemClock.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Thrown.h"

#include <gtest/gtest.h>

#include <memory>
#include <numeric>

namespace vantrel {
namespace {

using namespace std::chrono_literals;

class SerialPortTest : public testing::Test {
protected:
    void SetUp() override {
        try {
            farEnd = PseudoTerminal::Create();
        } catch (const RuntimeError& error) {
            GTEST_SKIP() << error.Description();
        }
        port = std::make_unique<AsioSerialPort>(clock, farEnd->Device());
        port->Open();
    }
    int NextByte() { return port->WaitForByte(In(5s)) == PortWait::ByteReceived ? port->ReadByte() : -1; }
    [[nodiscard]] MonotonicTime In(MonotonicTime time) const { return clock.Now() + time; }

    SystemClock clock;
    std::unique_ptr<PseudoTerminal> farEnd;
    std::unique_ptr<AsioSerialPort> port;
};

TEST_F(SerialPortTest, CarriesEveryByteBothWaysUnchangedAndThrowsAwayWhatIsCleared) {
    std::vector<std::uint8_t> all(256);
    std::iota(all.begin(), all.end(), std::uint8_t{0});
    port->Write(all);
    std::vector<std::uint8_t> arrived;
    while (arrived.size() < all.size()) {
        const std::vector<std::uint8_t> some = farEnd->Read(5s);
        ASSERT_FALSE(some.empty());
        arrived.insert(arrived.end(), some.begin(), some.end());
    }
    EXPECT_EQ(arrived, all);
    EXPECT_EQ(port->ReceivedCount(), 0U) << "nothing is echoed by the host itself";
    farEnd->Write(all);
    for (const std::uint8_t byte : all)
        EXPECT_EQ(NextByte(), byte);
    farEnd->Write(std::vector<std::uint8_t>{1, 2, 3});
    EXPECT_EQ(NextByte(), 1);
    port->ClearReceived();
    EXPECT_EQ(port->WaitForByte(In(1ms)), PortWait::TimedOut);
    EXPECT_THROW(static_cast<void>(port->ReadByte()), RuntimeError);
}

TEST_F(SerialPortTest, TheDeviceIsFreshForTheNextProgram) {
    const std::vector<std::uint8_t> stale(4096, 0xAA);
    port->SetSettings("19200,n,8,1");
    port->Open();
    EXPECT_EQ(farEnd->Speed(), 19200);
    for (int i = 0; i < 100; ++i)
        farEnd->Write(stale);
    port->Write(std::vector<std::uint8_t>{7});
    port->Close();
    EXPECT_EQ(farEnd->Read(5s), std::vector<std::uint8_t>{7}) << "what nobody reads is lost, and nobody waits";
    farEnd->Write(stale);
    EXPECT_EQ(farEnd->Speed(), std::nullopt);
    port->Open();
    farEnd->Write(std::vector<std::uint8_t>{9});
    EXPECT_EQ(NextByte(), 9);
}

TEST_F(SerialPortTest, BelongsToOneProgramAtATime) {
    AsioSerialPort second(clock, farEnd->Device());
    const auto error = Thrown([&] { second.Open(); });
    ASSERT_TRUE(error && error->Number() == 75) << "opened twice";
    EXPECT_NE(error->Description().find("in use by another program"), std::string::npos);
    port->Close();
    EXPECT_NO_THROW(second.Open());
}

TEST_F(SerialPortTest, ALineThatHangsUpIsLostWhileWaitingAndCanBeOpenedAgainOnlyWhenItIsBack) {
    farEnd->Close();
    EXPECT_EQ(port->WaitForByte(In(60s)), PortWait::Lost);
    EXPECT_TRUE(port->IsLost() && port->IsOpen());
    EXPECT_NO_THROW(port->Write(std::vector<std::uint8_t>{0xFF}));
    EXPECT_THROW(port->Open(), RuntimeError);
    EXPECT_FALSE(port->IsOpen());
}

TEST_F(SerialPortTest, AWriteSeesThatTheLineHasGone) {
    farEnd->Close();
    port->Write(std::vector<std::uint8_t>{0xFF});
    EXPECT_TRUE(port->IsLost());
}

TEST(SerialPortOpen, SaysWhyADeviceCannotBeOpened) {
    SystemClock clock;
    const TemporaryFolder folder;
    const std::string noDevice = (folder / "file").string();
    WriteText(noDevice, "");
    const std::string nothing = (folder / "nothing").string();
    for (const auto& [device, settings, number] :
         {std::tuple(nothing, "9600,n,8,1", 53), std::tuple(noDevice, "9600,n,8,1", 75),
          std::tuple(noDevice, "fast", 5)}) {
        AsioSerialPort port(clock, device);
        port.SetSettings(settings);
        const auto error = Thrown([&] { port.Open(); });
        ASSERT_TRUE(error) << device;
        EXPECT_EQ(error->Number(), number) << error->Description();
        EXPECT_NE(error->Description().find(number == 5 ? settings : device), std::string::npos);
        EXPECT_FALSE(port.IsOpen());
        EXPECT_EQ(port.WaitForByte(clock.Now()), PortWait::Lost);
    }
}

} // namespace
} // namespace vantrel
