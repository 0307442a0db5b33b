// Who may use a thing next, when only one may at a time: a lock that tasks wait for in line. Knows the queue only.
#pragma once

#include "platform/TurnQueue.h"

#include <deque>
#include <utility>

namespace vantrel {

/// First come, first served, and kept while its holder is suspended. Must outlive the tasks that hold it or wait.
class TurnLock {
public:
    /// The lock, held until this goes.
    class [[nodiscard]] Hold {
    public:
        explicit Hold(TurnLock& lock) : lock_(&lock) {}
        Hold(Hold&& other) noexcept : lock_(std::exchange(other.lock_, nullptr)) {}
        Hold& operator=(Hold&&) = delete;
        ~Hold() {
            if (lock_) lock_->Release();
        }

    private:
        TurnLock* lock_;
    };

    /// Destroying it while it waits leaves the line.
    class Wait {
    public:
        explicit Wait(TurnLock& lock) : lock_(lock), turn_(lock.turns_.Next()) {}
        Wait(const Wait&) = delete;
        Wait& operator=(const Wait&) = delete;
        ~Wait() {
            std::erase(lock_.line_, this);
            // It had become this one's turn, which nobody takes any more.
            if (granted_) lock_.Release();
        }

        [[nodiscard]] bool await_ready() noexcept {
            if (lock_.held_) return false;
            lock_.held_ = granted_ = true;
            return true;
        }
        template <typename Promise> void await_suspend(std::coroutine_handle<Promise> waiting) {
            task_ = &waiting.promise();
            lock_.line_.push_back(this);
        }
        Hold await_resume() noexcept {
            granted_ = false;
            return Hold(lock_);
        }

    private:
        friend class TurnLock;
        TurnLock& lock_;
        TurnQueue::Turn turn_;
        TaskPromise* task_ = nullptr;
        bool granted_ = false;
    };

    explicit TurnLock(TurnQueue& turns) : turns_(turns) {}
    TurnLock(const TurnLock&) = delete;
    TurnLock& operator=(const TurnLock&) = delete;

    /// `const auto hold = co_await lock.Take();`
    [[nodiscard]] Wait Take() { return Wait(*this); }
    [[nodiscard]] bool Held() const { return held_; }

private:
    void Release() {
        held_ = !line_.empty();
        if (line_.empty()) return;
        Wait* next = line_.front();
        line_.pop_front();
        next->granted_ = true;
        next->turn_.WaitFor(*next->task_);
    }

    TurnQueue& turns_;
    std::deque<Wait*> line_;
    bool held_ = false;
};

} // namespace vantrel
