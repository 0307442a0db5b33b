// How far the board's clock is off the computer's, judged from what the passes read anyway. Pure.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace vantrel {

/// The board's clock as one pass over its six values read it, in their order: hour, minute, second, month, day, year.
struct ClockPass {
    std::uint32_t hour;
    std::uint32_t minute;
    std::uint32_t second;
    std::uint32_t month;
    std::uint32_t day;
    std::uint32_t year; ///< Last two digits.
    /// By the computer's clock, the second was read between these moments.
    std::chrono::local_seconds from;
    std::chrono::local_seconds to;
};

/// What is known of the difference. The board's clock shows whole seconds, and so does the comparison.
class ClockComparison {
public:
    enum class State {
        Unread, ///< There is no reading yet.
        Doubtful, ///< It went on to the next minute or was set while it was read, or was not read reliably.
        Impossible, ///< What the board holds is no date or no time of day.
        Known,
    };

    /// One more pass; nothing: not all of it could be relied on. The second is the last to be sure of: two passes that
    /// agree in all the rest, the second not having gone back between them, hold one whole reading.
    void Take(const std::optional<ClockPass>& pass);
    /// The board may be another one, or its clock has been set.
    void Forget() { *this = {}; }

    [[nodiscard]] State What() const { return state_; }
    /// Only when it is known: the board's time less the computer's, and how far from that it can be at the most.
    [[nodiscard]] std::chrono::seconds Ahead() const { return shown_; }
    [[nodiscard]] std::chrono::seconds Within() const { return within_; }
    /// "00:01:12 behind the computer's clock (to within 1 s)", "2 days 00:00:05 ahead of ...", "the same as the
    /// computer's clock (to within 1 s)", or why it is not known.
    [[nodiscard]] std::string Text() const;

private:
    using Seconds = std::chrono::seconds;

    void Judge(const ClockPass& pass);
    void Narrow(Seconds low, Seconds high);

    State state_ = State::Unread;
    std::optional<ClockPass> before_;
    /// The difference lies between these, as all readings have said that fit each other.
    Seconds low_{};
    Seconds high_{};
    Seconds shown_{}; ///< Stays as long as it fits: the seconds of two clocks do not begin together.
    Seconds within_{};
};

} // namespace vantrel
