// The command that lists the serial ports of the computer.
#include "console/Commands.h"
#include "console/ResultJson.h"
#include "console/TextTable.h"
#include "platform/SerialDevices.h"
#include "text/Padding.h"

#include <ostream>
#include <vector>

namespace vantrel {

namespace {

ExitCode Ports(CommandContext& context) {
    constexpr std::size_t longestName = 5;
    Json list = Json::array();
    std::vector<Row> rows;
    for (const SerialDevice& device : PresentSerialDevices(context.program.folder.SupportFolder())) {
        const std::string number = std::to_string(device.number);
        const bool numbered = device.number > 0;
        // What --port takes for it.
        list.push_back({{"port", numbered ? number : device.device},
                        {"device", device.device},
                        {"description", device.description}});
        rows.push_back({PadRight(numbered ? "COM" + number : "-", longestName), device.device, device.description});
    }
    context.host.out << (context.arguments.json ? JsonText(list) : TableText(rows, "lll"));
    if (rows.empty()) context.Say("This computer has no serial port that is plugged in.");
    return ExitCode::Done;
}

} // namespace

const Command PortsCommand{"ports", "List the serial ports of this computer, and what they are",
                           [](CommandOptions& options) { options.Json(); }, "  vantrelctl ports\n", Ports};

} // namespace vantrel
