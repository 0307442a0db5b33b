// The case of letters in names, codes and extensions: A to Z only, whatever the host's language. Uses nothing.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace vantrel {

[[nodiscard]] constexpr char UpperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
[[nodiscard]] constexpr char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

[[nodiscard]] inline std::string InLowerCase(std::string text) {
    std::ranges::transform(text, text.begin(), LowerAscii);
    return text;
}

[[nodiscard]] inline bool SameIgnoringCase(std::string_view one, std::string_view other) {
    return std::ranges::equal(one, other, {}, UpperAscii, UpperAscii);
}

} // namespace vantrel
