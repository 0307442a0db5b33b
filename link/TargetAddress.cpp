#include "link/TargetAddress.h"

#include "text/AsciiCase.h"
#include "text/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <system_error>

namespace vantrel {

namespace {

constexpr std::int32_t HighestAddress = 65535;
constexpr std::int32_t FirstFlagByte = 32;
constexpr int BitsPerByte = 8;

bool IsHexDigit(char c) { return IsDigit(c) || (UpperAscii(c) >= 'A' && UpperAscii(c) <= 'F'); }

bool AllDigits(std::string_view text) { return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit); }

constexpr std::int32_t Nowhere = -1;

std::int32_t Number(std::string_view text) { return LeadingInteger(text).value_or(Nowhere); }

/// The digits in front of the first character that is none.
std::int32_t HexNumber(std::string_view digits) {
    std::int32_t value = 0;
    const auto error = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16).ec;
    return error == std::errc::result_out_of_range ? Nowhere : value;
}

/// An address outside the memory names nothing: no other byte must be read or written in its place.
TargetAddress InMemory(TargetAddress address) {
    return address.byteAddress >= 0 && address.byteAddress <= HighestAddress ? address : TargetAddress{};
}

TargetAddress BitOf(std::int32_t byteAddress, int bit) {
    return {.type = 'B',
            .byteAddress = byteAddress,
            .bitMask = static_cast<std::uint16_t>(1U << static_cast<unsigned>(bit)),
            .isBit = true};
}

/// The first character and the last two are dropped whatever they are.
TargetAddress ParsePointForm(std::string_view text) {
    const std::string_view number = text.size() > 3 ? text.substr(1, text.size() - 3) : std::string_view{};
    const char last = text.back();
    return BitOf(Number(number), IsDigit(last) ? last - '0' : 0);
}

/// The forms, without regard to where the memory ends.
TargetAddress ParseForm(std::string_view text) {
    if (UpperAscii(text.back()) == 'H') return {.type = 'B', .byteAddress = HexNumber(text.substr(0, text.size() - 1))};
    if (text.find('.') != std::string_view::npos) return ParsePointForm(text);
    const char letter = UpperAscii(text.front());
    const std::int32_t number = Number(text.substr(1));
    switch (letter) {
    case 'B':
    case 'W':
    case 'D':
        return {.type = letter, .byteAddress = number};
    case 'F':
        return number < 0 ? TargetAddress{} : BitOf(number / BitsPerByte + FirstFlagByte, number % BitsPerByte);
    default:
        return {.type = 'B', .byteAddress = FirstFlagByte};
    }
}

} // namespace

TargetAddress ParseAddress(std::string_view text) { return text.empty() ? TargetAddress{} : InMemory(ParseForm(text)); }

int ByteCount(char type) {
    switch (type) {
    case 'B':
        return 1;
    case 'W':
        return 2;
    case 'D':
        return 4;
    default:
        return 0;
    }
}

namespace {

bool HasKnownForm(std::string_view text) {
    if (text.size() < 2) return false;
    const std::string_view front = text.substr(0, text.size() - 1);
    if (UpperAscii(text.back()) == 'H') return std::all_of(front.begin(), front.end(), IsHexDigit);
    if (std::string_view("BWDF").find(UpperAscii(text.front())) == std::string_view::npos) return false;
    const std::size_t point = text.find('.');
    if (point == std::string_view::npos) return AllDigits(text.substr(1));
    const bool oneBitDigit = point + 2 == text.size() && text.back() >= '0' && text.back() <= '7';
    return UpperAscii(text.front()) == 'B' && AllDigits(text.substr(1, point - 1)) && oneBitDigit;
}

bool LiesInMemory(std::string_view text) {
    const TargetAddress parsed = ParseAddress(text);
    return parsed.type != 0 && parsed.byteAddress + ByteCount(parsed.type) - 1 <= HighestAddress;
}

bool UsesLastByte(std::string_view text) {
    const TargetAddress parsed = ParseAddress(text);
    return parsed.type != 0 && parsed.byteAddress + ByteCount(parsed.type) - 1 == HighestAddress;
}

} // namespace

std::string AddressProblem(std::string_view text) {
    const std::string quoted = "\"" + std::string(text) + "\"";
    if (!HasKnownForm(text)) {
        return quoted + " is not an address of the board. Write B, W or D and a number (W16384), B with a bit "
                        "(B8176.3), F and a flag number (F13), or hexadecimal digits and H (1F40H).";
    }
    if (UsesLastByte(text)) {
        return quoted +
               " cannot be reached: the line carries its last byte, 65535, as FF FF, which the board takes for a "
               "new beginning.";
    }
    if (!LiesInMemory(text)) return quoted + " lies outside the board's memory, bytes 0 to 65535.";
    return {};
}

std::string ByteList(const std::vector<std::uint16_t>& bytes) {
    constexpr std::size_t mostShown = 10;
    const std::size_t shown = std::min(bytes.size(), mostShown);
    std::string text;
    for (std::size_t i = 0; i < shown; ++i) {
        if (i > 0) text += i + 1 == bytes.size() ? " and " : ", ";
        text += "B" + std::to_string(bytes[i]);
    }
    return shown == bytes.size() ? text : text + " and " + std::to_string(bytes.size() - shown) + " more";
}

std::string HalfSentLine(const std::vector<std::uint16_t>& bytes) {
    return bytes.empty() ? "" : "\nWhat was half sent may have set " + ByteList(bytes) + " to 255.";
}

} // namespace vantrel
