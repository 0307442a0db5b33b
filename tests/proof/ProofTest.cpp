// The proof: at every byte of every conversation every fault, on every kind of board, with every answer of the user.
// Nothing that was said is wrong, no box comes up that should not, and the next opening works. A small part of it by
// seed; all of it with VANTREL_LONG=1 in the environment.
#include "tests/proof/ProofWorld.h"
#include "tests/support/BoardTexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <span>
#include <sstream>
#include <utility>

namespace vantrel::proof {
namespace {

using namespace std::chrono_literals;

struct Trouble {
    const char* fault; ///< Of the board or the line; empty: none.
    MonotonicTime pause{0}; ///< Of the host, once.
    MonotonicTime giveUpAfter{0}; ///< The user gives up a board that has been silent for so long.
    bool mend = false; ///< The line is mended while the warning is up.
};

/// Faults that strike once leave the link standing, without a word to the user; the others may end in a warning.
constexpr std::array Troubles{
    // clang-format off
    Trouble{""}, Trouble{"lost-byte:once"}, Trouble{"no-answer:once"}, Trouble{"doubled-byte:once"},
    Trouble{"wrong-echo:once"}, Trouble{"wrong-data:once"}, Trouble{"spoiled-answer:once"},
    Trouble{"spoiled-answer:once:01H"}, Trouble{"spoiled-byte:once"}, Trouble{"spoiled-byte:once:02H"},
    Trouble{"late-answer:once:60ms"}, Trouble{"late-answer:once:600ms"}, Trouble{"late-answer:once:1100ms"},
    Trouble{"late-answer:once:1500ms"}, Trouble{"late-answer:once:3200ms"}, Trouble{"", 60ms}, Trouble{"", 10min},
    Trouble{"no-answer"}, Trouble{"no-answer", 0ms, 100ms}, Trouble{"no-answer", 0ms, 30ms}, Trouble{"wrong-echo"},
    Trouble{"spoiled-answer"}, Trouble{"hang-up"}, Trouble{"hang-up:once", 0ms, 0ms, true},
    // clang-format on
};

SimulatedFault FaultOf(const Trouble& trouble) {
    return *trouble.fault ? ParseFault(trouble.fault).value() : SimulatedFault{.afterBytes = 1U << 30U};
}

/// The kinds of board, by their habits.
constexpr std::array Boards{
    // clang-format off
    "", "half-sent=40ms", "half-sent=40ms after-half-sent=mode", "half-sent=40ms after-half-sent=mode idle=echo",
    "half-sent=55ms after-half-sent=mode", "idle=echo", "half-sent=forever", "half-sent=forever idle=echo",
    "sync-in-mode=first",
    // clang-format on
};

struct Case {
    const Operation* operation;
    const Trouble* trouble;
    const char* habits;
    std::size_t atByte;
    bool retry;
    std::size_t told; ///< How many bytes are told of where nothing goes wrong.
};

/// What is wrong with a case, in words; empty when all is well. `unseen`: set when something is wrong that no byte on
/// the line tells.
class Judge {
public:
    explicit Judge(const Case& one) : case_(one), world_(HabitsOf(one.habits)) {}

    /// What passed the line, for whoever has to find out why.
    [[nodiscard]] std::string Trace() const { return trace_.str().substr(0, 2000); }

    std::string Run(bool& unseen) {
        Prepare();
        const std::vector<std::uint8_t> before = world_.Memory();
        RunOperation();
        HearWhatWasReached();
        LookAtWhatWasSaid();
        LookAtMemory(before);
        LookAtBoxes();
        OpenAgain();
        HearWhatWasReached();
        LookAtMemory(before);
        unseen = !wrong_.str().empty() && Unseeable();
        return unseen ? std::string() : wrong_.str();
    }

private:
    [[nodiscard]] bool GivesUp() const { return case_.trouble->giveUpAfter > 0ms; }
    [[nodiscard]] bool Permanent() const { return !fault_.firstTimeOnly && fault_.afterBytes == 0; }
    void Prepare() {
        world_.link.SetTrafficLog(&log_);
        SimulatedFault fault = fault_;
        fault.afterBytes += world_.board.ReceivedBytes() + case_.atByte;
        world_.board.AddFault(fault);
        if (case_.trouble->pause > 0ms) {
            world_.port.pause = case_.trouble->pause;
            world_.port.pauseBefore = world_.port.sent + case_.atByte;
        }
        if (case_.retry) world_.dialogs.answers = {MessageAnswer::Retry};
        world_.dialogs.whileShown = [this](const MessageBox&) {
            if (case_.trouble->mend) world_.port.MendLine();
        };
    }
    void RunOperation() {
        bool given = false;
        MonotonicTime givenUpAt{0};
        Task task = case_.operation->run(world_);
        task.Start();
        for (int i = 0; !task.Done(); ++i) {
            if (i == 200000) {
                wrong_ << "hangs; ";
                return;
            }
            const auto since = world_.link.AwaitingSince();
            const bool enough = GivesUp() && since && world_.clock.Now() - *since >= case_.trouble->giveUpAfter;
            if (enough && !std::exchange(given, true)) {
                givenUpAt = world_.clock.Now();
                world_.cancel();
            }
            world_.turns.RunOneOrSleep(GivesUp() ? MonotonicTime(10ms) : MonotonicTime::max());
        }
        if (given && world_.clock.Now() - givenUpAt > 100ms) wrong_ << "goes on after it was given up; ";
    }
    /// Named by the tick's message, or by the console as it ends.
    void HearWhatWasReached() {
        const std::vector<std::uint16_t> reached = world_.link.TakeMayHaveReached();
        world_.said.mayHaveReached.insert(reached.begin(), reached.end());
    }
    void LookAtWhatWasSaid() {
        const std::pair<const char*, const std::map<int, int>&> lists[] = {{" shown as ", world_.said.shown},
                                                                           {" called stored as ", world_.said.stored}};
        for (const auto& [said, list] : lists) {
            for (const auto& [byte, value] : list) {
                if (world_.Byte(byte) != value && !Named(byte))
                    wrong_ << "B" << byte << said << value << ", is " << world_.Byte(byte) << "; ";
            }
        }
        // One fault is mended by one repeat.
        const std::size_t told = world_.said.stored.size() + world_.said.shown.size();
        if (fault_.firstTimeOnly && !case_.trouble->mend && told < case_.told && !LongLate())
            wrong_ << "only " << told << " bytes told of " << case_.told << "; ";
        if (world_.Byte(105) != 0 && !world_.said.flagNamed && !world_.link.LinkFailed())
            wrong_ << "the flag is up, and nobody says so; ";
    }
    /// The answers to the repeated sync bytes queue behind it, and spoil the second attempt as well.
    [[nodiscard]] bool LongLate() const { return fault_.kind == FaultKind::LateAnswer && fault_.lateBy > 2s; }
    [[nodiscard]] bool Named(int byte) const { return world_.said.mayHaveReached.contains(byte); }
    void LookAtMemory(const std::vector<std::uint8_t>& before) {
        const std::span<const std::uint8_t> now = world_.board.Stored();
        if (std::ranges::equal(now, before)) return;
        for (int byte = 0; byte < static_cast<int>(now.size()); ++byte) {
            const auto at = static_cast<std::size_t>(byte);
            if (now[at] == before[at] || (byte == 105 && (world_.said.flagNamed || now[at] == 0))) continue;
            const Said& said = world_.said;
            if (!said.stored.contains(byte) && !said.doubtful.contains(byte) && !Named(byte))
                wrong_ << "B" << byte << " became " << int{now[at]} << ", and nobody says so; ";
        }
    }
    void LookAtBoxes() {
        std::size_t warnings = 0;
        for (const MessageBox& box : world_.dialogs.shown)
            warnings += box.title.starts_with("WARNING") ? 1 : 0;
        const bool lost = fault_.kind == FaultKind::HangUp;
        const std::size_t most = GivesUp() ? 0 : Permanent() || lost ? (case_.retry ? 2U : 1U) : 0;
        if (warnings > most) wrong_ << warnings << " warnings; ";
        const std::size_t others = world_.dialogs.shown.size() - warnings;
        if (others > (most > 0 ? 2U : 0U)) wrong_ << others << " other boxes; ";
        if (most == 0 && !GivesUp() && world_.link.LinkFailed()) wrong_ << "the link failed; ";
    }
    void OpenAgain() {
        world_.board.ClearFaults();
        world_.port.MendLine();
        world_.dialogs.shown.clear();
        world_.turns.RunToEnd(world_.link.CloseRSComm());
        world_.turns.RunToEnd(world_.link.OpenRSComm(world_.port));
        const Reading reading = world_.turns.RunToEnd(world_.link.Read("W300"));
        const auto number = reading.Number();
        const bool right = number && *number == world_.board.PeekWord(300);
        if (!world_.link.OnlineMode() || !right || !world_.dialogs.shown.empty())
            wrong_ << "the next opening does not work; ";
    }
    /// A data byte of a read is not checked by anything, nor is the low byte of the address that it is read from.
    [[nodiscard]] bool Unseeable() const {
        const FaultKind kind = fault_.kind;
        const bool spoils =
            kind == FaultKind::WrongData || kind == FaultKind::SpoiledAnswer || kind == FaultKind::SpoiledByte;
        const std::string said = wrong_.str();
        // A bit is written beside the seven others that were read.
        const bool bits = std::string_view(case_.operation->name) == "write bits";
        const bool told = said.find(bits ? "called" : "shown") != std::string::npos;
        return spoils && told && (bits || said.find("called") == std::string::npos) &&
               said.find("became") == std::string::npos && said.find("opening") == std::string::npos;
    }

    const Case& case_;
    const SimulatedFault fault_ = FaultOf(*case_.trouble);
    World world_;
    std::ostringstream wrong_;
    std::ostringstream trace_;
    TextTrafficLog log_{trace_};
};

/// Where nothing goes wrong: how many bytes it sends, and of how many bytes of memory it tells.
std::pair<std::size_t, std::size_t> NominalOf(const Operation& operation) {
    World world({});
    const std::size_t before = world.port.sent;
    world.turns.RunToEnd(operation.run(world));
    return {world.port.sent - before, world.said.stored.size() + world.said.shown.size()};
}

class Proof : public testing::TestWithParam<Operation> {};

TEST_P(Proof, NothingIsSaidThatTheLineHasNotSaid) {
    const Operation& operation = GetParam();
    const auto [length, told] = NominalOf(operation);
    const bool all = std::getenv("VANTREL_LONG") != nullptr; // NOLINT(concurrency-mt-unsafe): read before any thread
    // Every so many of the cases; the first one by seed.
    const std::size_t total = length * Troubles.size() * Boards.size() * 2;
#ifdef NDEBUG
    constexpr std::size_t shortRun = 2000;
#else
    // Unoptimised and watched by a sanitizer each case takes ten times as long.
    constexpr std::size_t shortRun = 300;
#endif
    const std::size_t step = all ? 1 : std::max<std::size_t>(total / shortRun, 1);
    std::mt19937 random(20261121);
    std::size_t cases = 0, unseen = 0, violations = 0;
    for (std::size_t i = random() % step; i < total; i += 1 + random() % (2 * step - 1)) {
        std::size_t rest = i;
        const auto take = [&rest](std::size_t count) {
            const std::size_t value = rest % count;
            rest /= count;
            return value;
        };
        const Case one{.operation = &operation,
                       .trouble = &Troubles.at(take(Troubles.size())),
                       .habits = Boards.at(take(Boards.size())),
                       .atByte = take(length),
                       .retry = take(2) == 1,
                       .told = told};
        bool notSeen = false;
        Judge judge(one);
        const std::string wrong = judge.Run(notSeen);
        ++cases;
        unseen += notSeen ? 1 : 0;
        violations += wrong.empty() ? 0 : 1;
        EXPECT_TRUE(wrong.empty()) << wrong.substr(0, 300) << '\n'
                                   << '"' << one.trouble->fault << "\" at byte " << one.atByte << " on a board with \""
                                   << one.habits << "\"" << (one.retry ? ", Retry" : "") << '\n'
                                   << judge.Trace();
        if (violations == 20) break;
    }
    std::printf("%-14s %6zu of %6zu cases, %zu violations, %zu that the protocol cannot see\n", operation.name, cases,
                total, violations, unseen);
}

std::string NameOf(const testing::TestParamInfo<Operation>& operation) {
    std::string name = operation.param.name;
    std::erase_if(name, [](char c) { return c == ' ' || c == '-'; });
    return name;
}

INSTANTIATE_TEST_SUITE_P(Link, Proof, testing::ValuesIn(LinkOperations()), NameOf);
INSTANTIATE_TEST_SUITE_P(Views, Proof, testing::ValuesIn(ViewOperations()), NameOf);

} // namespace
} // namespace vantrel::proof
