// What can be made to go wrong with the simulated board: a named list, one sentence each. Pure.
#pragma once

#include "platform/Clock.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vantrel {

enum class FaultKind {
    NoAnswer,
    SpoiledAnswer,
    SpoiledByte,
    WrongEcho,
    WrongData,
    LateAnswer,
    LostByte,
    DoubledByte,
    HangUp,
    ShortedLines,
    LatencyTimer
};

struct FaultName {
    FaultKind kind;
    std::string_view name; ///< As on the command line, "no-answer".
    std::string_view sentence; ///< What the board then does.
};

/// All of them, in the order of the enumeration.
[[nodiscard]] const std::array<FaultName, 11>& FaultNames();

/// One fault: what, how often, from when on, and how much.
struct SimulatedFault {
    FaultKind kind = FaultKind::NoAnswer;
    bool firstTimeOnly = false; ///< Strikes once and is then gone; otherwise at every byte that it fits.
    std::size_t afterBytes = 0; ///< Sleeps until the board has received so many bytes.
    MonotonicTime lateBy = std::chrono::milliseconds(1500); ///< Of a late answer.
    std::uint8_t flips = 0xFF; ///< The bits that a spoiled answer or byte has wrong.
};

/// NAME, and behind it in any order, each once: ":once", "@BYTES", for late-answer a time as ":600ms" or ":2s", for
/// spoiled-answer and spoiled-byte the bits as ":01H". Nothing for any other text.
[[nodiscard]] std::optional<SimulatedFault> ParseFault(std::string_view text);

} // namespace vantrel
