#include "platform/QtSerialPort.h"

#include <QApplication>
#include <QBackingStore>
#include <QCursor>
#include <QEvent>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

constexpr MonotonicTime PatienceTime = 100ms;
/// A wait that the user takes for an answer of none; shorter ones are a slow line, on which every key still counts.
constexpr MonotonicTime SilenceTime = 500ms;

/// Enough for the host to deliver what it has kept.
constexpr auto LateInputTime = 80ms;

/// Swallows what was clicked and typed while the windows could not answer, and then goes: nobody means the same click
/// twice, and none of them is meant for the window that comes up next. What was meant for the modal window that waited
/// reaches it: a Cancel is a Cancel.
class LateInput final : public QObject {
public:
    explicit LateInput(QWidget* waited) : QObject(QCoreApplication::instance()), waited_(waited) {
        QCoreApplication::instance()->installEventFilter(this);
        QTimer::singleShot(LateInputTime, this, [this] { deleteLater(); });
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::KeyPress:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
            return event->spontaneous() && !BelongsToWaiting(watched);
        default:
            return false;
        }
    }

private:
    [[nodiscard]] bool BelongsToWaiting(QObject* watched) const {
        if (!waited_) return false;
        const auto* widget = qobject_cast<QWidget*>(watched);
        return widget ? widget->window() == waited_ : watched == waited_->windowHandle();
    }

    QPointer<QWidget> waited_;
};

/// Shows the wait cursor for as long as it lives.
class WaitCursor {
public:
    explicit WaitCursor(const Clock& clock) : clock_(clock), since_(clock.Now()) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
    ~WaitCursor() {
        QApplication::restoreOverrideCursor();
        if (clock_.Now() - since_ >= SilenceTime) new LateInput(modal_); // goes by itself
    }

private:
    const Clock& clock_;
    MonotonicTime since_;
    QWidget* modal_ = QApplication::activeModalWidget();
};

void RepaintWindows() {
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (!window->isVisible()) continue;
        window->repaint();
        // Children that are unchanged are not painted again, but what lay over them on the screen has gone.
        if (QBackingStore* painted = window->backingStore()) painted->flush(QRegion(window->rect()));
    }
}

} // namespace

PortWait QtSerialPort::WaitForByte(MonotonicTime deadline) {
    const MonotonicTime patient = std::min(deadline, clock_.Now() + PatienceTime);
    PortWait wait = port_.WaitForByte(patient);
    if (wait != PortWait::TimedOut || patient == deadline) return wait;
    const WaitCursor cursor(clock_);
    while (wait == PortWait::TimedOut && clock_.Now() < deadline) {
        RepaintWindows();
        wait = port_.WaitForByte(std::min(deadline, clock_.Now() + PatienceTime));
    }
    return wait;
}

} // namespace vantrel
