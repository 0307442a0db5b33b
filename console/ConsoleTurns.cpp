// Noticing an interrupt, and ending what it interrupts.
#include "console/ConsoleTurns.h"

#include <chrono>

namespace vantrel {

namespace {

constexpr MonotonicTime Slice = std::chrono::milliseconds(20);

void CallOnce(std::function<void()>& function) {
    if (function) std::exchange(function, nullptr)();
}

} // namespace

void ConsoleTurns::HeedInterrupts(const std::atomic<bool>& interrupted, std::function<void()> tell,
                                  std::function<void()> giveUp) {
    interrupted_ = &interrupted;
    tell_ = std::move(tell);
    giveUp_ = std::move(giveUp);
}

void ConsoleTurns::Look() {
    // Giving up makes waits end, which is news for the queue in its turn.
    if (looking_ || !interrupted_ || !*interrupted_) return;
    looking_ = true;
    CallOnce(tell_);
    CallOnce(cancel_);
    giveUp_();
    looking_ = false;
}

MonotonicTime ConsoleTurns::LongestSleep() {
    Look();
    return Slice;
}

} // namespace vantrel
