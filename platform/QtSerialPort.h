// A serial port whose longer waits keep the windows painted: a wait cursor after 100 ms, and no events dispatched.
#pragma once

#include "platform/Clock.h"
#include "platform/SerialPort.h"

namespace vantrel {

/// Passes everything on to another port, which must outlive it.
class QtSerialPort final : public SerialPort {
public:
    QtSerialPort(SerialPort& port, const Clock& clock) : port_(port), clock_(clock) {}

    void SetPortNumber(int number) override { port_.SetPortNumber(number); }
    void SetSettings(const std::string& settings) override { port_.SetSettings(settings); }
    void Open() override { port_.Open(); }
    void Close() noexcept override { port_.Close(); }
    [[nodiscard]] bool IsOpen() const override { return port_.IsOpen(); }
    [[nodiscard]] bool IsLost() const override { return port_.IsLost(); }
    void Write(std::span<const std::uint8_t> bytes) override { port_.Write(bytes); }
    [[nodiscard]] std::size_t ReceivedCount() override { return port_.ReceivedCount(); }
    [[nodiscard]] std::uint8_t ReadByte() override { return port_.ReadByte(); }
    void ClearReceived() override { port_.ClearReceived(); }
    [[nodiscard]] PortWait WaitForByte(MonotonicTime deadline) override;

private:
    SerialPort& port_;
    const Clock& clock_;
};

} // namespace vantrel
