// Interrupts as the host sends them, each in a process of its own.
#include "platform/Terminal.h"

#include <gtest/gtest.h>

#ifdef __unix__
#include <csignal>
#include <unistd.h>

namespace vantrel {
namespace {

/// Raises a signal twice; ends with 1 when the first one raised no flag, with 2 when the second one ended nothing.
[[noreturn]] void InterruptTwice(int signal) {
    SetLastWords("B105 may be up");
    const std::atomic<bool>& flag = CatchInterrupts();
    raise(signal);
    if (!flag) _exit(1);
    raise(signal);
    _exit(2);
}

TEST(Interrupts, TheFirstOneRaisesAFlagAndTheSecondOneEndsTheProcessWithItsLastWords) {
    EXPECT_EXIT(InterruptTwice(SIGINT), testing::ExitedWithCode(130), "^B105 may be up$");
    EXPECT_EXIT(InterruptTwice(SIGTERM), testing::ExitedWithCode(143), "^B105 may be up$");
}

TEST(Interrupts, WhatWasIgnoredStaysIgnored) {
    const auto ignored = std::signal(SIGHUP, SIG_IGN);
    EXPECT_EXIT(InterruptTwice(SIGHUP), testing::ExitedWithCode(1), "^$");
    std::signal(SIGHUP, ignored);
}

} // namespace
} // namespace vantrel
#endif
