// Taking ranges apart.
#include "console/AddressList.h"

#include "console/CommandContext.h"
#include "link/TargetAddress.h"

#include <bit>
#include <cstdint>

namespace vantrel {

namespace {

constexpr int BitsInByte = 8;

bool IsFlag(const std::string& text) { return text.front() == 'F' || text.front() == 'f'; }

std::int32_t BitNumber(const TargetAddress& address) {
    return BitsInByte * address.byteAddress + (address.isBit ? std::countr_zero(address.bitMask) : 0);
}

/// As the user has named the first one.
std::string BitName(std::int32_t number, bool flag) {
    if (flag) return "F" + std::to_string(number - BitNumber(ParseAddress("F0")));
    return "B" + std::to_string(number / BitsInByte) + "." + std::to_string(number % BitsInByte);
}

[[noreturn]] void Refuse(const std::string& text, const std::string& why) {
    throw UsageError("\"" + text + "\" is no range of addresses: " + why + ".");
}

void AddRange(std::vector<std::string>& addresses, const std::string& text, std::size_t dash) {
    const std::string from = text.substr(0, dash);
    const std::string to = text.substr(dash + 1);
    RequireAddress(from);
    RequireAddress(to);
    const TargetAddress first = ParseAddress(from);
    const TargetAddress last = ParseAddress(to);
    if (first.type != last.type || first.isBit != last.isBit || IsFlag(from) != IsFlag(to)) {
        Refuse(text, "its two ends are of different kinds");
    }
    if (BitNumber(last) < BitNumber(first)) Refuse(text, "it ends before it begins");
    const int step = first.isBit ? 1 : BitsInByte * ByteCount(first.type);
    for (std::int32_t bit = BitNumber(first); bit <= BitNumber(last); bit += step) {
        addresses.push_back(first.isBit ? BitName(bit, IsFlag(from)) : first.type + std::to_string(bit / BitsInByte));
    }
}

} // namespace

void RequireAddress(const std::string& text) {
    if (const std::string problem = AddressProblem(text); !problem.empty()) throw UsageError(problem);
}

std::vector<std::string> AddressesIn(const std::vector<std::string>& texts) {
    std::vector<std::string> addresses;
    for (const std::string& text : texts) {
        const std::size_t dash = text.find('-', 1);
        if (dash != std::string::npos) {
            AddRange(addresses, text, dash);
        } else {
            RequireAddress(text);
            addresses.push_back(text);
        }
    }
    return addresses;
}

} // namespace vantrel
