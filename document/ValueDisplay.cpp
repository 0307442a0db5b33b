// Notations of values: prefixes, and hexadecimal as the board's users write it. Knows the record only.
#include "document/ValueDisplay.h"

#include <array>
#include <charconv>

namespace vantrel {

namespace {

bool IsHexadecimal(std::string_view type) { return type == "H" || type == "h"; }

/// Upper-case hexadecimal; a negative number by its 32 bits.
std::string Hexadecimal(std::int32_t value) {
    std::array<char, 8> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), static_cast<std::uint32_t>(value), 16).ptr;
    std::string text(digits.begin(), end);
    for (char& digit : text) {
        if (digit >= 'a') digit = static_cast<char>(digit - 'a' + 'A');
    }
    return text;
}

} // namespace

std::string DisplayValue(std::int32_t value, std::string_view type) {
    if (IsHexadecimal(type)) return Hexadecimal(value) + "H";
    if (type == "V" || type == "v") return "V" + std::to_string(value);
    if (type == "W" || type == "w") return "W" + std::to_string(value);
    return std::to_string(value);
}

std::string DisplayValue(const Configuration& record, std::size_t index) {
    const char usual = DefaultNotation(index);
    const bool hexadecimal = usual == 'W' && IsHexadecimal(record.AddressType(index));
    return DisplayValue(record.Value(index), std::string(1, hexadecimal ? 'H' : usual));
}

} // namespace vantrel
