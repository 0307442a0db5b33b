// The wait window: one line of text for as long as a job runs. Knows the job only as a task.
#pragma once

#include "widgets/QtTaskDialog.h"

#include <QLabel>

#include <functional>

namespace vantrel {

/// Which job the window waits for, and so what it says.
enum class WaitSelector : int { None = 0, Report = 1 };

class frmWaitDisplay final : public QtTaskDialog {
public:
    /// `job` makes the task; it lives as long as the window, so that the task may use what it has captured. Without one
    /// the window opens and closes at once.
    frmWaitDisplay(WaitSelector selector, std::function<Task()> job, TurnQueue& turns, QWidget* parent);

    /// Shows the window, runs the job and returns when both are over. Once. False when an unexpected error ended the
    /// job.
    bool RunModal();

    // Controls, by their names.
    QLabel* lblWait = nullptr;

private:
    Task Work();

    std::function<Task()> job_;
    TurnQueue& turns_;
};

} // namespace vantrel
