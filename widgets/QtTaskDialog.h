// The modal window that lives for one task: the progress window and the wait window. Knows the queue, not what the task
// does.
#pragma once

#include "platform/Task.h"
#include "platform/TurnQueue.h"

#include <QDialog>

namespace vantrel {

/// Shown before its task begins and closed when the task has ended, however it ended. The user cannot close it: Escape
/// and the close button are a request, CloseAsked().
class QtTaskDialog : public QDialog {
public:
    void reject() final { CloseAsked(); }

protected:
    QtTaskDialog(TurnQueue& turns, QWidget* parent, Qt::WindowFlags flags = {})
        : QDialog(parent, flags), turns_(turns) {}

    /// Centres and shows the window, runs `work` on the queue from the event loop's next turn on, and returns when the
    /// window has closed. False when an exception left `work`: it goes where the queue sends what leaves a root task.
    [[nodiscard]] bool RunTask(Task work);

    /// The user asked to close the window; it stays.
    virtual void CloseAsked() {}

    void closeEvent(QCloseEvent* event) final;

private:
    Task Host(Task work);

    TurnQueue& turns_;
    Task task_;
};

} // namespace vantrel
