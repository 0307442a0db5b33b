// The sequence editor's tabs: the change from one to another, the filling of their grids, the live status.
#include "document/frmMain.h"

#include <QApplication>

#include <algorithm>

namespace vantrel {

QtFormatGrid& frmMain::VisibleGrid() { return fgComm.at(IndexOf(CurrentTab)); }

const QtFormatGrid& frmMain::VisibleGrid() const { return fgComm.at(IndexOf(CurrentTab)); }

int frmMain::FirstColumn() const { return CurrentTab == EditorTab::Descriptions ? 2 : 1; }

void frmMain::ChangeTab() {
    CloseEntryBox();
    // Hiding a grid that has the focus would give it to whatever comes next.
    if (VisibleGrid().hasFocus()) cmdDefault.setFocus();
    CurrentTab = EditorTabs.at(static_cast<std::size_t>(tbsComm.currentIndex()));
    for (QtFormatGrid& grid : fgComm)
        grid.SetCurrentCell(0, 0);
    grids_->setCurrentWidget(&VisibleGrid());
    hint_.setText(QString::fromStdString(EditorTabHint(CurrentTab)));
    StartFill();
}

void frmMain::NoteSelection(const QtFormatGrid& grid) {
    const QModelIndex cell = grid.currentIndex();
    if (!cell.isValid() || !grid.selectionModel()->isSelected(cell)) return;
    selectedSequence_ = static_cast<std::int16_t>(grid.CurrentRow() - 1);
}

void frmMain::SelectSequenceInView() {
    constexpr int last = static_cast<int>(SequenceCount) - 1;
    VisibleGrid().SetCurrentCell(std::clamp<int>(selectedSequence_, 0, last) + 1, FirstColumn());
}

void frmMain::ShowSelectedSequence() {
    if (FinishEntry()) SelectSequenceInView();
}

void frmMain::RefillIfAsked() {
    // Inside an exchange the task that reads the status may be the caller; the next tick comes soon.
    if (!document_.ReloadDisplay || link_.Busy() || validating_) return;
    document_.ReloadDisplay = false;
    CloseEntryBox();
    StartFill();
}

void frmMain::ShowOffline() {
    if (CurrentTab == EditorTab::CommStatus && !link_.OnlineMode()) StartFill();
}

void frmMain::StartFill() {
    nextRowToFill_ = 1;
    fill_ = FillAndFollow();
    fill_.Start();
}

Task frmMain::FillAndFollow() {
    while (nextRowToFill_ < EditorRowCount) {
        co_await turns_.Next();
        if (nextRowToFill_ < EditorRowCount) FillRow(nextRowToFill_++);
    }
    while (CurrentTab == EditorTab::CommStatus) {
        co_await RefreshStatusTab(*this, NodeNumberAddresses, StatusWordAddresses, link_, turns_);
        tmrStatusTab.start();
        co_await periodOver_.Raised();
    }
}

void frmMain::FillRow(int row) {
    const auto texts = EditorRowTexts(document_.CurrentConfiguration, CurrentTab, static_cast<std::size_t>(row) - 1);
    for (std::size_t column = 0; column < texts.size(); ++column)
        VisibleGrid().SetText(row, static_cast<int>(column), QString::fromStdString(texts[column]));
}

void frmMain::FinishFill() {
    while (nextRowToFill_ < EditorRowCount)
        FillRow(nextRowToFill_++);
}

bool frmMain::StatusWanted() const {
    return CurrentTab == EditorTab::CommStatus && isVisible() && !window()->isMinimized() &&
           !QApplication::activeModalWidget();
}

bool frmMain::RowVisible(int row) const { return VisibleGrid().VisibleRows().Contains(row); }

void frmMain::ShowNode(int row, const std::string& text) {
    VisibleGrid().SetText(row, 1, QString::fromStdString(text));
}

void frmMain::ShowStatus(int row, const std::string& text) {
    VisibleGrid().SetText(row, 2, QString::fromStdString(text));
}

void frmMain::SetSystemMessage(const std::string& text) {
    const QString message = QString::fromStdString(text);
    if (txtMessageDisplay.toPlainText() != message) txtMessageDisplay.setPlainText(message);
}

} // namespace vantrel
