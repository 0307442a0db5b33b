// The settings string of a serial port, "speed,n,8,1": the only framing that the board knows. Pure.
#pragma once

#include <string>

namespace vantrel {

/// The speed in baud. Throws RuntimeError 5 for any other text.
[[nodiscard]] unsigned SpeedOfSettings(const std::string& settings);

} // namespace vantrel
