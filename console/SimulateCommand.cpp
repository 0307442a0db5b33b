// The command that is a board: a simulated one at a pseudo-terminal, for any program to open.
#include "console/CommandHelp.h"
#include "console/Commands.h"
#include "console/DeviceLink.h"
#include "platform/RuntimeError.h"
#include "simulator/BoardServer.h"
#include "simulator/SimulatedBoard.h"
#include "text/PathText.h"

#include <memory>
#include <optional>
#include <ostream>
#include <utility>
#include <vector>

namespace vantrel {

namespace {

SimulatedFault FaultNamed(const std::string& text) {
    if (const auto fault = ParseFault(text)) return *fault;
    throw UsageError("--fault: there is no fault \"" + text + "\".\n" + FaultList());
}

BoardHabits HabitsNamed(const std::vector<std::string>& texts) {
    BoardHabits habits;
    for (const std::string& text : texts) {
        auto more = WithHabit(habits, text);
        if (!more) throw UsageError("--habit: there is no habit \"" + text + "\".\n" + HabitList());
        habits = std::move(*more);
    }
    return habits;
}

/// Nothing, after saying so, where the host cannot have such a device.
std::unique_ptr<BoardServer> ServerFor(CommandContext& context, SimulatedBoard& board) {
    try {
        return std::make_unique<BoardServer>(board, context.host.clock, context.arguments.lineSpeed);
    } catch (const RuntimeError& error) {
        context.Say(error.Description() + "\nEvery command can use --port simulated instead.");
        return nullptr;
    }
}

} // namespace

ExitCode SimulateCommand(CommandContext& context) {
    SimulatedBoard board(BoardStart(context.host.clock), HabitsNamed(context.arguments.habits));
    for (const std::string& fault : context.arguments.faults)
        board.AddFault(FaultNamed(fault));
    const std::unique_ptr<BoardServer> server = ServerFor(context, board);
    if (!server) return ExitCode::Refused;

    const std::atomic<bool>& interrupted = context.host.catchInterrupts();
    std::optional<DeviceLink> link;
    if (context.arguments.link) link.emplace(PathFromUtf8(*context.arguments.link), server->Device());
    const std::string& port = context.arguments.link ? *context.arguments.link : server->Device();
    context.host.out << server->Device() << '\n';
    if (link) context.host.out << port << '\n';
    context.host.out << std::flush;
    context.Say("A simulated board is there. Reach it with --port " + port + "; Ctrl+C ends it.");

    server->Run(interrupted);
    context.Say(interrupted ? "The simulated board has gone." : "The simulated board has hung up.");
    return ExitCode::Done;
}

} // namespace vantrel
