#include "platform/SerialDevices.h"

#include "platform/SerialLine.h"
#include "text/AsciiCase.h"
#include "text/PathText.h"

#include <windows.h>

namespace vantrel {

std::string SerialDeviceOf(int portNumber, const std::filesystem::path&) {
    return "\\\\.\\COM" + std::to_string(portNumber);
}

std::optional<std::string> SerialDeviceNamed(const std::string& name) {
    constexpr std::size_t letters = 3;
    constexpr std::size_t mostDigits = 3;
    const bool digits = name.find_first_not_of("0123456789", letters) == std::string::npos;
    if (name.size() <= letters || name.size() > letters + mostDigits || !digits) return std::nullopt;
    if (!SameIgnoringCase(name.substr(0, letters), "COM")) return std::nullopt;
    return "\\\\.\\COM" + name.substr(letters);
}

std::string SerialDeviceExample() { return "COM7"; }

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
