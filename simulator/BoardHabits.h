// What kind of board the simulated one is: habits in which good boards differ, one sentence each. Uses the notation
// of addresses only.
#pragma once

#include "platform/Clock.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace vantrel {

/// What a board waits for after it has forgotten a value that was sent by half.
enum class AfterForgetting { WaitForSync, StayInMode };

/// Which 0xFF is a sync while an address high byte is due: the second in a row (the first is echoed, so that page 0xFF
/// can be reached and address 65535 alone cannot), the first (page 0xFF cannot be reached), or none: two of them are
/// address 65535, and only a forgotten half-sent value leads out of a mode.
enum class SyncInMode { Second, First, Never };

struct AddressRange {
    std::uint16_t first = 0;
    std::uint16_t last = 0; ///< Included.

    friend bool operator==(const AddressRange&, const AddressRange&) = default;
};

/// A sequence that does not do as its node would have it.
struct ShownStatus {
    int sequence = 0;
    std::uint16_t code = 0;
    std::optional<MonotonicTime> forTime{}; ///< So long in every ten seconds, at their end; nothing: always.

    friend bool operator==(const ShownStatus&, const ShownStatus&) = default;
};

/// The defaults are the board that `simulate` is without any option.
struct BoardHabits {
    /// A silence as long as this inside a value makes the board forget it; nothing: it waits for the rest for ever.
    std::optional<MonotonicTime> halfSentLimit = std::chrono::milliseconds(500);
    AfterForgetting afterForgetting = AfterForgetting::WaitForSync;
    SyncInMode syncInMode = SyncInMode::Second;
    bool echoesWhileIdle = false; ///< Where a sync or a mode is due, any other byte is echoed instead of answered 0x00.
    std::vector<AddressRange> refused{}; ///< Echoed like all others, but not stored.
    std::vector<ShownStatus> statuses{}; ///< The last one for a sequence counts.

    friend bool operator==(const BoardHabits&, const BoardHabits&) = default;

    [[nodiscard]] bool Refuses(std::uint16_t address) const;
    /// The status code that the sequence shows at `now` whatever its node does; nothing for one that does as its node.
    [[nodiscard]] std::optional<std::uint16_t> StatusOf(int sequence, MonotonicTime now) const;
};

struct HabitName {
    std::string_view name; ///< As on the command line, "half-sent".
    std::string_view value; ///< What stands behind "=", for the help.
    std::string_view sentence; ///< What the board then does.
};

[[nodiscard]] const std::array<HabitName, 6>& HabitNames();

/// `habits` with one more of them, written NAME=VALUE; nothing for any other text. A habit named twice has its
/// last value; refused addresses add up.
[[nodiscard]] std::optional<BoardHabits> WithHabit(BoardHabits habits, std::string_view text);

} // namespace vantrel
