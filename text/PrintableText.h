// Texts of files and names where people read them: on a terminal, which they must not be able to steer, and in
// messages, which they must not fill. All in UTF-8. Uses nothing.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vantrel {

enum class Layout {
    Keep, ///< Line ends and tabs stay.
    Drop, ///< The text stands within one line.
};

/// `text` with "?" in place of every control character (C0, C1, delete, line separators) and of what is no UTF-8.
[[nodiscard]] std::string PrintableText(std::string_view text, Layout layout);

/// Printable on one line, and no longer than so many characters; "..." says that there is more.
[[nodiscard]] std::string Excerpt(std::string_view text, std::size_t longest);

/// `text` with a blank in place of every control character; a carriage return and a line feed are one.
[[nodiscard]] std::string OnOneLine(std::string_view text);

} // namespace vantrel
