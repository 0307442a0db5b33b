// What keys, clicks and steps do to the entry.
#include "widgets/QtEntryField.h"

#include "platform/QtScreen.h"

#include <QHBoxLayout>
#include <QKeyEvent>

#include <utility>

namespace vantrel {

QtEntryField::QtEntryField(Rules rules, QWidget* parent) : QWidget(parent), rules_(std::move(rules)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(&box);
    row->addWidget(&arrows);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusProxy(&box);
    SelectAllOnFocus(box);
    // After the arrows' own filter, so that it hears of every key first.
    box.installEventFilter(this);
    connect(&box, &QLineEdit::textEdited, this, [this] { Editing = typed_ = true; });
}

void QtEntryField::Give(std::string value) {
    value_ = std::move(value);
    if (typed_) return;
    ShowGiven();
}

void QtEntryField::ShowGiven() {
    typed_ = false;
    const QString text = QString::fromStdString(rules_.shown(value_));
    if (box.text() == text) return;
    box.setText(text);
    if (box.hasFocus()) box.selectAll();
}

void QtEntryField::Shut() {
    if (typed_) return;
    Drop();
}

void QtEntryField::Drop() {
    ShowGiven();
    Editing = false;
    EscapePending = false;
}

void QtEntryField::Refuse() {
    ShowGiven();
    if (box.isEnabled()) box.setFocus();
    box.selectAll();
}

bool QtEntryField::eventFilter(QObject* watched, QEvent* event) {
    // A disabled box has no events of its own, but its filters hear them.
    if (watched != &box || !box.isEnabled()) return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::MouseButtonPress:
        Editing = true;
        EscapePending = false;
        break;
    case QEvent::MouseButtonRelease:
        if (!box.hasSelectedText()) box.selectAll();
        break;
    case QEvent::KeyPress:
        return Key(static_cast<QKeyEvent*>(event)->key());
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

bool QtEntryField::Key(int key) {
    if (key == Qt::Key_Escape) {
        Escape();
        return true;
    }
    EscapePending = false;
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
    habits_.entered();
    return true;
}

void QtEntryField::Escape() {
    ShowGiven();
    box.selectAll();
    EscapePending = !EscapePending;
    if (EscapePending) return;
    Editing = false;
    habits_.escaped();
}

void QtEntryField::Step(int direction) {
    if (!box.isEnabled() || !habits_.mayStep()) return;
    const std::string from = typed_ ? box.text().toStdString() : value_;
    const QString text = QString::fromStdString(rules_.stepped(from, direction));
    Editing = true;
    EscapePending = false;
    typed_ = true;
    box.setText(text);
    box.selectAll();
    habits_.stepped();
}

} // namespace vantrel
