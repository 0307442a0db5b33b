// The tests' clock: it moves only when somebody waits on it, so that seconds of silence take no time.
#pragma once

#include "platform/Clock.h"

#include <algorithm>

namespace vantrel {

class VirtualClock : public Clock {
public:
    [[nodiscard]] MonotonicTime Now() const override { return now_; }
    void SleepUntil(MonotonicTime time) override { now_ = std::max(now_, time); }
    [[nodiscard]] bool MovesOnlyBySleeping() const override { return true; }
    /// 14 March 2026, 09:05:07 at time 0, running with the monotonic time.
    [[nodiscard]] std::chrono::local_seconds LocalNow() const override {
        using namespace std::chrono;
        return local_days{year{2026} / March / 14} + 9h + 5min + 7s + duration_cast<seconds>(now_);
    }
    void Advance(MonotonicTime by) { now_ += by; }

private:
    MonotonicTime now_{0};
};

} // namespace vantrel
