// Texts filled up to a width, counted in bytes. Uses nothing.
#pragma once

#include <cstddef>
#include <string>

namespace vantrel {

/// `text` at the right edge of `width`.
[[nodiscard]] inline std::string PadLeft(std::string text, std::size_t width, char filler = ' ') {
    return text.size() < width ? text.insert(0, width - text.size(), filler) : text;
}

/// `text` at the left edge of `width`.
[[nodiscard]] inline std::string PadRight(std::string text, std::size_t width, char filler = ' ') {
    return text.size() < width ? text.append(width - text.size(), filler) : text;
}

} // namespace vantrel
