// Both ends of RFC 2217: a serial port whose speed and framing are set through the telnet stream. Pure; our own because
// the library that such servers are made of (gensio) is not had for the Windows cross compiler.
#pragma once

#include "platform/Telnet.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace vantrel {

/// The end of the program that wants the line.
class Rfc2217Client {
public:
    /// `speed` in baud; always without parity, 8 data bits, 1 stop bit, no flow control.
    explicit Rfc2217Client(std::uint32_t speed) : speed_(speed) {}

    /// What to send first.
    [[nodiscard]] telnet::Bytes Begin() { return stream_.Ask(); }
    struct Taken {
        telnet::Bytes data; ///< Bytes of the line.
        telnet::Bytes replies; ///< To be sent back.
    };
    [[nodiscard]] Taken Take(std::span<const std::uint8_t> bytes);

    enum class State {
        Asking, ///< Not everything has been answered.
        Ready, ///< The server has confirmed speed and framing.
        NoControl, ///< It knows no RFC 2217, or no bytes as they are.
        Refused, ///< It has answered with another speed or framing.
    };
    [[nodiscard]] State Now() const;
    /// The other end has answered anything at all in telnet.
    [[nodiscard]] bool SpeaksTelnet() const { return speaksTelnet_; }
    /// Asks the server to throw away what it has received from the line and not sent yet; what to send.
    [[nodiscard]] static telnet::Bytes PurgeReceived();

private:
    void Hear(const telnet::Bytes& demand);
    [[nodiscard]] telnet::Bytes Settings() const;

    std::uint32_t speed_;
    telnet::Stream stream_{{telnet::Binary, telnet::SuppressGoAhead, telnet::ComPort},
                           {telnet::Binary, telnet::SuppressGoAhead, telnet::ComPort}};
    bool settingsSent_ = false;
    bool speaksTelnet_ = false;
    bool refused_ = false;
    std::array<bool, 4> confirmed_{}; ///< Speed, data bits, parity, stop bits.
};

/// The end that has the serial port; here a simulated one.
class Rfc2217Server {
public:
    [[nodiscard]] telnet::Bytes Begin() { return stream_.Ask(); }
    [[nodiscard]] Rfc2217Client::Taken Take(std::span<const std::uint8_t> bytes);
    /// What the client has set, in baud; nothing while it has set none.
    [[nodiscard]] std::optional<int> Speed() const { return speed_; }

private:
    [[nodiscard]] telnet::Bytes Answer(const telnet::Bytes& demand);

    telnet::Stream stream_{{telnet::Binary, telnet::SuppressGoAhead, telnet::ComPort},
                           {telnet::Binary, telnet::SuppressGoAhead, telnet::ComPort}};
    std::optional<int> speed_;
};

} // namespace vantrel
