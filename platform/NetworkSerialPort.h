// A serial port at a server in the network, on asio's sockets: as raw bytes, or with its speed set by RFC 2217.
#pragma once

#include "platform/Clock.h"
#include "platform/NetworkAddress.h"
#include "platform/SerialPort.h"

#include <memory>
#include <string>

namespace vantrel {

/// As exclusive as its server is, which is told of when it turns us away. A connection that ends is a lost port; one
/// whose far end vanishes without a word is silent, as a cable is that somebody has pulled at the board.
class NetworkSerialPort final : public SerialPort {
public:
    NetworkSerialPort(Clock& clock, NetworkAddress address);
    ~NetworkSerialPort() override;

    /// How long looking up the name, connecting and setting the speed may take together: as long as a silent board has
    /// until the cable warning.
    static constexpr MonotonicTime LongestOpening = std::chrono::seconds(5);

    void SetPortNumber(int /*number*/) override {}
    void SetSettings(const std::string& settings) override { settings_ = settings; }
    /// 53 no such host, 75 refused, silent or in use, 5 a speed that the server cannot set; see BeginOpen().
    void Open() override;
    void BeginOpen() override;
    [[nodiscard]] bool Opening() override;
    void FinishOpen() override;
    void Close() noexcept override;
    [[nodiscard]] bool IsOpen() const override;
    [[nodiscard]] bool IsLost() const override;
    void Write(std::span<const std::uint8_t> bytes) override;
    [[nodiscard]] std::size_t ReceivedCount() override;
    [[nodiscard]] std::uint8_t ReadByte() override;
    void ClearReceived() override;
    [[nodiscard]] PortWait WaitForByte(MonotonicTime deadline) override;
    [[nodiscard]] int WatchedDescriptor() const override;

private:
    class Connection;
    Clock& clock_;
    NetworkAddress address_;
    std::string settings_ = "9600,n,8,1";
    std::unique_ptr<Connection> connection_;
};

} // namespace vantrel
