// The monitor loop, the two looks, and the entry of the sequence number.
#include "views/frmCommInterface.h"

#include "link/TargetMap.h"

#include <QApplication>
#include <QKeyEvent>

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

constexpr QColor OnlineColor(0, 0, 255);
/// The same blue where the ground is dark.
constexpr QColor OnlineColorOnDark(122, 170, 255);

QString Text(const std::string& text) { return QString::fromStdString(text); }

} // namespace

frmCommInterface::frmCommInterface(Document& document, RSComm& link, TurnQueue& turns, Dialogs& dialogs,
                                   std::int16_t& selectedSequence, std::function<void()> applyMode, QWidget* parent)
    : QDialog(parent), link_(link), turns_(turns), dialogs_(dialogs), SelectedSequence(selectedSequence),
      applyMode_(std::move(applyMode)), passes_(document.CurrentConfiguration, link, turns, selectedSequence, *this),
      modeChanged_(turns) {
    setObjectName(QStringLiteral("frmCommInterface"));
    setWindowTitle(QStringLiteral("Communication Interface"));
    SelectedSequence = std::clamp<std::int16_t>(SelectedSequence, 0, HighestSequence);
    SettingsBase = SettingsBaseOf(SelectedSequence);
    BuildEntry();
    BuildLabels();
    LayOutGrids();
    BuildButtons();
    LayOutWindow();
    OrderTabs();
    txtSetup.setText(QString::number(SelectedSequence));
    connect(qApp, &QApplication::focusChanged, this, &frmCommInterface::FocusMoved);
}

frmCommInterface::~frmCommInterface() {
    // The window loses the focus while it goes, when this class is no longer there to hear of it.
    disconnect(qApp, nullptr, this, nullptr);
}

void frmCommInterface::InitializeForm() {
    ViewActive = true;
    if (link_.OnlineMode()) {
        ShowOnlineLook();
    } else {
        ShowOfflineLook();
        // The description at least needs no board.
        StartSettings();
    }
    // Only queues the first turn; the loop inside exec() gives it, after it has shown the window.
    monitor_ = MonitorLoop();
    monitor_.Start();
    PlaceOnScreen();
    exec();
    // A program that quits ends the loop without closing the window.
    ViewActive = false;
    for (Task* task : {&monitor_, &settingsPass_, &check_, &closing_})
        task->Stop();
}

Task frmCommInterface::MonitorLoop() {
    while (ViewActive) {
        co_await turns_.Next();
        if (!ViewActive) break;
        // Whoever else has noticed the failure may have put the link OFFLINE already.
        if (link_.LinkFailed() && (link_.OnlineMode() || OnlineLookShown)) {
            link_.SetOnlineMode(false);
            OnlineLookShown = false;
            applyMode_();
        }
        if (link_.OnlineMode()) {
            if (!OnlineLookShown) ShowOnlineLook();
            if (isMinimized()) {
                co_await modeChanged_.Raised();
            } else {
                co_await passes_.RefreshStatusAndData();
            }
        } else {
            if (!OfflineLookShown) ShowOfflineLook();
            co_await modeChanged_.Raised();
        }
    }
}

void frmCommInterface::ShowOnlineLook() {
    OnlineLookShown = true;
    OfflineLookShown = false;
    ColourGrids();
    txtSetup.setEnabled(true);
    updSetup.setEnabled(true);
    // Whoever pressed the button goes on with the number.
    if (!focusWidget() || focusWidget() == &cmdGoOnline) txtSetup.setFocus();
    cmdGoOnline.hide();
    lblSetting[2].setText(QStringLiteral("-"));
    StartSettings();
}

void frmCommInterface::ShowOfflineLook() {
    OfflineLookShown = true;
    OnlineLookShown = false;
    ColourGrids();
    settingsPass_.Stop();
    // An open entry is not taken: the number stays that of the sequence that the grids show.
    check_.Stop();
    Editing = false;
    txtSetup.setText(QString::number(SelectedSequence));
    cmdGoOnline.show();
    const QWidget* focus = focusWidget();
    if (!focus || focus == &txtSetup || focus == &cmdDefault) cmdGoOnline.setFocus();
    txtSetup.setEnabled(false);
    updSetup.setEnabled(false);
    lblSetting[2].setText(QStringLiteral("Offline"));
}

void frmCommInterface::ColourGrids() {
    // Only what differs from the host's own colours is set.
    QPalette colours;
    if (OnlineLookShown) {
        const bool dark = palette().color(QPalette::Base).lightness() < 128;
        colours.setColor(QPalette::Text, dark ? OnlineColorOnDark : OnlineColor);
    } else {
        const QColor grey = palette().color(QPalette::Disabled, QPalette::Text);
        colours.setColor(QPalette::Text, grey);
        colours.setColor(QPalette::ButtonText, grey);
    }
    for (QtFormatGrid& grid : fgSettings)
        grid.setPalette(colours);
}

void frmCommInterface::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    // Minimised, the monitor sleeps.
    if (event->type() == QEvent::WindowStateChange) modeChanged_.Raise();
    if (event->type() == QEvent::PaletteChange && (OnlineLookShown || OfflineLookShown)) ColourGrids();
}

bool frmCommInterface::Idle() const {
    // A box of the program, whoever owns it, is another modal window.
    const QWidget* modal = QApplication::activeModalWidget();
    return !link_.Busy() && (!modal || modal == this);
}

void frmCommInterface::StartSettings() {
    settingsPass_ = passes_.RefreshSettings(SettingsBase);
    settingsPass_.Start();
}

void frmCommInterface::GoOnline() {
    if (!Idle()) return;
    link_.SetOnlineMode(true);
    applyMode_();
    ModeChanged();
}

void frmCommInterface::Ok() {
    check_.Stop();
    if (!Editing || CheckEntry()) accept();
}

void frmCommInterface::done(int result) {
    ViewActive = false;
    if (Idle()) {
        QDialog::done(result);
        return;
    }
    if (!closing_.Done()) return;
    closing_ = CloseWhenIdle(result);
    closing_.Start();
}

Task frmCommInterface::CloseWhenIdle(int result) {
    // The queue gives turns to nobody while the link is busy or a box is up.
    co_await turns_.Next();
    QDialog::done(result);
}

bool frmCommInterface::eventFilter(QObject* watched, QEvent* event) {
    // A disabled box has no events of its own, but its filters hear them.
    if (watched != &txtSetup || !txtSetup.isEnabled()) return QDialog::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::MouseButtonPress:
        BeginEntry();
        break;
    case QEvent::MouseButtonRelease:
        if (!txtSetup.hasSelectedText()) txtSetup.selectAll();
        break;
    case QEvent::KeyPress:
        return EntryKey(static_cast<QKeyEvent*>(event)->key());
    default:
        break;
    }
    return QDialog::eventFilter(watched, event);
}

void frmCommInterface::BeginEntry() {
    Editing = true;
    EscapePending = false;
    SavedEntry = SelectedSequence;
}

bool frmCommInterface::EntryKey(int key) {
    if (key == Qt::Key_Escape) {
        Escape();
        return true;
    }
    EscapePending = false;
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
    cmdDefault.setFocus();
    return true;
}

void frmCommInterface::Escape() {
    txtSetup.setText(QString::number(SavedEntry));
    if (EscapePending) {
        EscapePending = false;
        Editing = false;
        cmdDefault.setFocus();
    } else {
        EscapePending = true;
        txtSetup.selectAll();
    }
}

void frmCommInterface::FocusMoved(const QWidget* from, const QWidget* to) {
    // A message box and another program are no leaving of the box.
    if (!ViewActive || from != &txtSetup || !to || to->window() != this) return;
    check_ = CheckWhenIdle();
    check_.Start();
}

Task frmCommInterface::CheckWhenIdle() {
    // The refusal must not come up in the middle of the click or key that moves the focus.
    co_await turns_.Next();
    if (focusWidget() == &txtSetup || !txtSetup.isEnabled()) co_return;
    (void)CheckEntry();
}

bool frmCommInterface::CheckEntry() {
    const auto sequence = SequenceEntry(txtSetup.text().toStdString());
    if (sequence) {
        TakeSequence(*sequence);
        return true;
    }
    dialogs_.Show({.title = "Sequence Number",
                   .text = "Only a Number Between 0 and " + std::to_string(HighestSequence) + " can be Entered",
                   .icon = MessageIcon::Information,
                   .buttons = MessageButtons::Ok});
    txtSetup.setText(QString::number(SavedEntry));
    if (txtSetup.isEnabled()) txtSetup.setFocus();
    txtSetup.selectAll();
    return false;
}

void frmCommInterface::TakeSequence(std::int16_t sequence) {
    Editing = false;
    if (SelectedSequence != sequence) ClearData();
    SelectedSequence = sequence;
    SettingsBase = SettingsBaseOf(sequence);
    txtSetup.setText(QString::number(sequence));
    if (link_.OnlineMode()) StartSettings();
}

void frmCommInterface::ClearData() {
    // Another sequence's words must not stand beside this one's number, however short.
    lblSetting[2].setText(QStringLiteral("-"));
    for (int row = 1; row <= DataWordCount; ++row) {
        for (const int column : {1, 2})
            fgSettings[2].SetText(row, column, {});
    }
}

void frmCommInterface::Step(int direction) {
    // A held arrow goes on stepping while the link's warning is up.
    if (!Idle()) return;
    const std::int16_t stepped = SteppedSequence(txtSetup.text().toStdString(), direction, SelectedSequence);
    EscapePending = false;
    txtSetup.setText(QString::number(stepped));
    cmdDefault.setFocus();
    // The number is taken here and now.
    check_.Stop();
    if (stepped != SelectedSequence) TakeSequence(stepped);
    Editing = false;
}

bool frmCommInterface::RowVisible(int row) const { return fgSettings[2].VisibleRows().Contains(row); }

void frmCommInterface::ShowDescription(const std::string& text) {
    lblSetting[1].setText(Text(text));
    lblSetting[1].setToolTip(Text(text));
}

void frmCommInterface::ShowNodeNumber(const std::string& text) { lblSetting[0].setText(Text(text)); }

void frmCommInterface::ShowSetting(SettingsGrid grid, int row, const std::string& text) {
    fgSettings.at(static_cast<std::size_t>(grid)).SetText(row, 1, Text(text));
}

void frmCommInterface::ShowStatus(const std::string& text) { lblSetting[2].setText(Text(text)); }

void frmCommInterface::ShowDataWord(int row, DataDirection column, const std::string& text) {
    fgSettings[2].SetText(row, static_cast<int>(column), Text(text));
}

} // namespace vantrel
