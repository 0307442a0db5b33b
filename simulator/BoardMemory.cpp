// The fresh contents of the simulated board, and what makes them look alive.
#include "simulator/BoardMemory.h"

#include "link/TargetMap.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string_view>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

constexpr int SequenceTotal = 31;
constexpr int NodeNumberField = 0;
constexpr int SendWordCountField = 1;
constexpr int ReceiveWordCountField = 4;
constexpr std::array<std::uint16_t, 7> FreshSettings{0, 0, 1, 32, 0, 32, 1};

constexpr std::string_view Identity = "K5216505";
constexpr std::array<std::uint8_t, 2> RevisionNumbers{4, 1};
constexpr std::uint8_t FirmwareRevision = 23;

// Status codes as the board reports them.
constexpr std::uint16_t CommDisabled = 0;
constexpr std::uint16_t CommOk = 2;
constexpr std::uint16_t NoSlaveResponse = 5;

// Demonstrations want to see a failure come and go: on every 13th node a plug is loose.
constexpr int LastNode = 32;
constexpr int LooseNodeEvery = 13;
constexpr MonotonicTime LooseNodeCycle = 30s;
constexpr MonotonicTime LooseNodeAnswers = 26s;

/// When the node was last heard of; nothing for a node that cannot exist.
std::optional<MonotonicTime> LastHeard(int node, MonotonicTime now) {
    if (node > LastNode) return std::nullopt;
    if (node % LooseNodeEvery != 0) return now;
    const MonotonicTime inCycle = now % LooseNodeCycle;
    return inCycle < LooseNodeAnswers ? now : now - inCycle + LooseNodeAnswers;
}

std::uint16_t StatusCode(int node, MonotonicTime now) {
    if (node == 0) return CommDisabled;
    return LastHeard(node, now) == now ? CommOk : NoSlaveResponse;
}

/// The process behind the data words: ramps, counters and slow sines in turn, no two alike. `word` counts from 0.
std::uint16_t ProcessValue(int sequence, int word, bool received, MonotonicTime now) {
    const std::int64_t offset = 97 * sequence + 31 * word + (received ? 1000 : 0);
    if (word % 3 == 0) return static_cast<std::uint16_t>((now / 100ms + offset) % 4096);
    if (word % 3 == 1) return static_cast<std::uint16_t>(now / 1s + offset);
    const double turns = std::chrono::duration<double>(now % 60s) / 60s + static_cast<double>(offset) / 100.0;
    return static_cast<std::uint16_t>(2048 + std::lround(2000.0 * std::sin(2.0 * std::numbers::pi * turns)));
}

} // namespace

BoardMemory::BoardMemory(std::chrono::local_seconds startedAt) : bytes_(Size), clock_(startedAt) {
    StoreWord(StatusStackByte, 1);
    for (int sequence = 0; sequence < SequenceTotal; ++sequence) {
        int address = SequenceBase + SequenceStride * sequence;
        for (const std::uint16_t value : FreshSettings) {
            StoreWord(address, value);
            address += 2;
        }
    }
    StoreIdentity();
}

void BoardMemory::StoreIdentity() {
    std::copy(Identity.begin(), Identity.end(), bytes_.begin() + RevisionIdentBase);
    std::copy(RevisionNumbers.begin(), RevisionNumbers.end(), bytes_.begin() + RevisionNumberBase);
    bytes_[FirmwareRevisionByte] = FirmwareRevision;
    bytes_[NetworkAddressByte] = 1;
}

std::uint8_t BoardMemory::Peek(std::uint16_t address, MonotonicTime now) const {
    if (const auto shown = clock_.Read(address, now)) return *shown;
    if (const auto word = LiveWord(address & ~1, now)) {
        return static_cast<std::uint8_t>(address % 2 == 0 ? *word & 0xFF : *word >> 8);
    }
    return bytes_[address];
}

void BoardMemory::Poke(std::uint16_t address, std::uint8_t value, MonotonicTime now) {
    bytes_[address] = value;
    clock_.Set(address, value, now);
}

std::uint16_t BoardMemory::StoredWord(int address) const {
    const auto low = static_cast<std::size_t>(address);
    return static_cast<std::uint16_t>(bytes_[low] | bytes_[low + 1] << 8);
}

void BoardMemory::StoreWord(int address, std::uint16_t value) {
    const auto low = static_cast<std::size_t>(address);
    bytes_[low] = static_cast<std::uint8_t>(value & 0xFF);
    bytes_[low + 1] = static_cast<std::uint8_t>(value >> 8);
}

std::uint16_t BoardMemory::SequenceSetting(int sequence, int field) const {
    return StoredWord(SequenceBase + SequenceStride * sequence + 2 * field);
}

std::optional<std::uint16_t> BoardMemory::LiveWord(int address, MonotonicTime now) const {
    if (address >= StatusWordBase && address < StatusWordBase + 2 * SequenceTotal) {
        return StatusCode(SequenceSetting((address - StatusWordBase) / 2, NodeNumberField), now);
    }
    if (address >= SequenceBase && address < SequenceBase + SequenceStride * SequenceTotal)
        return DataWord(address, now);
    return std::nullopt;
}

std::optional<std::uint16_t> BoardMemory::DataWord(int address, MonotonicTime now) const {
    const int sequence = (address - SequenceBase) / SequenceStride;
    const int place = (address - SequenceBase) % SequenceStride + SequenceBase;
    const bool received = place >= ReceiveDataBase;
    const int word = (place - (received ? ReceiveDataBase : SendDataBase)) / 2;
    const int used =
        std::min<int>(DataWordCount, SequenceSetting(sequence, received ? ReceiveWordCountField : SendWordCountField));
    const int node = SequenceSetting(sequence, NodeNumberField);
    if (place < SendDataBase || word >= used || node == 0) return std::nullopt;
    if (!received) return ProcessValue(sequence, word, received, now);
    // What a silent node sent last stays in the buffer.
    const auto heard = LastHeard(node, now);
    return heard ? ProcessValue(sequence, word, received, *heard) : std::uint16_t{0};
}

} // namespace vantrel
