// The byte-echo protocol: one byte out, one byte in; the modes; reads and writes of values.
#include "link/RSComm.h"

#include "platform/RuntimeError.h"
#include "text/AsciiCase.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <limits>
#include <utility>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

constexpr std::uint8_t SyncByte = 0xFF;
constexpr std::uint8_t Acknowledge = 0x55;
constexpr int ReadMode = 1;
constexpr int WriteMode = 2;

constexpr MonotonicTime FirstAnswerTime = 1s;
constexpr MonotonicTime RepeatedAnswerTime = 2s;
constexpr int AttemptsBeforeWarning = 3;
constexpr MonotonicTime ModeTime = 2s;

/// Longer than any byte is under way, also through an adapter that hands over its bytes every 16 ms.
constexpr MonotonicTime QuietTime = 50ms;
constexpr MonotonicTime LongestSettling = 500ms;

/// Several bytes at 9600 baud: a surplus byte follows its neighbour directly.
constexpr MonotonicTime SurplusTime = 5ms;

constexpr const char* WarningTitle = "WARNING - Communication Error!";

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

} // namespace

void RSComm::Send(std::uint8_t byte) {
    unlogged_ = SentByte{clock_.Now(), byte};
    port_->Write({&byte, 1});
}

void RSComm::Log(std::optional<std::uint8_t> answer) {
    if (trafficLog_ && unlogged_) trafficLog_->Exchanged(unlogged_->at, unlogged_->byte, answer);
    unlogged_.reset();
}

int RSComm::ExchangeByte(std::uint8_t byte, Reply reply, Receiver receiver) {
    assert(busy_ > 0);
    if (linkFailed_) return NoAnswer;
    if (!port_ || !port_->IsOpen()) {
        targetMode_ = 0;
        linkFailed_ = true;
        return NoAnswer;
    }
    if (receiver == Receiver::FlushFirst) DiscardReceived();
    Send(byte);
    if (reply == Reply::NoReply) {
        Log({});
        return 0;
    }
    return AwaitAnswer();
}

int RSComm::AwaitAnswer() {
    MonotonicTime deadline = clock_.Now() + FirstAnswerTime;
    int attempts = 0;
    for (PortWait wait = port_->WaitForByte(deadline); wait != PortWait::ByteReceived;
         wait = port_->WaitForByte(deadline)) {
        Log({});
        unsettled_ = true;
        repeated_ = true;
        targetMode_ = 0;
        linkFailed_ = true;
        deadline = clock_.Now() + RepeatedAnswerTime;
        ++attempts;
        if (wait == PortWait::Lost || attempts == AttemptsBeforeWarning) {
            if (!AskAfterNoAnswer(wait)) return NoAnswer;
            attempts = 0;
            // A line that was opened anew has nothing to wait for before the next attempt.
            if (wait == PortWait::Lost) deadline = clock_.Now();
            linkFailed_ = false;
        } else {
            linkFailed_ = false;
            DiscardReceived();
            Send(SyncByte);
        }
    }
    const std::uint8_t answer = port_->ReadByte();
    Log(answer);
    return answer;
}

bool RSComm::AskAfterNoAnswer(PortWait how) {
    const MessageAnswer answer = dialogs_.Show({.title = WarningTitle,
                                                .text = "Cannot Communicate with Target Board.\n"
                                                        "Verify RS-232 Cable is Connected Between\n"
                                                        "COMM Port and PROG Port.",
                                                .icon = MessageIcon::Critical,
                                                .buttons = MessageButtons::RetryCancel});
    if (answer != MessageAnswer::Retry) return false;
    if (how != PortWait::Lost) return true;
    try {
        port_->Open();
        port_->ClearReceived();
        ++reopened_;
        return true;
    } catch (const RuntimeError& error) {
        // The warning was shown once and is not repeated; why the port stays closed is news.
        ShowPortError(error);
        return false;
    }
}

bool RSComm::SetTargetMode(int mode, std::uint8_t modeByte) {
    targetMode_ = 0;
    MonotonicTime deadline = clock_.Now() + ModeTime;
    while (targetMode_ != mode) {
        if (clock_.Now() >= deadline) {
            if (!AskAfterNoMode()) return false;
            deadline = clock_.Now() + ModeTime;
        }
        if (unsettled_) SettleLine();
        const int answer = ExchangeByte(SyncByte, Reply::Wait, Receiver::FlushFirst);
        if (answer == NoAnswer) return false;
        if (answer != Acknowledge) continue;
        const int modeAnswer = ExchangeByte(modeByte);
        if (modeAnswer == NoAnswer) return false;
        targetMode_ = modeAnswer == Acknowledge ? mode : 0;
        unsettled_ = modeAnswer != Acknowledge;
    }
    return true;
}

void RSComm::SettleLine() {
    // One surplus byte, still on its way while the buffer is emptied, would pass for the answer to the next byte, and
    // every answer after it for the one before: the link would never get in step again.
    if (linkFailed_ || !port_ || !port_->IsOpen()) return;
    const MonotonicTime end = clock_.Now() + LongestSettling;
    while (clock_.Now() < end && port_->WaitForByte(clock_.Now() + QuietTime) == PortWait::ByteReceived) {
        DiscardReceived();
    }
    unsettled_ = false;
}

bool RSComm::SurplusFollows() {
    const Operation operation(*this);
    if (linkFailed_ || !port_ || !port_->IsOpen()) return false;
    if (port_->WaitForByte(clock_.Now() + SurplusTime) != PortWait::ByteReceived) return false;
    unsettled_ = true;
    targetMode_ = 0;
    return true;
}

void RSComm::DiscardReceived() {
    while (port_->ReceivedCount() > 0) {
        const std::uint8_t surplus = port_->ReadByte();
        if (trafficLog_) trafficLog_->Surplus(clock_.Now(), surplus);
    }
    port_->ClearReceived();
}

bool RSComm::AskAfterNoMode() {
    const MessageAnswer answer = dialogs_.Show({.title = WarningTitle,
                                                .text = "Cannot Set PLC Mode Within Target Board.",
                                                .icon = MessageIcon::Critical,
                                                .buttons = MessageButtons::RetryCancel});
    if (answer == MessageAnswer::Retry) return true;
    linkFailed_ = true;
    onlineMode_ = false;
    CloseRSComm();
    return false;
}

std::string RSComm::RSRead(const std::string& address) {
    const Operation operation(*this);
    const std::string value = ReadTarget(address);
    readFailed_ = value.empty() || repeated_;
    return value.empty() ? "0" : value;
}

std::string RSComm::ReadTarget(const std::string& address) {
    if (targetMode_ != ReadMode) {
        if (!SetTargetMode(ReadMode, ReadMode)) return {};
        lastRead_.reset();
    }
    if (!lastRead_ || !SameIgnoringCase(lastRead_->text, address)) lastRead_ = LastRead{address, ParseAddress(address)};
    const TargetAddress from = lastRead_->parsed;
    const auto bytes = ReadBytes(from);
    if (!bytes) return {};
    const auto word = [&](std::size_t first) {
        return static_cast<std::uint64_t>((*bytes)[first + 1]) * 256 + (*bytes)[first];
    };
    switch (from.type) {
    case 'W':
        return std::to_string(word(0));
    case 'D':
        return std::to_string(word(2) * DoubleWordBase + word(0));
    default:
        if (from.isBit) return (bytes->front() & from.bitMask) != 0 ? "1" : "0";
        return std::to_string(bytes->front());
    }
}

std::optional<std::vector<std::uint8_t>> RSComm::ReadBytes(const TargetAddress& from) {
    const int count = ByteCount(from.type);
    if (count == 0) {
        targetMode_ = 0;
        return std::nullopt;
    }
    std::vector<std::uint8_t> bytes;
    repeated_ = false;
    auto address = static_cast<std::uint16_t>(from.byteAddress);
    for (int i = 0; i < count; ++i, ++address) {
        const int echo = ExchangeByte(HighByte(address));
        if (echo == NoAnswer) return std::nullopt;
        if (echo != HighByte(address)) {
            unsettled_ = true;
            targetMode_ = 0;
            return std::nullopt;
        }
        const int data = ExchangeByte(LowByte(address));
        if (data == NoAnswer) return std::nullopt;
        bytes.push_back(static_cast<std::uint8_t>(data));
    }
    return bytes;
}

WriteOutcome RSComm::RSWrite(const std::string& address, const std::string& value) {
    const Operation operation(*this);
    const WriteOutcome outcome = WriteTarget(address, value);
    return retryWrite_ ? WriteTarget(address, value) : outcome;
}

WriteOutcome RSComm::Refuse(const std::string& reason, MessageIcon icon) {
    dialogs_.Show({.title = "ENTRY ALERT", .text = "Error:\n" + reason, .icon = icon, .buttons = MessageButtons::Ok});
    return WriteOutcome::Refused;
}

WriteOutcome RSComm::WriteTarget(const std::string& address, const std::string& value) {
    retryWrite_ = false;
    const std::optional<std::string> digits = DigitsOf(value);
    if (!digits) return Refuse("Only Numerical Data Allowed.", MessageIcon::Exclamation);
    const TargetAddress to = ParseAddress(address);
    return to.isBit ? WriteBit(to, NumberOf(*digits)) : WriteNumber(to, NumberOf(*digits));
}

WriteOutcome RSComm::WriteBit(const TargetAddress& to, std::uint64_t number) {
    if (number > 1) return Refuse("Enter 0 or 1 Only.", MessageIcon::Exclamation);
    const std::string current = ReadTarget("B" + std::to_string(to.byteAddress));
    if (current.empty() || repeated_ || SurplusFollows()) {
        // Without the byte that holds the bit, a write would wipe out its seven neighbours.
        retryWrite_ = !linkFailed_;
        return linkFailed_ ? WriteOutcome::LinkFailed : WriteOutcome::NotConfirmed;
    }
    const std::uint64_t others = NumberOf(current) & ~static_cast<std::uint64_t>(to.bitMask);
    return WriteNumber(to, number == 1 ? others | to.bitMask : others);
}

WriteOutcome RSComm::WriteNumber(const TargetAddress& to, std::uint64_t number) {
    const auto outOfRange = [this](const char* range) {
        return Refuse("Entry out of Range (" + std::string(range) + ").", MessageIcon::Critical);
    };
    const std::uint64_t low = number % DoubleWordBase;
    const std::uint64_t high = number / DoubleWordBase;
    std::vector<std::uint8_t> bytes;
    switch (to.type) {
    case 'B':
        if (number > HighestByte) return outOfRange("0-255");
        bytes = {LowByte(number)};
        break;
    case 'W':
        if (number > HighestWord) return outOfRange("0-65,535");
        bytes = {LowByte(number), HighByte(number)};
        break;
    case 'D':
        if (number > HighestDoubleWord) return outOfRange("0-655,359,999");
        bytes = {LowByte(low), HighByte(low), LowByte(high), HighByte(high)};
        break;
    default:
        return WriteOutcome::Refused;
    }
    if (targetMode_ != WriteMode && !SetTargetMode(WriteMode, WriteMode)) return WriteOutcome::LinkFailed;
    return SendBytes(to.byteAddress, bytes);
}

WriteOutcome RSComm::SendBytes(std::int32_t byteAddress, const std::vector<std::uint8_t>& bytes) {
    repeated_ = false;
    auto address = static_cast<std::uint16_t>(byteAddress);
    for (const std::uint8_t data : bytes) {
        for (const std::uint8_t byte : {HighByte(address), LowByte(address), data}) {
            const int echo = ExchangeByte(byte);
            if (echo == NoAnswer) return WriteOutcome::LinkFailed;
            if (echo != byte) {
                retryWrite_ = true;
                unsettled_ = true;
                targetMode_ = 0;
                return WriteOutcome::NotConfirmed;
            }
        }
        ++address;
    }
    return repeated_ ? WriteOutcome::NotConfirmed : WriteOutcome::Written;
}

} // namespace vantrel
