// The window of a job on the line: what is done, how far it is, and Cancel. Knows no other window.
#pragma once

#include "app/KnownBoards.h"
#include "document/SettingsTransfer.h"
#include "widgets/QtTaskDialog.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include <cstddef>
#include <optional>
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
    /// What the window calls it; a literal. Before RunModal().
    void Called(std::string_view label) { comparison_.Called(label); }
    /// Ask first which board it is. Before RunModal().
    void Identify() { identifies_ = true; }
    /// The board whose values were compared; nothing when that was not asked or not read clearly.
    [[nodiscard]] const std::optional<BoardIdentity>& Board() const { return board_; }

private:
    Task Run();
    void CloseAsked() override { comparison_.Cancel(); }

    RSComm& link_;
    TurnQueue& turns_;
    BoardComparison comparison_;
    bool identifies_ = false;
    std::optional<BoardIdentity> board_;
};

/// Asks which board is at the other end.
class frmIdentifying final : public frmProgress {
public:
    /// `link` and `turns` must outlive the window.
    frmIdentifying(RSComm& link, TurnQueue& turns, QWidget* parent);

    /// Shows the window, asks and returns when both are over; nothing when it is not known. Once.
    std::optional<BoardIdentity> RunModal();
    [[nodiscard]] bool Cancelled() const { return cancelled_; }

private:
    Task Ask();
    void CloseAsked() override;

    RSComm& link_;
    TurnQueue& turns_;
    bool cancelled_ = false;
    std::optional<BoardIdentity> board_;
};

} // namespace vantrel
