// What the status word of a sequence means, and where the board keeps a sequence's words. Knows the memory map only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vantrel {

/// The text of a communication status code (0..18). Code 1 has none of its own: it, negative codes and codes above 18
/// share "Undefinded Error".
[[nodiscard]] std::string StatusText(std::int32_t code);

/// How a status word read as `value` (decimal text) is shown: at least two upper-case hexadecimal digits, ": " and the
/// code's text, as in "02: Comm to Node OK". A text without a number counts as 0.
[[nodiscard]] std::string StatusDisplay(std::string_view value);

/// "W" + address of the status word of sequence `sequence` (0..30).
[[nodiscard]] std::string StatusWordAddress(std::size_t sequence);

/// Which of a sequence's two blocks of data words.
enum class DataDirection { Send = 1, Receive = 2 };

/// "W" + address of data word `word` (1..120) of sequence `sequence` (0..30).
[[nodiscard]] std::string DataWordAddress(std::size_t sequence, DataDirection direction, int word);

} // namespace vantrel
