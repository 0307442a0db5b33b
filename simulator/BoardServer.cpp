// The loop between the pseudo-terminal and the paced line.
#include "simulator/BoardServer.h"

#include "platform/RuntimeError.h"

#include <algorithm>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

/// With nothing on the line the program's next byte ends the wait; with an answer on its way the clock does, in slices
/// short enough to notice a byte that comes in between.
constexpr MonotonicTime IdleWait = 50ms;
constexpr MonotonicTime BusySlice = 5ms;

MonotonicTime ByteTime(int bitsPerSecond) {
    if (bitsPerSecond < 0) {
        throw RuntimeError(ErrorNumber::InvalidProcedureCall, "The line's speed must not be negative.");
    }
    return bitsPerSecond == 0 ? MonotonicTime{0} : MonotonicTime(10s) / bitsPerSecond;
}

} // namespace

BoardServer::BoardServer(SimulatedBoard& board, Clock& clock, int bitsPerSecond)
    : clock_(clock), bitsPerSecond_(bitsPerSecond), terminal_(PseudoTerminal::Create()),
      line_(board, ByteTime(bitsPerSecond)) {}

const std::string& BoardServer::Device() const { return terminal_->Device(); }

void BoardServer::SendArrived() {
    std::vector<std::uint8_t> bytes;
    for (std::size_t count = line_.Arrived(clock_.Now()); count > 0; --count)
        bytes.push_back(line_.Take());
    if (!bytes.empty()) terminal_->Write(bytes);
}

void BoardServer::CarryOver(const std::vector<std::uint8_t>& bytes) {
    if (bytes.empty()) return;
    line_.SetSpeeds(terminal_->Speed().value_or(bitsPerSecond_), bitsPerSecond_);
    for (const std::uint8_t byte : bytes)
        line_.Send(byte, clock_.Now());
}

void BoardServer::Run(const std::atomic<bool>& stop) {
    while (!stop) {
        SendArrived();
        if (line_.IsCut(clock_.Now())) {
            terminal_->Close();
            return;
        }
        const auto next = line_.NextEvent();
        if (next) clock_.SleepUntil(std::min(*next, clock_.Now() + BusySlice));
        CarryOver(terminal_->Read(next ? MonotonicTime{0} : IdleWait));
    }
}

} // namespace vantrel
