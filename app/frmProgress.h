// The window of a job on the line: what is done, how far it is, and Cancel. Knows no other window.
#pragma once

#include "document/SettingsTransfer.h"
#include "widgets/QtTaskDialog.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include <cstddef>
#include <string_view>

namespace vantrel {

class frmProgress : public QtTaskDialog, protected TransferDisplay {
public:
    // Controls, by their names.
    QLabel* lblProcessing = nullptr;
    QProgressBar* prgProcessing = nullptr;
    QPushButton* cmdCancel = nullptr;

protected:
    frmProgress(const char* name, TurnQueue& turns, QWidget* parent);

private:
    void BuildControls();
    void LayOutControls();
    void ShowLabel(std::string_view label) override;
    void ShowProgress(std::size_t done, std::size_t total) override;
};

/// Compares values of a record with the board's.
class frmComparing final : public frmProgress {
public:
    /// `record`, `link` and `turns` must outlive the window. `indices`: see BoardComparison::Only.
    frmComparing(const Configuration& record, std::vector<std::size_t> indices, RSComm& link, TurnQueue& turns,
                 QWidget* parent);

    /// Shows the window, compares and returns when both are over. Once.
    const BoardComparison& RunModal();

private:
    void CloseAsked() override { comparison_.Cancel(); }

    BoardComparison comparison_;
};

} // namespace vantrel
