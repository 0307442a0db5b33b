// The real serial port, on asio. Exclusive, with low latency where the host has it; a device that goes is noticed at
// once.
#pragma once

#include "platform/Clock.h"
#include "platform/SerialPort.h"

#include <memory>
#include <string>

namespace vantrel {

class AsioSerialPort final : public SerialPort {
public:
    AsioSerialPort(Clock& clock, std::string device);
    ~AsioSerialPort() override;

    void SetPortNumber(int /*number*/) override {}
    void SetSettings(const std::string& settings) override;
    void Open() override;
    void Close() noexcept override;
    [[nodiscard]] bool IsOpen() const override;
    [[nodiscard]] bool IsLost() const override;
    void Write(std::span<const std::uint8_t> bytes) override;
    [[nodiscard]] std::size_t ReceivedCount() override;
    [[nodiscard]] std::uint8_t ReadByte() override;
    void ClearReceived() override;
    [[nodiscard]] PortWait WaitForByte(MonotonicTime deadline) override;
    [[nodiscard]] int WatchedDescriptor() const override;

    [[nodiscard]] const std::string& Device() const { return device_; }

private:
    struct Line;
    Clock& clock_;
    std::string device_;
    std::string settings_ = "9600,n,8,1";
    std::unique_ptr<Line> line_;
};

} // namespace vantrel
