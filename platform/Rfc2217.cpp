#include "platform/Rfc2217.h"

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

using telnet::Bytes;
using Agreement = telnet::Stream::Agreement;

// Commands of the option; the server answers each with its number and 100 more.
constexpr std::uint8_t Signature = 0;
constexpr std::uint8_t SetSpeed = 1;
constexpr std::uint8_t SetDataBits = 2;
constexpr std::uint8_t SetParity = 3;
constexpr std::uint8_t SetStopBits = 4;
constexpr std::uint8_t SetControl = 5;
constexpr std::uint8_t PurgeData = 12;
constexpr std::uint8_t ServerOffset = 100;

constexpr std::uint8_t EightBits = 8;
constexpr std::uint8_t NoParity = 1;
constexpr std::uint8_t OneStopBit = 1;
constexpr std::uint8_t NoFlowControl = 1;
constexpr std::uint8_t ReceiveBuffer = 1;

constexpr std::uint32_t FastestSpeed = 10'000'000;
constexpr std::size_t SpeedBytes = 4;

void AppendSpeed(Bytes& to, std::uint32_t speed) {
    for (int shift = 24; shift >= 0; shift -= 8)
        to.push_back(static_cast<std::uint8_t>(speed >> shift & 0xFF));
}

std::optional<std::uint32_t> SpeedIn(std::span<const std::uint8_t> value) {
    if (value.size() != SpeedBytes) return std::nullopt;
    std::uint32_t speed = 0;
    for (const std::uint8_t byte : value)
        speed = speed << 8 | byte;
    return speed;
}

} // namespace

Rfc2217Client::Taken Rfc2217Client::Take(std::span<const std::uint8_t> bytes) {
    telnet::Taken taken = stream_.Take(bytes);
    Taken result{.data = std::move(taken.data), .replies = std::move(taken.replies)};
    for (const std::uint8_t option : {telnet::Binary, telnet::ComPort}) {
        if (stream_.Ours(option) != Agreement::Open) speaksTelnet_ = true;
    }
    if (!settingsSent_ && stream_.Ours(telnet::ComPort) == Agreement::Agreed) {
        settingsSent_ = true;
        const Bytes settings = Settings();
        result.replies.insert(result.replies.end(), settings.begin(), settings.end());
    }
    for (const Bytes& demand : taken.demands)
        Hear(demand);
    return result;
}

telnet::Bytes Rfc2217Client::Settings() const {
    Bytes speed{telnet::ComPort, SetSpeed};
    AppendSpeed(speed, speed_);
    Bytes all = telnet::Demand(speed);
    for (const auto& [command, value] : {std::pair{SetDataBits, EightBits},
                                         {SetParity, NoParity},
                                         {SetStopBits, OneStopBit},
                                         {SetControl, NoFlowControl}}) {
        const Bytes one = telnet::Demand(Bytes{telnet::ComPort, command, value});
        all.insert(all.end(), one.begin(), one.end());
    }
    return all;
}

void Rfc2217Client::Hear(const Bytes& demand) {
    constexpr std::size_t head = 2;
    if (!settingsSent_ || demand.size() <= head || demand[0] != telnet::ComPort) return;
    const std::span value(demand.begin() + head, demand.end());
    const auto settle = [&](std::size_t which, bool asAsked) {
        confirmed_.at(which) = asAsked;
        if (!asAsked) refused_ = true;
    };
    switch (demand[1]) {
    case SetSpeed + ServerOffset:
        settle(0, SpeedIn(value) == speed_);
        break;
    case SetDataBits + ServerOffset:
        settle(1, value.front() == EightBits);
        break;
    case SetParity + ServerOffset:
        settle(2, value.front() == NoParity);
        break;
    case SetStopBits + ServerOffset:
        settle(3, value.front() == OneStopBit);
        break;
    default: // States of lines and modem, which nobody asked for.
        break;
    }
}

Rfc2217Client::State Rfc2217Client::Now() const {
    if (refused_) return State::Refused;
    const Agreement control = stream_.Ours(telnet::ComPort);
    const Agreement binary = stream_.Ours(telnet::Binary);
    if (control == Agreement::Refused || binary == Agreement::Refused) return State::NoControl;
    const bool all = std::all_of(confirmed_.begin(), confirmed_.end(), [](bool one) { return one; });
    return all && binary == Agreement::Agreed ? State::Ready : State::Asking;
}

telnet::Bytes Rfc2217Client::PurgeReceived() {
    return telnet::Demand(Bytes{telnet::ComPort, PurgeData, ReceiveBuffer});
}

Rfc2217Client::Taken Rfc2217Server::Take(std::span<const std::uint8_t> bytes) {
    telnet::Taken taken = stream_.Take(bytes);
    Rfc2217Client::Taken result{.data = std::move(taken.data), .replies = std::move(taken.replies)};
    for (const Bytes& demand : taken.demands) {
        const Bytes answer = Answer(demand);
        result.replies.insert(result.replies.end(), answer.begin(), answer.end());
    }
    return result;
}

telnet::Bytes Rfc2217Server::Answer(const Bytes& demand) {
    if (demand.size() < 2 || demand[0] != telnet::ComPort || demand[1] > PurgeData) return {};
    Bytes answer = demand;
    answer[1] = static_cast<std::uint8_t>(answer[1] + ServerOffset);
    const std::span value(demand.begin() + 2, demand.end());
    if (demand[1] == Signature) {
        constexpr std::string_view name = "VANTREL simulated board";
        answer.assign({telnet::ComPort, Signature + ServerOffset});
        answer.insert(answer.end(), name.begin(), name.end());
    } else if (demand[1] == SetSpeed) {
        const auto speed = SpeedIn(value);
        if (!speed || *speed > FastestSpeed) return {};
        // 0 asks which it is.
        if (*speed > 0) speed_ = static_cast<int>(*speed);
        answer.resize(2);
        AppendSpeed(answer, static_cast<std::uint32_t>(speed_.value_or(0)));
    } else if (demand[1] >= SetDataBits && demand[1] <= SetStopBits && !value.empty() && value.front() == 0) {
        answer[2] = demand[1] == SetDataBits ? EightBits : demand[1] == SetParity ? NoParity : OneStopBit;
    }
    return telnet::Demand(answer);
}

} // namespace vantrel
