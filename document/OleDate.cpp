// Floating day counts to calendar time and back. Uses nothing.
#include "document/OleDate.h"

#include "text/Padding.h"

#include <cmath>
#include <iterator>

namespace vantrel {

namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::hh_mm_ss;
using std::chrono::local_days;
using std::chrono::local_seconds;
using std::chrono::seconds;
using std::chrono::year_month_day;

constexpr local_days Origin{std::chrono::year{1899} / std::chrono::December / 30};
constexpr local_days First{std::chrono::year{100} / std::chrono::January / 1};
constexpr local_days AfterLast{std::chrono::year{10000} / std::chrono::January / 1};
constexpr double SecondsADay = 86400.0;

std::string Padded(long long number, std::size_t width) { return PadLeft(std::to_string(number), width, '0'); }

} // namespace

OleDate OleDate::FromLocal(local_seconds time) {
    const auto day = floor<std::chrono::days>(time);
    const auto whole = static_cast<double>((day - Origin).count());
    const double fraction = static_cast<double>((time - day).count()) / SecondsADay;
    return {whole < 0 ? whole - fraction : whole + fraction};
}

std::optional<local_seconds> OleDate::ToLocal() const {
    const double whole = std::trunc(days);
    // Compared before anything becomes an integer; what is no number fails both comparisons.
    const bool inRange = whole >= (First - Origin).count() && whole < (AfterLast - Origin).count();
    if (!inRange) return std::nullopt;
    const auto day = Origin + std::chrono::days(static_cast<int>(whole));
    const local_seconds time = day + seconds(std::lround(std::abs(days - whole) * SecondsADay));
    return time < AfterLast ? std::optional(time) : std::nullopt;
}

std::string IsoText(OleDate date) {
    const auto time = date.ToLocal();
    if (!time) return {};
    const auto day = floor<days>(*time);
    const year_month_day calendar(day);
    const hh_mm_ss clock(*time - day);
    return Padded(int{calendar.year()}, 4) + "-" + Padded(unsigned{calendar.month()}, 2) + "-" +
           Padded(unsigned{calendar.day()}, 2) + "T" + Padded(clock.hours().count(), 2) + ":" +
           Padded(clock.minutes().count(), 2) + ":" + Padded(clock.seconds().count(), 2);
}

} // namespace vantrel
