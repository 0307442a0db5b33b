// The command that lists the serial ports of the computer.
#include "console/Commands.h"
#include "platform/SerialDevices.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <ostream>
#include <vector>

namespace vantrel {

namespace {

/// What --port takes for it.
std::string PortName(const SerialDevice& device) {
    return device.number > 0 ? std::to_string(device.number) : device.device;
}

void PrintJson(const std::vector<SerialDevice>& devices, std::ostream& out) {
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const SerialDevice& device : devices) {
        list.push_back({{"port", PortName(device)}, {"device", device.device}, {"description", device.description}});
    }
    out << list.dump(2) << '\n';
}

void PrintTable(const std::vector<SerialDevice>& devices, std::ostream& out) {
    std::size_t width = 0;
    for (const SerialDevice& device : devices)
        width = std::max(width, device.device.size());
    for (const SerialDevice& device : devices) {
        const std::string number = device.number > 0 ? "COM" + std::to_string(device.number) : "-";
        std::string line = number + std::string(std::max<std::size_t>(7, number.size() + 1) - number.size(), ' ');
        line += device.device;
        if (!device.description.empty()) {
            line += std::string(width + 2 - device.device.size(), ' ') + device.description;
        }
        out << line << '\n';
    }
}

} // namespace

ExitCode PortsCommand(CommandContext& context) {
    const std::vector<SerialDevice> devices = PresentSerialDevices(context.program.folder.SupportFolder());
    if (context.arguments.json) {
        PrintJson(devices, context.host.out);
        return ExitCode::Done;
    }
    PrintTable(devices, context.host.out);
    if (devices.empty()) context.Say("This computer has no serial port that is plugged in.");
    return ExitCode::Done;
}

} // namespace vantrel
