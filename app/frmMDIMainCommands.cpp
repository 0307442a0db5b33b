// The main frame's menu commands.
#include "app/frmMDIMain.h"

#include "app/frmProcessing.h"
#include "document/frmMain.h"
#include "link/frmSetupComm.h"
#include "views/UserProgram.h"
#include "views/frmCommInterface.h"
#include "views/frmTargetBoard.h"

#include <QApplication>

#include <utility>

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

/// A view hears of the mode for as long as this lives, however its showing ends.
class Listening {
public:
    Listening(std::function<void()>& slot, std::function<void()> listener) : slot_(slot) {
        slot_ = std::move(listener);
    }
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;
    ~Listening() { slot_ = nullptr; }

private:
    std::function<void()>& slot_;
};

} // namespace

void frmMDIMain::OpenFile(const std::filesystem::path& path) {
    if (QApplication::activeModalWidget() || !Idle()) {
        QApplication::beep();
        Notice(QStringLiteral("System Message:  Close the open window first, then drop the file again"));
        return;
    }
    if (!editor_->FinishEntry()) return;
    files_.OpenPath(path);
    AfterFileCommand();
}

void frmMDIMain::FileNew() {
    if (!editor_->FinishEntry()) return;
    files_.New(true);
    AfterFileCommand();
}

void frmMDIMain::FileOpen() {
    if (!editor_->FinishEntry()) return;
    files_.Open();
    AfterFileCommand();
}

void frmMDIMain::FileSave() {
    if (!editor_->FinishEntry()) return;
    files_.Save();
    AfterFileCommand();
}

void frmMDIMain::FileSaveAs() {
    if (!editor_->FinishEntry()) return;
    files_.SaveAs();
    AfterFileCommand();
}

void frmMDIMain::AfterFileCommand() {
    ShowCaption();
    ShowDocumentDate();
    RefreshOfflineEditing();
    FollowLink();
    editor_->RefillIfAsked();
}

void frmMDIMain::FileUpload() {
    if (!editor_->FinishEntry()) return;
    if (dialogs_.Show(UploadQuestion()) == MessageAnswer::Yes) RunTransfer(TransferMode::UploadData);
}

void frmMDIMain::FileDownload() {
    if (!editor_->FinishEntry()) return;
    if (dialogs_.Show(DownloadQuestion()) != MessageAnswer::Yes) return;
    RunTransfer(TransferMode::DownloadData);
    program_.refreshTargetStatus = true;
}

void frmMDIMain::RunTransfer(TransferMode mode) {
    if (!link_.OnlineMode()) {
        if (dialogs_.Show(OfflineQuestion()) != MessageAnswer::Yes) return;
        ViewOnline();
    }
    TransferInWindow(mode);
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
    const int reopened = link_.Reopened();
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
    ShowUnconfirmed(mode, result.unconfirmed);
    if (link_.Reopened() != reopened) ShowReopened();
    return result.complete && result.unconfirmed.empty() && link_.Reopened() == reopened;
}

void frmMDIMain::ShowUnconfirmed(TransferMode mode, const std::vector<std::size_t>& indices) {
    if (indices.empty()) return;
    const std::string what = mode == TransferMode::UploadData ? "were not read reliably. Upload again:\n"
                                                              : "were not confirmed by the board. Download again:\n";
    dialogs_.Show({.title = "VANTREL",
                   .text = "These values " + what + ValueList(indices, [](std::size_t) { return std::string(); }),
                   .icon = MessageIcon::Exclamation,
                   .buttons = MessageButtons::Ok});
}

void frmMDIMain::ShowReopened() {
    dialogs_.Show({.title = "VANTREL",
                   .text = "The link was lost and taken up again in the middle of the transfer. What the board lost in "
                           "between is unknown.\nTransfer again.",
                   .icon = MessageIcon::Exclamation,
                   .buttons = MessageButtons::Ok});
}

void frmMDIMain::FileDownloadProgram() {
    link_.DumpProgram();
    program_.refreshTargetStatus = true;
}

void frmMDIMain::FileExit() { close(); }

void frmMDIMain::EditOfflineEditing() {
    program_.offlineEditing = !program_.offlineEditing;
    RefreshOfflineEditing();
}

void frmMDIMain::RefreshOfflineEditing() {
    mnuEditOfflineEditing->setChecked(program_.offlineEditing);
    mnuEditStackAdd->setEnabled(shownOnline_ || program_.offlineEditing);
}

void frmMDIMain::EditCommPort() {
    frmSetupComm window(link_, port_, program_.folder, FindPorts(), dialogs_, this, fixedDevice_);
    window.exec();
    FollowLink();
}

void frmMDIMain::EditStackAdd() {
    if (!editor_->FinishEntry()) return;
    files_.AskStatusStackAddress();
    FollowLink();
}

void frmMDIMain::ViewOnline() {
    link_.SetOnlineMode(true);
    ApplyMode();
}

void frmMDIMain::ViewOffline() {
    link_.SetOnlineMode(false);
    ApplyMode();
}

void frmMDIMain::ToggleMode() {
    if (!Idle()) return;
    link_.SetOnlineMode(!link_.OnlineMode());
    ApplyMode();
}

template <typename View, typename Show> void frmMDIMain::ShowView(View& view, Show show) {
    {
        const Listening listening(modeChanged_, [&view] { view.ModeChanged(); });
        show();
    }
    FollowLink();
}

void frmMDIMain::ViewTargetBoardStatus() {
    if (!editor_->FinishEntry()) return;
    frmTargetBoard view(
        program_.folder, link_, turns_, dialogs_, clock_, program_.alarms, [this] { ApplyMode(); }, this);
    ShowView(view, [&] { view.InitializeForm(FindUserProgram(program_.document.FilePath, program_.folder)); });
}

void frmMDIMain::ViewCommStatus() {
    if (!editor_->FinishEntry()) return;
    frmCommInterface view(
        program_.document, link_, turns_, dialogs_, program_.SelectedSequence, [this] { ApplyMode(); }, this);
    ShowView(view, [&] { view.InitializeForm(); });
    editor_->ShowSelectedSequence();
}

} // namespace vantrel
