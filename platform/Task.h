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
        promise_type* awaiting = nullptr; ///< Whoever awaits this task; none for a root.
        std::exception_ptr failure; ///< Of an inner task, for whoever awaits it.
        std::exception_ptr* rootFailure = nullptr; ///< Of a root: where the running Resume() looks.

        Task get_return_object() { return Task(Handle::from_promise(*this)); }
        std::suspend_always initial_suspend() noexcept { return {}; }
        auto final_suspend() noexcept { return Final{}; }
        void return_void() noexcept {}
        // Letting the exception pass here would be shorter, but not every compiler knows the task as ended then.
        void unhandled_exception() noexcept { (awaiting ? failure : *rootFailure) = std::current_exception(); }
    };
    using Handle = std::coroutine_handle<promise_type>;

    /// Goes on with the task at its wait and throws what its root did not catch. The task may be gone afterwards.
    static void Resume(Handle waiting) {
        promise_type* root = &waiting.promise();
        while (root->awaiting)
            root = root->awaiting;
        std::exception_ptr failure;
        root->rootFailure = &failure;
        waiting.resume();
        if (failure) std::rethrow_exception(failure);
    }

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
        if (handle_ && !handle_.done()) Resume(handle_);
    }
    /// True when the body has ended, or there is none.
    [[nodiscard]] bool Done() const { return !handle_ || handle_.done(); }
    /// Ends the work at the wait where it stands; a queued turn is withdrawn.
    void Stop() {
        if (handle_) std::exchange(handle_, nullptr).destroy();
    }

    auto operator co_await() && noexcept { return Awaiter{handle_}; }

private:
    struct Final {
        bool await_ready() noexcept { return false; }
        std::coroutine_handle<> await_suspend(Handle ended) noexcept {
            promise_type* awaiting = ended.promise().awaiting;
            if (!awaiting) return std::noop_coroutine();
            return Handle::from_promise(*awaiting);
        }
        void await_resume() noexcept {}
    };

    struct Awaiter {
        Handle inner;
        bool await_ready() noexcept { return !inner || inner.done(); }
        std::coroutine_handle<> await_suspend(Handle outer) noexcept {
            inner.promise().awaiting = &outer.promise();
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
