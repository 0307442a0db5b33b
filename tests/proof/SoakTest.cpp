// A day's work in virtual time: polls, passes, transfers, writes, with the faults of a line all day long. What it needs
// must not grow, and the line must be as quick as in the morning. A quarter of an hour; eight hours with
// VANTREL_LONG=1.
#include "tests/proof/ProofWorld.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <new>
#include <random>
#include <string_view>

namespace {

/// What operator new has given out and not got back.
std::size_t liveBlocks = 0;
std::size_t liveBytes = 0;
constexpr std::size_t Header = alignof(std::max_align_t);

} // namespace

void* operator new(std::size_t size) {
    void* block = std::malloc(size + Header);
    if (!block) throw std::bad_alloc();
    *static_cast<std::size_t*>(block) = size;
    ++liveBlocks;
    liveBytes += size;
    return static_cast<std::byte*>(block) + Header;
}
void operator delete(void* memory) noexcept {
    if (!memory) return;
    void* block = static_cast<std::byte*>(memory) - Header;
    --liveBlocks;
    liveBytes -= *static_cast<std::size_t*>(block);
    std::free(block);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept { operator delete(memory); }

namespace vantrel::proof {
namespace {

using namespace std::chrono_literals;

/// Open files and devices of this process; 0 where the host does not tell.
int Descriptors() {
    std::error_code error;
    const std::filesystem::directory_iterator all("/proc/self/fd", error);
    return error ? 0 : static_cast<int>(std::distance(all, {}));
}

double Milliseconds(MonotonicTime time) { return std::chrono::duration<double, std::milli>(time).count(); }

class Day {
public:
    void Work(MonotonicTime until) {
        while (world.clock.Now() < until) {
            if (random_() % 4 == 0) Trouble();
            const auto which = random_() % 200;
            // Mostly what a program does that nobody touches; now and then a transfer, or somebody writes.
            Run(which < 100 ? "tick" : which < 195 ? "status pass" : AnyName());
            world.clock.Advance(500ms);
            if (world.link.LinkFailed() || !world.link.OnlineMode()) OpenAgain();
        }
    }
    void Heal() {
        world.board.ClearFaults();
        world.port.MendLine();
        OpenAgain();
    }
    /// How long a pass takes while nothing goes wrong.
    MonotonicTime Pace() {
        Heal();
        const MonotonicTime before = world.clock.Now();
        Run("status pass");
        return world.clock.Now() - before;
    }
    /// What the program under test holds; what the test itself notes is put away first.
    std::size_t Bytes() {
        world.said = {};
        world.dialogs.shown = {};
        return liveBytes;
    }

    World world{BoardHabits{}};
    std::size_t operations = 0;
    std::size_t reopened = 0;

private:
    const char* AnyName() {
        const auto& all = random_() % 2 == 0 ? LinkOperations() : ViewOperations();
        return all.at(random_() % all.size()).name;
    }
    void Run(std::string_view name) {
        for (const auto* all : {&LinkOperations(), &ViewOperations()}) {
            for (const Operation& one : *all) {
                if (one.name == name) world.turns.RunToEnd(one.run(world));
            }
        }
        world.dialogs.shown.clear();
        ++operations;
    }
    void Trouble() {
        const auto& faults = FaultNames();
        world.board.AddFault({.kind = faults.at(random_() % faults.size()).kind,
                              .firstTimeOnly = random_() % 50 != 0,
                              .afterBytes = world.board.ReceivedBytes() + random_() % 40,
                              .lateBy = 10ms * (random_() % 300)});
    }
    void OpenAgain() {
        ++reopened;
        world.board.ClearFaults();
        world.port.MendLine();
        world.turns.RunToEnd(world.link.CloseRSComm());
        world.link.SetOnlineMode(true);
        world.turns.RunToEnd(world.link.OpenRSComm(world.port));
        ASSERT_TRUE(world.link.OnlineMode());
    }

    std::mt19937 random_{20261122};
};

TEST(Soak, ADayOnTheLineNeedsNoMoreInTheEveningThanInTheMorning) {
    const bool all = std::getenv("VANTREL_LONG") != nullptr; // NOLINT(concurrency-mt-unsafe): read before any thread
    const MonotonicTime end = all ? 8h : 15min;
    Day day;
    day.Work(end / 8);
    const MonotonicTime pace = day.Pace();
    const std::size_t bytes = day.Bytes();
    const std::size_t blocks = liveBlocks;
    const int descriptors = Descriptors();
    day.Work(end);
    const MonotonicTime lastPace = day.Pace();
    const std::size_t lastBytes = day.Bytes();
    const std::size_t lastBlocks = liveBlocks;
    std::printf("%zu operations and %zu openings in %.2f h; after an eighth and at the end: %zu and %zu bytes, %zu and "
                "%zu blocks, %d and %d descriptors, a pass in %.2f and %.2f ms\n",
                day.operations, day.reopened, std::chrono::duration<double, std::ratio<3600>>(end).count(), bytes,
                lastBytes, blocks, lastBlocks, descriptors, Descriptors(), Milliseconds(pace), Milliseconds(lastPace));
    EXPECT_EQ(lastPace, pace);
    EXPECT_LE(lastBytes, bytes + 1024) << "memory grows";
    EXPECT_LE(lastBlocks, blocks + 8) << "memory grows";
#ifdef _WIN32
    constexpr int ownOfTheHost = 8; // Its libraries open some as they like; one an opening would be more.
#else
    constexpr int ownOfTheHost = 0;
#endif
    EXPECT_LE(Descriptors(), descriptors + ownOfTheHost);
}

} // namespace
} // namespace vantrel::proof
