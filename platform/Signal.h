// Where a task waits for something to happen, instead of looking again and again. Knows the queue only.
#pragma once

#include "platform/TurnQueue.h"

#include <algorithm>
#include <vector>

namespace vantrel {

/// `co_await signal.Raised()` sleeps until the next Raise() and goes on in a turn of its own after it. Whoever raises
/// it resumes nobody by that. Must outlive the tasks that wait on it.
class Signal {
public:
    class Wait {
    public:
        explicit Wait(Signal& signal) : signal_(signal), turn_(signal.turns_.Next()) {}
        Wait(const Wait&) = delete;
        Wait& operator=(const Wait&) = delete;
        ~Wait() { std::erase(signal_.waiting_, this); }

        bool await_ready() noexcept { return false; }
        template <typename Promise> void await_suspend(std::coroutine_handle<Promise> waiting) {
            task_ = &waiting.promise();
            signal_.waiting_.push_back(this);
        }
        void await_resume() noexcept {}

    private:
        friend class Signal;
        Signal& signal_;
        TurnQueue::Turn turn_;
        TaskPromise* task_ = nullptr;
    };

    explicit Signal(TurnQueue& turns) : turns_(turns) {}
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    [[nodiscard]] Wait Raised() { return Wait(*this); }

    void Raise() {
        std::vector<Wait*> woken;
        woken.swap(waiting_);
        for (Wait* wait : woken)
            wait->turn_.WaitFor(*wait->task_);
    }

private:
    TurnQueue& turns_;
    std::vector<Wait*> waiting_;
};

} // namespace vantrel
