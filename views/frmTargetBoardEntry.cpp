// The entry of set-up words in the target board view: when the text in a box is taken, and what stands in its way.
#include "views/frmTargetBoard.h"

#include <QApplication>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QTabBar>

#include <algorithm>
#include <utility>

namespace vantrel {

bool frmTargetBoard::eventFilter(QObject* watched, QEvent* event) {
    const auto found = std::find(txtSetup.begin(), txtSetup.end(), watched);
    if (found == txtSetup.end()) return QDialog::eventFilter(watched, event);
    const auto index = static_cast<std::size_t>(found - txtSetup.begin());
    // A disabled box has no events of its own, but its filters hear them.
    if (!txtSetup[index]->isEnabled()) return QDialog::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::MouseButtonPress:
        Editing[index] = true;
        EscapePending = false;
        break;
    case QEvent::MouseButtonRelease:
        if (!txtSetup[index]->hasSelectedText()) txtSetup[index]->selectAll();
        break;
    case QEvent::KeyPress:
        return EntryKey(index, static_cast<QKeyEvent*>(event)->key());
    default:
        break;
    }
    return QDialog::eventFilter(watched, event);
}

bool frmTargetBoard::EntryKey(std::size_t index, int key) {
    if (key == Qt::Key_Escape) {
        Escape(index);
        return true;
    }
    EscapePending = false;
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
    focusNextChild();
    return true;
}

void frmTargetBoard::Escape(std::size_t index) {
    ShowKept(index);
    txtSetup[index]->selectAll();
    if (EscapePending) tabTargetBoard->tabBar()->setFocus();
    EscapePending = !EscapePending;
}

void frmTargetBoard::StepField(std::size_t index, int direction) {
    // A held arrow goes on stepping while the link's warning is up.
    QLineEdit& box = *txtSetup[index];
    if (!Idle() || !box.isEnabled()) return;
    // The step is taken when the box is left, so it has to be entered.
    box.setFocus();
    Editing[index] = true;
    EscapePending = false;
    const std::string from = Entered(index) ? box.text().toStdString() : kept_[index];
    box.setText(QString::fromStdString(SteppedSetup(index, from, direction)));
    typed_[index] = true;
    box.selectAll();
}

void frmTargetBoard::FocusMoved(const QWidget* to) {
    // A message box and another program are no leaving of the box.
    if (!ViewActive || !to || to->window() != this || !EntryOpen()) return;
    LookAtEntries();
}

void frmTargetBoard::LookAtEntries() {
    // The looking itself moves the focus; it must not replace the task that it runs in.
    lookAgain_ = true;
    if (!check_.Done()) return;
    check_ = CheckWhenIdle();
    check_.Start();
}

Task frmTargetBoard::CheckWhenIdle() {
    while (lookAgain_) {
        // The refusal must not come up in the middle of the click or key that moves the focus.
        co_await turns_.Next();
        lookAgain_ = false;
        if (const auto page = std::exchange(wantedPage_, std::nullopt)) {
            if (CheckEntries()) ShowPage(*page);
        } else {
            CheckLeftEntries();
        }
    }
}

void frmTargetBoard::CheckLeftEntries() {
    for (std::size_t i = 0; i < txtSetup.size(); ++i) {
        if (Editing[i] && focusWidget() != txtSetup[i] && !CheckEntry(i)) return;
    }
}

bool frmTargetBoard::EntryOpen() const { return std::find(Editing.begin(), Editing.end(), true) != Editing.end(); }

bool frmTargetBoard::CheckEntries() {
    for (std::size_t i = 0; i < txtSetup.size(); ++i) {
        if (Editing[i] && !CheckEntry(i)) return false;
    }
    return true;
}

bool frmTargetBoard::CheckEntry(std::size_t index) {
    if (Entered(index) && txtSetup[index]->isEnabled()) {
        const auto value = SetupEntry(index, txtSetup[index]->text().toStdString());
        if (!value) {
            dialogs_.Show(SetupRefusal(index));
            BackToEntry(index);
            return false;
        }
        // What did not reach the board is not left standing as if it had.
        if (passes_.WriteSetup(index, *value) != WriteOutcome::LinkFailed) Keep(index, *value);
    }
    ShowKept(index);
    Editing[index] = false;
    return true;
}

void frmTargetBoard::BackToEntry(std::size_t index) {
    QLineEdit& box = *txtSetup[index];
    ShowKept(index);
    if (box.isEnabled()) box.setFocus();
    box.selectAll();
}

void frmTargetBoard::Keep(std::size_t index, const std::string& value) {
    kept_[index] = value;
    given_[index] = QString::fromStdString(TwoDigits(value));
    const bool cut = value.size() > 2;
    const QString whole = cut ? tr("The whole value is %1.").arg(QString::fromStdString(value)) : QString();
    txtSetup[index]->setToolTip(whole);
    txtSetup[index]->setAccessibleDescription(whole);
}

void frmTargetBoard::ShowKept(std::size_t index) {
    if (txtSetup[index]->text() != given_[index]) txtSetup[index]->setText(given_[index]);
    typed_[index] = false;
}

bool frmTargetBoard::Entered(std::size_t index) const {
    return typed_[index] || txtSetup[index]->text() != given_[index];
}

void frmTargetBoard::DropEntries() {
    check_.Stop();
    wantedPage_.reset();
    for (std::size_t i = 0; i < txtSetup.size(); ++i) {
        if (Editing[i]) ShowKept(i);
        Editing[i] = false;
    }
}

void frmTargetBoard::PageChanged(int index) {
    if (!ViewActive || !EntryOpen()) {
        ShowPage(index);
        return;
    }
    // Stays before the entry until it is taken.
    const QSignalBlocker quiet(tabTargetBoard);
    tabTargetBoard->setCurrentIndex(page_);
    wantedPage_ = index;
    LookAtEntries();
}

void frmTargetBoard::ShowPage(int index) {
    page_ = index;
    const QSignalBlocker quiet(tabTargetBoard);
    tabTargetBoard->setCurrentIndex(index);
    // Not into the first box of the page: nobody has asked to edit it.
    tabTargetBoard->tabBar()->setFocus();
}

} // namespace vantrel
