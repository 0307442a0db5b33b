// How long the board usually takes to answer, and what is too long for the inside of a value. Pure.
#pragma once

#include "platform/Clock.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace vantrel {

/// The last answers' times. A late answer among them changes nothing, nor does a burst of them.
class AnswerTimes {
public:
    void Add(MonotonicTime time) {
        times_[next_] = time;
        next_ = (next_ + 1) % times_.size();
        known_ = std::min(known_ + 1, times_.size());
    }
    void Clear() { known_ = next_ = 0; }

    /// The time in the middle; 0 before the first answer.
    [[nodiscard]] MonotonicTime Usual() const {
        auto sorted = times_;
        const auto end = sorted.begin() + static_cast<std::ptrdiff_t>(known_);
        const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(known_ / 2);
        std::nth_element(sorted.begin(), middle, end);
        return known_ == 0 ? MonotonicTime{0} : *middle;
    }

    /// Two bytes of a value that were sent further apart than this have a gap between them, in which the board may have
    /// forgotten the first: 30 ms, or three usual answers on a slow line.
    [[nodiscard]] MonotonicTime LongestGap() const {
        return std::max<MonotonicTime>(std::chrono::milliseconds(30), 3 * Usual());
    }

private:
    std::array<MonotonicTime, 33> times_{};
    std::size_t known_ = 0;
    std::size_t next_ = 0;
};

} // namespace vantrel
