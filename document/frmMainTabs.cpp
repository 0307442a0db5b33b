// The sequence editor's tabs: the change from one to another, the filling of their grids, the live status.
#include "document/frmMain.h"

#include <QApplication>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace vantrel {

QtFormatGrid& frmMain::VisibleGrid() { return fgComm.at(IndexOf(CurrentTab)); }

const QtFormatGrid& frmMain::VisibleGrid() const { return fgComm.at(IndexOf(CurrentTab)); }

int frmMain::FirstColumn() const { return CurrentTab == EditorTab::Descriptions ? 2 : 1; }

void frmMain::ChangeTab() {
    CloseEntryBox();
    const bool hadFocus = VisibleGrid().hasFocus() || cmdDefault.hasFocus();
    const int top = VisibleGrid().verticalScrollBar()->value();
    // Hiding a grid that has the focus would give it to whatever comes next.
    if (hadFocus) cmdDefault.setFocus();
    CurrentTab = EditorTabs.at(static_cast<std::size_t>(tbsComm.currentIndex()));
    for (QtFormatGrid& grid : fgComm)
        grid.SetCurrentCell(0, 0);
    grids_->setCurrentWidget(&VisibleGrid());
    VisibleGrid().verticalScrollBar()->setValue(top);
    // Without a current cell, which comes with the first key.
    if (hadFocus) VisibleGrid().setFocus(Qt::ActiveWindowFocusReason);
    hint_.setText(QString::fromStdString(EditorTabHint(CurrentTab)));
    ShowHealth();
    ShowBlockCommands();
    StartFill();
}

void frmMain::NoteSelection(const QtFormatGrid& grid) {
    const QModelIndex cell = grid.currentIndex();
    if (!cell.isValid() || !grid.selectionModel()->isSelected(cell)) return;
    selectedSequence_ = static_cast<std::int16_t>(grid.CurrentRow() - 1);
}

void frmMain::SelectSequenceInView() {
    constexpr int last = static_cast<int>(SequenceCount) - 1;
    ShowRowOf(std::clamp<int>(selectedSequence_, 0, last));
    VisibleGrid().SetCurrentCell(std::clamp<int>(selectedSequence_, 0, last) + 1, FirstColumn());
}

void frmMain::ShowSelectedSequence() {
    if (FinishEntry()) SelectSequenceInView();
}

void frmMain::GoTo(std::size_t sequence, std::optional<std::size_t> index) {
    if (!FinishEntry()) return;
    const EditorTab tab = index ? EditorTab::Configuration : EditorTab::Descriptions;
    tbsComm.setCurrentIndex(static_cast<int>(IndexOf(tab)));
    window()->activateWindow();
    // The status stack address has no cell.
    if (index == StatusStackIndex) return;
    const int column = index ? static_cast<int>(FieldOf(*index)) + 1 : FirstColumn();
    VisibleGrid().SetCurrentCell(static_cast<int>(sequence) + 1, column);
    VisibleGrid().setFocus();
}

void frmMain::RefillIfAsked() {
    if (!document_.ReloadDisplay) return;
    if (!turns_.Running()) {
        Refill();
    } else if (refill_.Done()) {
        // The task that runs may be the one that a refill replaces, with a box of the link's inside it.
        refill_ = RefillInTurn();
        refill_.Start();
    }
}

Task frmMain::RefillInTurn() {
    co_await turns_.Next();
    if (document_.ReloadDisplay) Refill();
}

void frmMain::Refill() {
    document_.ReloadDisplay = false;
    // The marks of a document stay until the board is known to hold what it says.
    if (std::exchange(markedDocument_, document_.Generation) != document_.Generation) {
        edits_.ForgetUnconfirmed();
        undo_.clear();
    }
    CloseEntryBox();
    StartFill();
}

void frmMain::ShowOffline() {
    ShowHealth();
    if (CurrentTab == EditorTab::CommStatus && !link_.OnlineMode()) StartFill();
}

void frmMain::StartFill() {
    nextRowToFill_ = 1;
    fill_ = FillAndFollow();
    fill_.Start();
}

Task frmMain::FillAndFollow() {
    for (;;) {
        // What was read before the port was opened again may be another board's.
        const int opened = link_.Opened();
        while (nextRowToFill_ < EditorRowCount) {
            co_await turns_.Next();
            if (nextRowToFill_ < EditorRowCount) FillRow(nextRowToFill_++);
        }
        while (CurrentTab == EditorTab::CommStatus && link_.Opened() == opened) {
            co_await RefreshStatusTab(*this, survey_, NodeNumberAddresses, StatusWordAddresses, link_, turns_);
            tmrStatusTab.start();
            co_await periodOver_.Raised();
        }
        if (CurrentTab != EditorTab::CommStatus) co_return;
        nextRowToFill_ = 1;
    }
}

void frmMain::FillRow(int row) {
    const auto texts = EditorRowTexts(document_.CurrentConfiguration, CurrentTab, static_cast<std::size_t>(row) - 1);
    for (std::size_t column = 0; column < texts.size(); ++column)
        ShowCell(row, static_cast<int>(column), texts[column]);
    if (CurrentTab == EditorTab::CommStatus) ShowRecord(row);
}

void frmMain::ShowCell(int row, int column, const std::string& text) {
    QtFormatGrid& grid = VisibleGrid();
    grid.SetText(row, column, QString::fromStdString(text));
    if (CurrentTab != EditorTab::Configuration || column < 1) return;
    const std::size_t index = ValueIndex(static_cast<std::size_t>(row) - 1, static_cast<SequenceField>(column - 1));
    grid.SetItalic(row, column, edits_.OnItsWay(index));
    grid.SetTextColor(row, column, edits_.Unconfirmed(index) ? QColor(Qt::red) : QColor());
}

void frmMain::FinishFill() {
    while (nextRowToFill_ < EditorRowCount)
        FillRow(nextRowToFill_++);
}

bool frmMain::StatusWanted() const {
    return CurrentTab == EditorTab::CommStatus && isVisible() && !window()->isMinimized() &&
           (behindView_ || !QApplication::activeModalWidget());
}

bool frmMain::RowVisible(int row) const { return VisibleGrid().RowInSight(row); }

void frmMain::ShowNode(int row, const std::string& text) {
    VisibleGrid().SetText(row, 1, QString::fromStdString(text));
}

void frmMain::ShowStatus(int row, const std::string& text) {
    VisibleGrid().SetText(row, 2, QString::fromStdString(text));
    ShowRecord(row);
    ShowHealth();
}

void frmMain::SetSystemMessage(const std::string& text) {
    const QString message = QString::fromStdString(text);
    if (txtMessageDisplay.toPlainText() != message) txtMessageDisplay.setPlainText(message);
}

} // namespace vantrel
