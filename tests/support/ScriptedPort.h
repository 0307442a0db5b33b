// A serial port that follows a script: what must be sent, and what comes back. Time is the virtual clock's.
#pragma once

#include "platform/RuntimeError.h"
#include "platform/SerialPort.h"
#include "tests/support/VirtualClock.h"

#include <deque>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace vantrel {

/// One exchange: the byte that has to come, and the answer a millisecond later (none: silence).
struct ScriptStep {
    std::uint8_t expected;
    std::optional<std::uint8_t> answer;
};

class ScriptedPort final : public SerialPort {
public:
    explicit ScriptedPort(VirtualClock& clock) : clock_(clock) {}

    /// Steps are taken in order; when they have run out every byte is answered by `otherwise`.
    std::deque<ScriptStep> script;
    std::optional<std::uint8_t> otherwise;
    std::vector<std::uint8_t> sent;
    int unexpected = 0; ///< Bytes that were not the ones that the script says.
    std::optional<RuntimeError> openError;
    std::optional<std::size_t> lostAfter; ///< The device goes when so many bytes have been sent.
    /// The host pauses for so long before the byte that so many came before, once.
    std::pair<std::size_t, MonotonicTime> pauseBefore{std::numeric_limits<std::size_t>::max(), {}};
    MonotonicTime answerTime = std::chrono::milliseconds(1);
    std::optional<std::uint8_t> noiseAtOpen; ///< Lies in the receiver as soon as the port is open.
    int opened = 0;
    int number = 0;
    std::string settings;

    void SetPortNumber(int newNumber) override { number = newNumber; }
    void SetSettings(const std::string& newSettings) override { settings = newSettings; }
    void Open() override {
        if (openError) throw RuntimeError(*openError);
        open_ = true;
        lost_ = false;
        received_.clear();
        if (noiseAtOpen) PutReceived(*noiseAtOpen);
        ++opened;
    }
    void Close() noexcept override { open_ = false; }
    [[nodiscard]] bool IsOpen() const override { return open_; }
    [[nodiscard]] bool IsLost() const override { return open_ && lost_; }
    void Write(std::span<const std::uint8_t> bytes) override {
        for (const std::uint8_t byte : bytes)
            Take(byte);
    }
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

    /// A byte that nothing asked for lies in the receiver.
    void PutReceived(std::uint8_t byte) { received_.emplace_front(clock_.Now(), byte); }

    /// Forgets what was sent so far, so that a test sees its own bytes only.
    void Expect(std::deque<ScriptStep> steps) {
        sent.clear();
        script = std::move(steps);
    }

private:
    void Take(std::uint8_t byte) {
        if (sent.size() == pauseBefore.first) {
            clock_.Advance(pauseBefore.second);
            pauseBefore.first = std::numeric_limits<std::size_t>::max();
        }
        sent.push_back(byte);
        if (lostAfter && sent.size() >= *lostAfter) lost_ = true;
        if (lost_) return;
        std::optional<std::uint8_t> answer = otherwise;
        if (!script.empty()) {
            if (script.front().expected != byte) ++unexpected;
            answer = script.front().answer;
            script.pop_front();
        }
        if (answer) received_.emplace_back(clock_.Now() + answerTime, *answer);
    }

    VirtualClock& clock_;
    std::deque<std::pair<MonotonicTime, std::uint8_t>> received_;
    bool open_ = false;
    bool lost_ = false;
};

} // namespace vantrel
