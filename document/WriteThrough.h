// How one accepted entry reaches the board while the program is ONLINE. Knows the link only.
#pragma once

#include "link/RSComm.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vantrel {

/// What became of a write-through.
struct WriteThroughResult {
    WriteResult written; ///< Of the value itself.
    bool begun = false; ///< Something of it was sent.
    bool flagRaised = false; ///< The board confirmed "B105" = 1, and its return to 0.
    bool flagLowered = false;
    /// The port was opened again in the middle: parts of it may have gone to another board.
    bool reconnected = false;
    /// Bytes that all of it may have set to 255 by the way; see RSComm::TakeMayHaveReached.
    std::vector<std::uint16_t> mayHaveReached{};
    Reading onBoard = Reading::LinkFailed(); ///< What the board holds now.

    /// The board has confirmed the value, and holds it.
    [[nodiscard]] bool Holds(std::int32_t value) const;
};

/// Raises the write-through flag, writes `value` at `address`, lowers the flag and reads the value back, each step only
/// while the link stands; nothing else uses the link in between. The link has shown its boxes by then.
[[nodiscard]] TaskOf<WriteThroughResult> WriteThrough(RSComm& link, std::string address, std::int32_t value);

} // namespace vantrel
