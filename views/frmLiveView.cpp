// The loop that follows mode and sight, the entries between its turns, and the way out.
#include "views/frmLiveView.h"

#include <QApplication>
#include <QEvent>

#include <algorithm>
#include <chrono>
#include <utility>

namespace vantrel {

namespace {

constexpr int WaitMilliseconds = 250;

} // namespace

frmLiveView::frmLiveView(RSComm& link, TurnQueue& turns, Dialogs& dialogs, const Clock& clock,
                         std::function<void()> applyMode, QWidget* parent)
    : QDialog(parent), link_(link), turns_(turns), dialogs_(dialogs), clock_(clock), applyMode_(std::move(applyMode)),
      wake_(turns) {
    cmdGoOnline.setObjectName(QStringLiteral("cmdGoOnline"));
    cmdGoOnline.setText(tr("&Go Online"));
    cmdOk.setObjectName(QStringLiteral("cmdOk"));
    cmdOk.setText(tr("&Ok"));
    for (QPushButton* button : {&cmdGoOnline, &cmdOk}) {
        // A click decides with the focus still in a box: it takes the open entry by itself.
        button->setFocusPolicy(Qt::TabFocus);
    }
    lblNotRefreshed.setObjectName(QStringLiteral("lblNotRefreshed"));
    lblNotRefreshed.setTextFormat(Qt::PlainText);
    QFont bold = lblNotRefreshed.font();
    bold.setBold(true);
    lblNotRefreshed.setFont(bold);
    tmrNotRefreshed.setInterval(WaitMilliseconds);
    tmrNotRefreshed.callOnTimeout(this, [this] { ShowWaiting(); });
    connect(&cmdGoOnline, &QPushButton::clicked, this, [this] { GoOnline(); });
    connect(&cmdOk, &QPushButton::clicked, this, &QDialog::accept);
}

frmLiveView::~frmLiveView() = default;

void frmLiveView::ShowWaiting() {
    // A board that is only slow answers before this.
    constexpr std::chrono::seconds longest{1};
    const auto since = link_.AwaitingSince();
    const auto silence = since ? clock_.Now() - *since : MonotonicTime{};
    QString text;
    if (OnlineLookShown && silence >= longest) {
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(silence).count();
        text = tr("Not refreshed: waiting for the board ... %1 s").arg(seconds);
    }
    if (lblNotRefreshed.text() != text) lblNotRefreshed.setText(text);
}

void frmLiveView::Add(QtEntryField& field) { fields_.push_back(&field); }

void frmLiveView::RunModal() {
    ViewActive = true;
    OnlineLookShown = false;
    OfflineLookShown = false;
    FollowMode();
    // Only queues the first turn; the event loop gives it, after it has shown the window.
    live_ = Live();
    live_.Start();
    // Not beyond the loop: the focus also moves while the window is being taken apart.
    const auto focus =
        connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, const QWidget* to) { FocusMoved(to); });
    tmrNotRefreshed.start();
    exec();
    tmrNotRefreshed.stop();
    disconnect(focus);
    // A program that quits ends the event loop without closing the window.
    ViewActive = false;
    for (Task* task : {&live_, &taking_, &leaving_})
        task->Stop();
}

Task frmLiveView::Live() {
    for (;;) {
        co_await turns_.Next();
        if (!ViewActive) co_return;
        // Whoever else has noticed the failure may have put the link OFFLINE already.
        if (!switching_ && link_.LinkFailed() && (link_.OnlineMode() || OnlineLookShown)) {
            link_.SetOnlineMode(false);
            OnlineLookShown = false;
            SwitchMode();
        }
        if (!switching_) FollowMode();
        if (switching_ || !link_.OnlineMode() || isMinimized()) {
            co_await wake_.Raised();
        } else {
            co_await Refresh();
        }
    }
}

void frmLiveView::FollowMode() {
    const bool online = link_.OnlineMode();
    bool& shown = online ? OnlineLookShown : OfflineLookShown;
    (online ? OfflineLookShown : OnlineLookShown) = false;
    if (std::exchange(shown, true)) return;
    online ? ShowOnlineLook() : ShowOfflineLook();
}

void frmLiveView::SwitchMode() {
    switching_ = true;
    applyMode_();
}

void frmLiveView::ModeChanged() {
    switching_ = false;
    // The loop may not see a mode that is gone before its next turn.
    if (!link_.OnlineMode()) OnlineLookShown = false;
    wake_.Raise();
}

void frmLiveView::GoOnline() {
    if (!Idle() || switching_ || link_.OnlineMode()) return;
    link_.SetOnlineMode(true);
    SwitchMode();
}

void frmLiveView::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) wake_.Raise();
}

bool frmLiveView::Idle() const {
    // A box of the program, whoever owns it, is another modal window.
    const QWidget* modal = QApplication::activeModalWidget();
    return !turns_.Running() && (!modal || modal == this);
}

bool frmLiveView::EntryOpen() const {
    return std::any_of(fields_.begin(), fields_.end(), [](const QtEntryField* field) { return field->Editing; });
}

void frmLiveView::DropEntries() {
    then_.clear();
    for (QtEntryField* field : fields_) {
        if (field->Editing) field->Drop();
    }
}

void frmLiveView::FocusMoved(const QWidget* to) {
    // A message box and another program are no leaving of a box.
    if (ViewActive && to && to->window() == this && EntryOpen()) LookAtEntries();
}

void frmLiveView::AfterEntries(std::function<void()> then) {
    if (!EntryOpen()) {
        then();
        return;
    }
    then_.push_back(std::move(then));
    LookAtEntries();
}

void frmLiveView::LookAtEntries() {
    // The looking itself moves the focus; it must not replace the task that it runs in.
    lookAgain_ = true;
    if (!taking_.Done()) return;
    taking_ = TakeEntries();
    taking_.Start();
}

Task frmLiveView::TakeEntries() {
    while (lookAgain_) {
        // The refusal must not come up in the middle of the click or key that moves the focus.
        co_await turns_.Next();
        lookAgain_ = false;
        const std::vector<std::function<void()>> thenAll = std::exchange(then_, {});
        bool taken = true;
        for (QtEntryField* field : fields_) {
            const bool left = !thenAll.empty() || focusWidget() != &field->box;
            if (!taken || !field->Editing || !left) continue;
            taken = co_await Take(*field);
        }
        for (const auto& then : thenAll) {
            if (taken && ViewActive) then();
        }
    }
}

void frmLiveView::done(int result) {
    // Pressed once more while a write waits for the board it means what the other ways out mean.
    if (result == Accepted && Idle() && writing_ == 0) {
        AfterEntries([this] { Leave(Accepted); });
    } else {
        Leave(result);
    }
}

void frmLiveView::Leave(int result) {
    ViewActive = false;
    DropEntries();
    link_.GiveUp();
    if (Idle() && writing_ == 0) {
        QDialog::done(result);
    } else if (leaving_.Done()) {
        leaving_ = LeaveWhenIdle(result);
        leaving_.Start();
    }
}

Task frmLiveView::LeaveWhenIdle(int result) {
    // Turns are given to nobody while a box is up.
    co_await turns_.Next();
    while (writing_ > 0)
        co_await wake_.Raised();
    QDialog::done(result);
}

} // namespace vantrel
