// What can be made to go wrong with the simulated board: a named list, one sentence each. Uses nothing.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vantrel {

enum class FaultKind { NoAnswer, WrongEcho, WrongData, LateAnswer, LostByte, DoubledByte, HangUp };

struct FaultName {
    FaultKind kind;
    std::string_view name; ///< As on the command line, "no-answer".
    std::string_view sentence; ///< What the board then does.
};

/// All of them, in the order of the enumeration.
[[nodiscard]] const std::array<FaultName, 7>& FaultNames();

/// One fault: what, how often, and from when on.
struct SimulatedFault {
    FaultKind kind = FaultKind::NoAnswer;
    bool firstTimeOnly = false; ///< Strikes once and is then gone; otherwise at every byte that it fits.
    std::size_t afterBytes = 0; ///< Sleeps until the board has received so many bytes.
};

/// NAME, and behind it in any order :once and @BYTES; nothing for any other text.
[[nodiscard]] std::optional<SimulatedFault> ParseFault(std::string_view text);

} // namespace vantrel
