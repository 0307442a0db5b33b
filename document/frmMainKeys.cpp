// The sequence editor's keys, clicks and focus: what they mean to the entry box, and what must not happen before it has
// been validated.
#include "document/frmMain.h"

#include <QApplication>
#include <QClipboard>
#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

namespace vantrel {

namespace {

/// The characters whose codes are those of the Up and Down keys.
bool HasArrowCode(QChar character) { return character == QLatin1Char('&') || character == QLatin1Char('('); }

/// A key that types a character, and is no shortcut. AltGr counts as Ctrl+Alt on some hosts.
bool Types(const QKeyEvent& key) {
    const Qt::KeyboardModifiers held = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (held && held != (Qt::ControlModifier | Qt::AltModifier)) return false;
    return !key.text().isEmpty() && key.text().front().isPrint();
}

bool Navigates(const QKeyEvent& key) {
    switch (key.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_F2:
        return true;
    default:
        return false;
    }
}

} // namespace

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress;
    bool ends = false;
    if (watched == &txtEntry) {
        ends = EntryOpen() && EntryEvent(*event);
    } else if (watched == &tbsComm) {
        ends = TabsEvent(*event);
    } else if (watched == &cmdDefault) {
        ends = isKey && DefaultButtonKey(static_cast<QKeyEvent&>(*event));
    } else if (watched == &VisibleGrid()) {
        ends = GridEvent(*event);
    } else {
        // The cells or the headings of one of the grids.
        ends = CellsEvent(*event);
    }
    return ends || QWidget::eventFilter(watched, event);
}

bool frmMain::EntryEvent(QEvent& event) {
    switch (event.type()) {
    case QEvent::KeyPress:
        return EntryKey(static_cast<QKeyEvent&>(event));
    case QEvent::InputMethod:
        ComeIntoSight(static_cast<QInputMethodEvent&>(event).commitString());
        return false;
    case QEvent::FocusIn:
        // Back from a menu: what the user has not begun to change is replaced by typing, as before.
        if (!EntryChanged) txtEntry.selectAll();
        return false;
    case QEvent::FocusOut:
        return EntryLosesFocus(static_cast<QFocusEvent&>(event).reason());
    default:
        return false;
    }
}

bool frmMain::EntryKey(QKeyEvent& key) {
    if (entry_ == EntryState::OnItsWay) {
        KeyMeanwhile(key);
        return true;
    }
    if (KeyForGrid(key)) return true;
    switch (key.key()) {
    case Qt::Key_Up:
        EndBy(EntryEnd::Up);
        return true;
    case Qt::Key_Down:
        EndBy(EntryEnd::Down);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        EndBy(EntryEnd::Enter);
        return true;
    case Qt::Key_Escape:
        EntryEscape();
        return true;
    case Qt::Key_Tab:
        EndBy(EntryEnd::NextCell);
        return true;
    case Qt::Key_Backtab:
        EndBy(EntryEnd::CellBefore);
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        ScrollPage(key.key() == Qt::Key_PageDown);
        return true;
    default:
        EntryChanged = true;
        return CharacterTyped(key.text());
    }
}

bool frmMain::KeyForGrid(QKeyEvent& key) {
    const bool arrow =
        key.key() == Qt::Key_Up || key.key() == Qt::Key_Down || key.key() == Qt::Key_Left || key.key() == Qt::Key_Right;
    // Not EntryChanged, which the Shift key itself has set.
    if (arrow && key.modifiers() == Qt::ShiftModifier && txtEntry.text() == SavedCellText) {
        CloseEntryBox();
        VisibleGrid().setFocus();
        QCoreApplication::sendEvent(&VisibleGrid(), &key);
        return true;
    }
    if (txtEntry.text() == SavedCellText && key.matches(QKeySequence::Undo) && !txtEntry.isUndoAvailable()) {
        Undo();
        return true;
    }
    if (!key.matches(QKeySequence::Paste)) return false;
    const QString copied = QApplication::clipboard()->text().trimmed();
    if (!copied.contains(QLatin1Char('\t')) && !copied.contains(QLatin1Char('\n'))) return false;
    Paste();
    return true;
}

void frmMain::KeyMeanwhile(const QKeyEvent& key) {
    if (key.key() == Qt::Key_Escape) {
        ShutByEscape();
    } else if (key.key() == Qt::Key_PageUp || key.key() == Qt::Key_PageDown) {
        ScrollPage(key.key() == Qt::Key_PageDown);
    } else if (Types(key) || !typedAhead_.empty()) {
        // For the cell that comes next. Enter once more is not meant for it.
        typedAhead_.emplace_back(key.clone());
    }
}

void frmMain::ComeIntoSight(const QString& text) {
    // Nobody types blindly: the cell comes back into sight.
    if (!text.isEmpty()) VisibleGrid().scrollTo(VisibleGrid().currentIndex());
}

bool frmMain::CharacterTyped(const QString& text) {
    ComeIntoSight(text);
    if (text.isEmpty() || !HasArrowCode(text.back())) return false;
    // Not by way of the box, for which everything typed is a change.
    txtEntry.insert(text);
    EntryChanged = false;
    return true;
}

void frmMain::EntryEscape() {
    if (!EntryChanged) {
        ShutByEscape();
        return;
    }
    txtEntry.setText(SavedCellText);
    SetEntry(EntryState::Open);
    EntryChanged = false;
    txtEntry.selectAll();
}

void frmMain::ShutByEscape() {
    CloseEntryBox();
    VisibleGrid().SetCurrentCell(0, 0);
    cmdDefault.setFocus();
}

void frmMain::LeaveGrid(bool forward) {
    if (!FinishEntry()) return;
    VisibleGrid().setFocus(Qt::ActiveWindowFocusReason);
    focusNextPrevChild(forward);
}

void frmMain::ScrollPage(bool down) {
    VisibleGrid().verticalScrollBar()->triggerAction(down ? QAbstractSlider::SliderPageStepAdd
                                                          : QAbstractSlider::SliderPageStepSub);
}

bool frmMain::EntryLosesFocus(Qt::FocusReason reason) {
    // To another program, a message box or a menu it goes for a while only, and while the child window is maximised.
    const QWidget* next = QApplication::focusWidget();
    const bool forAWhile = reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
                           reason == Qt::MenuBarFocusReason || !next || next->window() != window() || !isVisible();
    if (forAWhile) return false;
    // The box that keeps the focus never lost it: it would drop its selection.
    if (!next->isAncestorOf(&txtEntry)) return !FinishEntry();
    // A click on the empty parts of a window.
    txtEntry.setFocus();
    return true;
}

bool frmMain::GridEvent(QEvent& event) {
    if (event.type() == QEvent::KeyPress) return GridKey(static_cast<QKeyEvent&>(event));
    if (event.type() == QEvent::FocusIn && VisibleGrid().CurrentRow() == 0) {
        const Qt::FocusReason reason = static_cast<QFocusEvent&>(event).reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::OtherFocusReason)
            SelectSequenceInView();
    }
    return false;
}

bool frmMain::GridKey(QKeyEvent& key) {
    if (EntryOpen()) {
        // Left over by the box; it must not move the current cell from under it.
        key.ignore();
        return true;
    }
    if (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) {
        GridTab(key.key() == Qt::Key_Tab);
        return true;
    }
    const bool opens = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter || key.key() == Qt::Key_F2;
    if (!opens && !Types(key)) {
        // The keyboard starts at the sequence in view.
        if (VisibleGrid().CurrentRow() == 0 && Navigates(key)) SelectSequenceInView();
        return false;
    }
    if (opens && key.key() != Qt::Key_F2) ChooseSequence();
    OpenEntryBox();
    if (EntryOpen() && !opens) QCoreApplication::sendEvent(&txtEntry, &key);
    return true;
}

void frmMain::GridTab(bool forward) {
    const bool nowhere = VisibleGrid().CurrentRow() == 0;
    const auto cell = CellBeside(forward ? 1 : -1);
    if (nowhere && forward) {
        SelectSequenceInView();
    } else if (nowhere || !cell) {
        LeaveGrid(forward);
    } else {
        VisibleGrid().SetCurrentCell(cell->row, cell->column);
    }
}

bool frmMain::CellsEvent(QEvent& event) {
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        pressRefused_ = !FinishEntry();
        if (!pressRefused_) VisibleGrid().setFocus(Qt::MouseFocusReason);
        return pressRefused_;
    case QEvent::MouseMove:
        return pressRefused_ && static_cast<QMouseEvent&>(event).buttons() != Qt::NoButton;
    case QEvent::MouseButtonRelease:
        return std::exchange(pressRefused_, false);
    default:
        return false;
    }
}

void frmMain::CellClicked(QtFormatGrid& grid) {
    // A range has been selected to be copied, not to be edited.
    if (!EntryOpen() && &grid == &VisibleGrid() && grid.selectionModel()->selectedIndexes().size() == 1) OpenEntryBox();
}

void frmMain::ChooseSequence() {
    if (CurrentTab == EditorTab::CommStatus && VisibleGrid().CurrentRow() > 0 && onSequenceChosen_) onSequenceChosen_();
}

bool frmMain::TabsEvent(QEvent& event) {
    if (!EntryOpen()) return false;
    switch (event.type()) {
    case QEvent::MouseButtonPress: {
        const int tab = tbsComm.tabAt(static_cast<QMouseEvent&>(event).position().toPoint());
        return tab >= 0 && tab != tbsComm.currentIndex() && !FinishEntry();
    }
    case QEvent::Wheel:
    case QEvent::Shortcut:
        return !FinishEntry();
    default:
        return false;
    }
}

bool frmMain::DefaultButtonKey(QKeyEvent& key) {
    if (!Navigates(key) && !key.matches(QKeySequence::Copy)) return false;
    VisibleGrid().setFocus();
    QCoreApplication::sendEvent(&VisibleGrid(), &key);
    return true;
}

} // namespace vantrel
