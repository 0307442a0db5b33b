// What --port, --speed and --trace mean for the link.
#include "console/LinkSession.h"

#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "platform/SerialDevices.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

namespace vantrel {

namespace {

std::filesystem::path SupportFolder(const CommandContext& context) { return context.program.folder.Entry("Support"); }

PortRange AllowedPorts(const CommandContext& context) {
    const PortRange usual;
    return {usual.minimum, std::max(usual.maximum, HighestSerialPort(SupportFolder(context)))};
}

bool IsNumber(const std::string& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

PortChoice ChoiceFor(const CommandContext& context) {
    const std::string& text = context.arguments.port;
    if (text.empty()) throw UsageError("--port is empty. Name a port number, a device, or \"simulated\".");
    if (text == "simulated") return {.kind = PortChoice::Kind::Simulated};
    if (!IsNumber(text)) return {.kind = PortChoice::Kind::Device, .device = text};
    const PortRange range = AllowedPorts(context);
    int number = 0;
    const auto error = std::from_chars(text.data(), text.data() + text.size(), number).ec;
    if (error != std::errc{} || number < range.minimum || number > range.maximum) {
        throw UsageError("--port " + text + ": this machine has the ports " + std::to_string(range.minimum) + " to " +
                         std::to_string(range.maximum) + ". Any other device can be named by its path.");
    }
    return {.kind = PortChoice::Kind::Number, .number = number};
}

PortOverride OverrideFor(const PortChoice& choice, const std::optional<std::string>& speed) {
    if (choice.kind != PortChoice::Kind::Number) return {.number = {}, .speed = speed, .leaveFileAlone = true};
    return {.number = choice.number, .speed = speed};
}

} // namespace

void ByteTrace::WriteTo(const std::string& file) {
    file_.open(PathFromUtf8(file));
    if (!file_) throw RuntimeError(ErrorNumber::PathFileAccess, "The trace \"" + file + "\" cannot be written.");
}

void ByteTrace::Exchanged(MonotonicTime sentAt, std::uint8_t sent, std::optional<std::uint8_t> received) {
    bytes_ += received ? 2 : 1;
    if (file_.is_open()) text_.Exchanged(sentAt, sent, received);
}

void ByteTrace::Surplus(MonotonicTime at, std::uint8_t byte) {
    ++bytes_;
    if (file_.is_open()) text_.Surplus(at, byte);
}

LinkSession::LinkSession(CommandContext& context)
    : context_(context),
      link_(context.program.CommSettingsFile(), AllowedPorts(context), context.host.clock, context.dialogs) {
    const PortChoice choice = ChoiceFor(context);
    port_ = context.host.reachBoard(choice, SupportFolder(context));
    link_.SetPortOverride(OverrideFor(choice, context.arguments.speed));
}

LinkSession::LinkSession(CommandContext& context, const PortChoice& choice, const std::string& speed)
    : context_(context), port_(context.host.reachBoard(choice, SupportFolder(context))),
      link_(context.program.CommSettingsFile(), AllowedPorts(context), context.host.clock, context.dialogs) {
    link_.SetPortOverride({.number = {}, .speed = speed, .leaveFileAlone = true});
}

void LinkSession::Open() {
    if (context_.arguments.trace) trace_.WriteTo(*context_.arguments.trace);
    link_.SetTrafficLog(&trace_);
    interrupted_ = &context_.host.catchInterrupts();
    context_.dialogs.HeedInterrupts(*interrupted_);
    open_ = true;
    link_.OpenRSComm(*port_.port);
    cameOnline_ = link_.OnlineMode();
    if (!cameOnline_) context_.Say(port_.name + ": there is no link to a board.");
}

void LinkSession::Close() {
    if (!open_) return;
    open_ = false;
    link_.CloseRSComm();
}

} // namespace vantrel
