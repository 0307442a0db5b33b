// Which port and which speed: the two settings, their file, and the limits they are brought to. Knows the disk.
#pragma once

#include <filesystem>
#include <string>

namespace vantrel {

/// The port numbers that may be chosen, both ends included.
struct PortRange {
    int minimum = 1;
    int maximum = 4;
};

/// The ports that may be chosen on this machine: the usual four, and up to the highest one that it really has or that
/// `supportFolder` has a link to.
[[nodiscard]] PortRange PortRangeOf(const std::filesystem::path& supportFolder);

struct PortSettings {
    int number = 1; ///< 1 is COM1.
    std::string speed = "9600"; ///< Baud, "9600" or "19200".

    friend bool operator==(const PortSettings&, const PortSettings&) = default;
};

/// What a settings file says, brought to what is allowed: the number into the range, an unknown speed to "9600".
struct StoredPortSettings {
    PortSettings settings;
    std::string storedPort; ///< The port as it stands in the file, when it was not one of the range.
    bool present = false; ///< The file exists and is not empty; otherwise the settings are the defaults.
};

/// Reads the first line, "number,speed"; one that is empty says nothing, and the defaults hold. Throws RuntimeError
/// when an existing file cannot be read.
[[nodiscard]] StoredPortSettings ReadPortSettings(const std::filesystem::path& file, PortRange range);

/// Writes the line "number,speed", creating the file's folder when it is missing. Throws RuntimeError.
void WritePortSettings(const std::filesystem::path& file, const PortSettings& settings);

/// The settings string of a serial port: speed + ",n,8,1" (no parity, 8 data bits, 1 stop bit).
[[nodiscard]] std::string SettingsString(const PortSettings& settings);

} // namespace vantrel
