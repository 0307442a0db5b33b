// The machinery of long work: who runs when, and what stopping means.
#include "platform/RuntimeError.h"
#include "platform/TurnLock.h"
#include "platform/TurnQueue.h"

#include "tests/support/AtEnd.h"
#include "tests/support/VirtualClock.h"

#include <gtest/gtest.h>

#include <string>

namespace vantrel {
namespace {

/// Ends the trace with a point, however it ends.
Task Count(TurnQueue& turns, std::string& trace, char name, int steps) {
    const AtEnd farewell([&trace] { trace += "."; });
    for (int i = 0; i < steps; ++i) {
        trace += name;
        co_await turns.Next();
    }
}

Task Outer(TurnQueue& turns, std::string& trace) {
    trace += "[";
    co_await Count(turns, trace, 'i', 2);
    trace += "]";
}

class TaskTest : public testing::Test {
protected:
    VirtualClock clock;
    TurnQueue turns{clock};
    std::string trace;
};

TEST_F(TaskTest, StoppingUnwindsInnerTasksAndWithdrawsTheirTurn) {
    Task whole = Outer(turns, trace);
    turns.RunToEnd(whole);
    EXPECT_EQ(std::exchange(trace, ""), "[ii.]");
    {
        Task stopped = Outer(turns, trace);
        stopped.Start();
        EXPECT_EQ(turns.Waiting(), 1U);
    }
    EXPECT_EQ(trace, "[i.");
    EXPECT_FALSE(turns.RunOne());
}

Task Behind(TurnQueue& turns, std::string& trace, int steps) {
    for (int i = 0; i < steps; ++i) {
        co_await turns.Behind();
        trace += "b";
    }
}

TEST_F(TaskTest, WorkBehindHasOneStepInEightAndAllThatNobodyElseWants) {
    Task front = Count(turns, trace, 'f', 16);
    Task behind = Behind(turns, trace, 4);
    behind.Start();
    turns.RunToEnd(front);
    EXPECT_EQ(std::exchange(trace, ""), "ffffffffbfffffffbf.");
    turns.RunToEnd(behind);
    EXPECT_EQ(trace, "bb");
    behind = Behind(turns, trace, 1);
    behind.Start();
    behind.Stop();
    EXPECT_EQ(turns.Waiting(), 0U) << "withdrawn";
}

TEST_F(TaskTest, TasksTakeTurnsAndReplacingARunningOneEndsItBeforeTheNextBegins) {
    Task other = Count(turns, trace, 'o', 2);
    Task pass;
    for (const char name : {'a', 'b', 'c'}) {
        pass = Count(turns, trace, name, 2);
        pass.Start();
    }
    other.Start();
    EXPECT_EQ(turns.Waiting(), 2U);
    while (turns.RunOne()) {
    }
    EXPECT_EQ(trace, "a.b.coco..");
    EXPECT_TRUE(pass.Done() && other.Done());
}

Task Fail(TurnQueue& turns) {
    co_await turns.Next();
    throw RuntimeError(ErrorNumber::Overflow, "too much");
}

Task FailInside(TurnQueue& turns, std::string& trace, bool trap) {
    const AtEnd farewell([&trace] { trace += "."; });
    try {
        co_await Fail(turns);
    } catch (const RuntimeError& error) {
        trace += std::to_string(error.Number());
        if (!trap) throw;
    }
}

TEST_F(TaskTest, AnErrorReachesWhoAwaitsAndAtLastWhoRunsTheQueue) {
    Task trapped = FailInside(turns, trace, true);
    EXPECT_NO_THROW(turns.RunToEnd(trapped));
    Task failed = FailInside(turns, trace, false);
    EXPECT_THROW(turns.RunToEnd(failed), RuntimeError);
    EXPECT_EQ(trace, "6.6.");
    EXPECT_TRUE(failed.Done());
    EXPECT_EQ(turns.Waiting(), 0U);
}

Task HoldFor(TurnQueue& turns, TurnLock& lock, std::string& trace, char name) {
    const auto hold = co_await lock.Take();
    trace += name;
    co_await turns.Next();
}

TEST_F(TaskTest, WhatIsHeldGoesToTheNextOneAlsoWhenTheOneWhoseTurnItWasHasGone) {
    TurnLock lock(turns);
    Task first = HoldFor(turns, lock, trace, 'a');
    Task second = HoldFor(turns, lock, trace, 'b');
    Task third = HoldFor(turns, lock, trace, 'c');
    for (Task* task : {&first, &second, &third})
        task->Start();
    EXPECT_TRUE(turns.RunOne() && first.Done() && lock.Held());
    second.Stop();
    while (turns.RunOne()) {
    }
    EXPECT_EQ(trace, "ac");
    EXPECT_TRUE(third.Done() && !lock.Held());
}

Task WaitForNothing() { co_await std::suspend_always{}; }

TEST_F(TaskTest, ATaskThatNobodyWillResumeIsAnErrorNotAHang) {
    Task task = WaitForNothing();
    EXPECT_THROW(turns.RunToEnd(task), RuntimeError);
}

} // namespace
} // namespace vantrel
