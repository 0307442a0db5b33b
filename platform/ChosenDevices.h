// Which device, or which board behind a network, a user has chosen for a port number: the section [Ports] of
// `vantrel.ini`, the file that also keeps the windows' place. Knows the disk.
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace vantrel {

/// By port number; empty when nothing was chosen, or when the file cannot be read.
[[nodiscard]] std::map<int, std::string> ChosenDevices(const std::filesystem::path& supportFolder);
/// What a list says of such a port.
inline constexpr const char* NetworkPortDescription = "a board behind a network";
/// Those of them that are addresses of boards behind a network.
[[nodiscard]] std::map<int, std::string> ChosenNetworkPorts(const std::filesystem::path& supportFolder);

/// Keeps `device` under the number, in the place of what was chosen before, or nothing where it is empty; the rest of
/// the file stays. Throws RuntimeError.
void KeepChosenDevice(const std::filesystem::path& supportFolder, int number, const std::string& device);

} // namespace vantrel
