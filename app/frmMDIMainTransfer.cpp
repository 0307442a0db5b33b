// The main frame's transfers: the questions before them, the progress window, and what the user is told afterwards.
#include "app/frmMDIMain.h"
#include "document/TransferTexts.h"
#include "document/frmMain.h"
#include "link/TargetAddress.h"
#include "platform/SetWhile.h"

#include <QApplication>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace vantrel {

namespace {

std::string Names(const std::vector<std::size_t>& indices) {
    return ValueList(indices, [](std::size_t) { return std::string(); });
}

bool Confirmed(const RepeatedWrite& one, const frmProcessing::Result& result) {
    return !std::binary_search(result.unconfirmed.begin(), result.unconfirmed.end(), one.index);
}

/// The values that the board confirmed when they were sent a second time, each with the bytes that its first attempt
/// may have set; empty when there are none.
std::string ConfirmedAtLast(const frmProcessing::Result& result) {
    std::vector<std::size_t> indices;
    std::map<std::size_t, std::string> bytes;
    for (const RepeatedWrite& one : result.repeated) {
        if (!Confirmed(one, result)) continue;
        indices.push_back(one.index);
        if (!one.mayHaveReached.empty()) bytes[one.index] = ": " + ByteList(one.mayHaveReached);
    }
    return indices.empty() ? std::string() : ValueList(indices, [&](std::size_t index) { return bytes[index]; });
}

/// The bytes that the attempts at values which the board never confirmed may have set, as a sentence; empty for none.
std::string ReachedSentence(const frmProcessing::Result& result) {
    std::set<std::uint16_t> reached;
    for (const RepeatedWrite& one : result.repeated) {
        if (!Confirmed(one, result)) reached.insert(one.mayHaveReached.begin(), one.mayHaveReached.end());
    }
    if (reached.empty()) return {};
    return "\n\nWhat was sent of them may have set these bytes to 255: " + ByteList({reached.begin(), reached.end()});
}

TransferStep::Step EndOf(const frmProcessing::Result& result) {
    if (result.failed) return TransferStep::Step::Failed;
    if (!result.complete) return TransferStep::Step::Cancelled;
    return result.unconfirmed.empty() && !result.reconnected ? TransferStep::Step::Complete
                                                             : TransferStep::Step::Doubtful;
}

} // namespace

void frmMDIMain::FileUpload() {
    if (!editor_->FinishEntry()) return;
    if (dialogs_.Show(UploadQuestion()) == MessageAnswer::Yes) {
        RunOnline([this] { Transfer(TransferMode::UploadData); });
    }
}

void frmMDIMain::FileDownload() {
    if (!editor_->FinishEntry() || WantsToSeeErrors()) return;
    if (dialogs_.Show(DownloadQuestion()) == MessageAnswer::Yes) {
        RunOnline([this] { Transfer(TransferMode::DownloadData); });
    }
}

void frmMDIMain::RunOnline(std::function<void()> job) {
    if (link_.OnlineMode()) {
        job();
        return;
    }
    if (dialogs_.Show(OfflineQuestion()) != MessageAnswer::Yes) return;
    pendingJob_ = std::move(job);
    ViewOnline();
}

void frmMDIMain::StartPendingJob() {
    if (!pendingJob_ || !mode_.Done() || !Idle() || QApplication::activeModalWidget()) return;
    const auto job = std::exchange(pendingJob_, nullptr);
    ShowCommands();
    if (editor_->FinishEntry()) job();
}

void frmMDIMain::Transfer(TransferMode mode) {
    if (mode == TransferMode::DownloadData && !MayDownload()) {
        Notice(QStringLiteral("Nothing was transferred"), LongNotice);
        return;
    }
    const Configuration& record = program_.document.CurrentConfiguration;
    const Configuration before = record;
    const frmProcessing::Result result = TransferInWindow(mode);
    editor_->Remember({"Upload", EditsBetween(before, record)});
    ShowHowFar(mode, result);
    if (mode == TransferMode::DownloadData) program_.refreshTargetStatus = true;
}

bool frmMDIMain::CanStartTransfer() const { return link_.OnlineMode() && !link_.LinkFailed(); }

frmProcessing::Result frmMDIMain::TransferInWindow(TransferMode mode, std::vector<std::size_t> indices) {
    program_.transferMode = mode;
    Configuration& record = program_.document.CurrentConfiguration;
    if (mode == TransferMode::UploadData && CanStartTransfer()) {
        record.SavedDate = OleDate::FromLocal(clock_.LocalNow());
        program_.document.FromBoard = true;
        ShowDocumentDate();
    }
    const bool whole = indices.size() == ValueCount;
    history_.NoteTransfer(mode, TransferStep::Step::Begun);
    frmProcessing::Result result = [&] {
        const SetWhile transferring(transferring_, true);
        frmProcessing window(mode, record, link_, dialogs_, turns_, this, std::move(indices));
        return window.RunModal();
    }();
    history_.NoteTransfer(mode, EndOf(result));
    history_.ForgetNodes();
    background_.NoteReached(result.alsoReached);
    if (whole && IsReliable(result)) NoteBoard(result.board);
    if (result.flagLeft) background_.NoteFlagLeft();
    for (const std::size_t index : result.walked) {
        const bool doubtful = std::binary_search(result.unconfirmed.begin(), result.unconfirmed.end(), index);
        if (!doubtful && !result.reconnected) editor_->Confirm(index);
    }
    FollowLink();
    program_.document.ReloadDisplay = true;
    editor_->RefillIfAsked();
    // Not every window manager finds the way back when two windows go at once.
    activateWindow();
    ShowResult(mode, result);
    return result;
}

bool frmMDIMain::IsReliable(const frmProcessing::Result& result) {
    return result.complete && result.unconfirmed.empty() && !result.reconnected;
}

void frmMDIMain::ShowHowFar(TransferMode mode, const frmProcessing::Result& result) {
    if (result.complete) return;
    // Who has cancelled, or could not begin, knows that it is not whole.
    if (!result.failed || result.walked.empty()) {
        const std::string to = result.walked.empty() ? "" : "Transferred up to " + ValueLabel(result.walked.back());
        Notice(to.empty() ? QStringLiteral("Nothing was transferred") : QString::fromStdString(to), LongNotice);
        return;
    }
    if (result.walked.back() >= result.walked.size()) {
        Warn(std::to_string(result.walked.size()) + " of the chosen values were sent, up to " +
             ValueLabel(result.walked.back()) + ". The others were not.");
        return;
    }
    const auto text = mode == TransferMode::UploadData ? FetchedText : ReachedText;
    Warn(text(result.walked.size(), result.unconfirmed.size(), FieldNaming::Heading));
}

void frmMDIMain::ShowResult(TransferMode mode, const frmProcessing::Result& result) {
    const bool upload = mode == TransferMode::UploadData;
    if (!result.unconfirmed.empty()) {
        Warn(std::string("These values ") +
             (upload ? "were not read reliably. Upload again:\n"
                     : "were not confirmed by the board. Download again:\n") +
             Names(result.unconfirmed) + ReachedSentence(result));
    }
    if (const std::string names = ConfirmedAtLast(result); !names.empty()) {
        Warn("These values had to be sent a second time before the board confirmed them. Behind each one: the bytes "
             "that its first, half-sent attempt may have set to 255.\n" +
             names);
    }
    if (result.reconnected) {
        Warn("The link was lost and taken up again in the middle of the transfer. What the board lost in between is "
             "unknown.\nTransfer again.");
    }
    // After a failed link, of which there were boxes enough, it stands below the system message.
    if (result.flagLeft && !result.failed) Warn(FlagLeftSentence);
}

void frmMDIMain::Warn(const std::string& text) {
    dialogs_.Show({.title = "VANTREL",
                   .text = text,
                   .icon = MessageIcon::Exclamation,
                   .buttons = MessageButtons::Ok,
                   .unasked = true});
}

} // namespace vantrel
