// A coroutine that somebody owns: long work written as the plain code that it is. Start it or await it; destroying
// it stops it, with everything that it awaits.
#pragma once

#include <coroutine>
#include <exception>
#include <optional>
#include <utility>

namespace vantrel {

/// What the frame of every task carries, whatever its result is.
class TaskPromise {
public:
    std::suspend_always initial_suspend() noexcept { return {}; }
    auto final_suspend() noexcept { return Final{}; }
    // Letting the exception pass here would be shorter, but not every compiler knows the task as ended then.
    void unhandled_exception() noexcept { (awaiting_ ? failure_ : *rootFailure_) = std::current_exception(); }

    /// Goes on with the task at its wait and throws what its root did not catch. The task may be gone afterwards.
    static void Resume(TaskPromise& waiting) {
        TaskPromise* root = &waiting;
        while (root->awaiting_)
            root = root->awaiting_;
        std::exception_ptr failure;
        root->rootFailure_ = &failure;
        waiting.self_.resume();
        if (failure) std::rethrow_exception(failure);
    }

protected:
    void IsFrameOf(std::coroutine_handle<> self) { self_ = self; }

private:
    template <typename Result> friend class TaskOf;

    struct Final {
        bool await_ready() noexcept { return false; }
        template <typename Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> ended) noexcept {
            const TaskPromise& promise = ended.promise();
            if (!promise.awaiting_ || promise.runsInPlace_) return std::noop_coroutine();
            return promise.awaiting_->self_;
        }
        void await_resume() noexcept {}
    };

    std::coroutine_handle<> self_;
    TaskPromise* awaiting_ = nullptr; ///< Whoever awaits this task; none for a root.
    bool runsInPlace_ = false; ///< Has not waited yet since it was awaited; who awaits it goes on by itself.
    std::exception_ptr failure_; ///< Of an inner task, for whoever awaits it.
    std::exception_ptr* rootFailure_ = nullptr; ///< Of a root: where the running Resume() looks.
};

/// The frame of a task with a result.
template <typename Result> class TaskResult : public TaskPromise {
public:
    void return_value(Result value) { result_.emplace(std::move(value)); }
    [[nodiscard]] Result Take() { return std::move(*result_); }

private:
    std::optional<Result> result_;
};

template <> class TaskResult<void> : public TaskPromise {
public:
    void return_void() noexcept {}
    void Take() noexcept {}
};

/// Lazy, move-only coroutine with a result. A root task is started once with Start(); an inner task is started by
/// `co_await`, which goes on in place when the inner task never had to wait. An exception that leaves a root task
/// leaves the call that resumed it (Start or TurnQueue::RunOne); one that leaves an inner task leaves the `co_await`.
/// A task must not be destroyed or replaced by code that runs inside it. Tasks take texts by value: they are lazy.
template <typename Result> class [[nodiscard]] TaskOf {
public:
    struct promise_type : TaskResult<Result> {
        TaskOf get_return_object() {
            const auto handle = std::coroutine_handle<promise_type>::from_promise(*this);
            this->IsFrameOf(handle);
            return TaskOf(handle);
        }
    };

    TaskOf() = default;
    TaskOf(TaskOf&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    TaskOf& operator=(TaskOf&& other) noexcept {
        if (this != &other) {
            Stop();
            handle_ = std::exchange(other.handle_, nullptr);
        }
        return *this;
    }
    ~TaskOf() { Stop(); }

    /// Runs the body up to its first wait. Call once, on a root task.
    void Start() {
        if (handle_ && !handle_.done()) TaskPromise::Resume(handle_.promise());
    }
    /// True when the body has ended, or there is none.
    [[nodiscard]] bool Done() const { return !handle_ || handle_.done(); }
    /// Ends the work at the wait where it stands; a queued turn is withdrawn.
    void Stop() {
        if (handle_) std::exchange(handle_, nullptr).destroy();
    }
    /// Takes the result of a root task that has ended without an exception; once.
    [[nodiscard]] Result TakeResult() { return handle_.promise().Take(); }

    auto operator co_await() && noexcept { return Awaiter{handle_}; }

private:
    struct Awaiter {
        std::coroutine_handle<promise_type> inner;
        bool await_ready() noexcept { return !inner || inner.done(); }
        template <typename Outer> bool await_suspend(std::coroutine_handle<Outer> outer) {
            TaskPromise& promise = inner.promise();
            promise.awaiting_ = &outer.promise();
            // Resumed from here instead of being handed over to: unoptimised code would grow the stack at every task
            // that ends without a wait.
            promise.runsInPlace_ = true;
            inner.resume();
            if (inner.done()) return false;
            promise.runsInPlace_ = false;
            return true;
        }
        Result await_resume() {
            if (inner && inner.promise().failure_) std::rethrow_exception(inner.promise().failure_);
            return inner.promise().Take();
        }
    };

    explicit TaskOf(std::coroutine_handle<promise_type> handle) : handle_(handle) {}

    std::coroutine_handle<promise_type> handle_;
};

/// A task without a result.
using Task = TaskOf<void>;

} // namespace vantrel
