#include "platform/TurnQueue.h"

#include "platform/RuntimeError.h"

#include <algorithm>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

/// How long a task may keep the event loop waiting for bytes: a value costs a healthy board less, and nobody notices a
/// window that stands still for so long.
constexpr MonotonicTime InPlaceTime = 20ms;

/// For each one that work behind them has.
constexpr int StepsInFront = 7;

} // namespace

bool TurnQueue::ByteWait::await_ready() {
    if (Over()) return true;
    const MonotonicTime inPlace = std::min(deadline_, queue_.inPlaceUntil_);
    if (queue_.clock_.Now() < inPlace) result_ = port_.WaitForByte(inPlace);
    return Over();
}

bool TurnQueue::ByteWait::Over() {
    if (result_ == PortWait::GivenUp) return true;
    if (opening_) {
        const bool ended = !port_.Opening();
        result_ = ended ? PortWait::Opened : PortWait::TimedOut;
        return ended || queue_.clock_.Now() >= deadline_;
    }
    if (port_.ReceivedCount() > 0) {
        result_ = PortWait::ByteReceived;
    } else if (!port_.IsOpen() || port_.IsLost()) {
        result_ = PortWait::Lost;
    } else {
        result_ = PortWait::TimedOut;
        return queue_.clock_.Now() >= deadline_;
    }
    return true;
}

void TurnQueue::GiveUpWaits(const SerialPort& port) {
    for (ByteWait* wait : waits_) {
        if (&wait->port_ == &port) wait->result_ = PortWait::GivenUp;
    }
    if (!waits_.empty()) Added();
}

bool TurnQueue::RunOne() {
    const auto over = std::find_if(waits_.begin(), waits_.end(), [](ByteWait* wait) { return wait->Over(); });
    if (over != waits_.end()) {
        TaskPromise& waiting = *(*over)->waiting_;
        waits_.erase(over);
        Resume(waiting);
        return true;
    }
    if (!MayRun()) return false;
    const Turn* turn = TakeNext();
    if (!turn) return false;
    Resume(*turn->waiting_);
    return true;
}

TurnQueue::Turn* TurnQueue::TakeNext() {
    // Whoever waits for a byte is in the middle of a step.
    const bool idle = turns_.empty() && waits_.empty();
    const bool behind = !behind_.empty() && (idle || stepsInFront_ >= StepsInFront);
    std::deque<Turn*>& line = behind ? behind_ : turns_;
    if (line.empty()) return nullptr;
    Turn* turn = line.front();
    line.pop_front();
    if (behind) {
        stepsInFront_ = 0;
    } else if (turn->counts_) {
        stepsInFront_ = std::min(stepsInFront_ + 1, StepsInFront);
    }
    return turn;
}

void TurnQueue::BeginTurn() { inPlaceUntil_ = clock_.Now() + InPlaceTime; }

void TurnQueue::Resume(TaskPromise& waiting) {
    struct Count {
        explicit Count(int& counted) : running(counted) { ++running; }
        Count(const Count&) = delete;
        Count& operator=(const Count&) = delete;
        ~Count() { --running; }
        int& running;
    };
    const Count count(running_);
    BeginTurn();
    TaskPromise::Resume(waiting);
}

bool TurnQueue::SleepOnWait(MonotonicTime longest) {
    if (waits_.empty()) return false;
    MonotonicTime until = clock_.Now();
    until = longest > MonotonicTime::max() - until ? MonotonicTime::max() : until + longest;
    for (const ByteWait* wait : waits_)
        until = std::min(until, wait->deadline_);
    (void)waits_.front()->port_.WaitForByte(until);
    return true;
}

void TurnQueue::RunOneOrSleep(MonotonicTime longest) {
    if (RunOne()) return;
    if (SleepOnWait(std::min(longest, LongestSleep()))) return;
    throw RuntimeError(ErrorNumber::InvalidProcedureCall, "A task waits for nothing.");
}

void TurnQueue::Add(Turn& turn) {
    (turn.behind_ ? behind_ : turns_).push_back(&turn);
    Added();
}

void TurnQueue::Withdraw(const Turn& turn) { std::erase(turn.behind_ ? behind_ : turns_, &turn); }

void TurnQueue::Add(ByteWait& wait) {
    waits_.push_back(&wait);
    Added();
}

void TurnQueue::Withdraw(const ByteWait& wait) { std::erase(waits_, &wait); }

} // namespace vantrel
