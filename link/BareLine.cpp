#include "link/BareLine.h"

#include <utility>

namespace vantrel {

namespace {

/// A line that never comes to rest is not listened to for ever.
constexpr std::size_t MostUnasked = 64;

} // namespace

BareLine::BareLine(RSComm& link, RSComm::Line line, SerialPort& port)
    : link_(link), line_(std::move(line)), port_(port) {}

BareLine::~BareLine() {
    if (opened_) port_.Close();
    link_.Log({});
    if (port_.IsOpen()) link_.OutOfStep();
}

void BareLine::Close() {
    port_.Close();
    opened_ = false;
}

TaskOf<bool> BareLine::Open(PortSettings settings) {
    Close();
    port_.SetPortNumber(settings.number);
    port_.SetSettings(SettingsString(settings));
    opened_ = true;
    port_.BeginOpen();
    while (port_.Opening()) {
        const PortWait wait = co_await link_.turns_.WaitForByte(port_, link_.clock_.Now() + RSComm::LongestOpening);
        if (wait != PortWait::GivenUp) continue;
        Close();
        co_return false;
    }
    port_.FinishOpen();
    port_.ClearReceived();
    co_return true;
}

TaskOf<BareLine::Heard> BareLine::Exchange(std::uint8_t byte, MonotonicTime longest, MonotonicTime quiet) {
    const MonotonicTime sent = link_.clock_.Now();
    link_.Log({});
    link_.unlogged_ = RSComm::SentByte{sent, byte};
    port_.Write({&byte, 1});
    Heard heard;
    const PortWait wait = co_await link_.turns_.WaitForByte(port_, sent + longest);
    heard.lost = wait == PortWait::Lost;
    if (wait != PortWait::ByteReceived) {
        link_.Log({});
        co_return heard;
    }
    heard.time = link_.clock_.Now() - sent;
    heard.bytes.push_back(port_.ReadByte());
    link_.Log(heard.bytes.front());
    if (quiet == MonotonicTime{0} && port_.ReceivedCount() == 0) co_return heard;
    co_return co_await HearTheRest(std::move(heard), quiet);
}

TaskOf<BareLine::Heard> BareLine::Listen(MonotonicTime quiet) { return HearTheRest({}, quiet); }

TaskOf<BareLine::Heard> BareLine::HearTheRest(Heard heard, MonotonicTime quiet) {
    while (heard.bytes.size() < MostUnasked) {
        const PortWait wait = co_await link_.turns_.WaitForByte(port_, link_.clock_.Now() + quiet);
        heard.lost = wait == PortWait::Lost;
        if (wait != PortWait::ByteReceived) break;
        heard.bytes.push_back(port_.ReadByte());
        link_.logs_.Surplus(link_.clock_.Now(), heard.bytes.back());
    }
    co_return heard;
}

} // namespace vantrel
