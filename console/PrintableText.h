// Texts of files and names on a terminal, which they must not be able to steer. Uses nothing.
#pragma once

#include <string>
#include <string_view>

namespace vantrel {

enum class Layout {
    Keep, ///< Line ends and tabs stay.
    Drop, ///< The text stands within one line.
};

/// UTF-8 with "?" in place of every control character (C0, C1, delete) and of every byte that is no UTF-8.
[[nodiscard]] std::string PrintableText(std::string_view text, Layout layout);

} // namespace vantrel
