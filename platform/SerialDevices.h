// Which serial devices this machine has, and what a port number stands for.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace vantrel {

/// The device that a port number stands for: on Windows `\\.\COMn`; elsewhere `COMn` in `supportFolder` when there is
/// such a link, else "/dev/ttyS(n-1)".
[[nodiscard]] std::string SerialDeviceOf(int portNumber, const std::filesystem::path& supportFolder);

/// The device that a name stands for which is no path but what people there call it: on Windows "com7" is `\\.\COM7`.
/// Nothing for every other name, and elsewhere.
[[nodiscard]] std::optional<std::string> SerialDeviceNamed(const std::string& name);

/// What a device's name looks like on this host, for a help text.
[[nodiscard]] std::string SerialDeviceExample();

/// The highest port number that really exists on this machine (0: none), counting the links of `supportFolder`.
[[nodiscard]] int HighestSerialPort(const std::filesystem::path& supportFolder);

/// What keeps this program from opening the device now, as a sentence that tells the user what to do (plug it in, close
/// the other program, join a group); empty when nothing does. Opens the device for a moment and changes nothing of it.
/// One that is open already, here or in another program, is found in use and not disturbed.
[[nodiscard]] std::string SerialDeviceProblem(const std::string& device);

} // namespace vantrel
