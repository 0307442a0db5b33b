// The port that a number or a name stands for on this host: a serial device, or a board behind a network.
#pragma once

#include "platform/Clock.h"
#include "platform/SerialPort.h"

#include <filesystem>
#include <memory>
#include <string>

namespace vantrel {

class HostSerialPort final : public SerialPort {
public:
    /// Opens what its port number stands for; see SerialDeviceOf.
    HostSerialPort(Clock& clock, std::filesystem::path supportFolder);
    /// Opens `device`, a serial device or the address of a board behind a network, whatever its port number says.
    HostSerialPort(Clock& clock, std::string device);
    ~HostSerialPort() override;

    void SetPortNumber(int number) override;
    void SetSettings(const std::string& settings) override;
    void Open() override;
    void BeginOpen() override;
    [[nodiscard]] bool Opening() override { return port_ && port_->Opening(); }
    void FinishOpen() override;
    void Close() noexcept override;
    [[nodiscard]] bool IsOpen() const override { return port_ && port_->IsOpen(); }
    [[nodiscard]] bool IsLost() const override { return port_ && port_->IsLost(); }
    void Write(std::span<const std::uint8_t> bytes) override;
    [[nodiscard]] std::size_t ReceivedCount() override { return port_ ? port_->ReceivedCount() : 0; }
    [[nodiscard]] std::uint8_t ReadByte() override;
    void ClearReceived() override;
    [[nodiscard]] PortWait WaitForByte(MonotonicTime deadline) override;
    [[nodiscard]] int WatchedDescriptor() const override { return port_ ? port_->WatchedDescriptor() : -1; }

    /// What Open() opens, or has opened.
    [[nodiscard]] std::string Device() const;

private:
    Clock& clock_;
    std::filesystem::path supportFolder_;
    std::string fixedDevice_;
    int number_ = 1;
    std::string opened_; ///< Opened again as the same device, whatever its number stands for by now.
    std::string settings_ = "9600,n,8,1";
    std::unique_ptr<SerialPort> port_;
};

} // namespace vantrel
