// The sequence editor, the frame's first child: 31 sequences in three grids on three tabs, an entry box over the cell
// being edited, and the system messages. Carries texts to SequenceEditor, which edits the document's working copy.
#pragma once

#include "document/CellBlock.h"
#include "document/Document.h"
#include "document/Edit.h"
#include "document/GridTexts.h"
#include "document/SequenceEditor.h"
#include "document/StatusTab.h"
#include "link/RSComm.h"
#include "platform/Dialogs.h"
#include "platform/SetWhile.h"
#include "platform/Signal.h"
#include "platform/Task.h"
#include "platform/TurnQueue.h"
#include "widgets/QtFormatGrid.h"
#include "widgets/QtStripDelegate.h"

#include <QAction>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedLayout>
#include <QTabBar>
#include <QTimer>
#include <QToolButton>
#include <QUndoStack>
#include <QWidget>

#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantrel {

/// Lives as long as the program's windows do: it ignores every request to close it. While the status tab is looked at
/// and the link is ONLINE, it reads the status of the visible sequences again and again.
class frmMain final : public QWidget, private StatusTabDisplay {
public:
    /// Shows the status tab. The record may still be empty. `statusLog` is told what the status tab reads.
    /// `selectedSequence` (0..30) follows the selected row. All that is borrowed must outlive the window.
    frmMain(Document& document, RSComm& link, TurnQueue& turns, Dialogs& dialogs, StatusLog& statusLog,
            std::int16_t& selectedSequence, QWidget* parent = nullptr);
    ~frmMain() override;

    /// Rebuilds the display when the document asks for it (`ReloadDisplay`), which is thereby answered; an open box is
    /// closed unstored. Called inside a task or behind a box it does so in the next turn. Costs nothing when the
    /// document does not ask: call it after every command and on every tick, so that no command can forget it.
    void RefillIfAsked();
    /// Brings the rest of a display that is being rebuilt at once: an entry starts from nothing older than the record,
    /// and a box stands over nothing empty.
    void FinishFill();
    /// Call after every change of the mode: while OFFLINE the status tab shows dashes only.
    void ShowOffline();
    /// The status tab is in sight and read, again and again.
    [[nodiscard]] bool ReadsStatus() const { return link_.OnlineMode() && !link_.LinkFailed() && StatusWanted(); }
    /// Reads the status of one sequence: for as long as the status tab does not.
    [[nodiscard]] Task LookAtNextStatus() {
        return survey_.LookAtNext(NodeNumberAddresses, StatusWordAddresses, link_);
    }
    /// Written only when it has changed, so that reading, selecting and scrolling are left in peace.
    void SetSystemMessage(const std::string& text);

    /// Ends what is in the box as leaving it does, and closes it: a changed text is checked and stored at once and,
    /// ONLINE, on its way to the board before whatever asks for the link next. Call before every command that reads the
    /// document or leaves the editor; true also when nothing was open. False when the entry is refused (the user has
    /// been told, or will be by the last handler): the box stays open with the focus, and the command must not run.
    [[nodiscard]] bool FinishEntry();
    /// An entry is on its way to the board. What must know its end first (the end of the program) awaits Written().
    [[nodiscard]] bool Writing() const { return edits_.Writing(); }
    [[nodiscard]] Task Written() { return edits_.Written(); }
    /// A transfer has shown that the board holds value `index` as the document has it.
    void Confirm(std::size_t index) { edits_.Confirm(index); }
    /// Called when the user asks to see the sequence of a row of the status tab.
    void SetOnSequenceChosen(std::function<void()> onSequenceChosen) {
        onSequenceChosen_ = std::move(onSequenceChosen);
    }
    /// Brings the rest of the visible grid at once: what an entry starts from is never older than the record.
    /// Scrolls to the row of the selected sequence and selects it; call when another window has changed the number.
    void ShowSelectedSequence();
    /// For as long as that lives the status is read behind a modal window as well.
    [[nodiscard]] SetWhile<bool> ReadBehindView() { return {behindView_, true}; }
    /// Leads to the cell of a value, or of a sequence's description, on its tab.
    void GoTo(std::size_t sequence, std::optional<std::size_t> index);

    /// What has changed the record elsewhere (an upload, the stack address) can be undone from now on.
    void Remember(EditStep step);
    /// Does what a command comes to, and remembers it: OFFLINE it is stored; ONLINE it goes to the board as well,
    /// several values only when the user agrees. False when the user does not: nothing has changed.
    bool Make(const EditStep& step);
    /// Stores what the board holds already, and remembers it: nothing is sent.
    bool Take(const EditStep& step);
    /// How several values go to the board: `maySend` is asked before they are stored, `send` sends them from there,
    /// while the user watches.
    void SetOnSendBlock(std::function<bool()> maySend, std::function<void(const std::vector<std::size_t>&)> send) {
        maySendBlock_ = std::move(maySend);
        sendBlock_ = std::move(send);
    }
    /// The editor's own commands, for a menu; nullptr stands for a separator.
    [[nodiscard]] const std::vector<QAction*>& Commands() const { return commands_; }

    // Controls, by their names.
    QTabBar tbsComm;
    std::array<QtFormatGrid, EditorTabs.size()> fgComm; ///< fgComm[0] belongs to the first tab, and so on.
    QLineEdit txtEntry; ///< A child of the grid's cells, so that it is never drawn over headings or borders.
    QGroupBox fraMessageDisplay;
    QPlainTextEdit txtMessageDisplay;
    std::array<QToolButton, SequenceHealths.size()> cmdHealth; ///< How many are OK, and so on; each shows them alone.
    QPushButton cmdDefault; ///< Has the focus while nothing is edited; the user does not see it.
    QTimer tmrStatusTab; ///< Runs from the end of one pass over the status tab to the next.

    // State.
    EditorTab CurrentTab = EditorTab::CommStatus;
    std::int16_t EditRow = 0; ///< Of the cell under the box.
    std::int16_t EditCol = 0;
    std::int16_t EditIndex = 0; ///< Of that cell in the record's value arrays; on the configuration tab.
    QString SavedCellText; ///< Of that cell when the box was opened.
    [[nodiscard]] bool EntryOpen() const { return entry_ != EntryState::Shut; }
    bool EntryChanged = false; ///< The user has typed since the box was opened or put back.
    bool ArrowMove = false; ///< The validation under way was started by the Up or Down key.
    std::int16_t SequenceRowHeight = 0; ///< Pixels.
    const SequenceAddresses StatusWordAddresses = StatusWordAddressTable();
    const SequenceAddresses NodeNumberAddresses = NodeNumberAddressTable();

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
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
    [[nodiscard]] int MessagesHeight(int lines) const;
    /// The messages give way to the rows of the grid.
    void FitMessages();

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
    void Refill();
    Task RefillInTurn();
    /// Rebuilds the visible grid and keeps it live; replaces what still runs for the one before.
    void StartFill();
    Task FillAndFollow();
    void FillRow(int row);
    void ShowCell(int row, int column, const std::string& text);
    [[nodiscard]] bool StatusWanted() const override;
    [[nodiscard]] bool RowVisible(int row) const override;
    void ShowNode(int row, const std::string& text) override;
    void ShowStatus(int row, const std::string& text) override;

    // What stands beside the status (frmMainStatus.cpp)
    void LayOutStatusGrid();
    QWidget* BuildHealthBar();
    void ShowRecord(int row);
    /// How many are in each state, and only those that are asked for.
    void ShowHealth();
    /// What is to be selected must not be left out.
    void ShowRowOf(int sequence);
    void ChooseHealth(SequenceHealth health, bool chosen);
    [[nodiscard]] std::vector<StripTick> TicksOf(int row) const;

    // The entry box (frmMainEntry.cpp)
    /// What leaves the box, and where to it goes on then.
    enum class EntryEnd { Elsewhere, Enter, Up, Down, NextCell, CellBefore };
    /// Over the grid's current cell, if that can be edited, with its text selected.
    void OpenEntryBox();
    void PlaceEntryBox();
    void TakeFocus();
    void SetEntry(EntryState state);
    /// Without a check: nothing is stored.
    void CloseEntryBox();
    /// Validates what a key has ended, and goes on from there: at once, or when the board has answered.
    void EndBy(EntryEnd end);
    /// Checks, stores, shows and sends the entry, if it is one. False when it was refused.
    bool txtEntry_Validate();
    /// The same; an unexpected error counts as refused and goes to the last handler.
    bool Validate();
    [[nodiscard]] bool StoreEntry();
    [[nodiscard]] EditPlace PlaceOfEntry() const;
    void ShowRefusal(const RefusedEntry& refusal);
    void MoveOn();
    void MoveByRow(int rows);
    struct Cell {
        int row;
        int column;
    };
    /// The cell before or behind the current one, line by line; none at the ends of the grid.
    [[nodiscard]] std::optional<Cell> CellBeside(int step) const;
    Task PassOn(std::exception_ptr error);

    // Undo and redo (frmMainUndo.cpp)
    class Step;
    void BuildUndo();
    void Undo();
    void Redo();
    [[nodiscard]] bool Perform(const EditStep& step);
    [[nodiscard]] bool MaySend(const std::string& name, std::size_t values);

    // Blocks of cells (frmMainBlocks.cpp)
    QAction* AddCommand(const char* name, const QString& caption, const QKeySequence& keys, void (frmMain::*command)());
    void BuildBlockCommands();
    [[nodiscard]] std::optional<CellBlock> SelectedBlock() const;
    /// The same, once an open entry has been stored; nothing when that was refused.
    std::optional<CellBlock> BlockToChange();
    void ShowBlockCommands();
    /// False when nothing was made of it, because it was refused or because the user would not send it.
    bool MakeBlock(const char* name, const BlockAnswer& answer);
    void ShowBlockRefusal(const std::string& text);
    void Cut();
    void Copy();
    void Paste();
    void Clear();
    void FillDown();
    void FillSeries();
    void DuplicateSequence();
    void MoveSequenceUp() { MoveSequence(-1); }
    void MoveSequenceDown() { MoveSequence(1); }
    void MoveSequence(int rows);

    // Back from the board (frmMainLanding.cpp)
    void Landed(const LandedEdit& landed);
    void ShowLanded(const LandedEdit& landed);
    void TellLanded(const LandedEdit& landed);
    void ComeBack(const LandedEdit& landed);
    void TypeAgain(const std::vector<std::unique_ptr<QKeyEvent>>& typed);

    // Keys, clicks, focus (frmMainKeys.cpp); each filter answers whether the event ends there
    bool EntryEvent(QEvent& event);
    bool EntryKey(QKeyEvent& key);
    /// Keys that mean the grid although the box has the focus: a selection begins, or a block is pasted.
    bool KeyForGrid(QKeyEvent& key);
    void ComeIntoSight(const QString& text);
    bool CharacterTyped(const QString& text);
    /// While the entry is on its way.
    void KeyMeanwhile(const QKeyEvent& key);
    void EntryEscape();
    void ShutByEscape();
    /// Out of the grid, to the control behind or before it.
    void LeaveGrid(bool forward);
    void ScrollPage(bool down);
    bool EntryLosesFocus(Qt::FocusReason reason);
    bool GridEvent(QEvent& event);
    bool GridKey(QKeyEvent& key);
    void GridTab(bool forward);
    bool CellsEvent(QEvent& event);
    void CellClicked(QtFormatGrid& grid);
    /// The sequence of the current row, on the status tab.
    void ChooseSequence();
    bool TabsEvent(QEvent& event);
    bool DefaultButtonKey(QKeyEvent& key);

    Document& document_;
    RSComm& link_;
    TurnQueue& turns_;
    Dialogs& dialogs_;
    StatusLog& statusLog_;
    StatusSurvey survey_{statusLog_};
    std::int16_t& selectedSequence_;
    std::function<void()> onSequenceChosen_;
    QStackedLayout* grids_; ///< Qt's, as a part of the window's layout.
    QLabel heading_;
    QLabel hint_;
    std::optional<SequenceHealth> healthShown_; ///< Nothing: every sequence is.
    EntryState entry_ = EntryState::Shut;
    EntryEnd endedBy_ = EntryEnd::Elsewhere;
    std::vector<std::unique_ptr<QKeyEvent>> typedAhead_; ///< While the entry is on its way.
    std::string untold_; ///< Of entries whose board was lost; told with the last of them.
    bool pressRefused_ = false; ///< The mouse button that is down belongs to a click that must not count.
    int nextRowToFill_ = EditorRowCount;
    Signal periodOver_{turns_};
    bool behindView_ = false;
    Task fill_;
    Task refill_;
    Task untrapped_;
    SequenceEditor edits_;
    int markedDocument_ = 0; ///< Whose values are marked, and whose steps can be undone.
    QUndoStack undo_;
    std::vector<QAction*> commands_; ///< Qt's children of the editor.
    std::vector<QAction*> blockCommands_; ///< Those of them that need a block of cells.
    std::function<bool()> maySendBlock_;
    std::function<void(const std::vector<std::size_t>&)> sendBlock_;
};

} // namespace vantrel
