// The transfers as jobs of a loop that an interrupt can end, and the report of each.
#include "console/Transfers.h"

#include "console/PrintableText.h"
#include "console/SetupFiles.h"
#include "console/TransferReport.h"
#include "link/TargetMap.h"
#include "platform/TurnQueue.h"

#include <algorithm>
#include <functional>
#include <ostream>

namespace vantrel {

namespace {

/// The console's event loop: nothing but turns, and the interrupt that cancels what is running.
class ConsoleTurns final : public TurnQueue {
public:
    ConsoleTurns(CommandContext& context, const LinkSession& session)
        : context_(context), interrupted_(session.Interrupted()) {}

    template <typename Job> void Run(Job& job) {
        cancel_ = [&job] { job.Cancel(); };
        Task task = job.Run();
        RunToEnd(task);
    }

private:
    void TurnAdded() override {
        if (!interrupted_ || cancelled_) return;
        cancelled_ = true;
        context_.Say("Cancelling...");
        cancel_();
    }

    CommandContext& context_;
    const std::atomic<bool>& interrupted_;
    std::function<void()> cancel_;
    bool cancelled_ = false;
};

std::string PrintableFile(const CommandContext& context) { return PrintableText(DocumentFile(context), Layout::Drop); }

std::string CountOfAll(std::size_t count) {
    return std::to_string(count) + " of " + std::to_string(ValueCount) + " values";
}

ExitCode EndOf(const LinkSession& session, bool done) {
    return done && !session.Failed() ? ExitCode::Done : ExitCode::Refused;
}

/// Names the values that were tried but, in `words`, did not make it.
void NameUnconfirmed(CommandContext& context, const SettingsTransfer& transfer, const std::string& words) {
    for (const std::size_t index : transfer.Unconfirmed())
        context.Say(ValueName(index) + ": " + words);
    if (!transfer.Unconfirmed().empty())
        context.Say(CountOfAll(transfer.Unconfirmed().size()) + " were " + words + ".");
}

/// The flag that tells the board of a download; true when there is nothing to say.
bool FlagInOrder(CommandContext& context, const LinkSession& session, const SettingsTransfer& transfer) {
    if (session.Failed()) return true;
    const std::string flag = WriteThroughFlag;
    if (!transfer.FlagRaised()) context.Say("The board did not confirm " + flag + " = 1 before the download.");
    if (!transfer.FlagCleared()) {
        context.Say("The board did not confirm " + flag + " = 0 after the download: it may still expect one.");
    }
    return transfer.FlagRaised() && transfer.FlagCleared();
}

void ReportUnfinishedDownload(CommandContext& context, const LinkSession& session, const SettingsTransfer& transfer) {
    if (transfer.Complete() && !session.Failed()) return;
    if (!session.Failed()) context.Say("Cancelled.");
    context.Say(ReachedText(transfer.Walked(), transfer.Unconfirmed().size()));
    const bool boardOutlivesUs = !context.arguments.port.empty();
    if (session.Failed() && session.CameOnline() && boardOutlivesUs) {
        const std::string flag = WriteThroughFlag;
        context.Say(flag + (transfer.FlagRaised() ? " was" : " may have been") +
                    " left set to 1 when the link failed: the board still expects a download. Download again, or end "
                    "it with\n  vantrelctl write " +
                    flag + " 0 --port " + context.arguments.port);
    }
}

} // namespace

ExitCode SendDocument(CommandContext& context, LinkSession& session) {
    Program& program = context.program;
    program.transferMode = TransferMode::DownloadData;
    ConsoleTurns turns(context, session);
    SettingsTransfer transfer(program.transferMode, program.document.CurrentConfiguration, session.Link(),
                              context.dialogs, turns, context.progress);
    transfer.Load();
    turns.Run(transfer);
    program.refreshTargetStatus = true;
    ReportUnfinishedDownload(context, session, transfer);
    NameUnconfirmed(context, transfer, "not confirmed by the board");
    const bool flagInOrder = FlagInOrder(context, session, transfer);
    const ExitCode end = EndOf(session, transfer.Complete() && transfer.Unconfirmed().empty() && flagInOrder);
    if (end == ExitCode::Done && session.Link().Reopened() == 0) {
        context.host.out << "Downloaded " << PrintableFile(context) << " to " << session.PortName() << ": "
                         << ValueCount << " values, all confirmed.\n";
    }
    return end;
}

ExitCode FetchDocument(CommandContext& context, LinkSession& session) {
    Program& program = context.program;
    program.transferMode = TransferMode::UploadData;
    ConsoleTurns turns(context, session);
    SettingsTransfer transfer(program.transferMode, program.document.CurrentConfiguration, session.Link(),
                              context.dialogs, turns, context.progress);
    transfer.Load();
    turns.Run(transfer);
    if (!transfer.Complete()) {
        context.Say((session.Failed() ? "" : "Cancelled. ") + CountOfAll(transfer.Walked()) + " had been read.");
    }
    NameUnconfirmed(context, transfer, "not read reliably");
    return EndOf(session, transfer.Complete() && transfer.Unconfirmed().empty());
}

ExitCode CompareDocument(CommandContext& context, LinkSession& session) {
    ConsoleTurns turns(context, session);
    const int reopened = session.Link().Reopened();
    BoardComparison comparison(context.program.document.CurrentConfiguration, session.Link(), turns, context.progress);
    turns.Run(comparison);
    context.progress.EndLine();
    for (const ValueDifference& difference : comparison.Differences()) {
        context.host.out << DifferenceText(difference) << '\n';
    }
    for (const std::size_t index : comparison.Unread()) {
        context.Say(ValueName(index) + ": could not be read");
    }
    const std::size_t different = comparison.Differences().size();
    if (!comparison.Complete()) {
        context.Say(std::string(session.Failed() ? "The link to the board failed" : "Cancelled") + " after " +
                    CountOfAll(comparison.Compared()) + " had been compared.");
        return ExitCode::Refused;
    }
    if (different > 0) {
        context.host.out << CountOfAll(different) << " differ between " << PrintableFile(context)
                         << " and the board.\n";
    } else if (comparison.Unread().empty() && session.Link().Reopened() == reopened) {
        context.host.out << "All " << ValueCount << " values of " << PrintableFile(context) << " are on the board.\n";
    }
    return EndOf(session, different == 0 && comparison.Unread().empty());
}

} // namespace vantrel
