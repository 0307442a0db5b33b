// The main frame's transfers: the questions before them, the progress window, and what the user is told afterwards.
#include "app/frmMDIMain.h"
#include "document/frmMain.h"

#include <QApplication>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace vantrel {

namespace {

/// Marks a transfer as running for as long as it lives, however the transfer ends.
class Transferring {
public:
    explicit Transferring(bool& running) : running_(running) { running_ = true; }
    Transferring(const Transferring&) = delete;
    Transferring& operator=(const Transferring&) = delete;
    ~Transferring() { running_ = false; }

private:
    bool& running_;
};

std::string Names(const std::vector<std::size_t>& indices) {
    return ValueList(indices, [](std::size_t) { return std::string(); });
}

/// The values that were sent twice, each with the bytes that it may have reached on the way.
std::string RepeatedNames(const std::vector<RepeatedWrite>& repeated) {
    std::vector<std::size_t> indices;
    for (const RepeatedWrite& one : repeated)
        indices.push_back(one.index);
    return ValueList(indices, [&](std::size_t index) {
        const auto one = std::find_if(repeated.begin(), repeated.end(),
                                      [&](const RepeatedWrite& each) { return each.index == index; });
        std::string bytes;
        for (const std::uint16_t byte : one->mayHaveReached)
            bytes += (bytes.empty() ? ": " : ", ") + ("B" + std::to_string(byte));
        return bytes;
    });
}

} // namespace

void frmMDIMain::FileUpload() {
    if (!editor_->FinishEntry()) return;
    if (dialogs_.Show(UploadQuestion()) == MessageAnswer::Yes) RunTransfer(TransferMode::UploadData);
}

void frmMDIMain::FileDownload() {
    if (!editor_->FinishEntry()) return;
    if (dialogs_.Show(DownloadQuestion()) == MessageAnswer::Yes) RunTransfer(TransferMode::DownloadData);
}

void frmMDIMain::RunTransfer(TransferMode mode) {
    if (link_.OnlineMode()) {
        Transfer(mode);
        return;
    }
    if (dialogs_.Show(OfflineQuestion()) != MessageAnswer::Yes) return;
    pendingTransfer_ = mode;
    ViewOnline();
}

void frmMDIMain::StartPendingTransfer() {
    if (!pendingTransfer_ || !mode_.Done() || !Idle() || QApplication::activeModalWidget()) return;
    const TransferMode mode = *std::exchange(pendingTransfer_, std::nullopt);
    ShowCommands();
    if (editor_->FinishEntry()) Transfer(mode);
}

void frmMDIMain::Transfer(TransferMode mode) {
    TransferInWindow(mode);
    if (mode == TransferMode::DownloadData) program_.refreshTargetStatus = true;
}

bool frmMDIMain::CanStartTransfer() const { return link_.OnlineMode() && !link_.LinkFailed(); }

bool frmMDIMain::TransferInWindow(TransferMode mode) {
    program_.transferMode = mode;
    Configuration& record = program_.document.CurrentConfiguration;
    if (mode == TransferMode::UploadData && CanStartTransfer()) {
        record.SavedDate = OleDate::FromLocal(clock_.LocalNow());
        program_.document.FromBoard = true;
        ShowDocumentDate();
    }
    const frmProcessing::Result result = [&] {
        const Transferring transferring(transferring_);
        frmProcessing window(mode, record, link_, dialogs_, turns_, this);
        return window.RunModal();
    }();
    FollowLink();
    program_.document.ReloadDisplay = true;
    editor_->RefillIfAsked();
    // Not every window manager finds the way back when two windows go at once.
    activateWindow();
    ShowResult(mode, result);
    return result.complete && result.unconfirmed.empty() && !result.reconnected;
}

void frmMDIMain::ShowResult(TransferMode mode, const frmProcessing::Result& result) {
    const bool upload = mode == TransferMode::UploadData;
    if (!result.unconfirmed.empty()) {
        Warn(std::string("These values ") +
             (upload ? "were not read reliably. Upload again:\n"
                     : "were not confirmed by the board. Download again:\n") +
             Names(result.unconfirmed));
    }
    if (!result.repeated.empty()) {
        Warn("These values had to be sent a second time. Behind each one: the bytes that its first, half-sent attempt "
             "may have set to 255.\n" +
             RepeatedNames(result.repeated));
    }
    if (result.reconnected) {
        Warn("The link was lost and taken up again in the middle of the transfer. What the board lost in between is "
             "unknown.\nTransfer again.");
    }
    // A failed link has been told already.
    if (result.flagLeft && !result.failed) {
        Warn("B105 of the board, which is 1 while a download runs, may have been left at 1. The next transfer sets it "
             "to 0.");
    }
}

void frmMDIMain::Warn(const std::string& text) {
    dialogs_.Show({.title = "VANTREL", .text = text, .icon = MessageIcon::Exclamation, .buttons = MessageButtons::Ok});
}

} // namespace vantrel
