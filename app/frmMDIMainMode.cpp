// The main frame's mode, ONLINE or OFFLINE, its tick, and its shut-down. What needs the board waits in tasks.
#include "app/frmMDIMain.h"
#include "document/StatusTexts.h"
#include "document/frmMain.h"

#include <QApplication>
#include <QCloseEvent>

#include <utility>

namespace vantrel {

namespace {

/// An exchange that is given up, and the goodbye behind it.
constexpr MonotonicTime GoodbyeTime = std::chrono::milliseconds(1200);

} // namespace

void frmMDIMain::ApplyMode() {
    if (std::exchange(wantOnline_, link_.OnlineMode()) != wantOnline_) ++wishes_;
    if (!shownOnline_) link_.SetOnlineMode(false);
    if (!wantOnline_) ShowMode(false);
    // One that is under way goes on to whatever is wanted by then.
    if (!mode_.Done()) return;
    mode_ = SwitchMode();
    mode_.Start();
}

Task frmMDIMain::SwitchMode() {
    do {
        if (wantOnline_) {
            const int wish = wishes_;
            FindPorts();
            co_await link_.OpenRSComm(port_);
            program_.refreshTargetStatus = true;
            // One that was given up is no answer to who has wished for ONLINE once more since.
            if (wish == wishes_) wantOnline_ = link_.OnlineMode();
        }
        // Also when opening failed: OFFLINE the port is free for other programs.
        if (!wantOnline_ || !link_.OnlineMode()) co_await link_.CloseRSComm();
    } while (wantOnline_ && !link_.OnlineMode());
    ShowMode(link_.OnlineMode());
    // From the event loop: the progress window must not open inside a task.
    if (pendingJob_) QTimer::singleShot(0, this, [this] { StartPendingJob(); });
}

PortRange frmMDIMain::FindPorts() {
    const PortRange range = PortRangeOf(program_.folder.SupportFolder());
    link_.SetPortRange(range);
    return range;
}

void frmMDIMain::NoteMode(bool online) {
    if (online == shownOnline_) return;
    if (online) history_.NoteOpening(link_.Opened());
    history_.NoteLink(online ? LinkChange::Online : link_.LinkFailed() ? LinkChange::Lost : LinkChange::Offline);
}

void frmMDIMain::ShowMode(bool online) {
    NoteMode(online);
    shownOnline_ = online;
    sbrMainPanels[1]->setText(online ? QStringLiteral("ONLINE") : QStringLiteral("OFFLINE"));
    mnuViewCommStatus->setEnabled(online);
    ShowCommands();
    if (!online) editor_->ShowOffline();
    background_.Refresh();
    ShowSystemMessage();
    if (modeChanged_) modeChanged_();
}

void frmMDIMain::ShowCommands() {
    // A click on an entry has toggled its mark.
    mnuViewOnline->setChecked(shownOnline_);
    mnuViewOffline->setChecked(!shownOnline_);
    const bool jobWaits = static_cast<bool>(pendingJob_);
    for (QAction* entry : {mnuFileUpload, mnuFileDownload, mnuToolsCompareBoard})
        entry->setEnabled(!jobWaits);
    mnuFileOpen->setEnabled(!jobWaits && !askingStackAddress_);
    mnuFileNew->setEnabled(!jobWaits && !askingStackAddress_);
    mnuEditCommPort->setEnabled(!changingPort_);
    mnuEditStackAdd->setEnabled(!askingStackAddress_ && (shownOnline_ || program_.offlineEditing));
}

void frmMDIMain::ViewOnline() {
    link_.SetOnlineMode(true);
    ApplyMode();
    ShowCommands();
}

void frmMDIMain::ViewOffline() {
    pendingJob_ = nullptr;
    link_.GiveUp();
    link_.SetOnlineMode(false);
    ApplyMode();
}

void frmMDIMain::ToggleMode() {
    if (!Idle()) return;
    if (wantOnline_) {
        ViewOffline();
    } else {
        ViewOnline();
    }
}

bool frmMDIMain::Idle() const { return !turns_.Running() && !dialogs_.BoxUp() && !transferring_; }

void frmMDIMain::FollowLink() {
    FollowComparison();
    if (!mode_.Done() || link_.Busy() || dialogs_.BoxUp() || transferring_) return;
    if (link_.LinkFailed()) link_.SetOnlineMode(false);
    if (link_.OnlineMode() == shownOnline_) return;
    if (link_.OnlineMode() && port_.IsOpen()) {
        // Opened by the port dialog.
        wantOnline_ = true;
        ShowMode(true);
    } else {
        ApplyMode();
    }
}

void frmMDIMain::Tick() {
    ShowDateAndTime();
    FollowLink();
    editor_->RefillIfAsked();
    if (tick_.Done() && !dialogs_.BoxUp()) {
        tick_ = TickTask();
        tick_.Start();
    }
    // Whatever the tick has found: of a board that is silent now nothing more is said.
    background_.Refresh();
    ShowSystemMessage();
    FollowLink();
    KeepUnsaved();
    StartPendingJob();
    if (closeWanted_ && Idle()) close();
}

void frmMDIMain::KeepUnsaved() {
    ShowDocumentDate();
    // What is half transferred is nobody's edit.
    if (transferring_) return;
    if (const auto problem = unsaved_.Tick()) Notice(QString::fromStdString(*problem), LongNotice);
}

Task frmMDIMain::TickTask() {
    co_await background_.Tick(transferring_);
    background_.Refresh();
    if (shownOnline_ && link_.OnlineMode() && !link_.LinkFailed()) {
        if (const auto fault = background_.CurrentFault()) history_.NoteFault(*fault);
        history_.NoteAlarms(program_.alarms);
        // The status tab would see more, but another tab or window is in front of it.
        if (!transferring_ && !editor_->ReadsStatus()) co_await editor_->LookAtNextStatus();
    }
    ShowSystemMessage();
}

void frmMDIMain::ShowSystemMessage() {
    std::string message = program_.systemMessage;
    const std::string failing = FailingLine(history_);
    // The message above it, also "Normal", is about the board itself.
    if (!failing.empty()) message += (message.ends_with('\n') ? "" : "\n") + failing;
    editor_->SetSystemMessage(message);
    if (clock_.Now() >= noticeUntil_) ShowPanel(QString::fromStdString(background_.PanelText()));
}

void frmMDIMain::closeEvent(QCloseEvent* event) {
    closeWanted_ = false;
    event->ignore();
    if (!Idle()) {
        closeWanted_ = true;
        return;
    }
    if (!editor_->FinishEntry()) return;
    if (editor_->Writing()) {
        // First the user hears what became of the entry; a silent board is not waited for.
        link_.GiveUp();
        leaving_ = CloseWhenWritten();
        leaving_.Start();
        return;
    }
    FollowLink();
    if (!files_.MayClose()) return;
    NoteRecent();
    RememberBoard();
    unsaved_.Discard();
    link_.GiveUp();
    dialogs_.Silence();
    tmrBackgroungUpdate.stop();
    SavePlace();
    QApplication::closeAllWindows();
    event->accept();
}

Task frmMDIMain::CloseWhenWritten() {
    co_await editor_->Written();
    QTimer::singleShot(0, this, [this] { close(); });
}

void frmMDIMain::SayGoodbye() noexcept {
    try {
        hide();
        dialogs_.Silence();
        link_.GiveUp();
        Task goodbye = link_.CloseRSComm();
        goodbye.Start();
        turns_.RunWithoutEvents(goodbye, GoodbyeTime);
    } catch (...) {
        // The port is closed with the program, and nobody is there to be told.
        return;
    }
}

} // namespace vantrel
