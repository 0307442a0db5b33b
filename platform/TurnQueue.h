// The turns of the event loop: where long work yields or waits, and the only place that resumes it.
#pragma once

#include "platform/Clock.h"
#include "platform/SerialPort.h"
#include "platform/Task.h"

#include <cstddef>
#include <deque>
#include <vector>

namespace vantrel {

/// First come, first served. A realisation says how its host learns that somebody waits (an event loop posts itself an
/// event; the console and the tests run the queue until the task is done).
///
/// Nobody is resumed by anything but RunOne(). Turns are given while MayRun(); a wait that is over goes on at any time,
/// so that an exchange with the board does not stand still behind a box that the user has open.
class TurnQueue {
public:
    /// The awaitable of one turn. Destroying it before its turn came (its task was stopped) withdraws it.
    class Turn {
    public:
        Turn(TurnQueue& queue, bool needed, bool behind = false) : queue_(queue), needed_(needed), behind_(behind) {}
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;
        ~Turn() { queue_.Withdraw(*this); }

        [[nodiscard]] bool await_ready() const noexcept { return !needed_; }
        template <typename Promise> void await_suspend(std::coroutine_handle<Promise> waiting) {
            counts_ = !behind_;
            WaitFor(waiting.promise());
        }
        void await_resume() noexcept {}
        /// The same for a task that has been waiting for something else.
        void WaitFor(TaskPromise& waiting) {
            waiting_ = &waiting;
            queue_.Add(*this);
        }

    private:
        friend class TurnQueue;
        TurnQueue& queue_;
        bool needed_;
        bool behind_;
        bool counts_ = false; ///< As a step of long work, and not as the end of some other wait.
        TaskPromise* waiting_ = nullptr;
    };

    /// The awaitable of a wait for a received byte. Over at once when the byte comes while it is likely to (see
    /// InPlaceTime); the task is suspended otherwise. Withdrawn like a turn.
    class ByteWait {
    public:
        ByteWait(TurnQueue& queue, SerialPort& port, MonotonicTime deadline)
            : queue_(queue), port_(port), deadline_(deadline), opening_(port.Opening()) {}
        ByteWait(const ByteWait&) = delete;
        ByteWait& operator=(const ByteWait&) = delete;
        ~ByteWait() { queue_.Withdraw(*this); }

        [[nodiscard]] bool await_ready();
        template <typename Promise> void await_suspend(std::coroutine_handle<Promise> waiting) {
            waiting_ = &waiting.promise();
            queue_.Add(*this);
        }
        [[nodiscard]] PortWait await_resume() const noexcept { return result_; }

    private:
        friend class TurnQueue;
        /// Whether the wait is over; its result is known then.
        bool Over();

        TurnQueue& queue_;
        SerialPort& port_;
        MonotonicTime deadline_;
        bool opening_; ///< When the wait began.
        PortWait result_ = PortWait::TimedOut;
        TaskPromise* waiting_ = nullptr;
    };

    explicit TurnQueue(const Clock& clock) : clock_(clock) {}
    TurnQueue(const TurnQueue&) = delete;
    TurnQueue& operator=(const TurnQueue&) = delete;
    virtual ~TurnQueue() = default;

    /// `co_await turns.Next()` goes on in the next turn of the event loop.
    [[nodiscard]] Turn Next() { return {*this, true}; }
    /// The same for work behind what is in front of the user: one step in eight, and every one that nobody else wants.
    [[nodiscard]] Turn Behind() { return {*this, true, true}; }
    /// Goes on at once while turns are given, else with the next one that is.
    [[nodiscard]] Turn Allowed() { return {*this, !MayRun()}; }
    /// Waits until `port` has received a byte, is lost, has ended being opened, `deadline` has come or GiveUpWaits()
    /// was called.
    [[nodiscard]] ByteWait WaitForByte(SerialPort& port, MonotonicTime deadline) { return {*this, port, deadline}; }

    /// Ends every wait for a byte of `port` that a task is suspended in, as PortWait::GivenUp, with its next turn.
    void GiveUpWaits(const SerialPort& port);

    /// Resumes one task whose wait is over, or the one that has waited longest for its turn; false when there is none.
    /// Lets the exception of a root task pass.
    bool RunOne();
    /// The same, and sleeps (at most so long) while all wait for a byte. Throws RuntimeError 5 when nobody waits for
    /// anything that could come.
    void RunOneOrSleep(MonotonicTime longest = MonotonicTime::max());
    /// How many tasks wait for a turn.
    [[nodiscard]] std::size_t Waiting() const { return turns_.size() + behind_.size(); }
    /// A task is being run by RunOne() at this moment (which a box inside it can show).
    [[nodiscard]] bool Running() const { return running_ > 0; }

    /// Starts a root task and gives turns to it, and to everybody else who waits, until it has ended. While all of them
    /// wait for a byte, sleeps on its port.
    template <typename Result> Result RunToEnd(TaskOf<Result>& task) {
        BeginTurn();
        task.Start();
        while (!task.Done())
            RunOneOrSleep();
        return task.TakeResult();
    }
    template <typename Result> Result RunToEnd(TaskOf<Result>&& task) { return RunToEnd(task); }

protected:
    /// Called whenever a turn or a wait has been added.
    virtual void Added() {}
    /// Whether turns may be given now.
    [[nodiscard]] virtual bool MayRun() const { return true; }
    /// Asked before every sleep: how long it may be at the most.
    [[nodiscard]] virtual MonotonicTime LongestSleep() { return MonotonicTime::max(); }

    /// The port of the oldest wait for a byte; none without one.
    [[nodiscard]] SerialPort* WaitedFor() const { return waits_.empty() ? nullptr : &waits_.front()->port_; }
    /// Sleeps in the host until something happens to the oldest wait for a byte, at most so long. False without one.
    bool SleepOnWait(MonotonicTime longest);
    [[nodiscard]] const Clock& Time() const { return clock_; }

private:
    void Add(Turn& turn);
    void Withdraw(const Turn& turn);
    void Add(ByteWait& wait);
    void Withdraw(const ByteWait& wait);
    void BeginTurn();
    void Resume(TaskPromise& waiting);

    const Clock& clock_;
    /// Whose turn it is; nobody's when all who want one have to wait for something.
    [[nodiscard]] Turn* TakeNext();

    std::deque<Turn*> turns_;
    std::deque<Turn*> behind_;
    int stepsInFront_ = 0; ///< Since work behind had its last turn.
    std::vector<ByteWait*> waits_;
    MonotonicTime inPlaceUntil_{0};
    int running_ = 0;
};

} // namespace vantrel
