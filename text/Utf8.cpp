// Decoding one character.
#include "text/Utf8.h"

namespace vantrel {

namespace {

/// What the lead byte of a longer sequence announces; `length` 0 for a byte that is none.
struct Lead {
    std::size_t length;
    char32_t bits;
    char32_t smallest; ///< Below this the sequence is longer than it needs to be, and malformed.
};

Lead LeadOf(unsigned char byte) {
    if ((byte & 0xE0U) == 0xC0U) return {2, byte & 0x1FU, 0x80};
    if ((byte & 0xF0U) == 0xE0U) return {3, byte & 0x0FU, 0x800};
    if ((byte & 0xF8U) == 0xF0U) return {4, byte & 0x07U, 0x10000};
    return {0, 0, 0};
}

} // namespace

Utf8Character TakeCharacter(std::string_view& text) {
    constexpr char32_t highest = 0x10FFFF;
    const auto first = static_cast<unsigned char>(text.front());
    const Lead lead = first < 0x80 ? Lead{1, first, 0} : LeadOf(first);
    char32_t code = lead.bits;
    std::size_t length = 1;
    for (; length < lead.length && length < text.size() && ContinuesCharacter(text[length]); ++length)
        code = (code << 6U) | (static_cast<unsigned char>(text[length]) & 0x3FU);
    const bool whole = length == lead.length && code >= lead.smallest && code <= highest;
    const Utf8Character character{whole ? code : MalformedCharacter, text.substr(0, length)};
    text.remove_prefix(length);
    return character;
}

} // namespace vantrel
