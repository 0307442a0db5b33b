// Telling control characters from characters.
#include "text/PrintableText.h"

#include <algorithm>

namespace vantrel {

namespace {

unsigned char ByteAt(std::string_view text, std::size_t at) { return static_cast<unsigned char>(text[at]); }

/// How many bytes the character at the start of `text` has; 0 when it is none.
std::size_t CharacterLength(std::string_view text) {
    const unsigned char lead = ByteAt(text, 0);
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length > text.size()) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((ByteAt(text, i) & 0xC0U) != 0x80) return 0;
    }
    return length;
}

bool IsControl(std::string_view character) {
    const unsigned char lead = ByteAt(character, 0);
    const bool c1 = lead == 0xC2 && ByteAt(character, 1) < 0xA0;
    const bool separator = character == "\xE2\x80\xA8" || character == "\xE2\x80\xA9"; // Of lines and paragraphs.
    return lead < ' ' || lead == 0x7F || c1 || separator;
}

/// Takes the first character of a text that is not empty; a byte that is no UTF-8 is one, and `whole` then false.
std::string_view TakeCharacter(std::string_view& text, bool& whole) {
    const std::size_t length = CharacterLength(text);
    whole = length > 0;
    const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
    text.remove_prefix(character.size());
    return character;
}

} // namespace

std::string PrintableText(std::string_view text, Layout layout) {
    std::string printable;
    while (!text.empty()) {
        bool whole = false;
        const std::string_view character = TakeCharacter(text, whole);
        const bool laysOut = layout == Layout::Keep && (character == "\n" || character == "\t");
        printable += whole && (laysOut || !IsControl(character)) ? character : "?";
    }
    return printable;
}

std::string Excerpt(std::string_view text, std::size_t longest) {
    std::string_view rest = text;
    bool whole = false;
    for (std::size_t count = 0; count < longest && !rest.empty(); ++count)
        TakeCharacter(rest, whole);
    return PrintableText(text.substr(0, text.size() - rest.size()), Layout::Drop) + (rest.empty() ? "" : "...");
}

std::string OnOneLine(std::string_view text) {
    std::string line;
    while (!text.empty()) {
        if (text.starts_with("\r\n")) text.remove_prefix(1);
        bool whole = false;
        const std::string_view character = TakeCharacter(text, whole);
        line += whole && IsControl(character) ? " " : character;
    }
    return line;
}

} // namespace vantrel
