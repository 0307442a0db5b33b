// Interrupts as the host sends them, each in a process of its own.
#include "platform/Terminal.h"

#include <gtest/gtest.h>

#ifdef __unix__
#include <array>
#include <csignal>
#include <functional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace vantrel {
namespace {

struct Ended {
    int status = 0; ///< As waitpid gives it.
    std::string err;
};

/// `body` in a process of its own, whose exit code it returns.
Ended InAProcess(const std::function<int()>& body) {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe(ends.data()), 0);
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[1], STDERR_FILENO);
        _exit(body());
    }
    close(ends[1]);
    Ended ended;
    std::array<char, 100> part{};
    for (ssize_t length = 0; (length = read(ends[0], part.data(), part.size())) > 0;)
        ended.err.append(part.data(), static_cast<std::size_t>(length));
    close(ends[0]);
    waitpid(child, &ended.status, 0);
    return ended;
}

TEST(Interrupts, TheFirstOneRaisesAFlagAndTheSecondOneEndsTheProcessWithItsLastWords) {
    for (const auto& [signal, code] : {std::pair{SIGINT, 130}, {SIGTERM, 143}}) {
        const Ended ended = InAProcess([number = signal] {
            SetLastWords("B105 may be up");
            const std::atomic<bool>& flag = CatchInterrupts();
            raise(number);
            if (!flag) return 1;
            raise(number);
            return 2;
        });
        EXPECT_TRUE(WIFEXITED(ended.status) && WEXITSTATUS(ended.status) == code) << ended.status;
        EXPECT_EQ(ended.err, "B105 may be up");
    }
}

TEST(Interrupts, WhatWasIgnoredStaysIgnored) {
    const Ended ended = InAProcess([] {
        std::signal(SIGHUP, SIG_IGN);
        const std::atomic<bool>& flag = CatchInterrupts();
        raise(SIGHUP);
        raise(SIGHUP);
        return flag ? 1 : 0;
    });
    EXPECT_EQ(ended.status, 0);
}

} // namespace
} // namespace vantrel
#endif
