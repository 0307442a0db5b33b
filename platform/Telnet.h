// The telnet stream that RFC 2217 lives in: bytes in; data, replies and sub-negotiations out. Pure; survives any bytes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <vector>

namespace vantrel::telnet {

using Bytes = std::vector<std::uint8_t>;

inline constexpr std::uint8_t Binary = 0; ///< Every byte as it is, both ways.
inline constexpr std::uint8_t SuppressGoAhead = 3;
inline constexpr std::uint8_t ComPort = 44; ///< Control of a serial port, RFC 2217.

/// What some received bytes meant.
struct Taken {
    Bytes data; ///< Of the line.
    Bytes replies; ///< To be sent back, whole and in order.
    std::vector<Bytes> demands; ///< Sub-negotiations: the option, and what stands behind it, escapes undone.
};

/// The escape byte 0xFF is sent twice where it is data.
[[nodiscard]] Bytes Escaped(std::span<const std::uint8_t> data);
/// IAC SB, `demand` escaped, IAC SE.
[[nodiscard]] Bytes Demand(std::span<const std::uint8_t> demand);

/// One end of a telnet connection. Answers the other end's wishes once each, agreeing to what it was told to and to
/// nothing else, so that two ends never answer each other's answers for ever.
class Stream {
public:
    /// Options that this end is willing to have on, on its own side and on the other.
    Stream(std::initializer_list<std::uint8_t> ours, std::initializer_list<std::uint8_t> theirs);

    /// Asks for all of them; what to send.
    [[nodiscard]] Bytes Ask();
    [[nodiscard]] Taken Take(std::span<const std::uint8_t> bytes);

    enum class Agreement { Open, Agreed, Refused };
    /// What the other end has said of an option on this side.
    [[nodiscard]] Agreement Ours(std::uint8_t option) const { return ours_[option].agreement; }
    [[nodiscard]] Agreement Theirs(std::uint8_t option) const { return theirs_[option].agreement; }

private:
    struct Option {
        bool wanted = false;
        bool asked = false; ///< By us, and not answered yet.
        Agreement agreement = Agreement::Open;
    };
    using Side = std::array<Option, 256>;

    void TakeByte(std::uint8_t byte, Taken& taken);
    void TakeVerb(std::uint8_t verb, Taken& taken);
    void TakeDemandByte(std::uint8_t byte);
    static void Agree(Option& option, bool on, std::uint8_t code, std::uint8_t yes, std::uint8_t no, Taken& taken);

    enum class Due { Data, Verb, Option, Demand, DemandVerb };
    Due due_ = Due::Data;
    std::uint8_t verb_ = 0;
    Bytes demand_;
    Side ours_{};
    Side theirs_{};
};

} // namespace vantrel::telnet
