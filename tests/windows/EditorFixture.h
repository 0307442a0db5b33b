// The sequence editor in the real frame: cells are clicked, keys go to whatever has the focus, the simulated board is
// on the port.
#pragma once

#include "document/frmMain.h"
#include "tests/windows/FrameFixture.h"

namespace vantrel {

class EditorTest : public FrameTest {
protected:
    explicit EditorTest(LinePacing pacing = LinePacing::None) : FrameTest(pacing) { Begin(); }
    void Begin() {
        Start();
        editor = dynamic_cast<frmMain*>(frame->findChild<QWidget*>(QStringLiteral("frmMain")));
        ASSERT_TRUE(editor);
        // The status is read when a test says so.
        editor->tmrStatusTab.setInterval(std::chrono::hours(1));
        Activate();
        Settle();
    }
    void ClickTab(EditorTab tab) {
        const QRect place = editor->tbsComm.tabRect(static_cast<int>(tab) - 1);
        QTest::mouseClick(&editor->tbsComm, Qt::LeftButton, {}, place.center());
        Settle();
    }
    void Click(int row, int column) {
        const QRect cell = Grid().CellRect(row, column).translated(-Grid().viewport()->pos());
        QTest::mouseClick(Grid().viewport(), Qt::LeftButton, {}, cell.center());
    }
    void StatusPass() {
        QMetaObject::invokeMethod(&editor->tmrStatusTab, "timeout");
        Settle();
    }
    /// Opens a cell of the configuration tab and replaces its text; with a key that ends it.
    void Enter(int row, int column, const std::string& text, std::optional<Qt::Key> end = {}) {
        if (editor->CurrentTab != EditorTab::Configuration) ClickTab(EditorTab::Configuration);
        Click(row, column);
        Type(text);
        if (end) Press(*end);
    }
    /// To the window, which gives keys to whatever has the focus.
    void Type(const std::string& text) {
        for (const char character : text)
            QTest::keyClick(frame->windowHandle(), character);
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers held = {}) {
        Activate();
        QTest::keyClick(frame->windowHandle(), key, held);
        Settle();
    }
    /// The board answers the next byte late: what is written to it now is on its way for a while.
    void BeLate(std::chrono::milliseconds by = std::chrono::milliseconds(950)) {
        board.AddFault({.kind = FaultKind::LateAnswer, .firstTimeOnly = true, .lateBy = by});
    }
    /// Without waiting for the board.
    void Strike(Qt::Key key, Qt::KeyboardModifiers held = {}) { QTest::keyClick(frame->windowHandle(), key, held); }
    [[nodiscard]] bool Marked(int row, int column) {
        const QModelIndex cell = Grid().model()->index(row - 1, column - 1);
        return cell.data(Qt::FontRole).value<QFont>().italic() || cell.data(Qt::ForegroundRole).isValid();
    }

    [[nodiscard]] QtFormatGrid& Grid() { return editor->fgComm.at(static_cast<std::size_t>(editor->CurrentTab) - 1); }
    [[nodiscard]] std::string Cell(int row, int column) { return Grid().Text(row, column).toStdString(); }
    /// The open cell and the text of its box, "row,column:text"; empty while nothing is open. The box has the focus.
    [[nodiscard]] std::string Open() {
        Activate();
        return Seen();
    }
    /// The same without a turn for anybody.
    [[nodiscard]] std::string Seen() {
        EXPECT_EQ(editor->txtEntry.hasFocus(), editor->EntryOpen());
        if (!editor->EntryOpen()) return {};
        EXPECT_EQ(editor->EditRow, Grid().CurrentRow());
        EXPECT_EQ(editor->EditCol, Grid().CurrentColumn());
        return std::to_string(editor->EditRow) + "," + std::to_string(editor->EditCol) + ":" +
               editor->txtEntry.text().toStdString();
    }
    [[nodiscard]] bool AllSelected() const { return editor->txtEntry.selectedText() == editor->txtEntry.text(); }
    [[nodiscard]] bool BoxSeen() const { return !editor->txtEntry.visibleRegion().isEmpty(); }

    frmMain* editor = nullptr;
};

} // namespace vantrel
