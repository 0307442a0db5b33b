// A serial port that follows a script: what must be sent, and what comes back. Time is the virtual clock's.
#pragma once

#include "platform/RuntimeError.h"
#include "tests/support/ReceivingPort.h"

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

class ScriptedPort final : public ReceivingPort {
public:
    explicit ScriptedPort(VirtualClock& clock) : ReceivingPort(clock) {}

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
    void Write(std::span<const std::uint8_t> bytes) override {
        for (const std::uint8_t byte : bytes)
            Take(byte);
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
};

} // namespace vantrel
