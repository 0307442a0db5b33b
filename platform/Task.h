// A coroutine that somebody owns: long work written as the plain loop that it is. Start it or await it; destroying
// it stops it, with everything that it awaits.
#pragma once

#include <coroutine>
#include <exception>
#include <utility>

namespace vantrel {

/// Lazy, move-only coroutine without a result. A root task is started once with Start(); an inner task is started
/// by `co_await`. An exception that leaves a root task leaves the call that resumed it (Start or
/// TurnQueue::RunOne); one that leaves an inner task leaves the `co_await`.
/// A task must not be destroyed or replaced by code that runs inside it.
class [[nodiscard]] Task {
public:
    struct promise_type {
        std::coroutine_handle<> awaiting;
        std::exception_ptr failure;

        Task get_return_object() { return Task(Handle::from_promise(*this)); }
        std::suspend_always initial_suspend() noexcept { return {}; }
        auto final_suspend() noexcept { return Final{}; }
        void return_void() noexcept {}
        void unhandled_exception() {
            if (!awaiting) throw;
            failure = std::current_exception();
        }
    };

    Task() = default;
    Task(Task&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Task& operator=(Task&& other) noexcept {
        if (this != &other) {
            Stop();
            handle_ = std::exchange(other.handle_, nullptr);
        }
        return *this;
    }
    ~Task() { Stop(); }

    /// Runs the body up to its first wait. Call once, on a root task.
    void Start() {
        if (handle_ && !handle_.done()) handle_.resume();
    }
    /// True when the body has ended, or there is none.
    [[nodiscard]] bool Done() const { return !handle_ || handle_.done(); }
    /// Ends the work at the wait where it stands; a queued turn is withdrawn.
    void Stop() {
        if (handle_) std::exchange(handle_, nullptr).destroy();
    }

    auto operator co_await() && noexcept { return Awaiter{handle_}; }

private:
    using Handle = std::coroutine_handle<promise_type>;

    struct Final {
        bool await_ready() noexcept { return false; }
        std::coroutine_handle<> await_suspend(Handle ended) noexcept {
            if (ended.promise().awaiting) return ended.promise().awaiting;
            return std::noop_coroutine();
        }
        void await_resume() noexcept {}
    };

    struct Awaiter {
        Handle inner;
        bool await_ready() noexcept { return !inner || inner.done(); }
        std::coroutine_handle<> await_suspend(std::coroutine_handle<> outer) noexcept {
            inner.promise().awaiting = outer;
            return inner;
        }
        void await_resume() {
            if (inner && inner.promise().failure) std::rethrow_exception(inner.promise().failure);
        }
    };

    explicit Task(Handle handle) : handle_(handle) {}

    Handle handle_;
};

} // namespace vantrel
