// A comparison as a window: what differs between the set-up and the board, or another file, with a tick for each row.
// Shows and asks; whoever owns it reads the board, sends and stores.
#pragma once

#include "document/Comparison.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vantrel {

/// Not modal; deletes itself when it is closed.
class frmCompare final : public QDialog {
public:
    struct Commands {
        std::function<void()> repeat; ///< Compare the same two sides again.
        std::function<void(std::vector<std::size_t>)>
            send; ///< Indices, ascending; empty where the other side is a file.
        std::function<void(std::vector<Difference>)> take; ///< Into the set-up.
        std::function<void()> saveBoard; ///< Empty where the other side is a file.
        std::function<void()> print;
        std::function<void()> saveList;
        std::function<void(std::size_t sequence, std::optional<std::size_t> index)> goTo;
    };

    frmCompare(Commands commands, QWidget* parent);

    /// What is listed from now on, every row ticked that was so before. Rows are those of the moment.
    void Show(ComparisonReport report);
    [[nodiscard]] const ComparisonReport& Report() const { return report_; }
    /// The set-up or the connection is another one since: the rows may not be true any more. Sending and taking wait
    /// for a repetition.
    void MarkOld(const std::string& why);
    [[nodiscard]] bool Old() const { return old_; }
    /// Whether the board can be asked now.
    void SetOnline(bool online);

    // Controls.
    QLabel* lblSides = nullptr;
    QLabel* lblState = nullptr;
    QTreeWidget* lstDifferences = nullptr;
    QPushButton* cmdSend = nullptr;
    QPushButton* cmdTake = nullptr;
    QPushButton* cmdSaveBoard = nullptr;
    QPushButton* cmdRepeat = nullptr;
    QPushButton* cmdPrint = nullptr;
    QPushButton* cmdSaveList = nullptr;

private:
    void BuildControls();
    QPushButton* AddButton(const char* name, const QString& caption, const std::function<void()>& command);
    void Fill();
    [[nodiscard]] std::vector<Difference> Ticked() const;
    [[nodiscard]] std::vector<std::size_t> TickedValues() const;
    void ShowButtons();

    Commands commands_;
    ComparisonReport report_;
    QString state_; ///< Of the list.
    std::vector<QTreeWidgetItem*> rows_; ///< Of each difference; Qt's children of the list.
    bool old_ = false;
    bool online_ = false;
};

} // namespace vantrel
