// The case of letters in names, codes and extensions: A to Z only, whatever the host's language. Uses nothing.
#pragma once

#include <algorithm>
#include <string_view>

namespace vantrel {

[[nodiscard]] constexpr char UpperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

[[nodiscard]] inline bool SameIgnoringCase(std::string_view one, std::string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char a, char b) { return UpperAscii(a) == UpperAscii(b); });
}

} // namespace vantrel
