// Moments of the local clock as texts that sort. Uses nothing but the padding.
#pragma once

#include "text/Padding.h"

#include <chrono>
#include <string>

namespace vantrel {

/// "09:05:07"
[[nodiscard]] inline std::string TimeOfDayText(std::chrono::local_seconds at) {
    const std::chrono::hh_mm_ss time(at - std::chrono::floor<std::chrono::days>(at));
    const auto twoDigits = [](auto count) { return PadLeft(std::to_string(count), 2, '0'); };
    return twoDigits(time.hours().count()) + ":" + twoDigits(time.minutes().count()) + ":" +
           twoDigits(time.seconds().count());
}

/// "2026-03-14"
[[nodiscard]] inline std::string DayText(std::chrono::local_seconds at) {
    const std::chrono::year_month_day day(std::chrono::floor<std::chrono::days>(at));
    return PadLeft(std::to_string(int{day.year()}), 4, '0') + "-" +
           PadLeft(std::to_string(unsigned{day.month()}), 2, '0') + "-" +
           PadLeft(std::to_string(unsigned{day.day()}), 2, '0');
}

/// "2026-03-14 09:05:07"
[[nodiscard]] inline std::string MomentText(std::chrono::local_seconds at) {
    return DayText(at) + " " + TimeOfDayText(at);
}

/// The time of day, behind its day when that is not the one of `now`.
[[nodiscard]] inline std::string MomentText(std::chrono::local_seconds at, std::chrono::local_seconds now) {
    return DayText(at) == DayText(now) ? TimeOfDayText(at) : MomentText(at);
}

} // namespace vantrel
