#include "platform/SerialLine.h"

#include <windows.h>

namespace vantrel::serial {

// A serial device is opened for one program only; there is nothing more to ask for.
bool TakeForOneself(NativeHandle) { return true; }

void GiveBack(NativeHandle) {}

// The timer of an adapter is set in its driver's own dialog, and no call reaches it. The times are ours: none, so that
// a read ends when it has all its bytes and never without one. The value that means "answer with the first byte,
// whatever was asked for" is not known to every driver.
void AskForLowLatency(NativeHandle handle) {
    COMMTIMEOUTS none{};
    SetCommTimeouts(handle, &none);
}

void DiscardReceived(NativeHandle handle) { PurgeComm(handle, PURGE_RXCLEAR); }

int WatchedDescriptor(NativeHandle /*handle*/) { return -1; }

RuntimeError OpenFailure(const std::string& device, const std::error_code& why) {
    switch (why.value()) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return {ErrorNumber::FileNotFound,
                "The serial device " + device + " does not exist. Is the adapter plugged in?"};
    case ERROR_ACCESS_DENIED:
        return {ErrorNumber::PathFileAccess, "The serial device " + device + " is in use by another program."};
    default:
        return {ErrorNumber::PathFileAccess, "The serial device " + device + " cannot be opened: " + why.message()};
    }
}

} // namespace vantrel::serial
