// The turns of the event loop: where long work yields, and the only place that resumes it.
#pragma once

#include "platform/Task.h"

#include <cstddef>
#include <deque>

namespace vantrel {

/// First come, first served. A realisation says how its host learns that a turn waits (an event loop posts itself
/// an event; the console and the tests simply run the queue until the task is done).
class TurnQueue {
public:
    /// The awaitable of one turn. Destroying it before its turn came (its task was stopped) withdraws it.
    class Turn {
    public:
        explicit Turn(TurnQueue& queue) : queue_(queue) {}
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;
        ~Turn() { queue_.Withdraw(*this); }

        bool await_ready() noexcept { return false; }
        void await_suspend(Task::Handle waiting) {
            waiting_ = waiting;
            queue_.Add(*this);
        }
        void await_resume() noexcept {}

    private:
        friend class TurnQueue;
        TurnQueue& queue_;
        Task::Handle waiting_;
    };

    TurnQueue() = default;
    TurnQueue(const TurnQueue&) = delete;
    TurnQueue& operator=(const TurnQueue&) = delete;
    virtual ~TurnQueue() = default;

    /// `co_await turns.Next()` goes on in the next turn of the event loop.
    [[nodiscard]] Turn Next() { return Turn(*this); }

    /// Resumes the task that has waited longest; false when none waits. Lets the exception of a root task pass.
    bool RunOne();
    [[nodiscard]] std::size_t Waiting() const { return turns_.size(); }

    /// Starts a root task and gives it turns, and everybody else who waits, until it has ended.
    void RunToEnd(Task& task);

protected:
    /// Called whenever a turn has been added.
    virtual void TurnAdded() {}

private:
    void Add(Turn& turn);
    void Withdraw(const Turn& turn);

    std::deque<Turn*> turns_;
};

} // namespace vantrel
