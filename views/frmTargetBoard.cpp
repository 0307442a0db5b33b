// The target board view's passes, its two looks, and the commands of its buttons.
#include "views/frmTargetBoard.h"

#include "platform/QtScreen.h"
#include "platform/QtText.h"
#include "platform/RuntimeError.h"

#include <QShowEvent>

#include <initializer_list>
#include <utility>

namespace vantrel {

namespace {

/// Often enough that no second of the computer's clock is skipped.
constexpr int TickMilliseconds = 200;

/// Texts that have not changed are left alone, so that a selection or a reader in them is left in peace.
void Show(QLabel& label, const QString& text) {
    if (label.text() != text) label.setText(text);
}

} // namespace

frmTargetBoard::frmTargetBoard(const ProgramFolder& folder, RSComm& link, TurnQueue& turns, Dialogs& dialogs,
                               Clock& clock, AlarmFlags& alarms, std::function<void()> applyMode, QWidget* parent)
    : frmLiveView(link, turns, dialogs, clock, std::move(applyMode), parent),
      passes_(link, turns, clock, dialogs, alarms, BoardFilesOf(folder), *this) {
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
    tick_.setObjectName(QStringLiteral("tick"));
    tick_.setInterval(TickMilliseconds);
    tick_.callOnTimeout(this, [this] { ShowComputerClock(); });
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
    tick_.start();
    RunModal();
    tick_.stop();
    for (Task& command : commands_)
        command.Stop();
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

void frmTargetBoard::ShowOnlineLook() { firstPass_ = true; }

Task frmTargetBoard::Refresh() {
    if (std::exchange(firstPass_, false) || passes_.Outdated()) {
        const bool afterReset = std::exchange(afterReset_, false);
        co_await passes_.ShowBoardOnline();
        if (afterReset && passes_.AnyCode() && !link_.LinkFailed()) dialogs_.Show(CodesAfterReset());
    } else {
        co_await passes_.RefreshCodes();
    }
    co_await passes_.RefreshSetupFields();
    ShowClockOff();
    co_await turns_.Next();
}

void frmTargetBoard::ShowOfflineLook() {
    passes_.ShowBoardOffline();
    // What cannot be written takes no entry, and no button promises what it cannot do.
    const QWidget* focus = focusWidget();
    EnableReset(false);
    EnableSetup(false);
    EnableClock(false);
    ShowClockOff();
    if (!focus || !focus->isEnabled()) cmdGoOnline.setFocus();
}

void frmTargetBoard::ShowComputerClock() {
    const std::chrono::local_seconds now = clock_.LocalNow();
    Show(*lblCurrTime, Text(ComputerTimeText(now)));
    Show(*lblCurrDate, Text(ComputerDateText(now)));
}

void frmTargetBoard::ShowClockOff() {
    const bool known = OnlineLookShown && HasBoardClock(BoardTypeIndex);
    Show(*lblClockOff, known ? tr("The board's clock: %1.").arg(Text(passes_.ComparedClock().Text())) : QString());
}

void frmTargetBoard::Start(Command which, Task command) {
    Task& running = commands_.at(static_cast<std::size_t>(which));
    if (!running.Done()) return;
    running = std::move(command);
    running.Start();
}

void frmTargetBoard::ResetFaults() {
    if (!Idle() || dialogs_.Show(ResetQuestion()) != MessageAnswer::Yes) return;
    Start(Command::Reset, Reset());
}

Task frmTargetBoard::Reset() {
    const Writing writing(*this);
    const WriteOutcome outcome = co_await passes_.ResetFaultCodes();
    if (outcome == WriteOutcome::NotConfirmed) dialogs_.Show(ResetNotConfirmed());
    if (outcome == WriteOutcome::LinkFailed)
        dialogs_.Show(WriteCutOff("Reset Fault Codes", "the reset of all fault and error codes"));
    firstPass_ = true;
    afterReset_ = outcome == WriteOutcome::Written;
}

void frmTargetBoard::SetClock(Command which, ClockWrite write) {
    if (Idle()) AfterEntries([this, which, write] { Start(which, WriteClock(which, write)); });
}

Task frmTargetBoard::WriteClock(Command which, ClockWrite write) {
    const Writing writing(*this);
    const WriteOutcome outcome = co_await (passes_.*write)();
    if (outcome == WriteOutcome::NotConfirmed)
        dialogs_.Show(ClockNotConfirmed(which == Command::Time ? "Time" : "Date"));
    if (outcome == WriteOutcome::LinkFailed) dialogs_.Show(WriteCutOff("Set to Current Time and Date", "all of it"));
}

void frmTargetBoard::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) CentreOnScreen(*this);
    QDialog::showEvent(event);
}

bool frmTargetBoard::SetupWanted(std::size_t field) const {
    const SetupControls& controls = Setup.at(field);
    // Fields on a page behind are visible in this sense: they are up to date when the page comes up.
    const bool there = field < FirstClockField ? !controls.entry->isHidden() : controls.txtSetup->isEnabled();
    return there && !controls.entry->Editing;
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
    for (const SetupControls& controls : Setup) {
        controls.entry->setEnabled(enabled);
        controls.lblSetupDesc->setEnabled(enabled);
        controls.lblSetupMark->setEnabled(enabled);
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
    Show(*lblTargetBoard.at(IndexOf(which)), Text(text));
    txtTargetBoard.at(IndexOf(which))->setAccessibleName(Text(text));
}

void frmTargetBoard::ShowDescription(BoardCode which, const std::string& text) {
    QPlainTextEdit& box = *txtTargetBoard.at(IndexOf(which));
    if (box.toPlainText() != Text(text)) box.setPlainText(Text(text));
}

void frmTargetBoard::ShowSetup(std::size_t field, const std::string& value) {
    const SetupControls& controls = Setup.at(field);
    const QString mark = Text(SetupMark(field, value));
    controls.entry->Give(value);
    Show(*controls.lblSetupMark, mark);
    controls.txtSetup->setAccessibleDescription(mark);
}

void frmTargetBoard::ShowRevision(std::size_t label, const std::string& text) {
    lblRevIdentInPLC.at(label)->setText(Text(text));
    // The first revision number is read last; half a revision would never be the one on disk.
    if (label == 1 && passes_.RevisionKnown()) CompareRevisions();
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

void frmTargetBoard::ShowGoOnline(bool visible) { cmdGoOnline.setVisible(visible); }

} // namespace vantrel
