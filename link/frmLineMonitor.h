// The line as a window: every byte with its answer, the time and the meaning, the newest at the bottom. Looks at the
// link and changes nothing; a file is written on request only, by whoever owns the window.
#pragma once

#include "link/LineRecorder.h"
#include "widgets/QtLogWindow.h"

#include <QAbstractTableModel>

#include <cstddef>
#include <functional>
#include <string>

namespace vantrel {

/// The entries of a recorder as rows, the newest one last.
class LineRows final : public QAbstractTableModel {
public:
    /// `recorder` must outlive it.
    explicit LineRows(const LineRecorder& recorder) : recorder_(recorder) {}

    /// Takes over what has come and gone since.
    void Follow();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const LineRecorder& recorder_;
    std::size_t first_ = 0; ///< Numbers of entries, counted since the first that there has been: those that are shown,
    std::size_t end_ = 0; ///< and the one behind the last of them.
};

/// Nothing is kept but while it is open.
class frmLineMonitor final : public QtLogWindow {
public:
    /// Asked to save these lines.
    using Save = std::function<void(const std::string& text)>;

    /// `recorder` hears the line already, and must outlive the window.
    frmLineMonitor(LineRecorder& recorder, Save save, QWidget* parent);
    ~frmLineMonitor() override;

    // Controls.
    QPushButton* cmdPause = nullptr; ///< "Continue" in a pause.
    QPushButton* cmdClear = nullptr;

private:
    void BuildTable();
    void TogglePause();
    void Follow() override;
    void ShowCount();

    LineRecorder& recorder_;
    LineRows* rows_;
};

} // namespace vantrel
