// The port dialog's checks and its files. Shows its own failures.
#include "link/PortSettingsEditor.h"

#include "platform/ChosenDevices.h"
#include "platform/NetworkAddress.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "text/NumberText.h"
#include "text/PathText.h"

#include <algorithm>
#include <cstdint>
#include <system_error>
#include <utility>

namespace vantrel {

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> ToolFiles(const ProgramFolder& folder) {
    std::vector<fs::path> files;
    for (const char* tool : {"TRV51", "TRV96", "TRP51"}) {
        std::error_code error;
        if (fs::is_directory(folder.Entry(tool), error)) files.push_back(folder.File(tool, "TORVIK.SFG"));
    }
    return files;
}

constexpr const char* HostPrefix = R"(\\.\)"; ///< Where the port's number is the device's name.

/// How a user knows the device: what it is, and where it is found unless the port's number says so.
std::string KnownName(const std::string& device) {
    if (MeantAsNetworkAddress(device)) return device;
    std::string what = SerialDeviceDescription(device);
    if (device.starts_with(HostPrefix)) return what;
    std::error_code error;
    const fs::path real = fs::canonical(PathFromUtf8(device), error);
    const fs::path target = error ? fs::read_symlink(PathFromUtf8(device), error) : real;
    const std::string name = error ? device : Utf8FromPath(target);
    return what.empty() ? name : name + ", " + what;
}

} // namespace

PortSettingsEditor::PortSettingsEditor(RSComm& link, SerialPort& port, const ProgramFolder& folder, PortRange range,
                                       Dialogs& dialogs, std::string fixedDevice)
    : link_(link), port_(port), supportFolder_(folder.SupportFolder()), range_(range), dialogs_(dialogs),
      fixedDevice_(std::move(fixedDevice)), toolFiles_(ToolFiles(folder)) {}

PortSettings PortSettingsEditor::CurrentSettings() {
    try {
        PortSettings settings = ReadPortSettings(PathFromUtf8(link_.CommSettingsFile()), range_).settings;
        settings.number = link_.CurrentPortOverride().number.value_or(settings.number);
        return settings;
    } catch (const RuntimeError& error) {
        ReportRuntimeError(dialogs_, "SetupComm CurrentSettings", error);
        return link_.Settings();
    }
}

bool PortSettingsEditor::InRange(const std::string& text) const {
    const auto number = WholeNumber(text);
    return number && *number >= range_.minimum && *number <= range_.maximum;
}

bool PortSettingsEditor::AcceptsPort(const std::string& text) {
    if (InRange(text)) return true;
    dialogs_.Show({.title = "Comm Port",
                   .text = "Only a Number Between " + std::to_string(range_.minimum) + " and " +
                           std::to_string(range_.maximum) + " can be Entered",
                   .icon = MessageIcon::Information,
                   .buttons = MessageButtons::Ok});
    return false;
}

bool PortSettingsEditor::AcceptsAddress(const std::string& text) {
    const auto address = ParseNetworkAddress(text);
    if (address && address->port > 0) return true;
    dialogs_.Show({.title = "Comm Port",
                   .text = "\"" + text + "\" is no address of a board behind a network.\nWrite " + NetworkAddressForm +
                           ", with a port from 1 to 65535.",
                   .icon = MessageIcon::Information,
                   .buttons = MessageButtons::Ok});
    return false;
}

std::string PortSettingsEditor::AddressOf(const std::string& text) const {
    const std::string device = InRange(text) ? DeviceOf(text, {}) : std::string();
    return MeantAsNetworkAddress(device) ? device : std::string();
}

std::string PortSettingsEditor::Stepped(const std::string& text, int steps) const {
    const auto number = WholeNumber(text);
    if (!number) return std::to_string(range_.minimum);
    const std::int32_t from = std::clamp(*number, range_.minimum, range_.maximum);
    return std::to_string(std::clamp(from + steps, range_.minimum, range_.maximum));
}

PortSettingsEditor::DeviceTexts PortSettingsEditor::TextsOf(const SerialDevice& device) {
    if (device.number == 0) return {.name = device.device, .what = device.description};
    const std::string name = "COM" + std::to_string(device.number);
    if (device.device.starts_with(HostPrefix)) return {.name = name, .what = device.description};
    return {.name = name,
            .what = device.device + (device.description.empty() ? std::string() : ", " + device.description)};
}

std::string PortSettingsEditor::DeviceOf(const std::string& text, const std::string& chosen) const {
    if (!chosen.empty()) return chosen;
    return SerialDeviceOf(WholeNumber(text).value_or(range_.minimum), supportFolder_);
}

bool PortSettingsEditor::StandsFor(const std::string& text, const SerialDevice& device) const {
    return InRange(text) && SameSerialDevice(DeviceOf(text, {}), device.device);
}

std::string PortSettingsEditor::NumberFor(const std::string& text, const SerialDevice& device) const {
    if (StandsFor(text, device)) return text;
    if (device.number >= range_.minimum && device.number <= range_.maximum) return std::to_string(device.number);
    return InRange(text) ? text : std::to_string(range_.minimum);
}

bool PortSettingsEditor::PortIsOpen() {
    // A port notices that its device has gone when it is looked at.
    if (port_.IsOpen()) (void)port_.ReceivedCount();
    return port_.IsOpen() && !port_.IsLost();
}

std::string PortSettingsEditor::DeviceName(const std::string& text, const std::string& chosen) const {
    if (!InRange(text)) return {};
    std::string device = fixedDevice_;
    if (fixedDevice_.empty() && chosen != NoChoice) device = KnownName(DeviceOf(text, chosen));
    return "COM" + std::to_string(WholeNumber(text).value_or(range_.minimum)) +
           (device.empty() ? "" : " (" + device + ")");
}

std::string PortSettingsEditor::DeviceLine(const std::string& text, const std::string& chosen) {
    std::string line = DeviceName(text, chosen);
    if (line.empty()) return line;
    const bool open = PortIsOpen();
    if (!fixedDevice_.empty()) {
        if (port_.IsLost()) return "The port is " + fixedDevice_ + ", whose device has gone.";
        return "The program was started with " + fixedDevice_ + " as its port. The number counts from the next start.";
    }
    const int number = WholeNumber(text).value_or(range_.minimum);
    const std::string device = DeviceOf(text, chosen);
    const bool openHere = number == link_.Settings().number && SameSerialDevice(device, DeviceOf(text, {}));
    if (open && openHere) return line + ": open in this program.";
    if (chosen == NoChoice) return line + ": the port of that number in this computer.";
    // Whether somebody answers there is not tried before the line is wanted: a server has one line for one program.
    if (MeantAsNetworkAddress(device)) return line + ":\nreached when the program goes ONLINE.";
    const std::string problem = SerialDeviceProblem(device);
    return line + (problem.empty() ? ": there, and free." : ":\n" + problem);
}

TaskOf<bool> PortSettingsEditor::Save(std::string text, std::string speed, std::string chosen) {
    if (!AcceptsPort(text)) co_return false;
    const PortSettings settings{.number = WholeNumber(text).value_or(range_.minimum), .speed = speed};
    reopen_ = reopen_ || port_.IsOpen();
    // Whatever still waits for a board on the old port is not waited for.
    link_.GiveUp();
    co_await link_.CloseRSComm();
    try {
        if (!chosen.empty()) {
            const std::string kept = chosen == NoChoice ? std::string() : SteadySerialDevice(chosen);
            KeepChosenDevice(supportFolder_, settings.number, kept);
        }
        WritePortSettings(PathFromUtf8(link_.CommSettingsFile()), settings);
    } catch (const RuntimeError& error) {
        ReportRuntimeError(dialogs_, "SetupComm", error);
        co_return false;
    }
    if (fixedDevice_.empty()) link_.SetPortOverride({});
    for (const fs::path& file : toolFiles_)
        WriteToolFile(file, settings.number);
    co_return true;
}

void PortSettingsEditor::WriteToolFile(const fs::path& file, int portNumber) {
    const std::string line = std::to_string(portNumber - 1) + "\r\n";
    const std::vector<std::uint8_t> bytes(line.begin(), line.end());
    try {
        ReplaceFile(file, bytes, OldTail::Drop, {});
    } catch (const RuntimeError& error) {
        // The program's own settings are saved by now, so that this is no reason to keep the dialog.
        ReportRuntimeError(dialogs_, "SetupComm", error);
    }
}

Task PortSettingsEditor::Finish() {
    if (!std::exchange(reopen_, false)) co_return;
    co_await link_.OpenRSComm(port_);
}

} // namespace vantrel
