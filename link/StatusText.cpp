#include "link/StatusText.h"

#include "link/TargetMap.h"
#include "text/NumberText.h"

#include <array>
#include <limits>

namespace vantrel {

namespace {

constexpr const char* NoSuchCode = "Undefinded Error";

constexpr std::array<const char*, 19> StatusTexts{
    "Comm Disabled",
    NoSuchCode,
    "Comm to Node OK",
    "More Than One Bus Master",
    "Xmitt Timeout, No Response",
    "No Slave Response, Timeout",
    "Invalid Command - Master",
    "Receive Overflow",
    "Receive Collision Detected",
    "Receive Alignment Error",
    "Receive CRC Error",
    "Unknown Error",
    "Xmitt No Acknowledge",
    "Xmitt Underrun Error",
    "Xmitt Collision Detected",
    "Address Range Error",
    "Unexpected Slave Response",
    "TI-505/K5216 Read Error",
    "TI-505/K5216 Write Error",
};

std::string WordAt(std::size_t address) { return "W" + std::to_string(address); }

} // namespace

std::string StatusText(std::int32_t code) {
    // As unsigned, so that negative codes lie behind the table as well.
    const auto index = static_cast<std::uint32_t>(code);
    return index < StatusTexts.size() ? StatusTexts.at(index) : NoSuchCode;
}

std::string StatusDisplay(std::string_view value) {
    const std::int32_t code = LeadingInteger(value).value_or(std::numeric_limits<std::int32_t>::max());
    return HexText(static_cast<std::uint32_t>(code), 2) + ": " + StatusText(code);
}

std::string StatusWordAddress(std::size_t sequence) {
    return WordAt(static_cast<std::size_t>(StatusWordBase) + 2 * sequence);
}

std::string DataWordAddress(std::size_t sequence, DataDirection direction, int word) {
    const int base = direction == DataDirection::Send ? SendDataBase : ReceiveDataBase;
    return WordAt(static_cast<std::size_t>(base + 2 * (word - 1)) + SequenceStride * sequence);
}

} // namespace vantrel
