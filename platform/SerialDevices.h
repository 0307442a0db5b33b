// Which serial devices this machine has, and what a port number stands for.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vantrel {

/// What a port number stands for: the address of the board behind a network that was chosen for it, if one was (see
/// ChosenDevices); else on Windows `\\.\COMn`; elsewhere the device that was chosen for it, else `COMn` in
/// `supportFolder` when there is such a link, else "/dev/ttyS(n-1)".
[[nodiscard]] std::string SerialDeviceOf(int portNumber, const std::filesystem::path& supportFolder);

/// The device that a name stands for which is no path but what people there call it: on Windows "com7" is `\\.\COM7`.
/// Nothing for every other name, and elsewhere.
[[nodiscard]] std::optional<std::string> SerialDeviceNamed(const std::string& name);

/// What a device's name looks like on this host, for a help text.
[[nodiscard]] std::string SerialDeviceExample();

/// The highest port number that really exists on this machine (0: none), counting the links of `supportFolder` and the
/// numbers that a device was chosen for.
[[nodiscard]] int HighestSerialPort(const std::filesystem::path& supportFolder);

/// A serial device that is there now.
struct SerialDevice {
    int number = 0; ///< The port number that stands for it; 0 when none does.
    std::string device; ///< What opens it, whatever numbers stand for.
    std::string description; ///< What the host knows it as ("USB Serial Port"); empty when it knows nothing.

    friend bool operator==(const SerialDevice&, const SerialDevice&) = default;
};

/// All that are there, those with a port number first, in its order; behind them the boards behind a network that
/// numbers stand for. Opens none of them.
[[nodiscard]] std::vector<SerialDevice> PresentSerialDevices(const std::filesystem::path& supportFolder);

/// The name of a device that stays the same when it is plugged in elsewhere or after others; `device` itself where
/// there is none.
[[nodiscard]] std::string SteadySerialDevice(const std::string& device);

/// Whether two names lead to the same device.
[[nodiscard]] bool SameSerialDevice(const std::string& one, const std::string& other);

/// What the host knows the device as; empty when it knows nothing.
[[nodiscard]] std::string SerialDeviceDescription(const std::string& device);

/// What keeps this program from opening the device now, as a sentence that tells the user what to do (plug it in, close
/// the other program, join a group); empty when nothing does. Opens the device for a moment and changes nothing of it.
/// One that is open already, here or in another program, is found in use and not disturbed.
[[nodiscard]] std::string SerialDeviceProblem(const std::string& device);

} // namespace vantrel
