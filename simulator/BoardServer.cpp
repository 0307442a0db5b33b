// The loop between whoever is at the other side and the paced line.
#include "simulator/BoardServer.h"

#include "platform/PseudoTerminal.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <utility>

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
    : BoardServer(board, clock, bitsPerSecond, PseudoTerminal::Create()) {}

BoardServer::BoardServer(SimulatedBoard& board, Clock& clock, int bitsPerSecond, std::unique_ptr<ServedLine> served)
    : clock_(clock), bitsPerSecond_(bitsPerSecond), served_(std::move(served)), line_(board, ByteTime(bitsPerSecond)) {}

const std::string& BoardServer::Device() const { return served_->Device(); }

void BoardServer::SendArrived() {
    std::vector<std::uint8_t> bytes;
    for (std::size_t count = line_.Arrived(clock_.Now()); count > 0; --count)
        bytes.push_back(line_.Take());
    if (!bytes.empty()) served_->Write(bytes);
}

void BoardServer::CarryOver(const std::vector<std::uint8_t>& bytes) {
    if (bytes.empty()) return;
    line_.SetSpeeds(served_->Speed().value_or(bitsPerSecond_), bitsPerSecond_);
    for (const std::uint8_t byte : bytes)
        line_.Send(byte, clock_.Now());
}

void BoardServer::Run(const std::atomic<bool>& stop) {
    while (!stop) {
        SendArrived();
        if (line_.IsCut(clock_.Now())) {
            served_->Close();
            return;
        }
        const auto next = line_.NextEvent();
        if (next) clock_.SleepUntil(std::min(*next, clock_.Now() + BusySlice));
        CarryOver(served_->Read(next ? MonotonicTime{0} : IdleWait));
    }
}

} // namespace vantrel
