// The turns of Qt's event loop.
#pragma once

#include "platform/TurnQueue.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <memory>

namespace vantrel {

/// One task an event: between two of them the windows get everything that waits for them. While a task is suspended on
/// a port, the port is looked at every 5 ms, and at once where its host has something to watch; nothing is done
/// otherwise. On a clock that moves only by sleeping the queue sleeps on the port, a short step an event.
class QtTurnQueue final : public TurnQueue, private QObject {
public:
    /// `mayRun`: false while nobody is given a turn (a box of the program is up). `onError`: gets what left a root
    /// task, from inside a catch clause.
    QtTurnQueue(Clock& clock, std::function<bool()> mayRun, std::function<void()> onError);

    /// Looks again whether a turn may be given; call when what `mayRun` looks at has changed.
    void Poke();

    /// Gives turns without the event loop until `task`, which has been started, has ended; at most so long. For the end
    /// of the program.
    void RunWithoutEvents(const Task& task, MonotonicTime longest);

private:
    void Added() override { Poke(); }
    [[nodiscard]] bool MayRun() const override { return mayRun_(); }
    bool event(QEvent* event) override;
    bool RunOneSafely();
    void Watch();

    std::function<bool()> mayRun_;
    std::function<void()> onError_;
    QTimer look_; ///< Runs while a task is suspended on a port.
    std::unique_ptr<QSocketNotifier> byteCame_;
    bool posted_ = false;
};

} // namespace vantrel
