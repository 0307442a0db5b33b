#include "widgets/QtTaskDialog.h"

#include "platform/QtScreen.h"

#include <QCloseEvent>

#include <utility>

namespace vantrel {

bool QtTaskDialog::RunTask(Task work) {
    CentreOnScreen(*this);
    setResult(Rejected);
    task_ = Host(std::move(work));
    // Only queues the first turn; the loop inside exec() gives it, after it has shown the window.
    task_.Start();
    const bool ended = exec() == Accepted;
    // A program that quits ends the loop with the task still waiting.
    task_.Stop();
    return ended;
}

Task QtTaskDialog::Host(Task work) {
    co_await turns_.Next();
    try {
        co_await std::move(work);
    } catch (...) {
        done(Rejected);
        throw;
    }
    done(Accepted);
}

void QtTaskDialog::closeEvent(QCloseEvent* event) {
    event->ignore();
    CloseAsked();
}

} // namespace vantrel
