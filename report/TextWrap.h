// Texts of any length on lines of a given width: nothing is cut off. Knows widths only by a measure that it is handed.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

/// `text` (UTF-8) as lines none of which `fits` refuses, broken at blanks and, where a word alone is too long, inside
/// it. At least one line; at least one character a line, whether it fits or not. What lays out text elsewhere (line
/// ends, tabs) is a blank here.
[[nodiscard]] std::vector<std::string> WrappedText(std::string_view text,
                                                   const std::function<bool(std::string_view)>& fits);

} // namespace vantrel
