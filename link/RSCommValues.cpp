// Reads and writes of values: what is sent for them, and what becomes of them.
#include "link/RSComm.h"

#include "link/ProtocolBytes.h"
#include "link/TargetMap.h"
#include "text/AsciiCase.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>
#include <utility>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

/// Several bytes at 9600 baud: a surplus byte follows its neighbour directly.
constexpr MonotonicTime SurplusTime = 5ms;
/// After such a rest (a computer that slept) nobody knows what mode the far end is in.
constexpr MonotonicTime LongestRest = 60s;

/// A double word is two words, in base 10000.
constexpr std::uint64_t DoubleWordBase = 10000;
constexpr std::uint64_t HighestByte = 255;
constexpr std::uint64_t HighestWord = 65535;
constexpr std::uint64_t HighestDoubleWord = HighestWord * DoubleWordBase + DoubleWordBase - 1;

/// What a person types between and behind digits means nothing; any other character makes the text no number.
std::optional<std::string> DigitsOf(std::string value) {
    constexpr std::string_view degreeSign = "\xC2\xB0";
    for (std::size_t at = value.find(degreeSign); at != std::string::npos; at = value.find(degreeSign)) {
        value.erase(at, degreeSign.size());
    }
    std::erase_if(value, [](char c) { return std::string_view(" %,.").find(c) != std::string_view::npos; });
    const bool numeric = std::all_of(value.begin(), value.end(), [](char c) { return c >= '0' && c <= '9'; });
    return numeric ? std::optional(value) : std::nullopt;
}

/// A number too large for the type stays too large for every range check.
std::uint64_t NumberOf(const std::string& digits) {
    std::uint64_t number = 0;
    for (const char digit : digits) {
        if (number > HighestDoubleWord) return number;
        number = 10 * number + static_cast<std::uint64_t>(digit - '0');
    }
    return number;
}

std::uint8_t LowByte(std::uint64_t word) { return static_cast<std::uint8_t>(word & 0xFFU); }
std::uint8_t HighByte(std::uint64_t word) { return static_cast<std::uint8_t>(word >> 8U & 0xFFU); }

std::uint32_t NumberIn(const std::vector<std::uint8_t>& bytes, const TargetAddress& from) {
    const auto word = [&](std::size_t first) { return bytes[first + 1] * 256U + bytes[first]; };
    switch (from.type) {
    case 'W':
        return word(0);
    case 'D':
        return word(2) * static_cast<std::uint32_t>(DoubleWordBase) + word(0);
    default:
        if (from.isBit) return (bytes.front() & from.bitMask) != 0 ? 1 : 0;
        return bytes.front();
    }
}

} // namespace

TaskOf<Reading> RSComm::Read(std::string address) {
    Line line = co_await TakeLine();
    co_return co_await line.Read(std::move(address));
}

TaskOf<std::string> RSComm::RSRead(std::string address) {
    const Reading reading = co_await Read(std::move(address));
    co_return std::to_string(reading.NumberEvenIfDoubtful().value_or(0));
}

TaskOf<WriteResult> RSComm::RSWrite(std::string address, std::string value) {
    Line line = co_await TakeLine();
    co_return co_await line.RSWrite(std::move(address), std::move(value));
}

TaskOf<RSComm::Line> RSComm::TakeLine() {
    TurnLock::Hold hold = co_await lock_.Take();
    BeginOperation();
    co_return Line(*this, std::move(hold));
}

void RSComm::BeginOperation() {
    givenUp_ = false;
    patience_ = Patience::Usual;
}

TaskOf<Reading> RSComm::ReadAndLook(std::string address) {
    Reading reading = co_await ReadOnceAndLook(address);
    const bool named = ByteCount(ParseAddress(address).type) > 0;
    if (named && reading.What() == Reading::Kind::Doubtful) reading = co_await ReadOnceAndLook(address);
    co_await turns_.Allowed();
    co_return reading;
}

TaskOf<Reading> RSComm::ReadOnceAndLook(std::string address) {
    const Attempt attempt = co_await ReadTarget(std::move(address));
    if (attempt.state == Attempt::State::LinkFailed) co_return Reading::LinkFailed();
    if (attempt.state == Attempt::State::Spoiled) co_return Reading::Doubtful(attempt.number);
    Neighbour surplus;
    Watch(surplus);
    co_await LookForSurplus();
    const bool inStep = surplus.state == Neighbour::State::InStep;
    co_return inStep ? Reading::Value(*attempt.number) : Reading::Doubtful(attempt.number);
}

void RSComm::Watch(Neighbour& neighbour) {
    neighbour.state = Neighbour::State::Unknown;
    neighbour_ = &neighbour;
}

void RSComm::Forget(const Neighbour& neighbour) {
    if (neighbour_ == &neighbour) neighbour_ = nullptr;
}

void RSComm::TellNeighbour(bool inStep) {
    if (neighbour_) neighbour_->state = inStep ? Neighbour::State::InStep : Neighbour::State::OutOfStep;
    neighbour_ = nullptr;
}

Task RSComm::LookForSurplus() {
    if (linkFailed_ || !port_ || !port_->IsOpen()) {
        TellNeighbour(false);
        co_return;
    }
    const MonotonicTime until = clock_.Now() + std::max(SurplusTime, answerTimes_.Usual());
    const PortWait wait = co_await turns_.WaitForByte(*port_, until);
    if (wait == PortWait::ByteReceived) OutOfStep();
    TellNeighbour(wait == PortWait::TimedOut);
}

TaskOf<RSComm::Attempt> RSComm::ReadTarget(std::string address) {
    if (lastExchange_ && clock_.Now() - *lastExchange_ > LongestRest) OutOfStep();
    if (targetMode_ != ReadMode) {
        const bool set = co_await SetTargetMode(ReadMode, ReadMode);
        if (!set) co_return Attempt{Attempt::State::LinkFailed, std::nullopt};
        lastRead_.reset();
    }
    if (!lastRead_ || !SameIgnoringCase(lastRead_->text, address)) lastRead_ = LastRead{address, ParseAddress(address)};
    const TargetAddress from = lastRead_->parsed;
    const auto bytes = co_await ReadBytes(from);
    Attempt attempt;
    if (linkFailed_) attempt.state = Attempt::State::LinkFailed;
    if (!bytes) co_return attempt;
    if (bytes->size() == static_cast<std::size_t>(ByteCount(from.type))) attempt.number = NumberIn(*bytes, from);
    if (!linkFailed_ && value_.Clean()) attempt.state = Attempt::State::Clean;
    if (!value_.Clean()) OutOfStep();
    co_return attempt;
}

TaskOf<std::optional<std::vector<std::uint8_t>>> RSComm::ReadBytes(TargetAddress from) {
    const int count = ByteCount(from.type);
    if (count == 0) {
        targetMode_ = 0;
        co_return std::nullopt;
    }
    std::vector<std::uint8_t> bytes;
    value_ = {};
    auto address = static_cast<std::uint16_t>(from.byteAddress);
    for (int i = 0; i < count; ++i, ++address) {
        const int echo = co_await ExchangeByte(HighByte(address));
        const bool matches = echo == HighByte(address);
        // In a second of silence a surplus byte would have come.
        if (i == 0) TellNeighbour(matches || (value_.repeated && !port_->IsLost()));
        // After a silence the board may wait for a mode byte, and the low byte of the address could be one.
        if (!matches || value_.repeated) {
            if (echo != NoAnswer) OutOfStep();
            co_return std::nullopt;
        }
        const int data = co_await ExchangeByte(LowByte(address));
        if (data == NoAnswer) co_return std::nullopt;
        bytes.push_back(static_cast<std::uint8_t>(data));
        if (value_.repeated) break;
    }
    co_return bytes;
}

TaskOf<WriteResult> RSComm::WriteTwice(std::string address, std::string value) {
    WriteResult result;
    // Of a read that went before.
    untold_.merge(mayHaveReached_);
    const std::optional<std::string> digits = DigitsOf(std::move(value));
    if (!digits) {
        result.outcome = Refuse("Only Numerical Data Allowed.", MessageIcon::Exclamation);
        co_return result;
    }
    const TargetAddress to = ParseAddress(address);
    Payload payload;
    if (to.isBit) {
        payload = co_await BitPayload(to, NumberOf(*digits));
    } else {
        payload = PayloadOf(to, NumberOf(*digits));
    }
    if (payload.ended) {
        result.outcome = *payload.ended;
    } else {
        result.outcome = co_await SendBytes(to.byteAddress, payload.bytes);
        // The same bytes again, whatever the first attempt has done to the ones on the board.
        result.repeated = result.outcome == WriteOutcome::NotConfirmed;
        if (result.repeated) result.outcome = co_await SendBytes(to.byteAddress, payload.bytes);
    }
    result.mayHaveReached = ReachedBeside(to, payload.bytes.size());
    co_await turns_.Allowed();
    co_return result;
}

WriteOutcome RSComm::Refuse(const std::string& reason, MessageIcon icon) {
    dialogs_.Show({.title = "ENTRY ALERT", .text = "Error:\n" + reason, .icon = icon, .buttons = MessageButtons::Ok});
    return WriteOutcome::Refused;
}

TaskOf<RSComm::Payload> RSComm::BitPayload(TargetAddress to, std::uint64_t number) {
    Payload payload;
    if (number > 1) {
        payload.ended = Refuse("Enter 0 or 1 Only.", MessageIcon::Exclamation);
        co_return payload;
    }
    // Without the byte that holds the bit, a write would wipe out its seven neighbours.
    const Reading current = co_await ReadAndLook("B" + std::to_string(to.byteAddress));
    if (!current.IsValue()) {
        payload.ended = current.HasLinkFailed() ? WriteOutcome::LinkFailed : WriteOutcome::NotConfirmed;
        co_return payload;
    }
    const std::uint32_t others = *current.Number() & ~static_cast<std::uint32_t>(to.bitMask);
    payload.bytes = {LowByte(number == 1 ? others | static_cast<std::uint32_t>(to.bitMask) : others)};
    co_return payload;
}

RSComm::Payload RSComm::PayloadOf(const TargetAddress& to, std::uint64_t number) {
    const auto outOfRange = [this](const char* range) {
        return Payload{{}, Refuse("Entry out of Range (" + std::string(range) + ").", MessageIcon::Critical)};
    };
    const std::uint64_t low = number % DoubleWordBase;
    const std::uint64_t high = number / DoubleWordBase;
    switch (to.type) {
    case 'B':
        if (number > HighestByte) return outOfRange("0-255");
        return {{LowByte(number)}, {}};
    case 'W':
        if (number > HighestWord) return outOfRange("0-65,535");
        return {{LowByte(number), HighByte(number)}, {}};
    case 'D':
        if (number > HighestDoubleWord) return outOfRange("0-655,359,999");
        return {{LowByte(low), HighByte(low), LowByte(high), HighByte(high)}, {}};
    default:
        return {{}, WriteOutcome::Refused};
    }
}

TaskOf<WriteOutcome> RSComm::SendBytes(std::int32_t byteAddress, std::vector<std::uint8_t> bytes) {
    if (lastExchange_ && clock_.Now() - *lastExchange_ > LongestRest) OutOfStep();
    if (targetMode_ != WriteMode) {
        const bool set = co_await SetTargetMode(WriteMode, WriteMode);
        if (!set) co_return WriteOutcome::LinkFailed;
    }
    value_ = {};
    auto address = static_cast<std::uint16_t>(byteAddress);
    for (const std::uint8_t data : bytes) {
        const std::array group{HighByte(address), LowByte(address), data};
        for (std::size_t stage = 0; stage < group.size(); ++stage) {
            const int echo = co_await ExchangeByte(group.at(stage));
            if (echo == group.at(stage) && value_.Clean()) continue;
            NoteHalfSent(group, stage, echo);
            if (echo == NoAnswer) co_return WriteOutcome::LinkFailed;
            OutOfStep();
            co_return WriteOutcome::NotConfirmed;
        }
        ++address;
    }
    co_return WriteOutcome::Written;
}

void RSComm::NoteHalfSent(const std::array<std::uint8_t, 3>& group, std::size_t stage, int echo) {
    constexpr int syncByte = 0xFF;
    const bool answered = echo != NoAnswer && !value_.repeated;
    // The board waits for the rest of the address, and takes the next sync bytes for it.
    if (stage < 2) NoteReached(group[0], syncByte);
    // The board has understood another byte than the one that was sent.
    if (stage == 0 && answered) NoteReached(echo, syncByte);
    if (stage == 1 && answered) NoteReached(group[0], echo);
    // It has forgotten what came before the gap, and takes this byte for the first one of an address.
    if (stage > 0 && value_.gap) NoteReached(group.at(stage), syncByte);
}

void RSComm::NoteReached(int page, int low) { mayHaveReached_.insert(static_cast<std::uint16_t>(page * 256 + low)); }

std::vector<std::uint16_t> RSComm::TakeMayHaveReached() {
    untold_.merge(mayHaveReached_);
    mayHaveReached_.clear();
    const std::set<std::uint16_t> told = std::exchange(untold_, {});
    return {told.begin(), told.end()};
}

std::vector<std::uint16_t> RSComm::ReachedBeside(const TargetAddress& to, std::size_t count) {
    std::set<std::uint16_t> reached = std::exchange(mayHaveReached_, {});
    std::erase_if(reached, [&](std::uint16_t byte) {
        return byte >= to.byteAddress && byte < to.byteAddress + static_cast<std::int32_t>(count);
    });
    untold_.insert(reached.begin(), reached.end());
    return {reached.begin(), reached.end()};
}

} // namespace vantrel
