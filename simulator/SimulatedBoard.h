// A target board in software: bytes in, bytes out, and a memory that looks alive. Pure: no clock, no port, no thread.
#pragma once

#include "platform/Clock.h"
#include "simulator/BoardHabits.h"
#include "simulator/BoardMemory.h"
#include "simulator/SimulatedFaults.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace vantrel {

/// What the board does about one received byte.
struct BoardAnswer {
    std::vector<std::uint8_t> bytes; ///< To send, in order; often one, sometimes none.
    MonotonicTime delay{0}; ///< How long the board thinks before it sends.
    bool hangUp = false; ///< The line goes dead now.
};

/// The board's side of the byte-echo protocol over 64 KiB of memory.
///
/// Without other habits: 0xFF is the sync byte and also an address byte. Where an address high byte is due, it is
/// echoed, so that page 0xFF can be reached; a second 0xFF after it is taken as a sync. So a PC that repeats 0xFF until
/// it gets 0x55 always gets in sync, and address 65535 alone cannot be reached. A group of address and data bytes that
/// pauses for 500 ms is forgotten, and the next byte makes a fresh start: a PC that waited for a lost byte gets in sync
/// too, and its 0xFF is not taken for data. (A PC that asks again sooner may still fill the group with its 0xFF.)
class SimulatedBoard {
public:
    /// `startedAt`: what the board's own clock shows at monotonic time 0 of the caller.
    explicit SimulatedBoard(std::chrono::local_seconds startedAt = {}, BoardHabits habits = {});

    /// One byte arrives at `now`.
    [[nodiscard]] BoardAnswer Receive(std::uint8_t byte, MonotonicTime now);

    /// Transmit and receive are shorted at this byte, which the board never sees; called once for each byte, before it.
    [[nodiscard]] bool LinesTouch();

    /// Adds a fault to what the board does wrong.
    void AddFault(const SimulatedFault& fault);
    void ClearFaults();
    /// How many faults are still to strike; one that strikes at every byte stays for good.
    [[nodiscard]] std::size_t FaultsLeft() const { return faults_.size(); }
    /// How many bytes have reached the board, lost and spoiled ones too: what a fault's `afterBytes` counts.
    [[nodiscard]] std::size_t ReceivedBytes() const { return receivedBytes_; }
    /// Makes another kind of board of it, memory and all; takes effect with the next byte.
    void SetHabits(BoardHabits habits);

    /// Memory as the line would read and write it at `now`, without the line. A live location is a function of what
    /// is stored and of `now` alone; what a write does to the board's clock counts from its `now`.
    [[nodiscard]] std::uint8_t Peek(std::uint16_t address, MonotonicTime now = {}) const;
    [[nodiscard]] std::uint16_t PeekWord(std::uint16_t address, MonotonicTime now = {}) const;
    /// All that has been stored, without what the board keeps alive.
    [[nodiscard]] std::span<const std::uint8_t> Stored() const { return memory_.Stored(); }
    void Poke(std::uint16_t address, std::uint8_t value, MonotonicTime now = {});
    void PokeWord(std::uint16_t address, std::uint16_t value, MonotonicTime now = {});

private:
    /// Which byte is due.
    enum class Due { Sync, Mode, ReadHigh, ReadLow, WriteHigh, WriteLow, WriteData };

    /// What a correct board sends, and what kind of byte that is, for the faults that strike one kind only.
    enum class Kind { Handshake, AddressEcho, DataEcho, Data };
    struct Reaction {
        std::uint8_t byte;
        Kind kind;
    };

    [[nodiscard]] std::optional<SimulatedFault> Strike(FaultKind kind);
    [[nodiscard]] bool Strikes(FaultKind kind) { return Strike(kind).has_value(); }
    [[nodiscard]] bool InsideGroup() const;
    void ForgetHalfSent(MonotonicTime now);
    Reaction React(std::uint8_t byte, MonotonicTime now);
    Reaction TakeSync(std::uint8_t byte);
    Reaction TakeMode(std::uint8_t byte);
    Reaction TakeHigh(std::uint8_t byte, Due next);
    Reaction TakeLow(std::uint8_t byte, MonotonicTime now);
    Reaction TakeData(std::uint8_t byte, MonotonicTime now);
    std::uint8_t ReadData(MonotonicTime now);
    void Garble(Reaction& reaction);

    BoardMemory memory_;
    BoardHabits habits_;
    std::vector<SimulatedFault> faults_;
    std::size_t receivedBytes_ = 0;

    Due due_ = Due::Sync;
    std::uint16_t address_ = 0;
    MonotonicTime lastByteAt_{0};

    /// The byte read last and the moment that its value is of.
    struct LastRead {
        std::uint16_t address;
        MonotonicTime at;
    };
    std::optional<LastRead> lastRead_;
};

/// `startedAt` for a board that lives on `clock` and shows its local time.
[[nodiscard]] std::chrono::local_seconds BoardStart(const Clock& clock);

} // namespace vantrel
