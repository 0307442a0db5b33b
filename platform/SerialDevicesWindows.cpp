#include "platform/SerialDevices.h"

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

} // namespace vantrel
