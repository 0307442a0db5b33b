#include "link/PortChoice.h"

#include "platform/NetworkAddress.h"
#include "platform/SerialDevices.h"
#include "platform/UsageError.h"
#include "text/AsciiCase.h"
#include "text/PathText.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace vantrel {

namespace {

bool IsNumber(const std::string& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// Names that mean a port but are no devices: "COM2" is port 2, on every host.
PortChoice DeviceChoice(const std::string& text) {
    if (MeantAsNetworkAddress(text)) {
        const auto address = ParseNetworkAddress(text);
        if (address && address->port > 0) return {.kind = PortChoice::Kind::Device, .device = text};
        throw UsageError("--port " + text + ": write a board behind a network as " + NetworkAddressForm +
                         ", with a port from 1 to 65535.");
    }
    if (const auto device = SerialDeviceNamed(text)) return {.kind = PortChoice::Kind::Device, .device = *device};
    const auto refuse = [&](const std::string& meant) {
        throw UsageError("--port " + text + ": there is no such device. Did you mean --port " + meant + "?");
    };
    std::error_code error;
    const bool there = std::filesystem::exists(PathFromUtf8(text), error);
    const std::string name = InLowerCase(text);
    if (!there && name == "simulated") refuse(name);
    constexpr std::string_view com = "com";
    if (!there && name.starts_with(com) && IsNumber(name.substr(com.size()))) refuse(name.substr(com.size()));
    return {.kind = PortChoice::Kind::Device, .device = text};
}

} // namespace

PortChoice ReadPortChoice(const std::string& text, PortRange range) {
    if (text.empty()) throw UsageError("--port is empty. Name a port number, a device, or \"simulated\".");
    if (text == "simulated") return {.kind = PortChoice::Kind::Simulated};
    if (!IsNumber(text)) return DeviceChoice(text);
    int number = 0;
    const auto error = std::from_chars(text.data(), text.data() + text.size(), number).ec;
    if (error != std::errc{} || number < range.minimum || number > range.maximum) {
        throw UsageError("--port " + text + ": there is no such port. Port numbers here go from " +
                         std::to_string(range.minimum) + " to " + std::to_string(range.maximum) +
                         ". Any other device can be named by its path.");
    }
    return {.kind = PortChoice::Kind::Number, .number = number};
}

PortOverride OverrideFor(const PortChoice& choice, const std::optional<std::string>& speed) {
    if (choice.kind == PortChoice::Kind::Number) return {.number = choice.number, .speed = speed};
    const bool simulated = choice.kind == PortChoice::Kind::Simulated;
    return {.number = {}, .speed = speed, .leaveFileAlone = true, .anySpeed = simulated};
}

} // namespace vantrel
