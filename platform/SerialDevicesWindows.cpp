#include "platform/SerialDevices.h"

#include "platform/SerialLine.h"
#include "text/PathText.h"

#include <windows.h>

namespace vantrel {

std::string SerialDeviceOf(int portNumber, const std::filesystem::path&) {
    return "\\\\.\\COM" + std::to_string(portNumber);
}

int HighestSerialPort(const std::filesystem::path&) {
    constexpr int highestPossible = 256;
    wchar_t target[1024];
    for (int number = highestPossible; number > 0; --number) {
        if (QueryDosDeviceW((L"COM" + std::to_wstring(number)).c_str(), target, 1024) != 0) return number;
    }
    return 0;
}

std::string SerialDeviceProblem(const std::string& device) {
    const HANDLE handle = CreateFileW(PathFromUtf8(device).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        const std::error_code error(static_cast<int>(GetLastError()), std::system_category());
        return serial::OpenFailure(device, error).Description();
    }
    CloseHandle(handle);
    return {};
}

} // namespace vantrel
