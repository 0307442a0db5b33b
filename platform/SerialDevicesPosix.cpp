#include "platform/SerialDevices.h"

#include "platform/ChosenDevices.h"
#include "platform/SerialLine.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <fstream>
#include <limits>
#include <map>
#include <sys/file.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>

namespace vantrel {

namespace {

/// The number behind `prefix` in `name`, when nothing else stands there; 0 otherwise.
int NumberBehind(const std::string& name, const std::string& prefix) {
    if (!name.starts_with(prefix)) return 0;
    int number = 0;
    const char* end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data() + prefix.size(), end, number);
    return error == std::errc{} && stop == end ? std::max(number, 0) : 0;
}

/// The kernel makes a node for every port that could be there; only those with a chip behind them have a type.
bool HasHardware(const std::filesystem::path& ttyFolder) {
    std::ifstream file(ttyFolder / "type");
    int type = 0;
    return file >> type && type != 0;
}

/// "usb-FTDI_FT232R_USB_UART_A50285BI-if00-port0" without what only tells it from its twins.
std::string KnownAs(const std::filesystem::path& id) {
    std::string name = id.string();
    if (name.starts_with("usb-")) name.erase(0, 4);
    name.resize(std::min(name.size(), name.rfind("-if")));
    std::replace(name.begin(), name.end(), '_', ' ');
    return name;
}

/// The device's entry among those that are named after what is plugged in; empty when it has none.
std::filesystem::path EntryById(const std::string& device) {
    std::error_code error;
    for (std::filesystem::directory_iterator entry("/dev/serial/by-id", error), end; !error && entry != end;
         entry.increment(error)) {
        if (SameSerialDevice(entry->path().string(), device)) return entry->path();
    }
    return {};
}

} // namespace

std::string SerialDeviceOf(int portNumber, const std::filesystem::path& supportFolder) {
    const std::map<int, std::string> chosen = ChosenDevices(supportFolder);
    if (const auto device = chosen.find(portNumber); device != chosen.end()) return device->second;
    std::error_code error;
    const std::filesystem::path link = supportFolder / ("COM" + std::to_string(portNumber));
    if (std::filesystem::exists(std::filesystem::symlink_status(link, error))) return link.string();
    return "/dev/ttyS" + std::to_string(portNumber - 1);
}

std::optional<std::string> SerialDeviceNamed(const std::string&) { return std::nullopt; }

std::string SerialDeviceExample() { return "/dev/ttyUSB0"; }

int HighestSerialPort(const std::filesystem::path& supportFolder) {
    int highest = 0;
    std::error_code error;
    for (std::filesystem::directory_iterator entry("/sys/class/tty", error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.starts_with("ttyS") && HasHardware(entry->path())) {
            highest = std::max(highest, NumberBehind(name, "ttyS") + 1);
        }
    }
    error.clear();
    for (std::filesystem::directory_iterator entry(supportFolder, error), end; !error && entry != end;
         entry.increment(error)) {
        highest = std::max(highest, NumberBehind(entry->path().filename().string(), "COM"));
    }
    const std::map<int, std::string> chosen = ChosenDevices(supportFolder);
    return chosen.empty() ? highest : std::max(highest, chosen.rbegin()->first);
}

bool SameSerialDevice(const std::string& one, const std::string& other) {
    // Not std::filesystem::equivalent, which knows regular files and folders only.
    std::error_code error;
    const std::filesystem::path real = std::filesystem::canonical(one, error);
    return one == other || (!error && real == std::filesystem::canonical(other, error) && !error);
}

std::string SteadySerialDevice(const std::string& device) {
    const std::filesystem::path entry = EntryById(device);
    return entry.empty() ? device : entry.string();
}

std::string SerialDeviceDescription(const std::string& device) {
    const std::filesystem::path entry = EntryById(device);
    return entry.empty() ? std::string() : KnownAs(entry.filename());
}

std::vector<SerialDevice> PresentSerialDevices(const std::filesystem::path& supportFolder) {
    std::map<std::string, int> numbers;
    for (int number = HighestSerialPort(supportFolder); number > 0; --number) {
        std::error_code error;
        const std::filesystem::path device = std::filesystem::canonical(SerialDeviceOf(number, supportFolder), error);
        if (!error) numbers[device.string()] = number;
    }
    std::vector<SerialDevice> present;
    std::error_code error;
    for (std::filesystem::directory_iterator entry("/sys/class/tty", error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        std::error_code none;
        const bool builtIn = name.starts_with("ttyS") && HasHardware(entry->path());
        const bool plugged = !name.starts_with("ttyS") && std::filesystem::exists(entry->path() / "device", none);
        if (builtIn || plugged) numbers.try_emplace("/dev/" + name, 0);
    }
    present.reserve(numbers.size());
    for (const auto& [device, number] : numbers)
        present.push_back({.number = number, .device = device, .description = SerialDeviceDescription(device)});
    constexpr auto place = [](const SerialDevice& device) {
        return device.number > 0 ? device.number : std::numeric_limits<int>::max();
    };
    std::stable_sort(present.begin(), present.end(),
                     [&](const SerialDevice& a, const SerialDevice& b) { return place(a) < place(b); });
    for (const auto& [number, address] : ChosenNetworkPorts(supportFolder))
        present.push_back({.number = number, .device = address, .description = NetworkPortDescription});
    return present;
}

std::string SerialDeviceProblem(const std::string& device) {
    const int handle = open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    std::error_code error;
    termios line{};
    if (handle < 0 || tcgetattr(handle, &line) != 0) {
        error.assign(errno, std::system_category());
    } else if (flock(handle, LOCK_EX | LOCK_NB) != 0) {
        error = std::make_error_code(std::errc::device_or_resource_busy);
    }
    // Gives the lock back too.
    if (handle >= 0) close(handle);
    return error ? serial::OpenFailure(device, error).Description() : std::string();
}

} // namespace vantrel
