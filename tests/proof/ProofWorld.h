// One case of the proof: a board of some kind with one fault, a host that may pause, a user who answers boxes; and what
// an operation has said about the board's memory.
#pragma once

#include "link/RSComm.h"
#include "link/TargetMap.h"
#include "simulator/SimulatedPort.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/VirtualClock.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vantrel::proof {

/// A port whose host pauses once, before it sends the byte that so many came before.
class PausingPort final : public SimulatedPort {
public:
    PausingPort(SimulatedBoard& board, VirtualClock& clock)
        : SimulatedPort(board, clock, LinePacing::LineSpeed), clock_(clock) {}
    void Write(std::span<const std::uint8_t> bytes) override {
        if (sent++ == pauseBefore) clock_.Advance(pause);
        SimulatedPort::Write(bytes);
    }

    std::size_t sent = 0;
    std::size_t pauseBefore = std::numeric_limits<std::size_t>::max();
    MonotonicTime pause{0};

private:
    VirtualClock& clock_;
};

/// What an operation has told its user, byte by byte of the board's memory.
struct Said {
    std::map<int, int> stored; ///< Called stored, or equal.
    std::map<int, int> shown; ///< Shown as what the board holds.
    std::set<int> doubtful; ///< Named as not confirmed, perhaps written.
    std::set<int> mayHaveReached;
    bool flagNamed = false; ///< That the download flag may be up.

    void Value(std::map<int, int>& list, const std::string& address, std::uint32_t number);
    void Doubt(const std::string& address);
    /// What `list` says of `address` was marked as not sure.
    static void TakeBack(std::map<int, int>& list, const std::string& address);
    /// A write of `number` at `address`.
    void Wrote(const std::string& address, std::uint32_t number, bool confirmed);
    void Reached(const std::vector<std::uint16_t>& bytes) { mayHaveReached.insert(bytes.begin(), bytes.end()); }
    void Read(const std::string& address, const Reading& reading) {
        if (const auto number = reading.Number()) Value(shown, address, *number);
    }
};

struct World {
    explicit World(const BoardHabits& habits) : board({}, habits) {
        // Nothing is as it would be by chance.
        for (int byte = SequenceBase; byte < SequenceBase + 31 * SequenceStride; byte += SequenceStride) {
            for (int word = 1; word < 136; ++word)
                board.PokeWord(static_cast<std::uint16_t>(byte + 2 * word),
                               static_cast<std::uint16_t>(byte / 3 + word));
        }
        for (const auto& [address, value] :
             {std::pair{8175, 0}, {8177, 0x45}, {8178, 5}, {33, 0xFF}, {6400, 9}, {300, 0x66}, {301, 0x77}})
            board.Poke(static_cast<std::uint16_t>(address), static_cast<std::uint8_t>(value));
        link.SetPortOverride({.number = 1, .speed = "19200", .leaveFileAlone = true});
        turns.RunToEnd(link.OpenRSComm(port));
        link.SetOnlineMode(true);
    }
    [[nodiscard]] std::vector<std::uint8_t> Memory() const { return {board.Stored().begin(), board.Stored().end()}; }
    [[nodiscard]] int Byte(int address) const { return board.Peek(static_cast<std::uint16_t>(address)); }

    VirtualClock clock;
    ScriptedDialogs dialogs;
    SimulatedBoard board;
    PausingPort port{board, clock};
    TurnQueue turns{clock};
    RSComm link{"/nowhere/RSPort.cfg", {1, 4}, clock, dialogs, turns};
    Said said;
    /// What the user does who wants no more of it.
    std::function<void()> cancel = [this] { link.GiveUp(); };
};

/// What is done with the link, and what the user is told by it.
struct Operation {
    const char* name;
    Task (*run)(World& world);
};

[[nodiscard]] const std::vector<Operation>& LinkOperations();
[[nodiscard]] const std::vector<Operation>& ViewOperations();

} // namespace vantrel::proof
