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

/// The group that the device belongs to, which is the one to join: "dialout" on most systems.
std::string GroupOf(const std::string& device) {
    struct stat status {};
    if (stat(device.c_str(), &status) != 0) return "dialout";
    const group* owner = getgrgid(status.st_gid); // NOLINT(concurrency-mt-unsafe): the name is copied at once
    return owner ? owner->gr_name : "dialout";
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

RuntimeError OpenFailure(const std::string& device, const std::error_code& why) {
    if (why == std::errc::no_such_file_or_directory) {
        // A link that leads nowhere is there itself: the adapter that it stands for is not.
        return {ErrorNumber::FileNotFound,
                "The serial device " + device + " does not exist. Is the adapter plugged in?"};
    }
    if (why == std::errc::permission_denied || why == std::errc::operation_not_permitted) {
        return {ErrorNumber::PermissionDenied, "You are not permitted to use the serial device " + device +
                                                   ". Join the group \"" + GroupOf(device) + "\" and log in again."};
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
