#include "platform/QtTurnQueue.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

const auto TurnEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

constexpr auto LookInterval = 5ms;
/// Short enough that the windows' own events come in between.
constexpr MonotonicTime VirtualStep = 50ms;

} // namespace

QtTurnQueue::QtTurnQueue(Clock& clock, std::function<bool()> mayRun, std::function<void()> onError)
    : TurnQueue(clock), mayRun_(std::move(mayRun)), onError_(std::move(onError)) {
    look_.setTimerType(Qt::PreciseTimer);
    look_.setInterval(LookInterval);
    // A task that was resumed from here and showed a box would hold up the timer for as long.
    connect(&look_, &QTimer::timeout, this, [this] { Poke(); });
}

void QtTurnQueue::Poke() {
    if (std::exchange(posted_, true)) return;
    // Below input and painting, so that a task that always has more to do starves nobody.
    QCoreApplication::postEvent(this, new QEvent(TurnEvent), Qt::LowEventPriority);
}

bool QtTurnQueue::event(QEvent* event) {
    if (event->type() != TurnEvent) return QObject::event(event);
    posted_ = false;
    // Whoever runs now may close the port.
    byteCame_.reset();
    if (RunOneSafely() || (Time().MovesOnlyBySleeping() && SleepOnWait(VirtualStep))) Poke();
    Watch();
    return true;
}

bool QtTurnQueue::RunOneSafely() {
    try {
        return RunOne();
    } catch (...) {
        onError_();
        return true;
    }
}

void QtTurnQueue::Watch() {
    const SerialPort* port = Time().MovesOnlyBySleeping() ? nullptr : WaitedFor();
    if (!port) {
        look_.stop();
        return;
    }
    if (!look_.isActive()) look_.start();
    const int descriptor = port->WatchedDescriptor();
    if (descriptor < 0) return;
    byteCame_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    connect(byteCame_.get(), &QSocketNotifier::activated, this, [this] {
        // The byte stays there until a task takes it.
        byteCame_->setEnabled(false);
        Poke();
    });
}

void QtTurnQueue::RunWithoutEvents(const Task& task, MonotonicTime longest) {
    const MonotonicTime end = Time().Now() + longest;
    while (!task.Done() && Time().Now() < end) {
        if (!RunOneSafely() && !SleepOnWait(end - Time().Now())) return;
    }
}

} // namespace vantrel
