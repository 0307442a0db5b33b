// The check of the connection as a window: each step as it ends, and the verdict. Shows only; ConnectionCheck decides.
#pragma once

#include "link/ConnectionCheck.h"
#include "platform/Task.h"

#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTextBrowser>

#include <string>

namespace vantrel {

/// Modal, by exec(); begins when it is shown. Closing it cancels the check first.
class frmCheckConnection final : public QDialog, private CheckDisplay {
public:
    frmCheckConnection(RSComm& link, SerialPort& port, CheckSubject subject, Clock& clock, TurnQueue& turns,
                       QWidget* parent);

    void done(int result) override;

    // Controls.
    QTextBrowser* txtSteps = nullptr;
    QProgressBar* barExchanges = nullptr;
    QLabel* lblVerdict = nullptr;
    QLabel* lblTodo = nullptr; ///< What to do about it.
    QPushButton* cmdCopy = nullptr;
    QPushButton* cmdClose = nullptr; ///< "Cancel" while it runs.

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Begins(const std::string& step) override;
    void Ends(const CheckStep& step) override;
    void Progress(std::size_t done, std::size_t all) override;
    void BuildControls();
    void BuildVerdict();
    Task Check();

    ConnectionCheck check_;
    bool running_ = false;
    bool closeWanted_ = false;
    Task task_;
};

} // namespace vantrel
