#include "platform/SerialLine.h"

#include <filesystem>
#include <grp.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>

#ifdef __linux__
#include <linux/serial.h>
#endif

namespace vantrel::serial {

namespace {

/// What to do about a device that may not be used: join its group ("dialout" on most systems), when that helps.
std::string PermissionAdvice(const std::string& device) {
    constexpr mode_t groupMayUse = S_IRGRP | S_IWGRP;
    struct stat status {};
    const bool groupHelps = stat(device.c_str(), &status) == 0 && (status.st_mode & groupMayUse) == groupMayUse;
    if (!groupHelps || status.st_gid == 0) return "Ask the administrator for access to it.";
    const group* owner = getgrgid(status.st_gid); // NOLINT(concurrency-mt-unsafe): the name is copied at once
    const std::string name = owner ? owner->gr_name : std::to_string(status.st_gid);
    return "Join the group \"" + name + "\" and log in again.";
}

} // namespace

bool TakeForOneself(NativeHandle handle) {
    // The exclusive flag keeps later opens out, but not those of the superuser, nor those who came before us: the lock
    // does.
    if (flock(handle, LOCK_EX | LOCK_NB) != 0) return false;
    ioctl(handle, TIOCEXCL);
    return true;
}

void GiveBack(NativeHandle handle) {
    // The flag belongs to the device, not to us: it would stay as long as anybody else has the device open.
    ioctl(handle, TIOCNXCL);
    flock(handle, LOCK_UN);
}

void AskForLowLatency(NativeHandle handle) {
#ifdef __linux__
    serial_struct line{};
    if (ioctl(handle, TIOCGSERIAL, &line) != 0) return;
    line.flags |= ASYNC_LOW_LATENCY;
    ioctl(handle, TIOCSSERIAL, &line);
#else
    static_cast<void>(handle);
#endif
}

void DiscardReceived(NativeHandle handle) { tcflush(handle, TCIFLUSH); }

int WatchedDescriptor(NativeHandle handle) { return handle; }

RuntimeError OpenFailure(const std::string& device, const std::error_code& why) {
    if (why == std::errc::no_such_file_or_directory) {
        // A link that leads nowhere is there itself: the adapter that it stands for is not.
        return {ErrorNumber::FileNotFound,
                "The serial device " + device + " does not exist. Is the adapter plugged in?"};
    }
    if (why == std::errc::permission_denied || why == std::errc::operation_not_permitted) {
        return {ErrorNumber::PermissionDenied,
                "You are not permitted to use the serial device " + device + ". " + PermissionAdvice(device)};
    }
    if (why == std::errc::device_or_resource_busy) {
        return {ErrorNumber::PathFileAccess, "The serial device " + device + " is in use by another program."};
    }
    if (why == std::errc::inappropriate_io_control_operation || why == std::errc::io_error) {
        return {ErrorNumber::PathFileAccess, device + " is not a serial device, or has no hardware behind it."};
    }
    if (why == std::errc::invalid_argument) {
        return {ErrorNumber::InvalidProcedureCall, device + " cannot work at this speed."};
    }
    return {ErrorNumber::PathFileAccess, "The serial device " + device + " cannot be opened: " + why.message() + "."};
}

} // namespace vantrel::serial
