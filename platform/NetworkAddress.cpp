#include "platform/NetworkAddress.h"

#include "text/AsciiCase.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <utility>

namespace vantrel {

namespace {

constexpr std::array<std::pair<std::string_view, NetworkAddress::Kind>, 2> Schemes{
    {{"rfc2217://", NetworkAddress::Kind::Rfc2217}, {"socket://", NetworkAddress::Kind::Raw}}};

const auto* SchemeOf(const std::string& text) {
    const std::string lower = InLowerCase(text);
    const auto* found =
        std::find_if(Schemes.begin(), Schemes.end(), [&](const auto& each) { return lower.starts_with(each.first); });
    return found == Schemes.end() ? nullptr : found;
}

std::optional<std::uint16_t> PortOf(std::string_view digits) {
    std::uint16_t port = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), port);
    if (error != std::errc{} || end != digits.data() + digits.size()) return std::nullopt;
    return port;
}

/// Whatever a resolver may be asked for: no blanks, no signs of a path or of a user's name.
bool IsHost(std::string_view host, bool inBrackets) {
    const std::string_view refused = inBrackets ? " \t/?#@[]\"\\" : " \t/?#@[]:\"\\";
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    return !host.empty() && host.find_first_of(refused) == std::string_view::npos &&
           std::none_of(host.begin(), host.end(), isControl);
}

} // namespace

bool MeantAsNetworkAddress(const std::string& text) { return SchemeOf(text) != nullptr; }

std::optional<NetworkAddress> ParseNetworkAddress(const std::string& text) {
    const auto* scheme = SchemeOf(text);
    if (!scheme) return std::nullopt;
    std::string_view rest = std::string_view(text).substr(scheme->first.size());
    if (rest.ends_with('/')) rest.remove_suffix(1);
    const std::size_t colon = rest.rfind(':');
    if (colon == std::string_view::npos) return std::nullopt;
    std::string_view host = rest.substr(0, colon);
    const bool inBrackets = host.size() > 2 && host.front() == '[' && host.back() == ']';
    if (inBrackets) host = host.substr(1, host.size() - 2);
    const auto port = PortOf(rest.substr(colon + 1));
    if (!port || !IsHost(host, inBrackets)) return std::nullopt;
    return NetworkAddress{.kind = scheme->second, .host = std::string(host), .port = *port};
}

std::string HostAndPort(const NetworkAddress& address) {
    const bool brackets = address.host.find(':') != std::string::npos;
    return (brackets ? "[" + address.host + "]" : address.host) + ":" + std::to_string(address.port);
}

std::string NetworkAddressText(const NetworkAddress& address) {
    const auto* scheme =
        std::find_if(Schemes.begin(), Schemes.end(), [&](const auto& each) { return each.second == address.kind; });
    return std::string(scheme->first) + HostAndPort(address);
}

} // namespace vantrel
