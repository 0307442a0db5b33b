// What the simulated board's 64 KiB hold: plain bytes, and the locations that the board itself keeps alive. Pure: what
// a location shows follows from what was stored and from the time passed in.
#pragma once

#include "platform/Clock.h"
#include "simulator/BoardClock.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace vantrel {

/// Fresh, it holds the default configuration, the board's identity, network address 1 and no fault. Alive are the
/// status word of each sequence, the send and receive words of used sequences, and the clock.
class BoardMemory {
public:
    static constexpr std::size_t Size = 65536;

    explicit BoardMemory(std::chrono::local_seconds startedAt);

    [[nodiscard]] std::uint8_t Peek(std::uint16_t address, MonotonicTime now) const;
    /// What has been stored, whatever the board shows there instead.
    [[nodiscard]] std::span<const std::uint8_t> Stored() const { return bytes_; }
    /// Storing into a location that is alive is allowed; the board goes on showing its own value there.
    void Poke(std::uint16_t address, std::uint8_t value, MonotonicTime now);

private:
    [[nodiscard]] std::uint16_t StoredWord(int address) const;
    void StoreWord(int address, std::uint16_t value);
    void StoreIdentity();
    /// The value that the board itself keeps in the word at an even address, if it keeps one there.
    [[nodiscard]] std::optional<std::uint16_t> LiveWord(int address, MonotonicTime now) const;
    [[nodiscard]] std::optional<std::uint16_t> DataWord(int address, MonotonicTime now) const;
    [[nodiscard]] std::uint16_t SequenceSetting(int sequence, int field) const;

    std::vector<std::uint8_t> bytes_;
    BoardClock clock_;
};

} // namespace vantrel
