#include "platform/Telnet.h"

#include <utility>

namespace vantrel::telnet {

namespace {

constexpr std::uint8_t Iac = 255;
constexpr std::uint8_t Dont = 254;
constexpr std::uint8_t Do = 253;
constexpr std::uint8_t Wont = 252;
constexpr std::uint8_t Will = 251;
constexpr std::uint8_t Sb = 250;
constexpr std::uint8_t Se = 240;

/// Longer than any that RFC 2217 knows but for texts, of which the beginning is enough.
constexpr std::size_t LongestDemand = 64;

void Append(Bytes& to, std::uint8_t byte) {
    to.push_back(byte);
    if (byte == Iac) to.push_back(byte);
}

} // namespace

Bytes Escaped(std::span<const std::uint8_t> data) {
    Bytes escaped;
    escaped.reserve(data.size());
    for (const std::uint8_t byte : data)
        Append(escaped, byte);
    return escaped;
}

Bytes Demand(std::span<const std::uint8_t> demand) {
    Bytes whole{Iac, Sb};
    for (const std::uint8_t byte : demand)
        Append(whole, byte);
    whole.insert(whole.end(), {Iac, Se});
    return whole;
}

Stream::Stream(std::initializer_list<std::uint8_t> ours, std::initializer_list<std::uint8_t> theirs) {
    for (const std::uint8_t option : ours)
        ours_[option].wanted = true;
    for (const std::uint8_t option : theirs)
        theirs_[option].wanted = true;
}

Bytes Stream::Ask() {
    Bytes wishes;
    const auto ask = [&](Side& side, std::uint8_t verb) {
        for (std::size_t code = 0; code < side.size(); ++code) {
            Option& option = side[code];
            if (!option.wanted || option.asked || option.agreement != Agreement::Open) continue;
            option.asked = true;
            wishes.insert(wishes.end(), {Iac, verb, static_cast<std::uint8_t>(code)});
        }
    };
    ask(ours_, Will);
    ask(theirs_, Do);
    return wishes;
}

Taken Stream::Take(std::span<const std::uint8_t> bytes) {
    Taken taken;
    for (const std::uint8_t byte : bytes)
        TakeByte(byte, taken);
    return taken;
}

void Stream::TakeByte(std::uint8_t byte, Taken& taken) {
    switch (due_) {
    case Due::Data:
        if (byte == Iac) {
            due_ = Due::Verb;
        } else {
            taken.data.push_back(byte);
        }
        break;
    case Due::Verb:
        TakeVerb(byte, taken);
        break;
    case Due::Option:
        due_ = Due::Data;
        if (verb_ == Will || verb_ == Wont) Agree(theirs_[byte], verb_ == Will, byte, Do, Dont, taken);
        if (verb_ == Do || verb_ == Dont) Agree(ours_[byte], verb_ == Do, byte, Will, Wont, taken);
        break;
    case Due::Demand:
        if (byte == Iac) {
            due_ = Due::DemandVerb;
        } else {
            TakeDemandByte(byte);
        }
        break;
    case Due::DemandVerb:
        due_ = byte == Iac ? Due::Demand : Due::Data;
        if (byte == Iac) TakeDemandByte(byte);
        if (byte == Se) taken.demands.push_back(std::exchange(demand_, {}));
        // Without its end it is worth nothing, and the command in it counts.
        if (byte != Iac && byte != Se) TakeVerb(byte, taken);
        break;
    }
}

void Stream::TakeVerb(std::uint8_t verb, Taken& taken) {
    due_ = Due::Data;
    verb_ = verb;
    if (verb == Iac) taken.data.push_back(verb);
    if (verb >= Will && verb <= Dont) due_ = Due::Option;
    if (verb == Sb) {
        due_ = Due::Demand;
        demand_.clear();
    }
    // The other commands are of a terminal, and mean nothing to a line.
}

void Stream::TakeDemandByte(std::uint8_t byte) {
    if (demand_.size() < LongestDemand) demand_.push_back(byte);
}

void Stream::Agree(Option& option, bool on, std::uint8_t code, std::uint8_t yes, std::uint8_t no, Taken& taken) {
    const bool wasOn = option.agreement == Agreement::Agreed;
    const bool answersUs = std::exchange(option.asked, false);
    const bool agreed = on && option.wanted;
    option.agreement = agreed ? Agreement::Agreed : Agreement::Refused;
    // An answer is not answered, nor is what is so already.
    if (answersUs || wasOn == on) return;
    taken.replies.insert(taken.replies.end(), {Iac, agreed ? yes : no, code});
}

} // namespace vantrel::telnet
