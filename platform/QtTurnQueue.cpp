#include "platform/QtTurnQueue.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace vantrel {

namespace {

const auto TurnEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

} // namespace

QtTurnQueue::QtTurnQueue(std::function<bool()> mayRun, std::function<void()> onError)
    : mayRun_(std::move(mayRun)), onError_(std::move(onError)) {}

void QtTurnQueue::Poke() {
    if (posted_ || Waiting() == 0) return;
    posted_ = true;
    // Below input and painting, so that a task that always has more to do starves nobody.
    QCoreApplication::postEvent(this, new QEvent(TurnEvent), Qt::LowEventPriority);
}

bool QtTurnQueue::event(QEvent* event) {
    if (event->type() != TurnEvent) return QObject::event(event);
    posted_ = false;
    if (!mayRun_()) return true;
    try {
        RunOne();
    } catch (...) {
        onError_();
    }
    Poke();
    return true;
}

} // namespace vantrel
