// The main frame's menu commands.
#include "app/frmMDIMain.h"

#include "app/frmProcessing.h"
#include "document/frmMain.h"
#include "link/frmSetupComm.h"

#include <QApplication>

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

} // namespace

void frmMDIMain::OpenFile(const std::filesystem::path& path) {
    if (QApplication::activeModalWidget() || !Idle()) {
        QApplication::beep();
        sbrMainPanels[0]->setText(
            QStringLiteral("System Message:  Close the open window first, then drop the file again"));
        return;
    }
    files_.OpenPath(path);
    AfterFileCommand();
}

void frmMDIMain::FileNew() {
    if (files_.New(true) == FileCommands::Outcome::Done) uploaded_ = false;
    AfterFileCommand();
}

void frmMDIMain::FileOpen() {
    files_.Open();
    AfterFileCommand();
}

void frmMDIMain::FileSave() {
    files_.Save();
    AfterFileCommand();
}

void frmMDIMain::FileSaveAs() {
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
    if (dialogs_.Show(UploadQuestion()) == MessageAnswer::Yes) RunTransfer(TransferMode::UploadData);
}

void frmMDIMain::FileDownload() {
    if (dialogs_.Show(DownloadQuestion()) != MessageAnswer::Yes) return;
    RunTransfer(TransferMode::DownloadData);
    program_.refreshTargetStatus = true;
}

void frmMDIMain::RunTransfer(TransferMode mode) {
    if (!link_.OnlineMode()) {
        if (dialogs_.Show(OfflineQuestion()) != MessageAnswer::Yes) return;
        ViewOnline();
    }
    if (mode == TransferMode::UploadData && CanStartTransfer()) uploaded_ = true;
    TransferInWindow(mode);
}

bool frmMDIMain::CanStartTransfer() const { return link_.OnlineMode() && !link_.LinkFailed(); }

bool frmMDIMain::TransferInWindow(TransferMode mode) {
    program_.transferMode = mode;
    Configuration& record = program_.document.CurrentConfiguration;
    if (mode == TransferMode::UploadData && CanStartTransfer()) {
        record.SavedDate = OleDate::FromLocal(clock_.LocalNow());
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
    ShowUnconfirmed(mode, result.unconfirmed);
    return result.complete && result.unconfirmed.empty();
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

void frmMDIMain::FileDownloadProgram() {
    link_.DumpProgram();
    program_.refreshTargetStatus = true;
}

void frmMDIMain::FilePrint() { SayNotYet("The printed report"); }

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
    frmSetupComm window(link_, port_, program_.folder, portRange_, dialogs_, this, fixedDevice_);
    window.exec();
    FollowLink();
}

void frmMDIMain::EditStackAdd() {
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

void frmMDIMain::ViewTargetBoardStatus() { SayNotYet("The target board interface"); }

void frmMDIMain::ViewCommStatus() { SayNotYet("The communication interface"); }

void frmMDIMain::HelpHelpTopics() { SayNotYet("The help"); }

void frmMDIMain::HelpAbout() { SayNotYet("The About window"); }

void frmMDIMain::SayNotYet(const std::string& what) {
    dialogs_.Show({.title = "VANTREL",
                   .text = what + " is not part of this version yet.",
                   .icon = MessageIcon::Information,
                   .buttons = MessageButtons::Ok});
}

} // namespace vantrel
