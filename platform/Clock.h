// What the program asks of its host about time. The real clock, and a virtual one in the tests.
#pragma once

#include <chrono>

namespace vantrel {

/// Time on a clock that nobody sets, counted from an arbitrary start. Time in which the machine sleeps counts.
using MonotonicTime = std::chrono::nanoseconds;

class Clock {
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    /// Monotonic time with better than millisecond resolution; every time-out is measured with it.
    [[nodiscard]] virtual MonotonicTime Now() const = 0;
    /// Gives the processor away until `time`; returns at once when it has passed.
    virtual void SleepUntil(MonotonicTime time) = 0;
    /// A clock that moves only when somebody sleeps on it (the tests' one): an event loop that waits has to sleep on
    /// it.
    [[nodiscard]] virtual bool MovesOnlyBySleeping() const { return false; }
    /// The host's local date and time of day, in whole seconds.
    [[nodiscard]] virtual std::chrono::local_seconds LocalNow() const = 0;
};

} // namespace vantrel
