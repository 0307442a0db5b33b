// A span of time as it is written behind a simulated fault or habit. Pure.
#pragma once

#include "platform/Clock.h"

#include <charconv>
#include <chrono>
#include <optional>
#include <string_view>

namespace vantrel {

/// "600ms" or "2s", at most an hour; nothing for any other text.
[[nodiscard]] inline std::optional<MonotonicTime> ParseDuration(std::string_view text) {
    int count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    const std::string_view unit = text.substr(static_cast<std::size_t>(end - text.data()));
    if (error != std::errc{} || count < 0 || (unit != "ms" && unit != "s")) return std::nullopt;
    const MonotonicTime span = MonotonicTime(unit == "s" ? std::chrono::seconds(1) : std::chrono::milliseconds(1));
    if (count > std::chrono::hours(1) / span) return std::nullopt;
    return count * span;
}

} // namespace vantrel
