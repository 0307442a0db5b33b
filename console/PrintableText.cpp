// Telling control characters from characters.
#include "console/PrintableText.h"

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
    return lead < ' ' || lead == 0x7F || c1;
}

} // namespace

std::string PrintableText(std::string_view text, Layout layout) {
    std::string printable;
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
        const bool laysOut = layout == Layout::Keep && (character == "\n" || character == "\t");
        const bool shown = length > 0 && (laysOut || !IsControl(character));
        printable += shown ? character : "?";
        text.remove_prefix(character.size());
    }
    return printable;
}

} // namespace vantrel
