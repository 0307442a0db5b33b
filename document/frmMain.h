// The sequence editor, the frame's first child: 31 sequences in three grids on three tabs, an entry box over the cell
// being edited, and the system messages. Edits the document's working copy; borrows document, link, dialogs and turns.
#pragma once

#include "document/Document.h"
#include "document/EntryRules.h"
#include "document/GridTexts.h"
#include "document/StatusTab.h"
#include "link/RSComm.h"
#include "platform/Dialogs.h"
#include "platform/Signal.h"
#include "platform/Task.h"
#include "platform/TurnQueue.h"
#include "widgets/QtFormatGrid.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedLayout>
#include <QTabBar>
#include <QTimer>
#include <QWidget>

#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>

namespace vantrel {

/// Lives as long as the program's windows do: it ignores every request to close it. While the status tab is looked at
/// and the link is ONLINE, it reads the status of the visible sequences again and again.
class frmMain final : public QWidget, private StatusTabDisplay {
public:
    /// Shows the status tab. The record may still be empty. `selectedSequence` (0..30) follows the selected row. All
    /// that is borrowed must outlive the window.
    frmMain(Document& document, RSComm& link, TurnQueue& turns, Dialogs& dialogs, std::int16_t& selectedSequence,
            QWidget* parent = nullptr);
    ~frmMain() override;

    /// Rebuilds the display when the document asks for it (`ReloadDisplay`), which is thereby answered; an open box is
    /// closed unstored. Costs nothing when it does not: call it after every command and on every tick, so that no
    /// command can forget it.
    void RefillIfAsked();
    /// Call after every change of the mode: while OFFLINE the status tab shows dashes only.
    void ShowOffline();
    /// Written only when it has changed, so that reading, selecting and scrolling are left in peace.
    void SetSystemMessage(const std::string& text);

    /// Checks and stores what is in the box, and closes it. Call before every command that reads the document or leaves
    /// the editor; true also when nothing was open. False when the entry is refused (the user has been told, or will
    /// be by the last handler): the box stays open with the focus, and the command must not run.
    [[nodiscard]] bool FinishEntry();
    /// Scrolls to the row of the selected sequence and selects it; call when another window has changed the number.
    void ShowSelectedSequence();

    // Controls, by their names.
    QTabBar tbsComm;
    std::array<QtFormatGrid, EditorTabs.size()> fgComm; ///< fgComm[0] belongs to the first tab, and so on.
    QLineEdit txtEntry; ///< A child of the grid's cells, so that it is never drawn over headings or borders.
    QGroupBox fraMessageDisplay;
    QPlainTextEdit txtMessageDisplay;
    QPushButton cmdDefault; ///< Has the focus while nothing is edited; the user does not see it.
    QTimer tmrStatusTab; ///< Runs from the end of one pass over the status tab to the next.

    // State.
    EditorTab CurrentTab = EditorTab::CommStatus;
    std::int16_t EditRow = 0; ///< Of the cell under the box.
    std::int16_t EditCol = 0;
    std::int16_t EditIndex = 0; ///< Of that cell in the record's value arrays; on the configuration tab.
    QString SavedCellText; ///< Of that cell when the box was opened.
    bool EntryOpen = false;
    bool EntryChanged = false; ///< The user has typed since the box was opened or put back.
    bool ArrowMove = false; ///< The validation under way was started by the Up or Down key.
    std::int16_t SequenceRowHeight = 0; ///< Pixels.
    const SequenceAddresses StatusWordAddresses = StatusWordAddressTable();
    const SequenceAddresses NodeNumberAddresses = NodeNumberAddressTable();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Layout (frmMain.cpp)
    void BuildTabs();
    void LayOutGrids();
    void WatchGrid(QtFormatGrid& grid);
    void BuildMessages();
    void BuildDefaultButton();
    void BuildEntryBox();
    void LayOutWindow();

    // Tabs, filling, status (frmMainTabs.cpp)
    [[nodiscard]] static std::size_t IndexOf(EditorTab tab) { return static_cast<std::size_t>(tab) - 1; }
    void ChangeTab();
    [[nodiscard]] QtFormatGrid& VisibleGrid();
    [[nodiscard]] const QtFormatGrid& VisibleGrid() const;
    /// The first column that can be edited, of the current tab.
    [[nodiscard]] int FirstColumn() const;
    void NoteSelection(const QtFormatGrid& grid);
    /// Where the keyboard starts in a grid without a current cell.
    void SelectSequenceInView();
    /// Rebuilds the visible grid and keeps it live; replaces what still runs for the one before.
    void StartFill();
    Task FillAndFollow();
    void FillRow(int row);
    /// Brings the rest at once: what an entry starts from is never older than the record.
    void FinishFill();
    [[nodiscard]] bool StatusWanted() const override;
    [[nodiscard]] bool RowVisible(int row) const override;
    void ShowNode(int row, const std::string& text) override;
    void ShowStatus(int row, const std::string& text) override;

    // The entry box (frmMainEntry.cpp)
    /// Over the grid's current cell, if that can be edited, with its text selected.
    void OpenEntryBox();
    void PlaceEntryBox();
    void TakeFocus();
    /// Without a check: nothing is stored.
    void CloseEntryBox();
    /// Checks, stores, shows and sends the entry; moves on when it was ended by Enter. False when it was refused.
    bool txtEntry_Validate();
    /// The same; an unexpected error counts as refused and goes to the last handler.
    bool Validate();
    [[nodiscard]] bool StoreEntry();
    void StoreValue(const AcceptedEntry& entry);
    void StoreDescription();
    void ShowRefusal(const RefusedEntry& refusal);
    void MoveOn();
    Task PassOn(std::exception_ptr error);

    // Keys, clicks, focus (frmMainKeys.cpp); each filter answers whether the event ends there
    bool EntryEvent(QEvent& event);
    bool EntryKey(QKeyEvent& key);
    void CharactersTyped(const QString& text);
    void EntryEscape();
    void MoveByArrow(int rows);
    void LeaveByTab(QKeyEvent& key);
    void ScrollPage(bool down);
    bool EntryLosesFocus(Qt::FocusReason reason);
    bool GridEvent(QEvent& event);
    bool GridKey(QKeyEvent& key);
    bool CellsEvent(QEvent& event);
    void CellClicked(QtFormatGrid& grid);
    bool TabsEvent(QEvent& event);
    bool DefaultButtonKey(QKeyEvent& key);

    Document& document_;
    RSComm& link_;
    TurnQueue& turns_;
    Dialogs& dialogs_;
    std::int16_t& selectedSequence_;
    QStackedLayout* grids_; ///< Qt's, as a part of the window's layout.
    QLabel heading_;
    QLabel hint_;
    bool endedByEnter_ = false;
    bool validating_ = false;
    bool keptUnchanged_ = false; ///< The character being typed does not count as a change.
    bool pressRefused_ = false; ///< The mouse button that is down belongs to a click that must not count.
    int nextRowToFill_ = EditorRowCount;
    Signal periodOver_{turns_};
    Task fill_;
    Task untrapped_;
};

} // namespace vantrel
