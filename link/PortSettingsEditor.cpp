// The port dialog's checks and its files. Shows its own failures.
#include "link/PortSettingsEditor.h"

#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "platform/SerialDevices.h"
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

/// How a user knows the device: where a link leads, or what the host calls it where the port's number says the rest.
std::string KnownName(const std::string& device) {
    if (device.starts_with(R"(\\.\)")) return SerialDeviceDescription(device);
    std::error_code error;
    const fs::path target = fs::read_symlink(PathFromUtf8(device), error);
    return error ? device : Utf8FromPath(target);
}

} // namespace

PortSettingsEditor::PortSettingsEditor(RSComm& link, SerialPort& port, const ProgramFolder& folder, PortRange range,
                                       Dialogs& dialogs, std::string fixedDevice)
    : link_(link), port_(port), supportFolder_(folder.SupportFolder()), range_(range), dialogs_(dialogs),
      fixedDevice_(std::move(fixedDevice)), toolFiles_(ToolFiles(folder)) {}

PortSettings PortSettingsEditor::CurrentSettings() {
    try {
        return ReadPortSettings(PathFromUtf8(link_.CommSettingsFile()), range_).settings;
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

std::string PortSettingsEditor::Stepped(const std::string& text, int steps) const {
    const auto number = WholeNumber(text);
    if (!number) return std::to_string(range_.minimum);
    const std::int32_t from = std::clamp(*number, range_.minimum, range_.maximum);
    return std::to_string(std::clamp(from + steps, range_.minimum, range_.maximum));
}

std::string PortSettingsEditor::DeviceName(const std::string& text) const {
    if (!InRange(text)) return {};
    const int number = WholeNumber(text).value_or(range_.minimum);
    const std::string device = fixedDevice_.empty() ? KnownName(SerialDeviceOf(number, supportFolder_)) : fixedDevice_;
    return "COM" + std::to_string(number) + (device.empty() ? "" : " (" + device + ")");
}

std::string PortSettingsEditor::DeviceLine(const std::string& text) const {
    std::string line = DeviceName(text);
    if (line.empty() || !fixedDevice_.empty()) return line;
    const int number = WholeNumber(text).value_or(range_.minimum);
    // A port notices that its device has gone when it is looked at.
    if (port_.IsOpen()) (void)port_.ReceivedCount();
    if (port_.IsOpen() && !port_.IsLost() && number == link_.Settings().number) return line + ": open in this program.";
    const std::string problem = SerialDeviceProblem(SerialDeviceOf(number, supportFolder_));
    return line + (problem.empty() ? ": there, and free." : ":\n" + problem);
}

TaskOf<bool> PortSettingsEditor::Save(std::string text, std::string speed) {
    if (!AcceptsPort(text)) co_return false;
    const PortSettings settings{.number = WholeNumber(text).value_or(range_.minimum), .speed = speed};
    reopen_ = reopen_ || port_.IsOpen();
    // Whatever still waits for a board on the old port is not waited for.
    link_.GiveUp();
    co_await link_.CloseRSComm();
    try {
        WritePortSettings(PathFromUtf8(link_.CommSettingsFile()), settings);
    } catch (const RuntimeError& error) {
        ReportRuntimeError(dialogs_, "SetupComm", error);
        co_return false;
    }
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
