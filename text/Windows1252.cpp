// The code page's own 27 characters; everything else in it has the same number in Unicode. Uses nothing.
#include "text/Windows1252.h"

#include "text/Utf8.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace vantrel {

namespace {

constexpr char Unknown = '?';

/// The bytes 0x80..0x9F. The five that the code page leaves open stand for themselves.
constexpr std::array<char32_t, 32> UpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

char32_t CharacterOf(unsigned char byte) {
    return byte >= 0x80 && byte < 0xA0 ? UpperControls.at(byte - 0x80U) : char32_t{byte};
}

char ByteOf(char32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) return static_cast<char>(character);
    const auto* const found = std::find(UpperControls.begin(), UpperControls.end(), character);
    return found == UpperControls.end() ? Unknown : static_cast<char>(0x80 + (found - UpperControls.begin()));
}

/// No character of the code page needs more than three bytes.
void AppendUtf8(std::string& text, char32_t character) {
    const auto tail = [&](unsigned shift) { return static_cast<char>(0x80U | ((character >> shift) & 0x3FU)); };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += {static_cast<char>(0xC0U | (character >> 6U)), tail(0)};
    } else {
        text += {static_cast<char>(0xE0U | (character >> 12U)), tail(6), tail(0)};
    }
}

} // namespace

std::string Utf8FromWindows1252(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes)
        AppendUtf8(text, CharacterOf(static_cast<unsigned char>(byte)));
    return text;
}

std::string Windows1252FromUtf8(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        bytes += ByteOf(TakeCharacter(text).code);
    }
    return bytes;
}

std::string Utf8FromAnyEditor(std::string_view bytes) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (bytes.starts_with(mark)) bytes.remove_prefix(mark.size());
    return IsUtf8(bytes) ? std::string(bytes) : Utf8FromWindows1252(bytes);
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        if (TakeCharacter(text).code == MalformedCharacter) return false;
    }
    return true;
}

} // namespace vantrel
