// How a board behind a network is written: "rfc2217://host:port" and "socket://host:port", as serial tools spell it.
// Pure.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace vantrel {

struct NetworkAddress {
    enum class Kind {
        Rfc2217, ///< Telnet with control of the server's serial port: its speed and framing are ours to set.
        Raw, ///< The bytes of the line and nothing else; the server has been given its speed.
    };
    Kind kind = Kind::Rfc2217;
    std::string host; ///< A name, or an address of IPv4 or IPv6, without brackets.
    std::uint16_t port = 0; ///< 1 to 65535; 0 (any that is free) only where it is to be listened at.

    friend bool operator==(const NetworkAddress&, const NetworkAddress&) = default;
};

/// The text is meant as such an address, right or wrong: it begins with one of the two words and "://".
[[nodiscard]] bool MeantAsNetworkAddress(const std::string& text);

/// Nothing for a text that is none. An IPv6 address stands in brackets: "socket://[::1]:4001".
[[nodiscard]] std::optional<NetworkAddress> ParseNetworkAddress(const std::string& text);

/// "host:port", in brackets what holds colons itself; for messages.
[[nodiscard]] std::string HostAndPort(const NetworkAddress& address);
/// As it is written on a command line.
[[nodiscard]] std::string NetworkAddressText(const NetworkAddress& address);

/// What an address looks like, for the message about one that is none.
inline constexpr const char* NetworkAddressForm = "rfc2217://host:port or socket://host:port";

} // namespace vantrel
