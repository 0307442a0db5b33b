// The serial port's side of the simulated line.
#include "simulator/SimulatedPort.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

constexpr int SlowestLine = 50;
constexpr int FastestLine = 4000000;

/// The speed that `settings` name, in bits per second.
int SpeedOf(std::string_view settings) {
    int speed = 0;
    const auto [end, error] = std::from_chars(settings.data(), settings.data() + settings.size(), speed);
    const std::string_view framing = settings.substr(static_cast<std::size_t>(end - settings.data()));
    const bool framingFits = framing == ",n,8,1" || framing == ",N,8,1";
    if (error != std::errc{} || speed < SlowestLine || speed > FastestLine || !framingFits) {
        throw RuntimeError(ErrorNumber::InvalidProcedureCall,
                           "The simulated board's port cannot take the settings \"" + std::string(settings) + "\".");
    }
    return speed;
}

} // namespace

SimulatedPort::SimulatedPort(SimulatedBoard& board, Clock& clock, LinePacing pacing)
    : clock_(clock), pacing_(pacing), line_(board, 1us) {}

void SimulatedPort::SetPortNumber(int number) { number_ = number; }

void SimulatedPort::SetSettings(const std::string& settings) { settings_ = settings; }

void SimulatedPort::Open() {
    Close();
    const int speed = SpeedOf(settings_);
    if (line_.IsCut(clock_.Now())) {
        throw RuntimeError(ErrorNumber::FileNotFound, "The line to the simulated board is cut.");
    }
    if (pacing_ == LinePacing::LineSpeed) line_.SetByteTime(MonotonicTime(10s) / speed);
    line_.SetSpeeds(speed, boardSpeed_);
    line_.DiscardArrived(clock_.Now());
    open_ = true;
    lost_ = false;
}

void SimulatedPort::Close() noexcept { open_ = false; }

bool SimulatedPort::IsOpen() const { return open_; }

bool SimulatedPort::IsLost() const { return open_ && (lost_ || line_.IsCut(clock_.Now())); }

void SimulatedPort::Write(std::span<const std::uint8_t> bytes) {
    if (!open_ || IsLost()) return;
    for (const std::uint8_t byte : bytes)
        line_.Send(byte, clock_.Now());
}

std::size_t SimulatedPort::ReceivedCount() { return open_ ? line_.Arrived(clock_.Now()) : 0; }

std::uint8_t SimulatedPort::ReadByte() {
    if (ReceivedCount() == 0) throw RuntimeError(ErrorNumber::InputPastEndOfFile, "No received byte waits to be read.");
    return line_.Take();
}

void SimulatedPort::ClearReceived() { line_.DiscardArrived(clock_.Now()); }

PortWait SimulatedPort::WaitForByte(MonotonicTime deadline) {
    while (ReceivedCount() == 0) {
        if (!open_ || IsLost()) return PortWait::Lost;
        if (clock_.Now() >= deadline) return PortWait::TimedOut;
        clock_.SleepUntil(std::min(line_.NextEvent().value_or(deadline), deadline));
    }
    return PortWait::ByteReceived;
}

void SimulatedPort::CutLine() { line_.Cut(clock_.Now()); }

void SimulatedPort::MendLine() {
    lost_ = IsLost();
    line_.Mend();
}

} // namespace vantrel
