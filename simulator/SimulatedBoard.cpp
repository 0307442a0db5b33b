// The byte-echo protocol as the board speaks it, and the faults that can be laid over it.
#include "simulator/SimulatedBoard.h"

#include "link/ProtocolBytes.h"
#include "link/TargetMap.h"

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

constexpr std::uint8_t NotUnderstood = 0x00;

/// The two bytes of a word, read further apart than this, are of two moments.
constexpr MonotonicTime WordLimit = 500ms;

/// Of the timer that common USB adapters are delivered with.
constexpr MonotonicTime LatencyTime = 16ms;

std::uint8_t Inverted(std::uint8_t byte) { return static_cast<std::uint8_t>(byte ^ 0xFF); }

} // namespace

SimulatedBoard::SimulatedBoard(std::chrono::local_seconds startedAt, BoardHabits habits)
    : memory_(startedAt), habits_(std::move(habits)) {}

void SimulatedBoard::AddFault(const SimulatedFault& fault) { faults_.push_back(fault); }

void SimulatedBoard::ClearFaults() { faults_.clear(); }

void SimulatedBoard::SetHabits(BoardHabits habits) { habits_ = std::move(habits); }

std::optional<SimulatedFault> SimulatedBoard::Strike(FaultKind kind) {
    const auto awake = std::find_if(faults_.begin(), faults_.end(), [&](const SimulatedFault& fault) {
        return fault.kind == kind && receivedBytes_ > fault.afterBytes;
    });
    if (awake == faults_.end()) return std::nullopt;
    const SimulatedFault fault = *awake;
    if (fault.firstTimeOnly) faults_.erase(awake);
    return fault;
}

bool SimulatedBoard::LinesTouch() {
    ++receivedBytes_;
    if (Strikes(FaultKind::ShortedLines)) return true;
    --receivedBytes_; // The board is about to see it.
    return false;
}

BoardAnswer SimulatedBoard::Receive(std::uint8_t byte, MonotonicTime now) {
    ++receivedBytes_;
    BoardAnswer answer;
    if (Strikes(FaultKind::HangUp)) {
        answer.hangUp = true;
        return answer;
    }
    if (Strikes(FaultKind::LostByte)) return answer;

    if (const auto fault = Strike(FaultKind::SpoiledByte)) byte ^= fault->flips;
    ForgetHalfSent(now);
    lastByteAt_ = now;
    Reaction reaction = React(byte, now);
    if (Strikes(FaultKind::NoAnswer)) return answer;

    Garble(reaction);
    if (const auto fault = Strike(FaultKind::SpoiledAnswer)) reaction.byte ^= fault->flips;
    answer.bytes.push_back(reaction.byte);
    if (Strikes(FaultKind::DoubledByte)) answer.bytes.push_back(reaction.byte);
    if (const auto fault = Strike(FaultKind::LateAnswer)) answer.delay = fault->lateBy;
    if (Strikes(FaultKind::LatencyTimer)) answer.delay += LatencyTime - (now + answer.delay) % LatencyTime;
    return answer;
}

bool SimulatedBoard::InsideGroup() const {
    return due_ == Due::ReadLow || due_ == Due::WriteLow || due_ == Due::WriteData;
}

void SimulatedBoard::ForgetHalfSent(MonotonicTime now) {
    if (!InsideGroup() || !habits_.halfSentLimit || now - lastByteAt_ < *habits_.halfSentLimit) return;
    const Due inMode = due_ == Due::ReadLow ? Due::ReadHigh : Due::WriteHigh;
    due_ = habits_.afterForgetting == AfterForgetting::StayInMode ? inMode : Due::Sync;
}

SimulatedBoard::Reaction SimulatedBoard::React(std::uint8_t byte, MonotonicTime now) {
    switch (due_) {
    case Due::Sync:
        return TakeSync(byte);
    case Due::Mode:
        return TakeMode(byte);
    case Due::ReadHigh:
        return TakeHigh(byte, Due::ReadLow);
    case Due::WriteHigh:
        return TakeHigh(byte, Due::WriteLow);
    case Due::ReadLow:
    case Due::WriteLow:
        return TakeLow(byte, now);
    case Due::WriteData:
        break;
    }
    return TakeData(byte, now);
}

SimulatedBoard::Reaction SimulatedBoard::TakeSync(std::uint8_t byte) {
    due_ = byte == SyncByte ? Due::Mode : Due::Sync;
    if (byte == SyncByte) return {Acknowledge, Kind::Handshake};
    return {habits_.echoesWhileIdle ? byte : NotUnderstood, Kind::Handshake};
}

SimulatedBoard::Reaction SimulatedBoard::TakeMode(std::uint8_t byte) {
    if (byte != ReadMode && byte != WriteMode) return TakeSync(byte);
    due_ = byte == ReadMode ? Due::ReadHigh : Due::WriteHigh;
    return {Acknowledge, Kind::Handshake};
}

SimulatedBoard::Reaction SimulatedBoard::TakeHigh(std::uint8_t byte, Due next) {
    if (byte == SyncByte && habits_.syncInMode == SyncInMode::First) return TakeSync(byte);
    address_ = static_cast<std::uint16_t>(byte << 8);
    due_ = next;
    // A 0xFF here is a sync more often than page 0xFF; faults of echoes must not spend themselves on it.
    return {byte, byte == SyncByte ? Kind::Handshake : Kind::AddressEcho};
}

SimulatedBoard::Reaction SimulatedBoard::TakeLow(std::uint8_t byte, MonotonicTime now) {
    address_ |= byte;
    if (address_ == 0xFFFF && habits_.syncInMode == SyncInMode::Second) return TakeSync(byte);
    if (due_ == Due::WriteLow) {
        due_ = Due::WriteData;
        return {byte, Kind::AddressEcho};
    }
    due_ = Due::ReadHigh;
    return {ReadData(now), Kind::Data};
}

SimulatedBoard::Reaction SimulatedBoard::TakeData(std::uint8_t byte, MonotonicTime now) {
    if (!habits_.Refuses(address_)) memory_.Poke(address_, byte, now);
    due_ = Due::WriteHigh;
    return {byte, Kind::DataEcho};
}

std::uint8_t SimulatedBoard::ReadData(MonotonicTime now) {
    // The high byte of a word is of the moment of its low byte, or a counter that carries between the two would jump.
    const bool completesWord =
        lastRead_ && address_ % 2 == 1 && lastRead_->address + 1 == address_ && now - lastRead_->at < WordLimit;
    lastRead_ = LastRead{address_, completesWord ? lastRead_->at : now};
    return Peek(address_, lastRead_->at);
}

void SimulatedBoard::Garble(Reaction& reaction) {
    const bool isData = reaction.kind == Kind::Data;
    if (reaction.kind == Kind::Handshake || !Strikes(isData ? FaultKind::WrongData : FaultKind::WrongEcho)) return;
    reaction.byte = Inverted(reaction.byte);
    // The board drops a value whose address came back wrong. The PC's next byte is a sync then, which must not be
    // taken for the rest of the value and end up in memory.
    if (reaction.kind == Kind::AddressEcho) due_ = Due::Sync;
}

std::uint8_t SimulatedBoard::Peek(std::uint16_t address, MonotonicTime now) const {
    const int place = address - StatusWordBase;
    const auto status = place >= 0 ? habits_.StatusOf(place / 2, now) : std::nullopt;
    if (!status) return memory_.Peek(address, now);
    return static_cast<std::uint8_t>(place % 2 == 0 ? *status & 0xFF : *status >> 8);
}

std::uint16_t SimulatedBoard::PeekWord(std::uint16_t address, MonotonicTime now) const {
    const auto high = static_cast<std::uint16_t>(address + 1);
    return static_cast<std::uint16_t>(Peek(address, now) | Peek(high, now) << 8);
}

void SimulatedBoard::Poke(std::uint16_t address, std::uint8_t value, MonotonicTime now) {
    memory_.Poke(address, value, now);
}

void SimulatedBoard::PokeWord(std::uint16_t address, std::uint16_t value, MonotonicTime now) {
    Poke(address, static_cast<std::uint8_t>(value & 0xFF), now);
    Poke(static_cast<std::uint16_t>(address + 1), static_cast<std::uint8_t>(value >> 8), now);
}

std::chrono::local_seconds BoardStart(const Clock& clock) {
    return clock.LocalNow() - std::chrono::floor<std::chrono::seconds>(clock.Now());
}

} // namespace vantrel
