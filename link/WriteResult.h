// What became of a write.
#pragma once

#include <cstdint>
#include <vector>

namespace vantrel {

/// How a write ended, for callers that tell the user what reached the board; the link's boxes have been shown by then.
enum class WriteOutcome {
    Written, ///< Every byte was echoed, in step and in time; at once, or when all of it was sent once more.
    Refused, ///< The value or the address is not one that can be written; nothing was sent for it.
    NotConfirmed, ///< The board's echoes did not match, twice, or came only after a silence or a gap.
    LinkFailed, ///< The board could not be reached or not be put in write mode.
};

struct WriteResult {
    WriteOutcome outcome = WriteOutcome::Written;
    /// The value was sent a second time, from its first byte on.
    bool repeated = false;
    /// Byte addresses that a first, half-sent value may have set to 255: a board that keeps it takes the sync bytes for
    /// the rest of its address and data. Ascending, without the bytes of the value itself.
    std::vector<std::uint16_t> mayHaveReached{};

    [[nodiscard]] bool Confirmed() const { return outcome == WriteOutcome::Written; }
};

} // namespace vantrel
