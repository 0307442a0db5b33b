// The turns of Qt's event loop.
#pragma once

#include "platform/TurnQueue.h"

#include <QObject>

#include <functional>

namespace vantrel {

/// One turn an event: between two turns the windows get everything that waits for them.
class QtTurnQueue final : public TurnQueue, private QObject {
public:
    /// `mayRun`: false while nobody may be resumed (the link is busy, a box of its own is up). `onError`: gets what
    /// left a root task, from inside a catch clause.
    QtTurnQueue(std::function<bool()> mayRun, std::function<void()> onError);

    /// Looks again whether a turn may run; call when what `mayRun` looks at has changed.
    void Poke();

private:
    void TurnAdded() override { Poke(); }
    bool event(QEvent* event) override;

    std::function<bool()> mayRun_;
    std::function<void()> onError_;
    bool posted_ = false;
};

} // namespace vantrel
