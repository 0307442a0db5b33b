// Which serial devices this machine has, and what a port number stands for.
#pragma once

#include <filesystem>
#include <string>

namespace vantrel {

/// The device that a port number stands for: on Windows `\\.\COMn`; elsewhere `COMn` in `supportFolder` when there is
/// such a link, else "/dev/ttyS(n-1)".
[[nodiscard]] std::string SerialDeviceOf(int portNumber, const std::filesystem::path& supportFolder);

/// The highest port number that really exists on this machine (0: none), counting the links of `supportFolder`.
[[nodiscard]] int HighestSerialPort(const std::filesystem::path& supportFolder);

} // namespace vantrel
