// The command that shows the state of the board and sets what the board itself keeps: fault codes, network address,
// clock.
#include "console/BoardReport.h"
#include "console/Commands.h"
#include "console/LinkSession.h"
#include "document/TransferTexts.h"
#include "link/TargetMap.h"
#include "platform/RuntimeError.h"

#include <optional>
#include <ostream>
#include <string>

namespace vantrel {

namespace {

/// What the board itself tells does not depend on it.
UserProgram ProgramOnDisk(CommandContext& context) {
    try {
        return ReadUserProgram(FindUserProgram(context.program.document.FilePath, context.program.folder));
    } catch (const RuntimeError& error) {
        context.Say("Note: the user program on disk is left out. " + error.Description());
        return {};
    }
}

/// What is wrong with what the command line asks for, before anything is sent; true when it may go on.
bool Accepted(CommandContext& context, const UserProgram& onDisk) {
    const Arguments& asked = context.arguments;
    if (asked.networkAddress && !SetupEntry(NetworkAddressField, *asked.networkAddress)) {
        context.dialogs.Show(SetupRefusal(NetworkAddressField));
        return false;
    }
    if (asked.setClock && !HasBoardClock(onDisk.boardType)) {
        context.Say("This board has no clock that could be set.");
        return false;
    }
    return !asked.resetFaults || context.dialogs.Show(ResetQuestion()) == MessageAnswer::Yes;
}

/// What the user is told of a write that was not confirmed.
std::string OutcomeText(const LinkSession& session, WriteOutcome outcome) {
    if (session.Interrupted()) return ": cancelled before all of it was confirmed.";
    if (outcome == WriteOutcome::LinkFailed) return ": the link to the board failed before all of it was confirmed.";
    return ": the board did not confirm all of it, also when it was sent again, or holds something else now.";
}

/// One thing after the other; true when the board has confirmed all of it.
bool DoWhatWasAsked(CommandContext& context, LinkSession& session, BoardMonitor& monitor) {
    const Arguments& asked = context.arguments;
    bool confirmed = true;
    const auto change = [&](const std::string& what, TaskOf<WriteOutcome> write) {
        const bool tried = !session.Failed() && !session.Interrupted();
        const WriteOutcome outcome = tried ? session.Run(std::move(write)) : WriteOutcome::LinkFailed;
        const bool written = outcome == WriteOutcome::Written;
        confirmed = confirmed && written;
        if (!tried) return;
        if (!written) context.Say(what + OutcomeText(session, outcome));
        if (written && !asked.json) context.host.out << what << ": done.\n";
        context.SayIf(ReachedBesideText(what, monitor.Repeated(), session.Link().TakeMayHaveReached()));
    };
    if (asked.resetFaults) change("Reset of the fault codes", monitor.ResetFaultCodes());
    if (asked.setClock) {
        change("Board time", monitor.SetToCurrTime());
        change("Board date", monitor.SetToCurrDate());
    }
    if (asked.networkAddress) {
        const std::string address = SetupEntry(NetworkAddressField, *asked.networkAddress).value_or("");
        change("Network address " + address, monitor.WriteSetup(NetworkAddressField, address));
    }
    return confirmed;
}

/// Once, and again where there is a clock to compare: two passes have to agree, which the end of a minute prevents.
void ReadSetup(LinkSession& session, BoardMonitor& monitor, BoardReport& report, const UserProgram& onDisk) {
    constexpr int mostPasses = 4;
    for (int pass = 0; pass < mostPasses && !session.Failed() && !session.Interrupted(); ++pass) {
        session.Run(monitor.RefreshSetupFields());
        report.NoteSetupRead();
        const auto compared = monitor.ComparedClock().What();
        if (!HasBoardClock(onDisk.boardType) || compared == ClockComparison::State::Known ||
            compared == ClockComparison::State::Impossible)
            return;
    }
}

/// Reads everything.
void ReadBoard(LinkSession& session, BoardMonitor& monitor, BoardReport& report, const UserProgram& onDisk) {
    report.Clear();
    session.Run(monitor.ShowBoardOnline());
    ReadSetup(session, monitor, report, onDisk);
    report.ShowClockOff(monitor.ComparedClock());
    for (const int byte : {SerialSetupByte, FirmwareRevisionByte}) {
        if (session.Failed() || session.Interrupted()) return;
        const Reading reading = session.Run(session.Link().Read(ByteAddress(byte)));
        report.ShowByte(byte, reading.TextOr(UnreadText));
    }
}

/// Prints what was read, when nothing cut it short.
ExitCode Show(CommandContext& context, LinkSession& session, const BoardMonitor& monitor, const BoardReport& report,
              const UserProgram& onDisk) {
    const bool whole = !session.Interrupted() && !session.Failed();
    if (whole) context.host.out << report.Text(onDisk, monitor.FaultCodes, context.arguments.json);
    const ExitCode end = session.EndOfReading(monitor.Reliable() && report.Complete());
    if (whole && context.arguments.resetFaults && monitor.AnyCode()) context.dialogs.Show(CodesAfterReset());
    return end;
}

ExitCode Board(CommandContext& context) {
    const UserProgram onDisk = ProgramOnDisk(context);
    LinkSession session(context);
    return session.Use(
        "No value was sent to the board.", [&] { return Accepted(context, onDisk); },
        [&] {
            BoardReport report(session);
            BoardMonitor monitor(session.Link(), session.Turns(), context.host.clock, context.dialogs,
                                 context.program.alarms, BoardFilesOf(context.program.folder), report);
            monitor.SetBoardType(onDisk.boardType);
            const bool done = DoWhatWasAsked(context, session, monitor);
            session.RunWhole([&] { ReadBoard(session, monitor, report, onDisk); });
            const ExitCode shown = Show(context, session, monitor, report, onDisk);
            return done ? shown : ExitCode::Refused;
        });
}

} // namespace

const Command BoardCommand{
    "board", "Show the state of the board: faults, addresses, clock, revision",
    [](CommandOptions& options) {
        options.Flag("--reset-faults", options.to.resetFaults, "Set the fault and error codes back to 0 first");
        options.Flag("--set-clock", options.to.setClock, "Set the board's time and date to the computer's first");
        options.Option("--network-address", "N", options.to.networkAddress,
                       "Give the board this address in the network first (1 to 32)");
        options.Json();
        options.Port();
    },
    "  vantrelctl board --port 1\n"
    "  vantrelctl board --port 1 --reset-faults --set-clock\n",
    Board};

} // namespace vantrel
