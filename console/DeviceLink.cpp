// Making and removing the link, never at somebody else's cost.
#include "console/DeviceLink.h"

#include "platform/RuntimeError.h"
#include "text/PathText.h"

#include <system_error>
#include <utility>

namespace vantrel {

namespace {

namespace fs = std::filesystem;

constexpr const char* Processes = "/proc/";

/// The device by a way that leads through this process, on hosts that show processes as folders: when the process is
/// gone, however it ended, the link leads nowhere, even if another terminal has got the device's number by then.
fs::path WhileWeLive(const fs::path& device) {
    std::error_code error;
    const fs::path self = fs::read_symlink(fs::path(Processes) / "self", error);
    if (error || !device.is_absolute()) return device;
    return (Processes / self / "../..") += device;
}

enum class Found { LeftOver, Served, SomethingElse };

Found WhatIsAt(const fs::path& link) {
    std::error_code error;
    const std::string target = fs::read_symlink(link, error).generic_string();
    if (error) return Found::SomethingElse;
    if (!fs::exists(link, error) || target.starts_with("/dev/pts/")) return Found::LeftOver;
    return target.starts_with(Processes) ? Found::Served : Found::SomethingElse;
}

[[noreturn]] void Refuse(const fs::path& path, const std::string& why) {
    throw RuntimeError(ErrorNumber::PathFileAccess,
                       "The link \"" + Utf8FromPath(path) + "\" cannot be made: " + why + ".");
}

} // namespace

DeviceLink::DeviceLink(fs::path path, const std::string& device)
    : path_(std::move(path)), target_(WhileWeLive(device)) {
    std::error_code error;
    if (fs::exists(fs::symlink_status(path_, error))) {
        const Found found = WhatIsAt(path_);
        if (found == Found::Served) Refuse(path_, "another simulated board is running there");
        if (found == Found::SomethingElse) Refuse(path_, "something else is there already");
        fs::remove(path_, error);
    }
    fs::create_symlink(target_, path_, error);
    if (error) Refuse(path_, error.message());
}

DeviceLink::~DeviceLink() {
    std::error_code error;
    if (fs::read_symlink(path_, error) == target_) fs::remove(path_, error);
}

} // namespace vantrel
