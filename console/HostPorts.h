// The real ways to a board: the host's serial ports, and boards simulated in this process. Knows ports and the
// simulator only.
#pragma once

#include "console/ConsoleHost.h"
#include "platform/Clock.h"

#include <filesystem>

namespace vantrel {

/// Of the line to a board that is simulated for a demonstration, in baud.
inline constexpr int DemonstrationSpeed = 19200;

/// The port that a choice stands for, not yet opened. Never throws for a device that is not there; opening does.
[[nodiscard]] BoardPort ReachBoard(const PortChoice& choice, Clock& clock, const std::filesystem::path& supportFolder);

} // namespace vantrel
