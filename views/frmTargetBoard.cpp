// The target board view's loop, its two looks, and the commands of its buttons.
#include "views/frmTargetBoard.h"

#include "platform/QtScreen.h"
#include "platform/RuntimeError.h"

#include <QApplication>
#include <QShowEvent>

#include <initializer_list>
#include <utility>

namespace vantrel {

namespace {

/// Often enough that no second of the computer's clock is skipped.
constexpr int TickMilliseconds = 200;

QString Text(const std::string& text) { return QString::fromStdString(text); }

/// Texts that have not changed are left alone, so that a selection or a reader in them is left in peace.
void Show(QLabel& label, const QString& text) {
    if (label.text() != text) label.setText(text);
}

} // namespace

frmTargetBoard::frmTargetBoard(const ProgramFolder& folder, RSComm& link, TurnQueue& turns, Dialogs& dialogs,
                               Clock& clock, AlarmFlags& alarms, std::function<void()> applyMode, QWidget* parent)
    : QDialog(parent), link_(link), turns_(turns), dialogs_(dialogs), clock_(clock), alarms_(alarms),
      applyMode_(std::move(applyMode)), passes_(link, turns, clock, dialogs, alarms, BoardFilesOf(folder), *this),
      wake_(turns) {
    setObjectName(QStringLiteral("frmTargetBoard"));
    setWindowTitle(QStringLiteral("Target Board Interface"));
    BuildTabs();
    BuildFaultPage();
    BuildIdentPage();
    BuildAddressPage();
    BuildClockPage();
    BuildButtons();
    LayOut();
    OrderTabs();
    ShowPage(0);
    tick_.setInterval(TickMilliseconds);
    tick_.callOnTimeout(this, [this] { wake_.Raise(); });
}

void frmTargetBoard::InitializeForm(const std::filesystem::path& programFile) {
    try {
        ShowUserProgram(ReadUserProgram(programFile));
    } catch (const RuntimeError& error) {
        ReportRuntimeError(dialogs_, "InitializeForm", error);
        ShowUserProgram({});
    }
    EnableReset(false);
    EnableSetup(false);
    EnableClock(false);
    for (QLabel* label : lblRevIdentInPLC)
        label->setEnabled(false);
    ShowGoOnline(false);
    ShowComputerClock();
    ViewActive = true;
    StartLoop();
    tick_.start();
    // Not beyond the loop: the focus also moves while the window is being taken apart.
    const auto focus =
        connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, const QWidget* to) { FocusMoved(to); });
    exec();
    disconnect(focus);
    // A program that quits ends the event loop without closing the window.
    ViewActive = false;
    tick_.stop();
    for (Task* task : {&monitor_, &check_, &closing_})
        task->Stop();
}

void frmTargetBoard::ShowUserProgram(const UserProgram& program) {
    BoardTypeIndex = program.boardType;
    passes_.SetBoardType(BoardTypeIndex);
    lblTargetBoard[IndexOf(BoardCode::CoCpuSlot)]->setVisible(HasCoCpu(BoardTypeIndex));
    lblRevIdentOnDisk->setText(Text(program.revIdentOnDisk));
    const bool known = program.revIdentOnDisk != "-";
    for (std::size_t i = 0; i < lblRevNumberOnDisk.size(); ++i)
        lblRevNumberOnDisk[i]->setText(known ? QString::number(program.revisionNumbers[i]) : QStringLiteral("-"));
}

void frmTargetBoard::StartLoop() {
    OnlineLookShown = false;
    OfflineLookShown = false;
    // Only queues the first turn; the event loop gives it, after it has shown the window.
    monitor_ = BoardMonitorLoop();
    monitor_.Start();
}

Task frmTargetBoard::BoardMonitorLoop() {
    co_await turns_.Next();
    while (ViewActive) {
        if (link_.OnlineMode() && link_.LinkFailed()) {
            link_.SetOnlineMode(false);
            OnlineLookShown = false;
            applyMode_();
        }
        ShowComputerClock();
        if (link_.OnlineMode()) {
            OfflineLookShown = false;
            cmdGoOnline->setEnabled(false);
            // The codes must not go on denying what the status bar says, nor what the board could not say clearly.
            if (!std::exchange(OnlineLookShown, true) || alarms_ != alarmsShown_ || !passes_.Reliable()) {
                co_await passes_.ShowBoardOnline();
                alarmsShown_ = alarms_;
            }
            co_await passes_.RefreshSetupFields();
            co_await turns_.Next();
        } else {
            OnlineLookShown = false;
            if (!std::exchange(OfflineLookShown, true)) ShowOfflineLook();
            co_await wake_.Raised();
        }
    }
}

void frmTargetBoard::ModeChanged() {
    // The loop may not see a mode that is gone before its next turn.
    if (!link_.OnlineMode()) OnlineLookShown = false;
    wake_.Raise();
}

void frmTargetBoard::ShowOfflineLook() {
    passes_.ShowBoardOffline();
    cmdGoOnline->setEnabled(true);
    // What cannot be written takes no entry, and no button promises what it cannot do.
    const QWidget* focus = focusWidget();
    EnableReset(false);
    EnableSetup(false);
    EnableClock(false);
    if (!focus || !focus->isEnabled()) cmdGoOnline->setFocus();
}

void frmTargetBoard::ShowComputerClock() {
    const std::chrono::local_seconds now = clock_.LocalNow();
    Show(*lblCurrTime, Text(ComputerTimeText(now)));
    Show(*lblCurrDate, Text(ComputerDateText(now)));
}

bool frmTargetBoard::Idle() const {
    // A box of the program, whoever owns it, is another modal window.
    const QWidget* modal = QApplication::activeModalWidget();
    return !link_.Busy() && (!modal || modal == this);
}

void frmTargetBoard::done(int result) {
    if (Idle()) {
        if (!CheckEntries()) return;
        ViewActive = false;
        QDialog::done(result);
        return;
    }
    ViewActive = false;
    if (!closing_.Done()) return;
    closing_ = CloseWhenIdle(result);
    closing_.Start();
}

Task frmTargetBoard::CloseWhenIdle(int result) {
    // The queue gives turns to nobody while the link is busy or a box is up.
    co_await turns_.Next();
    QDialog::done(result);
}

void frmTargetBoard::ResetFaults() {
    if (!Idle() || dialogs_.Show(ResetQuestion()) != MessageAnswer::Yes) return;
    EnableReset(false);
    passes_.ResetFaultCodes();
    // Begins with the first pass again, also in the middle of one.
    if (link_.OnlineMode() && !link_.LinkFailed()) StartLoop();
}

void frmTargetBoard::SetClock(ClockWrite write) {
    if (Idle() && CheckEntries()) (passes_.*write)();
}

void frmTargetBoard::GoOnline() {
    if (!Idle()) return;
    link_.SetOnlineMode(true);
    applyMode_();
    ModeChanged();
}

void frmTargetBoard::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) CentreOnScreen(*this);
    QDialog::showEvent(event);
}

bool frmTargetBoard::SetupWanted(std::size_t field) const {
    const QLineEdit* box = txtSetup.at(field);
    // Fields on a page behind are visible in this sense: they are up to date when the page comes up.
    return !Editing.at(field) && (field < FirstClockField ? !box->isHidden() : box->isEnabled());
}

void frmTargetBoard::EnableOnline(bool hasClock) {
    // What is left of another pass must not be taken for this board's.
    for (QLabel* label : lblRevIdentInPLC) {
        label->setText(QStringLiteral("-"));
        label->setEnabled(true);
    }
    lblRevComparison->clear();
    EnableSetup(hasClock);
    EnableClock(hasClock);
}

void frmTargetBoard::EnableSetup(bool enabled) {
    for (std::size_t i = 0; i < txtSetup.size(); ++i) {
        txtSetup[i]->setEnabled(enabled);
        updSetup[i]->setEnabled(enabled);
        lblSetupDesc[i]->setEnabled(enabled);
    }
    // Afterwards: the focus of a box that is disabled moves through the next ones.
    if (!enabled) DropEntries();
}

void frmTargetBoard::EnableClock(bool enabled) {
    for (QWidget* one :
         std::initializer_list<QWidget*>{lblTargetBoardTime, lblTargetBoardDate, cmdSetToCurrTime, cmdSetToCurrDate})
        one->setEnabled(enabled);
}

void frmTargetBoard::EnableReset(bool enabled) { cmdResetFaults->setEnabled(enabled); }

void frmTargetBoard::ShowCaption(BoardCode which, const std::string& text) {
    lblTargetBoard.at(IndexOf(which))->setText(Text(text));
    txtTargetBoard.at(IndexOf(which))->setAccessibleName(Text(text));
}

void frmTargetBoard::ShowDescription(BoardCode which, const std::string& text) {
    txtTargetBoard.at(IndexOf(which))->setPlainText(Text(text));
}

void frmTargetBoard::ShowSetup(std::size_t field, const std::string& value) {
    Keep(field, value);
    QLineEdit& box = *txtSetup.at(field);
    if (box.text() == given_.at(field)) return;
    ShowKept(field);
    if (box.hasFocus()) box.selectAll();
}

void frmTargetBoard::ShowRevision(std::size_t label, const std::string& text) {
    lblRevIdentInPLC.at(label)->setText(Text(text));
    // The first revision number is read last; half a revision would never be the one on disk.
    if (label == 1 && passes_.Reliable()) CompareRevisions();
}

void frmTargetBoard::CompareRevisions() {
    const bool onDisk = lblRevIdentOnDisk->text() != QLatin1String("-");
    bool same = lblRevIdentInPLC[0]->text() == lblRevIdentOnDisk->text();
    for (std::size_t i = 0; i < lblRevNumberOnDisk.size(); ++i)
        same = same && lblRevIdentInPLC[i + 1]->text() == lblRevNumberOnDisk[i]->text();
    lblRevComparison->setText(!onDisk ? tr("There is no user program on disk to compare with.")
                              : same  ? tr("The user program in the target board is the one on disk.")
                                      : tr("The user program in the target board is not the one on disk."));
}

void frmTargetBoard::ShowGoOnline(bool visible) { cmdGoOnline->setVisible(visible); }

} // namespace vantrel
