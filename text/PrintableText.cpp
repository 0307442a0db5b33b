// Telling control characters from characters.
#include "text/PrintableText.h"

#include "text/Utf8.h"

namespace vantrel {

namespace {

/// C0, delete and C1, and the separators of lines and paragraphs.
bool IsControl(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x2028 || code == 0x2029;
}

} // namespace

std::string PrintableText(std::string_view text, Layout layout) {
    std::string printable;
    while (!text.empty()) {
        const auto [code, bytes] = TakeCharacter(text);
        const bool laysOut = layout == Layout::Keep && (code == '\n' || code == '\t');
        printable += laysOut || (!IsControl(code) && code != MalformedCharacter) ? bytes : "?";
    }
    return printable;
}

std::string Excerpt(std::string_view text, std::size_t longest) {
    std::string_view rest = text;
    for (std::size_t count = 0; count < longest && !rest.empty(); ++count)
        TakeCharacter(rest);
    return PrintableText(text.substr(0, text.size() - rest.size()), Layout::Drop) + (rest.empty() ? "" : "...");
}

std::string OnOneLine(std::string_view text) {
    std::string line;
    while (!text.empty()) {
        if (text.starts_with("\r\n")) text.remove_prefix(1);
        const auto [code, bytes] = TakeCharacter(text);
        line += IsControl(code) ? " " : bytes;
    }
    return line;
}

} // namespace vantrel
