// The sequence editor's entry box: opening it over a cell, following the cell, checking and storing what was entered,
// moving on.
#include "document/frmMain.h"

#include "document/ValueDisplay.h"
#include "document/WriteThrough.h"
#include "text/Windows1252.h"

#include <QScopedValueRollback>

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
    EntryOpen = true;
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
    if (!EntryOpen) return;
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

void frmMain::CloseEntryBox() {
    if (!EntryOpen) return;
    EntryOpen = false;
    EntryChanged = false;
    VisibleGrid().setFocusProxy(nullptr);
    if (window()->focusWidget() == &txtEntry) cmdDefault.setFocus();
    txtEntry.hide();
}

bool frmMain::FinishEntry() {
    if (!EntryOpen) return true;
    if (!Validate()) return false;
    CloseEntryBox();
    return true;
}

bool frmMain::Validate() {
    if (validating_) return false;
    const QScopedValueRollback<bool> validating(validating_, true);
    try {
        return txtEntry_Validate();
    } catch (...) {
        ArrowMove = false;
        endedByEnter_ = false;
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
    const bool byEnter = std::exchange(endedByEnter_, false);
    const bool stored = StoreEntry();
    const bool byArrow = std::exchange(ArrowMove, false);
    if (stored && byEnter && !byArrow) MoveOn();
    return stored;
}

bool frmMain::StoreEntry() {
    if (CurrentTab == EditorTab::Descriptions) {
        StoreDescription();
        return true;
    }
    const auto field = static_cast<SequenceField>(FieldOf(static_cast<std::size_t>(EditIndex)));
    const EntryAnswer answer = CheckEntry(field, txtEntry.text().toStdString());
    if (const auto* refusal = std::get_if<RefusedEntry>(&answer)) {
        ShowRefusal(*refusal);
        return false;
    }
    StoreValue(std::get<AcceptedEntry>(answer));
    return true;
}

void frmMain::StoreValue(const AcceptedEntry& entry) {
    const auto index = static_cast<std::size_t>(EditIndex);
    const std::string notation(1, entry.notation);
    Configuration& record = document_.CurrentConfiguration;
    record.SetValue(index, entry.value);
    record.SetAddressType(index, notation);
    const int row = EditRow;
    const int column = EditCol;
    std::int32_t shown = entry.value;
    if (link_.OnlineMode()) shown = WriteThrough(link_, record.TargetAddress(index), entry.value).value_or(shown);
    VisibleGrid().SetText(row, column, QString::fromStdString(DisplayValue(shown, notation)));
}

void frmMain::StoreDescription() {
    // What the file cannot hold is replaced here, where the user sees it.
    const std::string text = Utf8FromWindows1252(Windows1252FromUtf8(txtEntry.text().toStdString()));
    document_.CurrentConfiguration.SetNodeDescription(static_cast<std::size_t>(EditRow) - 1, text);
    VisibleGrid().SetText(EditRow, EditCol, QString::fromStdString(text));
}

void frmMain::ShowRefusal(const RefusedEntry& refusal) {
    dialogs_.Show({.title = EntryRefusalTitle,
                   .text = refusal.text,
                   .icon = MessageIcon::Exclamation,
                   .buttons = MessageButtons::Ok});
    VisibleGrid().SetCurrentCell(EditRow, EditCol);
    TakeFocus();
}

void frmMain::MoveOn() {
    QtFormatGrid& grid = VisibleGrid();
    const int row = grid.CurrentRow();
    const int column = grid.CurrentColumn();
    if (column < grid.ColumnCount() - 1) {
        grid.SetCurrentCell(row, column + 1);
    } else if (row < grid.RowCount() - 1) {
        grid.SetCurrentCell(row + 1, FirstColumn());
    } else {
        CloseEntryBox();
        return;
    }
    OpenEntryBox();
}

} // namespace vantrel
