// The simulated board's clock and calendar: registers that run and can be set. Pure: time is passed in.
#pragma once

#include "platform/Clock.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>

namespace vantrel {

/// Six one-byte registers in plain binary, at the board's clock locations; the year has two digits.
class BoardClock {
public:
    /// `startedAt`: what the clock shows at monotonic time 0.
    explicit BoardClock(std::chrono::local_seconds startedAt);

    /// What the register at `address` shows at `now`; nothing where no register is.
    [[nodiscard]] std::optional<std::uint8_t> Read(std::uint16_t address, MonotonicTime now) const;
    /// Sets the register at `address`. A value that no clock shows (hour 24, month 0) leaves it running as it was;
    /// where no register is, nothing happens.
    void Set(std::uint16_t address, std::uint8_t value, MonotonicTime now);

private:
    /// Second, minute, hour, day, month, year.
    using Registers = std::array<int, 6>;

    [[nodiscard]] Registers At(MonotonicTime now) const;
    [[nodiscard]] std::chrono::seconds RunSinceSet(MonotonicTime now) const;

    Registers asSet_{};
    MonotonicTime setAt_{0};
};

} // namespace vantrel
