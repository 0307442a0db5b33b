// The main frame's menu commands.
#include "app/frmMDIMain.h"

#include "document/frmMain.h"
#include "link/frmSetupComm.h"
#include "text/PathText.h"
#include "views/UserProgram.h"
#include "views/frmCommInterface.h"
#include "views/frmTargetBoard.h"

#include <QApplication>
#include <QWindow>

#include <utility>

namespace vantrel {

namespace {

/// Marks a command as under way for as long as this lives, however it ends.
class UnderWay {
public:
    UnderWay(bool& running, std::function<void()> changed) : running_(running), changed_(std::move(changed)) {
        running_ = true;
        changed_();
    }
    UnderWay(const UnderWay&) = delete;
    UnderWay& operator=(const UnderWay&) = delete;
    ~UnderWay() {
        running_ = false;
        changed_();
    }

private:
    bool& running_;
    std::function<void()> changed_;
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
    if (QApplication::activeModalWidget() || !Idle() || pendingJob_) {
        QApplication::beep();
        Notice(pendingJob_ ? QStringLiteral("The board is waited for, then drop the file again")
                           : QStringLiteral("Close the open window first, then drop the file again"));
        return;
    }
    if (!editor_->FinishEntry()) return;
    // Whatever there is to tell stands over a filled editor.
    editor_->FinishFill();
    files_.OpenPath(path);
    AfterFileCommand();
}

void frmMDIMain::OpenAtStart(const std::filesystem::path& file) {
    editor_->FinishFill();
    files_.OfferUnsaved(unsaved_);
    AfterFileCommand();
    const Document& document = program_.document;
    if (file.empty()) return;
    if (!document.Recovered) {
        OpenFile(file);
        return;
    }
    // Whoever has just taken up edits again is not asked at once whether to give them up for another file.
    std::error_code error;
    if (file == document.FilePath || std::filesystem::equivalent(file, document.FilePath, error)) return;
    Notice(QStringLiteral("Not opened, for the recovered edits come first: ") +
               QString::fromStdString(Utf8FromPath(file.filename())),
           LongNotice);
}

void frmMDIMain::FileNew() {
    if (!editor_->FinishEntry()) return;
    const FileCommands::Outcome outcome = files_.New();
    AfterFileCommand();
    if (outcome != FileCommands::Outcome::Done) return;
    // What the question is about stands behind it.
    editor_->FinishFill();
    AskStackAddress();
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
    NoteRecent();
    RememberBoard();
    FollowLink();
    editor_->RefillIfAsked();
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
    ShowCommands();
}

void frmMDIMain::EditCommPort() {
    portEditor_ =
        std::make_unique<PortSettingsEditor>(link_, port_, program_.folder, FindPorts(), dialogs_, fixedDevice_);
    frmSetupComm window(*portEditor_, this);
    window.exec();
    portChange_ = FinishPortChange();
    portChange_.Start();
}

Task frmMDIMain::FinishPortChange() {
    const UnderWay changing(changingPort_, [this] { ShowCommands(); });
    co_await portEditor_->Finish();
    // OFFLINE the port is free for other programs, unless somebody is about to open it.
    if (!link_.OnlineMode() && mode_.Done()) co_await link_.CloseRSComm();
    FollowLink();
}

void frmMDIMain::EditStackAdd() {
    if (editor_->FinishEntry()) AskStackAddress();
}

void frmMDIMain::AskStackAddress() {
    stackAddress_ = StackAddressTask();
    stackAddress_.Start();
}

Task frmMDIMain::StackAddressTask() {
    const UnderWay asking(askingStackAddress_, [this] { ShowCommands(); });
    const Configuration before = program_.document.CurrentConfiguration;
    co_await files_.AskStatusStackAddress();
    editor_->Remember({"Stack Address", EditsBetween(before, program_.document.CurrentConfiguration)});
    FollowLink();
}

template <typename View, typename Show> void frmMDIMain::ShowView(View& view, Show show) {
    {
        const Listening listening(modeChanged_, [&view] { view.ModeChanged(); });
        const SetWhile<bool> behind = editor_->ReadBehindView();
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
        program_.document, link_, turns_, dialogs_, clock_, program_.SelectedSequence, [this] { ApplyMode(); }, this);
    view.SetNotation(RememberedNotation());
    view.SetOnNotationChosen([this](WordNotation notation) { RememberNotation(notation); });
    ShowView(view, [&] { view.InitializeForm(); });
    editor_->ShowSelectedSequence();
}

void frmMDIMain::ViewMainDisplay() {
    QMdiSubWindow& child = *childWindows_[0];
    if (child.isMinimized()) child.showNormal();
    children_->setActiveSubWindow(&child);
}

} // namespace vantrel
