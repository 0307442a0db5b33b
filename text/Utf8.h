// Walking through UTF-8, character by character, whatever the bytes are. Uses nothing.
#pragma once

#include <cstddef>
#include <string_view>

namespace vantrel {

inline constexpr char32_t MalformedCharacter = 0xFFFD;

struct Utf8Character {
    char32_t code; ///< MalformedCharacter for bytes that are no UTF-8.
    std::string_view bytes; ///< At least one.
};

/// Takes the first character off a text that is not empty; a sequence that breaks off or is longer than it needs to be
/// is one malformed character.
Utf8Character TakeCharacter(std::string_view& text);

/// Whether a byte stands within a character and not at its beginning.
[[nodiscard]] constexpr bool ContinuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

} // namespace vantrel
