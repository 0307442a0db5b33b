// The transfers as jobs that an interrupt can end, and the report of each.
#include "console/Transfers.h"

#include "console/ResultJson.h"
#include "console/SetupFiles.h"
#include "document/Comparison.h"
#include "document/TransferTexts.h"
#include "link/TargetMap.h"
#include "text/PathText.h"
#include "text/PrintableText.h"

#include <algorithm>
#include <ostream>
#include <string>

namespace vantrel {

namespace {

std::string PrintableFile(const CommandContext& context) { return PrintableText(DocumentFile(context), Layout::Drop); }

std::string CountOfAll(std::size_t count) {
    return std::to_string(count) + " of " + std::to_string(ValueCount) + " values";
}

ExitCode EndOf(const LinkSession& session, bool done) {
    return done && !session.Failed() ? ExitCode::Done : ExitCode::Refused;
}

/// Names the values that were tried but, in `words`, did not make it.
void NameValues(CommandContext& context, const std::vector<std::size_t>& indices, const std::string& words) {
    for (const std::size_t index : indices)
        context.Say(ValueName(index) + ": " + words);
    if (!indices.empty()) context.Say(CountOfAll(indices.size()) + " were " + words + ".");
}

/// Names the values that were sent twice, or cut off. The former may be confirmed all the same.
void NameRepeated(CommandContext& context, const SettingsTransfer& transfer) {
    // Of the flag, and of a sync byte that was spoiled on its way.
    std::vector<std::uint16_t> rest = transfer.MayHaveReached();
    for (const RepeatedWrite& repeated : transfer.Repeated()) {
        context.SayIf(
            ReachedBesideText(ValueName(repeated.index), transfer.HasWalked(repeated.index), repeated.mayHaveReached));
        std::erase_if(rest, [&](std::uint16_t byte) { return std::ranges::count(repeated.mayHaveReached, byte) > 0; });
    }
    context.SayIf(ReachedBesideText(WriteThroughFlag, false, rest));
}

void NameFlagUncleared(CommandContext& context, const LinkSession& session, const SettingsTransfer& transfer) {
    if (session.Failed() || transfer.FlagCleared()) return;
    context.Say("The board did not confirm " + std::string(WriteThroughFlag) +
                " = 0 at the end: it may still expect a download.");
}

/// The flag that tells the board of a download; true when there is nothing to say.
bool FlagInOrder(CommandContext& context, const LinkSession& session, const SettingsTransfer& transfer) {
    if (session.Failed()) return true;
    if (!transfer.FlagRaised())
        context.Say("The board did not confirm " + std::string(WriteThroughFlag) + " = 1 before the download.");
    NameFlagUncleared(context, session, transfer);
    return transfer.FlagRaised() && transfer.FlagCleared();
}

void ReportUnfinishedDownload(CommandContext& context, const LinkSession& session, const SettingsTransfer& transfer) {
    if (transfer.Complete() && !session.Failed()) return;
    if (transfer.Cancelled())
        context.Say(transfer.GaveUp() ? "Cancelled. The board gave no proper answer any more." : "Cancelled.");
    if (context.arguments.changes) {
        for (const std::size_t index : transfer.WalkedIndices())
            context.Say(ValueName(index) + ": sent");
    } else {
        context.Say(ReachedText(transfer.Walked(), transfer.Unconfirmed().size(), FieldNaming::Name));
    }
    // A board that the command made itself is gone with it.
    if (session.Failed() && !context.arguments.port.empty()) context.Say(FlagLeftText(context.arguments));
}

/// Whether what has been read may be of two boards; says so, and what to do `again`.
bool OfTwoBoards(CommandContext& context, const LinkSession& session, bool reconnected, const std::string& again) {
    if (session.Failed() || !reconnected) return false;
    context.Say("The link was taken up again; what was read before may be out of date, or another board's. " + again);
    return true;
}

void Run(CommandContext& context, LinkSession& session, SettingsTransfer& transfer) {
    transfer.Load();
    session.Turns().RunJob(transfer);
    context.progress.EndLine();
}

bool IsEqual(const BoardComparison& comparison) {
    return comparison.Complete() && comparison.Differences().empty() && comparison.Unread().empty();
}

/// Compares the document, or these of its values, with the board, says what could not be read or compared, and hands
/// the rest to `tell`. `again`: what to do when its values may be those of two boards; it is worth nothing then.
template <typename Tell>
ExitCode CompareAndTell(CommandContext& context, LinkSession& session, const std::vector<std::size_t>& indices,
                        const std::string& again, const Tell& tell) {
    BoardComparison comparison(context.program.document.CurrentConfiguration, session.Link(), session.Turns(),
                               context.progress);
    comparison.Only(indices);
    session.Turns().RunJob(comparison);
    context.progress.EndLine();
    NameValues(context, comparison.Unread(), "not read reliably");
    if (!comparison.Complete()) {
        context.Say(std::string(session.Interrupted() ? "Cancelled" : "The link to the board failed") + " after " +
                    CountOfAll(comparison.Compared()) + " had been compared.");
    }
    if (OfTwoBoards(context, session, comparison.Reconnected(), again)) return ExitCode::Refused;
    tell(comparison);
    return EndOf(session, IsEqual(comparison));
}

std::string OnBoardText(const CommandContext& context, std::size_t values) {
    const std::string of = " of " + PrintableFile(context);
    if (values == ValueCount) return "All " + std::to_string(values) + " values" + of + " are on the board.\n";
    return std::to_string(values) + (values == 1 ? " value" + of + " is" : " values" + of + " are") +
           " on the board.\n";
}

void PrintComparison(const CommandContext& context, const BoardComparison& comparison) {
    std::ostream& out = context.host.out;
    for (const ValueDifference& difference : comparison.Differences())
        out << DifferenceText(difference) << '\n';
    const std::size_t different = comparison.Differences().size();
    if (comparison.Complete() && different > 0) {
        out << CountOfAll(different) << " differ between " << PrintableFile(context) << " and the board.\n";
    } else if (IsEqual(comparison)) {
        out << OnBoardText(context, comparison.Compared());
    }
}

Json ComparisonJson(const std::string& file, const BoardComparison& comparison) {
    Json differences = Json::array();
    for (const ValueDifference& difference : comparison.Differences()) {
        differences.push_back(NameJson(difference.index));
        differences.back().update(Json{{"file", difference.inRecord}, {"board", difference.onBoard}});
    }
    Json unread = Json::array();
    for (const std::size_t index : comparison.Unread())
        unread.push_back(NameJson(index));
    // Neither is shown while something is unread or the comparison has not come to its end.
    std::optional<bool> equal;
    if (!differences.empty() || IsEqual(comparison)) equal = differences.empty();
    return {{"file", file},
            {"compared", comparison.Compared()},
            {"equal", ValueJson(equal)},
            {"differences", differences},
            {"unread", unread}};
}

std::string ConfirmedText(const SettingsTransfer& transfer) {
    const std::size_t repeated = transfer.Repeated().size();
    return std::to_string(transfer.Walked()) +
           (transfer.Walked() == 1 ? " value, confirmed" : " values, all confirmed") +
           (repeated > 0 ? ", " + std::to_string(repeated) + " of them when sent again" : "") + ".\n";
}

} // namespace

std::string FlagLeftText(const Arguments& arguments) {
    const std::string flag = WriteThroughFlag;
    return flag +
           " may have been left at 1: the board may still expect a download. Download again, or end it with\n"
           "  vantrelctl write " +
           flag + " 0 --port " + arguments.port + (arguments.speed ? " --speed " + *arguments.speed : "");
}

ExitCode SendDocument(CommandContext& context, LinkSession& session, const std::vector<std::size_t>& indices) {
    SettingsTransfer transfer(TransferMode::DownloadData, context.program.document.CurrentConfiguration, session.Link(),
                              context.dialogs, session.Turns(), context.progress);
    transfer.Only(indices);
    Run(context, session, transfer);
    ReportUnfinishedDownload(context, session, transfer);
    NameValues(context, transfer.Unconfirmed(), "not confirmed by the board");
    NameRepeated(context, transfer);
    const bool flagInOrder = FlagInOrder(context, session, transfer);
    const ExitCode end = EndOf(session, transfer.Complete() && transfer.Unconfirmed().empty() && flagInOrder);
    if (end == ExitCode::Done && !transfer.Reconnected()) {
        context.host.out << "Downloaded " << PrintableFile(context) << " to " << session.PortName() << ": "
                         << ConfirmedText(transfer);
    }
    return end;
}

ExitCode FetchDocument(CommandContext& context, LinkSession& session) {
    SettingsTransfer transfer(TransferMode::UploadData, context.program.document.CurrentConfiguration, session.Link(),
                              context.dialogs, session.Turns(), context.progress);
    Run(context, session, transfer);
    if (!transfer.Complete()) {
        context.Say((transfer.Cancelled() ? "Cancelled. " : "") + CountOfAll(transfer.Walked()) + " had been read.");
    }
    NameValues(context, transfer.Unconfirmed(), "not read reliably");
    NameRepeated(context, transfer);
    NameFlagUncleared(context, session, transfer);
    const bool ofTwo = OfTwoBoards(context, session, transfer.Reconnected(), "Upload again.");
    return EndOf(session, transfer.Complete() && transfer.Unconfirmed().empty() && !ofTwo);
}

ExitCode FetchAgain(CommandContext& context, LinkSession& session) {
    return CompareAndTell(context, session, EveryIndex(), "Upload again.", [&](const BoardComparison& comparison) {
        for (const ValueDifference& difference : comparison.Differences())
            context.Say(DifferenceText(difference, "first", "then"));
    });
}

std::optional<std::vector<std::size_t>> FindChanges(CommandContext& context, LinkSession& session) {
    std::optional<std::vector<std::size_t>> changes;
    (void)CompareAndTell(context, session, EveryIndex(), "Download again.", [&](const BoardComparison& comparison) {
        if (!comparison.Complete()) return;
        // What could not be read clearly may differ.
        changes = comparison.Unread();
        for (const ValueDifference& difference : comparison.Differences()) {
            context.Say(DifferenceText(difference));
            changes->push_back(difference.index);
        }
        std::ranges::sort(*changes);
    });
    if (!changes) context.Say("Nothing was sent.");
    if (changes && changes->empty()) context.host.out << OnBoardText(context, ValueCount) << "Nothing was sent.\n";
    return changes;
}

ExitCode CompareRecords(CommandContext& context, const Configuration& other) {
    const std::vector<Difference> differences =
        DifferencesBetween(context.program.document.CurrentConfiguration, other);
    Json list = Json::array();
    std::string lines;
    for (const Difference& difference : differences) {
        const std::string name = difference.index
                                     ? ValueName(*difference.index)
                                     : "sequence " + std::to_string(difference.sequence) + ", NodeDescription";
        lines += name + ": " + difference.here + " | " + difference.there + "\n";
        list.push_back(difference.index ? NameJson(*difference.index)
                                        : Json{{"sequence", difference.sequence}, {"field", "NodeDescription"}});
        list.back().update(Json{{"file", difference.here}, {"other", difference.there}});
    }
    const bool equal = differences.empty();
    if (context.arguments.json) {
        context.host.out << JsonText({{"file", context.arguments.file},
                                      {"other", *context.arguments.otherFile},
                                      {"equal", equal},
                                      {"differences", list}});
    } else {
        context.host.out << PrintableText(lines, Layout::Keep)
                         << (equal ? "Values and descriptions of both files are the same.\n" : "");
    }
    return equal ? ExitCode::Done : ExitCode::Refused;
}

ExitCode CompareDocument(CommandContext& context, LinkSession& session, const std::vector<std::size_t>& indices) {
    return CompareAndTell(context, session, indices, "Compare again.", [&](const BoardComparison& comparison) {
        if (context.arguments.json) {
            context.host.out << JsonText(ComparisonJson(Utf8FromPath(context.program.document.FilePath), comparison));
        } else {
            PrintComparison(context, comparison);
        }
    });
}

} // namespace vantrel
