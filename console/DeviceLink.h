// A symbolic link to a device, there for as long as somebody serves the device. Knows the file system only.
#pragma once

#include <filesystem>
#include <string>

namespace vantrel {

class DeviceLink {
public:
    /// Makes the link. What is there already is replaced only when it is a link that leads nowhere or to a
    /// pseudo-terminal, left over from an earlier run. Throws RuntimeError 75 for anything else, also for the link
    /// of a process that is still there.
    DeviceLink(std::filesystem::path path, const std::string& device);
    DeviceLink(const DeviceLink&) = delete;
    DeviceLink& operator=(const DeviceLink&) = delete;
    /// Removes the link, unless somebody else has put something in its place.
    ~DeviceLink();

private:
    std::filesystem::path path_;
    std::filesystem::path target_;
};

} // namespace vantrel
