// The command that shows the state of the board and sets what the board itself keeps: fault codes, network address,
// clock.
#include "console/BoardReport.h"
#include "console/Commands.h"
#include "console/LinkSession.h"
#include "link/TargetMap.h"

#include <optional>
#include <ostream>
#include <string>

namespace vantrel {

namespace {

UserProgram ProgramOnDisk(const CommandContext& context) {
    return ReadUserProgram(FindUserProgram(context.program.document.FilePath, context.program.folder));
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

/// Does one thing that was asked for and tells what became of it. True when the board has confirmed it.
bool Do(CommandContext& context, LinkSession& session, const std::string& what, TaskOf<WriteOutcome> write) {
    if (session.Failed() || session.Interrupted()) return false;
    const WriteOutcome outcome = session.Run(std::move(write));
    if (outcome == WriteOutcome::Written) {
        if (!context.arguments.json) context.host.out << what << ": done.\n";
        return true;
    }
    context.Say(what + (session.Interrupted()                 ? ": cancelled before all of it was confirmed."
                        : outcome == WriteOutcome::LinkFailed ? ": the link to the board failed before all of it was "
                                                                "confirmed."
                                                              : ": the board did not confirm all of it, also when it "
                                                                "was sent again, or holds something else now."));
    return false;
}

bool DoWhatWasAsked(CommandContext& context, LinkSession& session, BoardMonitor& monitor) {
    const Arguments& asked = context.arguments;
    bool done = true;
    if (asked.resetFaults) done = Do(context, session, "Reset of the fault codes", monitor.ResetFaultCodes());
    if (asked.setClock) {
        done = Do(context, session, "Board time", monitor.SetToCurrTime()) && done;
        done = Do(context, session, "Board date", monitor.SetToCurrDate()) && done;
    }
    if (asked.networkAddress) {
        const std::string address = SetupEntry(NetworkAddressField, *asked.networkAddress).value_or("");
        done = Do(context, session, "Network address " + address, monitor.WriteSetup(NetworkAddressField, address)) &&
               done;
    }
    return done;
}

/// Reads everything.
void ReadBoard(LinkSession& session, BoardMonitor& monitor, BoardReport& report) {
    report.Clear();
    session.Run(monitor.ShowBoardOnline());
    session.Run(monitor.RefreshSetupFields());
    for (const int byte : {SerialSetupByte, FirmwareRevisionByte}) {
        if (session.Failed() || session.Interrupted()) return;
        const Reading reading = session.Run(session.Link().Read(ByteAddress(byte)));
        report.ShowByte(byte, reading.TextOr(std::string(UnreadValue)));
    }
}

/// Prints what was read. True when all of it was.
bool Show(CommandContext& context, const LinkSession& session, const BoardMonitor& monitor, const BoardReport& report,
          const UserProgram& onDisk) {
    if (session.Interrupted()) {
        context.Say("Cancelled.");
        return false;
    }
    if (session.Failed()) {
        context.Say("The link to the board failed before everything was read.");
        return false;
    }
    const bool complete = monitor.Reliable() && report.Complete();
    context.host.out << (context.arguments.json ? report.Json(onDisk, monitor.FaultCodes()) : report.Text(onDisk));
    if (!complete) context.Say("Some of this was not read reliably. Run the command again.");
    if (context.arguments.resetFaults && monitor.AnyCode()) context.dialogs.Show(CodesAfterReset());
    return complete;
}

} // namespace

ExitCode BoardCommand(CommandContext& context) {
    const UserProgram onDisk = ProgramOnDisk(context);
    LinkSession session(context);
    if (!Accepted(context, onDisk) || !session.TraceAccepted())
        return Refuse(context, "Nothing was sent to the board.");
    session.Open();
    if (session.Failed()) return session.Close(ExitCode::LinkFailed);
    BoardReport report(session);
    BoardMonitor monitor(session.Link(), session.Turns(), context.host.clock, context.dialogs, context.program.alarms,
                         BoardFilesOf(context.program.folder), report);
    monitor.SetBoardType(onDisk.boardType);
    const bool done = DoWhatWasAsked(context, session, monitor);
    session.RunWhole([&] { ReadBoard(session, monitor, report); });
    const bool shown = Show(context, session, monitor, report, onDisk);
    return session.Close(done && shown ? ExitCode::Done : ExitCode::Refused);
}

} // namespace vantrel
