// Making and removing the link, never at somebody else's cost.
#include "console/DeviceLink.h"

#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"

#include <system_error>
#include <utility>

namespace vantrel {

namespace {

namespace fs = std::filesystem;

bool IsLeftOver(const fs::path& link) {
    std::error_code error;
    const fs::path target = fs::read_symlink(link, error);
    if (error) return false;
    return !fs::exists(link, error) || target.generic_string().starts_with("/dev/pts/");
}

[[noreturn]] void Refuse(const fs::path& path, const std::string& why) {
    throw RuntimeError(ErrorNumber::PathFileAccess,
                       "The link \"" + Utf8FromPath(path) + "\" cannot be made: " + why + ".");
}

} // namespace

DeviceLink::DeviceLink(fs::path path, const std::string& device) : path_(std::move(path)), device_(device) {
    std::error_code error;
    if (fs::exists(fs::symlink_status(path_, error))) {
        if (!IsLeftOver(path_)) Refuse(path_, "something else is there already");
        fs::remove(path_, error);
    }
    fs::create_symlink(device_, path_, error);
    if (error) Refuse(path_, error.message());
}

DeviceLink::~DeviceLink() {
    std::error_code error;
    if (fs::read_symlink(path_, error) == device_) fs::remove(path_, error);
}

} // namespace vantrel
