// The event log as a window: what the sequences did and what happened beside it, the newest first. Looks at the history
// and changes nothing; a file is written on request only, by whoever owns the window.
#pragma once

#include "views/History.h"
#include "widgets/QtLogWindow.h"

#include <QAbstractTableModel>
#include <QComboBox>

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>

namespace vantrel {

/// The entries of a history as rows, the newest one first.
class HistoryRows final : public QAbstractTableModel {
public:
    /// `history` must outlive it.
    explicit HistoryRows(const History& history) : history_(history) {}

    /// Those of one sequence; nothing: all.
    void Choose(std::optional<std::size_t> sequence);
    /// Takes over what has come and gone since.
    void Follow();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    [[nodiscard]] const HistoryEntry& EntryAt(int row) const;
    void DropGone();

    const History& history_;
    std::optional<std::size_t> sequence_;
    std::deque<std::size_t> shown_; ///< Numbers of entries, counted since the first that there has been; oldest first.
    std::size_t seen_ = 0; ///< Of those that have been added.
};

/// Follows the history while it is open.
class frmEventLog final : public QtLogWindow {
public:
    /// Asked to save the table, of one sequence or of all.
    using Save = std::function<void(std::optional<std::size_t> sequence)>;

    /// `history` must outlive the window.
    frmEventLog(const History& history, Save save, QWidget* parent);

    // Controls.
    QComboBox* cboSequence = nullptr;

private:
    void BuildChoice();
    void BuildTable();
    void Follow() override;
    [[nodiscard]] std::optional<std::size_t> Sequence() const;

    const History& history_;
    HistoryRows* rows_;
};

} // namespace vantrel
