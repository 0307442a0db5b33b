// The command that is a board: a simulated one at a pseudo-terminal or in the network, for any program to open.
#include "console/Commands.h"
#include "console/DeviceLink.h"
#include "platform/NetworkAddress.h"
#include "platform/NetworkServer.h"
#include "platform/RuntimeError.h"
#include "simulator/BoardHabits.h"
#include "simulator/BoardServer.h"
#include "simulator/SimulatedBoard.h"
#include "simulator/SimulatedFaults.h"
#include "text/Padding.h"
#include "text/PathText.h"

#include <memory>
#include <optional>
#include <ostream>
#include <utility>
#include <vector>

namespace vantrel {

namespace {

constexpr std::size_t ListColumn = 18;

/// A line of its own for what leaves its sentence no room beside it.
std::string Entry(std::string entry, std::string_view sentence) {
    entry.insert(0, "\n  ");
    entry = entry.size() <= ListColumn ? PadRight(entry, ListColumn + 1) : entry + "\n      ";
    return entry + std::string(sentence);
}

std::string FaultList() {
    std::string list = "Faults, each as NAME, NAME:once, NAME@BYTES (sleeps until the board has received so\n"
                       "many bytes) or with both:";
    for (const FaultName& fault : FaultNames())
        list += Entry(std::string(fault.name), fault.sentence);
    return list;
}

std::string HabitList() {
    std::string list = "Habits, in which good boards differ; the value named first is the usual one:";
    for (const HabitName& habit : HabitNames())
        list += Entry(std::string(habit.name) + "=" + std::string(habit.value), habit.sentence);
    return list;
}

std::string BoardHelp() {
    return FaultList() + "\n\n" + HabitList() +
           "\n\nAlso without any of them nodes 13 and 26 fail by themselves, for 4 seconds of every 30,\n"
           "so that there is a failure to see.\n\n";
}

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

/// "HOST:PORT" is raw bytes; without a host it is this computer alone.
NetworkAddress ListenAddress(const std::string& text) {
    const std::string whole = MeantAsNetworkAddress(text) ? text : "socket://" + text;
    const std::size_t host = whole.find("//") + 2;
    const bool portAlone = whole.find_first_not_of("0123456789", host) == std::string::npos;
    const auto address =
        ParseNetworkAddress(portAlone ? whole.substr(0, host) + "127.0.0.1:" + whole.substr(host) : whole);
    if (!address) {
        throw UsageError("--listen " + text + ": write HOST:PORT, PORT alone for this computer only, or " +
                         NetworkAddressForm + ".");
    }
    return *address;
}

/// Nothing, after saying so, where the host cannot have such a device.
std::unique_ptr<BoardServer> ServerFor(CommandContext& context, SimulatedBoard& board) {
    const Arguments& asked = context.arguments;
    if (asked.listen) {
        const NetworkAddress address = ListenAddress(*asked.listen);
        return std::make_unique<BoardServer>(board, context.host.clock, asked.lineSpeed,
                                             std::make_unique<NetworkServer>(address));
    }
    try {
        return std::make_unique<BoardServer>(board, context.host.clock, asked.lineSpeed);
    } catch (const RuntimeError& error) {
        context.Say(error.Description() + "\nEvery command can use --port simulated instead.");
        return nullptr;
    }
}

ExitCode Simulate(CommandContext& context) {
    if (context.arguments.listen && context.arguments.link) {
        throw UsageError("--link is for a device; with --listen there is none.");
    }
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

} // namespace

const Command SimulateCommand{
    "simulate",
    "Be a board: a simulated one at a serial device of its own, or in the\nnetwork, until interrupted",
    [](CommandOptions& options) {
        options.Option("--link", "PATH", options.to.link, "Make a symbolic link to the device at this path");
        options.Option("--listen", "HOST:PORT", options.to.listen,
                       "Serve it to the network instead of at a device: raw bytes, or with\n"
                       "rfc2217:// in front of it RFC 2217. PORT alone is for this computer\n"
                       "only. Nobody is asked who he is, and everybody on the way can listen");
        options.SimulatedSpeed();
        options.Option("--fault", "NAME", options.to.faults, "What the board does wrong, see below");
        options.Option("--habit", "NAME=VALUE", options.to.habits, "What kind of board it is, see below");
    },
    "  vantrelctl simulate --link /tmp/board\n"
    "  vantrelctl download plant.sdt --port /tmp/board     (at another terminal)\n"
    "  vantrelctl simulate --listen rfc2217://127.0.0.1:4001\n"
    "  vantrelctl simulate --fault wrong-echo:once hang-up@500 --habit half-sent=forever\n",
    Simulate,
    BoardHelp};

} // namespace vantrel
