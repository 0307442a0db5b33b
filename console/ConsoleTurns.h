// The event loop of a command that uses the board: turns, waits in short slices, and a look at the interrupt before
// each of them. Knows the queue only.
#pragma once

#include "platform/SetWhile.h"
#include "platform/TurnQueue.h"

#include <atomic>
#include <functional>
#include <utility>

namespace vantrel {

class ConsoleTurns final : public TurnQueue {
public:
    explicit ConsoleTurns(Clock& clock) : TurnQueue(clock) {}

    /// From here on an interrupt is noticed within a few hundredths of a second, in whatever wait: `tell` is called
    /// once, and `giveUp` before every wait from then on.
    void HeedInterrupts(const std::atomic<bool>& interrupted, std::function<void()> tell, std::function<void()> giveUp);
    /// An interrupt gives up quietly from here on: there is nothing left to cancel.
    void TellNoMore() { tell_ = nullptr; }

    /// Runs a job (a transfer) to its end. An interrupt cancels it first of all.
    template <typename Job> void RunJob(Job& job) {
        const SetWhile cancels(cancel_, [&job] { job.Cancel(); });
        RunToEnd(job.Run());
    }
    /// Looks at the interrupt now.
    void Look();

private:
    void Added() override { Look(); }
    [[nodiscard]] MonotonicTime LongestSleep() override;

    const std::atomic<bool>* interrupted_ = nullptr;
    std::function<void()> tell_;
    std::function<void()> giveUp_;
    std::function<void()> cancel_; ///< The job, while it runs.
    bool looking_ = false;
};

} // namespace vantrel
