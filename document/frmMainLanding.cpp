// The sequence editor's entries as they come back from the board: the cell, the box that has waited, what the user is
// told.
#include "document/frmMain.h"

#include <QApplication>

#include <utility>

namespace vantrel {

namespace {

int RowOf(const ValueEdit& edit) { return static_cast<int>(SequenceOf(edit.index)) + 1; }
int ColumnOf(const ValueEdit& edit) { return static_cast<int>(FieldOf(edit.index)) + 1; }

} // namespace

void frmMain::Landed(const LandedEdit& landed) {
    const bool awaited = entry_ == EntryState::OnItsWay && EditIndex == static_cast<int>(landed.edit.index);
    if (awaited) {
        SetEntry(EntryState::Open);
        txtEntry.setText(SavedCellText);
    }
    statusLog_.ForgetNodes();
    ShowLanded(landed);
    TellLanded(landed);
    if (!landed.Confirmed() && !landed.HasLinkFailed()) {
        ComeBack(landed);
    } else if (awaited && EntryOpen()) {
        const auto typed = std::exchange(typedAhead_, {});
        MoveOn();
        if (landed.Confirmed()) TypeAgain(typed);
    }
}

void frmMain::ShowLanded(const LandedEdit& landed) {
    const bool inGrid = CurrentTab == EditorTab::Configuration && landed.edit.index != StatusStackIndex;
    if (!inGrid || !edits_.Stands(landed.edit)) return;
    FinishFill();
    const int row = RowOf(landed.edit);
    const int column = ColumnOf(landed.edit);
    ShowCell(row, column, landed.CellText());
    if (entry_ == EntryState::Shut || EditRow != row || EditCol != column) return;
    // The box was opened over the cell again; what the user has typed since is the user's.
    if (txtEntry.text() == SavedCellText) txtEntry.setText(VisibleGrid().Text(row, column));
    SavedCellText = VisibleGrid().Text(row, column);
}

void frmMain::TellLanded(const LandedEdit& landed) {
    const std::string message = landed.Message();
    if (!message.empty()) untold_ += (untold_.empty() ? "" : "\n\n") + message;
    // Whatever waits for a link that has failed fails as well: one box for all of them.
    if (untold_.empty() || (landed.HasLinkFailed() && edits_.Writing())) return;
    dialogs_.Show({.title = EntryRefusalTitle,
                   .text = std::exchange(untold_, {}),
                   .icon = MessageIcon::Exclamation,
                   .buttons = MessageButtons::Ok,
                   .unasked = true});
}

void frmMain::ComeBack(const LandedEdit& landed) {
    typedAhead_.clear();
    endedBy_ = EntryEnd::Elsewhere;
    // A half-typed entry elsewhere is not taken from under the user's hands, and another document has other values.
    const bool typing = EntryOpen() && entry_ != EntryState::OnItsWay && txtEntry.text() != SavedCellText;
    const bool hasCell = landed.edit.index != StatusStackIndex;
    if (!hasCell || typing || QApplication::activeModalWidget() || !edits_.Stands(landed.edit)) return;
    CloseEntryBox();
    if (CurrentTab != EditorTab::Configuration)
        tbsComm.setCurrentIndex(static_cast<int>(IndexOf(EditorTab::Configuration)));
    ShowLanded(landed);
    VisibleGrid().SetCurrentCell(RowOf(landed.edit), ColumnOf(landed.edit));
    OpenEntryBox();
    SetEntry(EntryState::Refused);
}

void frmMain::TypeAgain(const std::vector<std::unique_ptr<QKeyEvent>>& typed) {
    for (const auto& key : typed) {
        if (EntryOpen()) QCoreApplication::sendEvent(&txtEntry, key.get());
    }
}

} // namespace vantrel
