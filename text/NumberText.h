// How texts become numbers here: the classic leading-number parse and rounding halves to even. Uses nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vantrel {

[[nodiscard]] inline bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// The number of the longest numeric prefix of `text`; 0 when it has none. Blanks, tabs and line ends inside are
/// ignored; "&H" and "&O" (either case) begin a hexadecimal or octal number; otherwise sign, digits, decimal point
/// and an exponent after E or D are taken. Never throws; what no double can hold is infinite.
[[nodiscard]] double LeadingNumber(std::string_view text);

/// Rounds to the nearest integer, halves to the even one.
[[nodiscard]] double RoundHalfToEven(double number);

/// LeadingNumber, rounded; nothing when a signed 32-bit integer cannot hold it.
[[nodiscard]] std::optional<std::int32_t> LeadingInteger(std::string_view text);

/// The whole number that a text is, blanks around it aside. Not forgiving: "12.5", "1e3", "12a" and "" are none, nor is
/// a number that a signed 32-bit integer cannot hold.
[[nodiscard]] std::optional<std::int32_t> WholeNumber(std::string_view text);

/// True when all of `text` is a number, blanks around it aside: optional sign, digits, a decimal point, an exponent.
[[nodiscard]] bool IsNumeric(std::string_view text);

/// The hexadecimal digits that `text` begins with; nothing for none, and for more than 32 bits of them.
[[nodiscard]] std::optional<std::uint32_t> LeadingHexNumber(std::string_view text);

/// Upper-case hexadecimal, filled up with zeros to so many digits.
[[nodiscard]] std::string HexText(std::uint32_t number, std::size_t digits = 1);

} // namespace vantrel
