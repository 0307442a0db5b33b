#include "views/ClockComparison.h"

#include "text/Padding.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <tuple>

namespace vantrel {

namespace {

using namespace std::chrono;

constexpr int Century = 100;

/// Two passes this far apart may have a whole minute between them.
constexpr seconds LongestBetween{30};

/// The year that two digits mean: the one nearest to the computer's.
year FullYear(std::uint32_t digits, local_seconds now) {
    const int computer = static_cast<int>(year_month_day(floor<days>(now)).year());
    int full = computer - computer % Century + static_cast<int>(digits);
    if (full - computer > Century / 2) full -= Century;
    if (computer - full > Century / 2) full += Century;
    return year(full);
}

/// The moment that a pass shows; nothing when it is none.
std::optional<local_seconds> MomentOf(const ClockPass& pass) {
    constexpr std::uint32_t hoursOfDay = 24;
    constexpr std::uint32_t sixty = 60;
    if (pass.hour >= hoursOfDay || pass.minute >= sixty || pass.second >= sixty || pass.year >= Century)
        return std::nullopt;
    const year_month_day date(FullYear(pass.year, pass.to), month(pass.month), day(pass.day));
    if (!date.ok() || pass.month > 12 || pass.day > 31) return std::nullopt;
    return local_days(date) + hours(pass.hour) + minutes(pass.minute) + seconds(pass.second);
}

auto AllButTheSecond(const ClockPass& pass) {
    return std::tie(pass.hour, pass.minute, pass.month, pass.day, pass.year);
}

std::string Span(seconds time) {
    const auto two = [](auto count) { return PadLeft(std::to_string(count), 2, '0'); };
    const days whole = floor<days>(time);
    const hh_mm_ss rest(time - whole);
    std::string text =
        two(rest.hours().count()) + ":" + two(rest.minutes().count()) + ":" + two(rest.seconds().count());
    if (whole.count() > 0) text.insert(0, std::to_string(whole.count()) + (whole.count() == 1 ? " day " : " days "));
    return text;
}

} // namespace

void ClockComparison::Take(const std::optional<ClockPass>& pass) {
    const std::optional<ClockPass> before = before_;
    before_ = pass;
    if (!pass) state_ = State::Doubtful;
    if (!pass || !before) return;
    const bool whole = AllButTheSecond(*before) == AllButTheSecond(*pass) && pass->second >= before->second &&
                       pass->to - before->from <= LongestBetween;
    if (whole) {
        Judge(*pass);
    } else if (state_ != State::Known) {
        state_ = State::Doubtful;
    }
}

void ClockComparison::Judge(const ClockPass& pass) {
    const auto board = MomentOf(pass);
    if (board) {
        // Either clock shows a second for as long as it lasts.
        Narrow(*board - pass.to - seconds(1), *board - pass.from + seconds(1));
    } else {
        state_ = State::Impossible;
    }
}

void ClockComparison::Narrow(Seconds low, Seconds high) {
    const bool fits = state_ == State::Known && std::max(low, low_) < std::min(high, high_);
    if (fits) {
        low_ = std::max(low, low_);
        high_ = std::min(high, high_);
    } else {
        low_ = low;
        high_ = high;
        shown_ = low + (high - low) / 2;
    }
    within_ = std::max(high_ - shown_, shown_ - low_);
    state_ = State::Known;
}

std::string ClockComparison::Text() const {
    switch (state_) {
    case State::Unread:
        return "not known yet";
    case State::Doubtful:
        return "not known: the clock went on while it was read, or was not read clearly";
    case State::Impossible:
        return "not known: what the board holds is no date and time";
    case State::Known:
        break;
    }
    const std::string within = " (to within " + std::to_string(within_.count()) + " s)";
    if (shown_ == seconds(0)) return "the same as the computer's clock" + within;
    return Span(abs(shown_)) + (shown_ < seconds(0) ? " behind" : " ahead of") + " the computer's clock" + within;
}

} // namespace vantrel
