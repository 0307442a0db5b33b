// Text is UTF-8 in memory and Windows-1252 in files; this is the only place that knows both. Uses nothing.
#pragma once

#include <string>
#include <string_view>

namespace vantrel {

/// Every byte sequence converts; the five bytes that the code page leaves open become the control characters of
/// the same number, so that a file's text comes back unchanged.
[[nodiscard]] std::string Utf8FromWindows1252(std::string_view bytes);

/// A character that the code page does not hold, and every malformed sequence, becomes "?".
[[nodiscard]] std::string Windows1252FromUtf8(std::string_view text);

/// The text of a file that may come from any editor: what is UTF-8 stays, without a mark in front; what is none is
/// taken for Windows-1252.
[[nodiscard]] std::string Utf8FromAnyEditor(std::string_view bytes);

/// Whether `text` holds no malformed sequence; plain ASCII holds none.
[[nodiscard]] bool IsUtf8(std::string_view text);

} // namespace vantrel
