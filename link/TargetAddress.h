// The notation of target-board addresses: text to byte address, bit mask and width. Uses the number parse only.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

/// A parsed address. The type letter is "B" byte, "W" word or "D" double word; 0 for a text that names
/// nothing: it reads as empty and writes nothing.
struct TargetAddress {
    char type = 0;
    std::int32_t byteAddress = 0; ///< First target byte, 0..65535.
    std::uint16_t bitMask = 0; ///< 2 to the power of the bit number, when `isBit`.
    bool isBit = false; ///< The address names one bit of a byte.

    friend bool operator==(const TargetAddress&, const TargetAddress&) = default;
};

/// Deliberately forgiving: "1F40H" hexadecimal byte, "B8176.3" bit, "B8" "W32" "D100" (either case), "F13" flag bit;
/// any other first letter is byte 32. An address below 0 or above 65535 names nothing. Never throws.
[[nodiscard]] TargetAddress ParseAddress(std::string_view text);

/// Bytes that a value of the type takes on the wire: B 1, W 2, D 4; 0 for no type.
[[nodiscard]] int ByteCount(char type);

/// For entries by hand, where forgiveness would hide a slip: what is wrong with `text` as an address, as a sentence
/// for the user; empty when it has one of the forms above and all its bytes lie within 0 to 65535.
[[nodiscard]] std::string AddressProblem(std::string_view text);

/// Bytes by their addresses, for messages: "B16639", "B255 and B16639", "B1, B2 and B3"; behind the tenth "and 5 more".
[[nodiscard]] std::string ByteList(const std::vector<std::uint16_t>& bytes);

/// The line of a message which says that a value sent only in part may have set these bytes; empty for none.
[[nodiscard]] std::string HalfSentLine(const std::vector<std::uint16_t>& bytes);

} // namespace vantrel
