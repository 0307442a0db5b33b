// The sequence editor's entry box: opening it over a cell, following the cell, checking and storing what was entered,
// moving on.
#include "document/frmMain.h"

#include <algorithm>
#include <utility>
#include <variant>

namespace vantrel {

namespace {

std::string NameOfCell(int row, const QString& heading) {
    return "Sequence " + std::to_string(row - 1) + ", " + heading.trimmed().toStdString();
}

} // namespace

void frmMain::OpenEntryBox() {
    QtFormatGrid& grid = VisibleGrid();
    const int row = grid.CurrentRow();
    const int column = grid.CurrentColumn();
    if (CurrentTab == EditorTab::CommStatus || row < 1 || column < FirstColumn()) return;
    FinishFill();
    EditRow = static_cast<std::int16_t>(row);
    EditCol = static_cast<std::int16_t>(column);
    SavedCellText = grid.Text(row, column);
    if (CurrentTab == EditorTab::Configuration)
        EditIndex = static_cast<std::int16_t>(static_cast<int>(FieldCount) * (row - 1) + column);
    SetEntry(EntryState::Open);
    EntryChanged = false;
    ArrowMove = false;
    if (txtEntry.parentWidget() != grid.viewport()) txtEntry.setParent(grid.viewport());
    txtEntry.setAlignment(grid.Alignment(column));
    txtEntry.setAccessibleName(QString::fromStdString(NameOfCell(row, grid.Text(0, column))));
    txtEntry.setText(SavedCellText);
    PlaceEntryBox();
    txtEntry.show();
    txtEntry.raise();
    // So that a click on the grid's headings or scroll bars leaves the focus in the box.
    grid.setFocusProxy(&txtEntry);
    TakeFocus();
}

void frmMain::PlaceEntryBox() {
    if (!EntryOpen()) return;
    const QtFormatGrid& grid = VisibleGrid();
    QRect place = grid.CellRect(EditRow, EditCol).translated(-grid.viewport()->pos());
    // The first row of cells stands one row height below the top of the grid, under the headings; of 15 rows that show
    // at once the last one begins 14 row heights below it.
    const int wholeRows = grid.viewport()->height() / SequenceRowHeight;
    const bool inBand = place.top() >= 0 && place.top() <= (wholeRows - 1) * SequenceRowHeight;
    // Moved out of sight: really hidden, it would lose the focus.
    if (!inBand) place.moveBottom(-1);
    txtEntry.setGeometry(place);
}

void frmMain::TakeFocus() {
    txtEntry.setFocus();
    txtEntry.selectAll();
}

void frmMain::SetEntry(EntryState state) {
    entry_ = state;
    const bool onItsWay = state == EntryState::OnItsWay;
    txtEntry.setReadOnly(onItsWay);
    txtEntry.setAccessibleDescription(onItsWay ? QStringLiteral("On its way to the board") : QString());
    QFont font = VisibleGrid().font();
    font.setItalic(onItsWay);
    txtEntry.setFont(font);
}

void frmMain::CloseEntryBox() {
    if (!EntryOpen()) return;
    SetEntry(EntryState::Shut);
    EntryChanged = false;
    endedBy_ = EntryEnd::Elsewhere;
    typedAhead_.clear();
    VisibleGrid().setFocusProxy(nullptr);
    if (window()->focusWidget() == &txtEntry) cmdDefault.setFocus();
    txtEntry.hide();
}

bool frmMain::FinishEntry() {
    if (!EntryOpen()) return true;
    // One that is on its way has been checked and stored; what becomes of it is told when it is known.
    if (entry_ != EntryState::OnItsWay) {
        endedBy_ = EntryEnd::Elsewhere;
        if (!Validate()) return false;
    }
    CloseEntryBox();
    return true;
}

void frmMain::EndBy(EntryEnd end) {
    endedBy_ = end;
    ArrowMove = end == EntryEnd::Up || end == EntryEnd::Down;
    if (Validate() && entry_ != EntryState::OnItsWay) MoveOn();
}

bool frmMain::Validate() {
    try {
        return txtEntry_Validate();
    } catch (...) {
        ArrowMove = false;
        SetEntry(EntryState::Refused);
        TakeFocus();
        untrapped_ = PassOn(std::current_exception());
        untrapped_.Start();
        return false;
    }
}

Task frmMain::PassOn(std::exception_ptr error) {
    // Thrown from an event of the box it would have to pass through Qt's own frames, which clean nothing up.
    co_await turns_.Next();
    std::rethrow_exception(error);
}

bool frmMain::txtEntry_Validate() {
    // Looking is not writing: a text that is the cell's own is an entry only when the user says so.
    const bool isEntry = endedBy_ == EntryEnd::Enter || txtEntry.text() != SavedCellText;
    const bool accepted = !isEntry || StoreEntry();
    ArrowMove = false;
    return accepted;
}

EditPlace frmMain::PlaceOfEntry() const {
    const std::size_t sequence = static_cast<std::size_t>(EditRow) - 1;
    if (CurrentTab == EditorTab::Descriptions) return {sequence, std::nullopt};
    return {sequence, static_cast<SequenceField>(EditCol - 1)};
}

bool frmMain::StoreEntry() {
    const EditAnswer answer = edits_.Enter(PlaceOfEntry(), txtEntry.text().toStdString());
    if (const auto* refusal = std::get_if<RefusedEntry>(&answer)) {
        ShowRefusal(*refusal);
        return false;
    }
    const Edit& edit = std::get<Edit>(answer);
    Remember({std::holds_alternative<DescriptionEdit>(edit) ? "Description" : "Entry", {edit}});
    const auto texts = EditorRowTexts(document_.CurrentConfiguration, CurrentTab, PlaceOfEntry().sequence);
    ShowCell(EditRow, EditCol, texts.at(static_cast<std::size_t>(EditCol)));
    const bool sent = std::holds_alternative<ValueEdit>(edit) && edits_.OnItsWay(static_cast<std::size_t>(EditIndex));
    SetEntry(sent ? EntryState::OnItsWay : EntryState::Open);
    return true;
}

void frmMain::ShowRefusal(const RefusedEntry& refusal) {
    SetEntry(EntryState::Refused);
    dialogs_.Show({.title = EntryRefusalTitle,
                   .text = refusal.text,
                   .icon = MessageIcon::Exclamation,
                   .buttons = MessageButtons::Ok});
    if (!EntryOpen()) return;
    VisibleGrid().SetCurrentCell(EditRow, EditCol);
    TakeFocus();
}

void frmMain::MoveOn() {
    const EntryEnd end = std::exchange(endedBy_, EntryEnd::Elsewhere);
    if (end == EntryEnd::Elsewhere) return;
    if (end == EntryEnd::Up || end == EntryEnd::Down) {
        MoveByRow(end == EntryEnd::Up ? -1 : 1);
        return;
    }
    const int step = end == EntryEnd::CellBefore ? -1 : 1;
    if (const auto cell = CellBeside(step)) {
        VisibleGrid().SetCurrentCell(cell->row, cell->column);
        OpenEntryBox();
        return;
    }
    CloseEntryBox();
    if (end != EntryEnd::Enter) LeaveGrid(step > 0);
}

void frmMain::MoveByRow(int rows) {
    QtFormatGrid& grid = VisibleGrid();
    const int target = grid.CurrentRow() + rows;
    if (target >= 1 && target < grid.RowCount()) grid.SetCurrentCell(target, grid.CurrentColumn());
    OpenEntryBox();
}

std::optional<frmMain::Cell> frmMain::CellBeside(int step) const {
    const QtFormatGrid& grid = VisibleGrid();
    const int first = FirstColumn();
    const int columns = grid.ColumnCount() - first;
    int cell = (grid.CurrentRow() - 1) * columns + std::max(grid.CurrentColumn() - first, 0) + step;
    for (; cell >= 0 && cell < (grid.RowCount() - 1) * columns; cell += step) {
        if (!grid.isRowHidden(cell / columns)) return Cell{cell / columns + 1, cell % columns + first};
    }
    return std::nullopt;
}

} // namespace vantrel
