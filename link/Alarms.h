// The alarm flags behind the system message, and the one routine that sets them from what the board reported.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace vantrel {

inline constexpr std::size_t AlarmCount = 3;

/// In the order of the flags.
inline constexpr std::array<std::string_view, AlarmCount> AlarmNames{"Target Board Fault", "Communication Error",
                                                                     "CO-CPU Fault"};

using AlarmFlags = std::array<bool, AlarmCount>;

/// What the alarms follow from, as read from the board (one byte each).
struct BoardCodes {
    int currentFault = 0;
    int currentCommError = 0;
    int coCpuSlot = 0;
};

/// Sets or clears every flag; a board without a CO-CPU never has the third.
[[nodiscard]] constexpr AlarmFlags AlarmsOf(const BoardCodes& codes, bool hasCoCpu) {
    return {codes.currentFault != 0, codes.currentCommError != 0, hasCoCpu && codes.coCpuSlot != 0};
}

} // namespace vantrel
