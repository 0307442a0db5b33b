// The command that shows the state of the board and sets what the board itself keeps: fault codes, network address,
// clock.
#include "console/Commands.h"
#include "console/LinkSession.h"
#include "console/PrintableText.h"
#include "views/BoardMonitor.h"
#include "views/UserProgram.h"

#include <algorithm>
#include <array>
#include <functional>
#include <ostream>
#include <string>

namespace vantrel {

namespace {

constexpr std::size_t LabelWidth = 33;
constexpr const char* Unread = "-";

/// Keeps what the passes show until it is printed.
class BoardReport final : public BoardDisplay {
public:
    explicit BoardReport(const LinkSession& session) : session_(session) { setup_.fill(Unread); }

    [[nodiscard]] bool Active() const override { return !session_.Interrupted(); }
    [[nodiscard]] bool SetupWanted(std::size_t) const override { return true; }
    void EnableOnline(bool) override {}
    void EnableReset(bool) override {}
    void ShowCaption(BoardCode which, const std::string& text) override { captions_.at(IndexOf(which)) = text; }
    void ShowDescription(BoardCode which, const std::string& text) override { descriptions_.at(IndexOf(which)) = text; }
    void ShowSetup(std::size_t field, const std::string& value) override { setup_.at(field) = TwoDigits(value); }
    void ShowRevision(std::size_t label, const std::string& text) override { revision_.at(label) = text; }
    void ShowGoOnline(bool) override {}

    /// Whether every set-up field has been read.
    [[nodiscard]] bool Complete() const {
        return std::find(setup_.begin(), setup_.end(), Unread) == setup_.end() && !revision_[1].empty();
    }
    void PrintCodes(std::ostream& out) const;
    void PrintSetup(std::ostream& out, const UserProgram& onDisk, const std::string& serialWord) const;

private:
    const LinkSession& session_;
    std::array<std::string, BoardCodeCount> captions_;
    std::array<std::string, BoardCodeCount> descriptions_;
    std::array<std::string, SetupFieldCount> setup_;
    std::array<std::string, 3> revision_;
};

void Print(std::ostream& out, std::string label, const std::string& text) {
    label.resize(std::max(label.size() + 1, LabelWidth), ' ');
    const std::string line = label + PrintableText(text, Layout::Drop);
    out << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
}

std::string RevisionText(const std::string& ident, const std::string& first, const std::string& second) {
    return ident + ", revision numbers " + first + " and " + second;
}

void BoardReport::PrintCodes(std::ostream& out) const {
    for (std::size_t i = 0; i < BoardCodeCount; ++i) {
        if (!captions_[i].empty()) Print(out, captions_[i], descriptions_[i]);
    }
    Print(out, "Advice for the last fault:", descriptions_[IndexOf(BoardCode::Advice)]);
}

void BoardReport::PrintSetup(std::ostream& out, const UserProgram& onDisk, const std::string& serialWord) const {
    Print(out, "Network address:", setup_[NetworkAddressField]);
    Print(out, "Serial set-up word:", serialWord);
    if (HasBoardClock(onDisk.boardType)) {
        const auto* clock = &setup_[FirstClockField];
        Print(out, "Board time:", clock[0] + " : " + clock[1] + " : " + clock[2]);
        Print(out, "Board date (month, day, year):", clock[3] + " - " + clock[4] + " - " + clock[5]);
    }
    Print(out, "User program in the board:", RevisionText(revision_[0], revision_[1], revision_[2]));
    const bool known = onDisk.revIdentOnDisk != "-";
    Print(out, "User program on disk:",
          known ? RevisionText(onDisk.revIdentOnDisk, std::to_string(onDisk.revisionNumbers[0]),
                               std::to_string(onDisk.revisionNumbers[1]))
                : "not known");
}

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
bool Do(CommandContext& context, const LinkSession& session, const std::string& what,
        const std::function<WriteOutcome()>& write) {
    if (session.Failed() || session.Interrupted()) return false;
    const WriteOutcome outcome = write();
    if (outcome == WriteOutcome::Written) {
        context.host.out << what << ": done.\n";
        return true;
    }
    context.Say(what + (outcome == WriteOutcome::LinkFailed
                            ? ": the link to the board failed before all of it was confirmed."
                            : ": the board did not confirm all of it, also when it was sent again."));
    return false;
}

bool DoWhatWasAsked(CommandContext& context, const LinkSession& session, BoardMonitor& monitor) {
    const Arguments& asked = context.arguments;
    bool done = true;
    if (asked.resetFaults)
        done = Do(context, session, "Reset of the fault codes", [&] { return monitor.ResetFaultCodes(); });
    if (asked.setClock) {
        done = Do(context, session, "Board time", [&] { return monitor.SetToCurrTime(); }) && done;
        done = Do(context, session, "Board date", [&] { return monitor.SetToCurrDate(); }) && done;
    }
    if (asked.networkAddress) {
        const std::string address = SetupEntry(NetworkAddressField, *asked.networkAddress).value_or("");
        done = Do(context, session, "Network address " + address,
                  [&] { return monitor.WriteSetup(NetworkAddressField, address); }) &&
               done;
    }
    return done;
}

/// Reads everything and prints it. True when all of it was read.
bool ShowBoard(CommandContext& context, LinkSession& session, BoardMonitor& monitor, const BoardReport& report,
               const UserProgram& onDisk, TurnQueue& turns) {
    RSComm& link = session.Link();
    for (const auto pass : {&BoardMonitor::ShowBoardOnline, &BoardMonitor::RefreshSetupFields}) {
        Task task = (monitor.*pass)();
        turns.RunToEnd(task);
    }
    if (session.Failed() || session.Interrupted()) return false;
    // A view has room for two digits of it.
    std::string serialWord = link.RSRead(ByteAddress(SerialSetupByte));
    if (link.ReadFailed()) serialWord = Unread;
    std::string firmware = std::to_string(link.FirmwareRev());
    if (link.ReadFailed()) firmware = Unread;
    const bool complete = monitor.Reliable() && report.Complete() && serialWord != Unread && firmware != Unread;
    if (session.Failed()) return false;
    std::ostream& out = context.host.out;
    Print(out, "Board model:",
          onDisk.boardType != 0 ? RSComm::TargetboardName(onDisk.boardType)
                                : "not known, for want of a user program on disk");
    Print(out, "Firmware revision:", firmware);
    if (monitor.Reliable()) {
        report.PrintCodes(out);
    } else {
        Print(out, "Fault and error codes:", Unread);
    }
    report.PrintSetup(out, onDisk, serialWord);
    if (!complete) context.Say("Some of this was not read reliably. Run the command again.");
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
    TurnQueue turns;
    BoardReport report(session);
    BoardMonitor monitor(session.Link(), turns, context.host.clock, context.dialogs, context.program.alarms,
                         BoardFilesOf(context.program.folder), report);
    monitor.SetBoardType(onDisk.boardType);
    const bool done = DoWhatWasAsked(context, session, monitor);
    const bool shown = ShowBoard(context, session, monitor, report, onDisk, turns);
    if (session.Interrupted()) {
        context.Say("Cancelled.");
    } else if (session.Failed()) {
        context.Say("The link to the board failed before everything was read.");
    }
    return session.Close(done && shown ? ExitCode::Done : ExitCode::Refused);
}

} // namespace vantrel
