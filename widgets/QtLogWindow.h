// A window on what is written down elsewhere: a table that follows it while it is open, is copied, and is saved on
// request. Knows neither what is written nor where it is saved.
#pragma once

#include <QAbstractItemModel>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

#include <chrono>
#include <functional>
#include <vector>

namespace vantrel {

/// Not modal; deletes itself when it is closed.
class QtLogWindow : public QDialog {
public:
    // Controls.
    QTableView* grdRows;
    QLabel* lblCount;
    QPushButton* cmdCopy = nullptr;
    QPushButton* cmdSave = nullptr;
    QTimer tmrFollow;

protected:
    explicit QtLogWindow(QWidget* parent);

    /// The rows, which become the window's own, and how wide the first columns are: as these texts.
    void ShowRows(QAbstractItemModel* rows, const std::vector<const char*>& widest);
    /// Below the table, in the order of the calls.
    QPushButton* AddButton(const QString& caption, const std::function<void()>& press);
    /// The buttons that every such window has; Follow() now and every `period` from now on.
    void Begin(const QString& saveCaption, const std::function<void()>& save, std::chrono::milliseconds period);
    /// Takes over what has come and gone since, and tells how much there is.
    virtual void Follow() = 0;
    void keyPressEvent(QKeyEvent* event) override;

    static constexpr int CellPadding = 16; ///< Pixels.
    QHBoxLayout* aboveRows_; ///< Ends with the count.

private:
    /// The chosen rows, tabs between their cells; all rows when none is chosen.
    void Copy() const;

    QDialogButtonBox* buttons_;
};

} // namespace vantrel
