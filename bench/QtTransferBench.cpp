// The same measurements in the windows' own queue, in a bare event loop.
#include "platform/QtTurnQueue.h"

#include <QCoreApplication>

#include <cstdlib>

namespace {

class Turns final {
public:
    explicit Turns(vantrel::Clock& clock)
        : queue_(
              clock, [] { return true; }, [] { std::exit(1); }) {}

    vantrel::TurnQueue& Queue() { return queue_; }
    void RunToEnd(vantrel::Task task) {
        task.Start();
        while (!task.Done())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

private:
    vantrel::QtTurnQueue queue_;
};

using Host = QCoreApplication;

} // namespace

#define VANTREL_BENCH_TURNS
#include "bench/TransferBench.cpp" // NOLINT(bugprone-suspicious-include): one measurement, two queues
