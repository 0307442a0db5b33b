// What the tests' ports have in common: bytes that arrive when the virtual clock gets there.
#pragma once

#include "platform/SerialPort.h"
#include "tests/support/VirtualClock.h"

#include <deque>
#include <utility>

namespace vantrel {

class ReceivingPort : public SerialPort {
public:
    explicit ReceivingPort(VirtualClock& clock) : clock_(clock) {}

    void Close() noexcept override { open_ = false; }
    [[nodiscard]] bool IsOpen() const override { return open_; }
    [[nodiscard]] bool IsLost() const override { return open_ && lost_; }
    [[nodiscard]] std::size_t ReceivedCount() override {
        return !received_.empty() && received_.front().first <= clock_.Now() ? 1 : 0;
    }
    [[nodiscard]] std::uint8_t ReadByte() override {
        const std::uint8_t byte = received_.front().second;
        received_.pop_front();
        return byte;
    }
    void ClearReceived() override {
        while (ReceivedCount() > 0)
            received_.pop_front();
    }
    [[nodiscard]] PortWait WaitForByte(MonotonicTime deadline) override {
        if (lost_) return PortWait::Lost;
        if (!received_.empty() && received_.front().first <= deadline) clock_.SleepUntil(received_.front().first);
        if (ReceivedCount() > 0) return PortWait::ByteReceived;
        clock_.SleepUntil(deadline);
        return PortWait::TimedOut;
    }

protected:
    VirtualClock& clock_;
    std::deque<std::pair<MonotonicTime, std::uint8_t>> received_; ///< In the order of arrival.
    bool open_ = false;
    bool lost_ = false;
};

} // namespace vantrel
