#include "platform/SerialDevices.h"

#include "platform/ChosenDevices.h"
#include "platform/SerialLine.h"
#include "text/AsciiCase.h"
#include "text/PathText.h"

#include <windows.h>

#include <setupapi.h>

#include <algorithm>
#include <map>

namespace vantrel {

namespace {

constexpr int HighestPossible = 256;
/// Of devices that are ports, in the host's list of all devices.
constexpr GUID PortsClass = {0x4D36E978, 0xE325, 0x11CE, {0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18}};

std::string HostDevice(int number) { return "\\\\.\\COM" + std::to_string(number); }

bool IsThere(int number) {
    wchar_t target[1024];
    return QueryDosDeviceW((L"COM" + std::to_wstring(number)).c_str(), target, 1024) != 0;
}

/// "COM7", as the driver has entered it for its device; empty when it has not.
std::wstring PortName(HDEVINFO devices, SP_DEVINFO_DATA& device) {
    const HKEY key = SetupDiOpenDevRegKey(devices, &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_QUERY_VALUE);
    if (key == INVALID_HANDLE_VALUE) return {};
    wchar_t name[64] = {};
    DWORD bytes = sizeof name;
    const LSTATUS read = RegGetValueW(key, nullptr, L"PortName", RRF_RT_REG_SZ, nullptr, name, &bytes);
    RegCloseKey(key);
    return read == ERROR_SUCCESS ? std::wstring(name) : std::wstring();
}

/// What the host's own device list says, without the port's name that usually stands behind it in brackets.
std::string FriendlyName(HDEVINFO devices, SP_DEVINFO_DATA& device, const std::wstring& port) {
    wchar_t text[512] = {};
    constexpr DWORD bytes = sizeof text - sizeof(wchar_t);
    if (!SetupDiGetDeviceRegistryPropertyW(devices, &device, SPDRP_FRIENDLYNAME, nullptr, reinterpret_cast<BYTE*>(text),
                                           bytes, nullptr)) {
        return {};
    }
    std::wstring name = text;
    const std::wstring bracket = L" (" + port + L")";
    if (name.ends_with(bracket)) name.resize(name.size() - bracket.size());
    return Utf8FromPath(std::filesystem::path(name));
}

/// By the names of the ports, "COM7".
std::map<std::wstring, std::string> Descriptions() {
    std::map<std::wstring, std::string> descriptions;
    const HDEVINFO devices = SetupDiGetClassDevsW(&PortsClass, nullptr, nullptr, DIGCF_PRESENT);
    if (devices == INVALID_HANDLE_VALUE) return descriptions;
    SP_DEVINFO_DATA device{};
    device.cbSize = sizeof device;
    for (DWORD i = 0; SetupDiEnumDeviceInfo(devices, i, &device); ++i) {
        const std::wstring port = PortName(devices, device);
        if (!port.empty()) descriptions[port] = FriendlyName(devices, device, port);
    }
    SetupDiDestroyDeviceInfoList(devices);
    return descriptions;
}

} // namespace

std::string SerialDeviceOf(int portNumber, const std::filesystem::path& supportFolder) {
    const std::map<int, std::string> chosen = ChosenNetworkPorts(supportFolder);
    if (const auto address = chosen.find(portNumber); address != chosen.end()) return address->second;
    return HostDevice(portNumber);
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

int HighestSerialPort(const std::filesystem::path& supportFolder) {
    int number = HighestPossible;
    while (number > 0 && !IsThere(number))
        --number;
    const std::map<int, std::string> chosen = ChosenNetworkPorts(supportFolder);
    return chosen.empty() ? number : std::max(number, chosen.rbegin()->first);
}

std::vector<SerialDevice> PresentSerialDevices(const std::filesystem::path& supportFolder) {
    std::map<std::wstring, std::string> descriptions = Descriptions();
    std::vector<SerialDevice> present;
    for (int number = 1; number <= HighestPossible; ++number) {
        if (!IsThere(number)) continue;
        present.push_back({.number = number,
                           .device = HostDevice(number),
                           .description = descriptions[L"COM" + std::to_wstring(number)]});
    }
    for (const auto& [number, address] : ChosenNetworkPorts(supportFolder))
        present.push_back({.number = number, .device = address, .description = NetworkPortDescription});
    return present;
}

std::string SteadySerialDevice(const std::string& device) { return device; }

bool SameSerialDevice(const std::string& one, const std::string& other) { return SameIgnoringCase(one, other); }

std::string SerialDeviceDescription(const std::string& device) {
    const std::wstring path = PathFromUtf8(device).wstring();
    const std::wstring prefix = LR"(\\.\)";
    return path.starts_with(prefix) ? Descriptions()[path.substr(prefix.size())] : std::string();
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
