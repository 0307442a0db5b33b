// Steps by button, by key and by wheel.
#include "widgets/QtUpDown.h"

#include <QKeyEvent>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <utility>

namespace vantrel {

QtUpDown::QtUpDown(QLineEdit& box, std::function<void(int)> step, QWidget* parent)
    : QWidget(parent), step_(std::move(step)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    up = AddButton(Qt::UpArrow, 1, tr("Up"));
    down = AddButton(Qt::DownArrow, -1, tr("Down"));
    setFixedHeight(box.sizeHint().height());
    setFixedWidth(box.sizeHint().height() * 3 / 4);
    box.installEventFilter(this);
}

QToolButton* QtUpDown::AddButton(Qt::ArrowType arrow, int direction, const QString& name) {
    auto* button = new QToolButton(this);
    button->setArrowType(arrow);
    button->setAccessibleName(name);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    layout()->addWidget(button);
    connect(button, &QToolButton::clicked, this, [this, direction] { step_(direction); });
    return button;
}

bool QtUpDown::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        boxFocused_ = event->type() == QEvent::FocusIn;
    // A disabled box has no events of its own, but its filters hear them.
    if (!isEnabled() || !static_cast<const QWidget*>(watched)->isEnabled()) return QWidget::eventFilter(watched, event);
    int direction = 0;
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        direction = key == Qt::Key_Up ? 1 : key == Qt::Key_Down ? -1 : 0;
    } else if (event->type() == QEvent::Wheel && boxFocused_) {
        const int turned = static_cast<QWheelEvent*>(event)->angleDelta().y();
        direction = turned > 0 ? 1 : turned < 0 ? -1 : 0;
    }
    if (direction == 0) return QWidget::eventFilter(watched, event);
    step_(direction);
    return true;
}

} // namespace vantrel
