// The classic number parse, written for speed of reading: no locale, no exceptions. Uses nothing.
#include "text/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <system_error>

namespace vantrel {

namespace {

bool IsIgnored(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

/// The value of a digit, or 16 for what is no digit of any base used here.
int DigitValue(char c) {
    if (IsDigit(c)) return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return 16;
}

double LeadingDigits(std::string_view digits, int base) {
    double value = 0.0;
    for (const char c : digits) {
        const int digit = DigitValue(c);
        if (digit >= base) break;
        value = value * base + digit;
    }
    return value;
}

std::size_t CountDigits(std::string_view text) {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsDigit) - text.begin());
}

/// Length of the exponent at the start of `text`, 0 when there is none.
std::size_t ExponentLength(std::string_view text) {
    if (text.empty() || std::string_view("EeDd").find(text.front()) == std::string_view::npos) return 0;
    const std::size_t sign = text.size() > 1 && (text[1] == '+' || text[1] == '-') ? 1 : 0;
    const std::size_t digits = CountDigits(text.substr(1 + sign));
    return digits == 0 ? 0 : 1 + sign + digits;
}

/// A number that no double can hold is either too large or too small; from_chars does not say which.
bool IsHuge(std::string_view mantissa, std::string_view exponent) {
    const auto first = mantissa.find_first_of("123456789");
    const auto point = std::min(mantissa.find('.'), mantissa.size());
    if (!exponent.empty() && exponent.front() == '+') exponent.remove_prefix(1);
    std::int64_t power = 0;
    const auto [end, error] = std::from_chars(exponent.data(), exponent.data() + exponent.size(), power);
    if (error == std::errc::result_out_of_range) return exponent.front() != '-';
    return power > static_cast<std::int64_t>(first) - static_cast<std::int64_t>(point);
}

double LeadingDecimal(std::string_view text) {
    const std::size_t whole = CountDigits(text);
    std::size_t length = whole;
    if (length < text.size() && text[length] == '.') length += 1 + CountDigits(text.substr(length + 1));
    if (whole == 0 && length < 2) return 0.0;

    const std::string_view mantissa = text.substr(0, length);
    std::string_view exponent = text.substr(length, ExponentLength(text.substr(length)));
    std::string number(mantissa);
    if (!exponent.empty()) {
        exponent.remove_prefix(1);
        number.append("e").append(exponent);
    }
    double value = 0.0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error != std::errc::result_out_of_range) return value;
    return IsHuge(mantissa, exponent) ? std::numeric_limits<double>::infinity() : 0.0;
}

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

} // namespace

double LeadingNumber(std::string_view text) {
    std::string kept;
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept), [](char c) { return !IsIgnored(c); });
    std::string_view rest = kept;
    if (rest.size() > 1 && rest[0] == '&') {
        if (rest[1] == 'H' || rest[1] == 'h') return LeadingDigits(rest.substr(2), 16);
        if (rest[1] == 'O' || rest[1] == 'o') return LeadingDigits(rest.substr(2), 8);
    }
    const bool negative = rest.starts_with('-');
    if (negative || rest.starts_with('+')) rest.remove_prefix(1);
    const double magnitude = LeadingDecimal(rest);
    return negative ? -magnitude : magnitude;
}

double RoundHalfToEven(double number) {
    // Unlike nearbyint, remainder rounds to even whatever rounding mode a driver or library has left behind.
    return std::isfinite(number) ? number - std::remainder(number, 1.0) : number;
}

std::optional<std::int32_t> LeadingInteger(std::string_view text) {
    const double rounded = RoundHalfToEven(LeadingNumber(text));
    if (rounded < std::numeric_limits<std::int32_t>::min() || rounded > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(rounded);
}

std::optional<std::int32_t> WholeNumber(std::string_view text) {
    text = Trimmed(text);
    std::int32_t number = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc{} && stop == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

bool IsNumeric(std::string_view text) {
    text = Trimmed(text);
    if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
    const std::size_t whole = CountDigits(text);
    text.remove_prefix(whole);
    std::size_t decimals = 0;
    if (text.starts_with('.')) {
        decimals = CountDigits(text.substr(1));
        text.remove_prefix(1 + decimals);
    }
    return whole + decimals > 0 && ExponentLength(text) == text.size();
}

std::optional<std::uint32_t> LeadingHexNumber(std::string_view text) {
    std::uint32_t number = 0;
    const auto error = std::from_chars(text.data(), text.data() + text.size(), number, 16).ec;
    return error == std::errc{} ? std::optional(number) : std::nullopt;
}

std::string HexText(std::uint32_t number, std::size_t digits) {
    std::string text;
    for (; number != 0 || text.size() < digits; number >>= 4U)
        text.insert(text.begin(), "0123456789ABCDEF"[number & 0xFU]);
    return text;
}

} // namespace vantrel
