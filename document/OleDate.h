// The date-time of the set-up record: days since 30 December 1899, the fraction being the time of day. Uses nothing.
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace vantrel {

/// Kept as the floating day count of the set-up file, so that every value that a file may hold comes back to the bit.
/// Local time without a zone. Before the origin the fraction still counts forward within its day.
struct OleDate {
    double days = 0.0;

    [[nodiscard]] static OleDate FromLocal(std::chrono::local_seconds time);
    /// The nearest whole second; nothing when the value lies outside the years 100 to 9999 or is no number.
    [[nodiscard]] std::optional<std::chrono::local_seconds> ToLocal() const;
};

/// "2026-03-14T09:05:07" or, for a value that is no date, an empty text.
[[nodiscard]] std::string IsoText(OleDate date);

} // namespace vantrel
