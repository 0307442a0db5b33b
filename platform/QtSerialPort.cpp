#include "platform/QtSerialPort.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <algorithm>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

constexpr MonotonicTime PatienceTime = 100ms;

/// Enough for the host to deliver what it has kept.
constexpr auto LateInputTime = 80ms;

/// Swallows what was clicked and typed while the windows could not answer, and then goes: nobody means the same click
/// twice, and none of them is meant for the window that comes up next.
class LateInput final : public QObject {
public:
    LateInput() : QObject(QCoreApplication::instance()) {
        QCoreApplication::instance()->installEventFilter(this);
        QTimer::singleShot(LateInputTime, this, [this] { deleteLater(); });
    }
    bool eventFilter(QObject*, QEvent* event) override {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::KeyPress:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
            return event->spontaneous();
        default:
            return false;
        }
    }
};

/// Shows the wait cursor for as long as it lives.
class WaitCursor {
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
    ~WaitCursor() {
        QApplication::restoreOverrideCursor();
        new LateInput; // goes by itself
    }
};

void RepaintWindows() {
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->isVisible()) window->repaint();
    }
}

} // namespace

PortWait QtSerialPort::WaitForByte(MonotonicTime deadline) {
    const MonotonicTime patient = std::min(deadline, clock_.Now() + PatienceTime);
    PortWait wait = port_.WaitForByte(patient);
    if (wait != PortWait::TimedOut || patient == deadline) return wait;
    const WaitCursor cursor;
    while (wait == PortWait::TimedOut && clock_.Now() < deadline) {
        RepaintWindows();
        wait = port_.WaitForByte(std::min(deadline, clock_.Now() + PatienceTime));
    }
    return wait;
}

} // namespace vantrel
