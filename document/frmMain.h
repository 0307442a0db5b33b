// The sequence editor, the frame's first child: 31 sequences in three grids on three tabs, and the system messages.
// Shows the document's working copy; borrows document, link and turns.
#pragma once

#include "document/Document.h"
#include "document/GridTexts.h"
#include "link/RSComm.h"
#include "platform/QtFormatGrid.h"
#include "platform/Task.h"
#include "platform/TurnQueue.h"

#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStackedLayout>
#include <QTabBar>
#include <QWidget>

#include <array>
#include <string>

namespace vantrel {

/// Lives as long as the program's windows do: it ignores every request to close it.
class frmMain final : public QWidget {
public:
    /// Shows the status tab. The record may still be empty. All three must outlive the window.
    frmMain(Document& document, RSComm& link, TurnQueue& turns, QWidget* parent = nullptr);

    /// Rebuilds the display when the document asks for it (`ReloadDisplay`), which is thereby answered. Costs nothing
    /// when it does not: call it after every command and on every tick, so that no command can forget it.
    void RefillIfAsked();
    /// Call after every change of the mode: while OFFLINE the status tab shows dashes only.
    void ShowOffline();
    /// Written only when it has changed, so that reading, selecting and scrolling are left in peace.
    void SetSystemMessage(const std::string& text);

    // Controls, by their names.
    QTabBar tbsComm;
    std::array<QtFormatGrid, EditorTabs.size()> fgComm; ///< fgComm[0] belongs to the first tab, and so on.
    QGroupBox fraMessageDisplay;
    QPlainTextEdit txtMessageDisplay;
    QPushButton cmdDefault; ///< Has the focus while nothing is edited; the user does not see it.

    // State.
    EditorTab CurrentTab = EditorTab::CommStatus;
    const SequenceAddresses StatusWordAddresses = StatusWordAddressTable();
    const SequenceAddresses NodeNumberAddresses = NodeNumberAddressTable();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void BuildTabs();
    void LayOutGrids();
    void BuildMessages();
    void BuildDefaultButton();
    void LayOutWindow();

    void ChangeTab();
    [[nodiscard]] QtFormatGrid& VisibleGrid();
    /// Rebuilds the visible grid, a row a turn; replaces a rebuilding that is still under way.
    void StartFill();
    Task Fill();
    void FillRow(int row);

    Document& document_;
    RSComm& link_;
    TurnQueue& turns_;
    QStackedLayout* grids_; ///< Qt's, as a part of the window's layout.
    QLabel heading_;
    QLabel hint_;
    Task fill_;
};

} // namespace vantrel
