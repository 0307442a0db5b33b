// The sequence editor's entries, keys and tabs, where no board is needed.
#include "tests/windows/EditorFixture.h"

#include <QHeaderView>
#include <QInputMethodEvent>
#include <QScrollBar>

namespace vantrel {
namespace {

constexpr const char* NodeRefused = "VANTREL Configuration|Only a Number Between 2 and 32 can be Entered";
constexpr const char* CallError = "VANTREL|Error Number = 5";

TEST_F(EditorTest, EnterAndTheArrowsMoveOnWithTheBoxOpen) {
    Enter(30, 6, "40", Qt::Key_Return);
    EXPECT_EQ(Open(), "30,7:V1");
    EXPECT_TRUE(AllSelected());
    Press(Qt::Key_Return);
    Press(Qt::Key_Down);
    EXPECT_EQ(Open(), "31,1:0");
    Press(Qt::Key_Up);
    EXPECT_EQ(Open(), "30,1:0");
    Type("33");
    Press(Qt::Key_Up);
    EXPECT_EQ(Open(), "30,1:33");
    EXPECT_FALSE(editor->ArrowMove);
    Press(Qt::Key_Escape);
    Enter(31, 7, "5", Qt::Key_Return);
    EXPECT_EQ(Open(), "");
    EXPECT_TRUE(editor->cmdDefault.hasFocus());
    EXPECT_EQ(Value(217), 5);
    Enter(1, 2, "120", Qt::Key_Up);
    EXPECT_EQ(Open(), "1,2:120") << "stored without moving";
    EXPECT_EQ(editor->SavedCellText, QStringLiteral("120"));
}

TEST_F(EditorTest, EscapeUndoesAndThenCloses) {
    Enter(2, 3, "77", Qt::Key_Escape);
    EXPECT_EQ(Open(), "2,3:V1");
    EXPECT_TRUE(AllSelected());
    Press(Qt::Key_Escape);
    EXPECT_EQ(Open(), "");
    EXPECT_EQ(Grid().CurrentRow(), 0);
    EXPECT_TRUE(editor->cmdDefault.hasFocus());
    for (const char* quirk : {"7&", "7("}) {
        Enter(2, 3, quirk);
        EXPECT_FALSE(editor->EntryChanged);
        Press(Qt::Key_Escape);
        EXPECT_EQ(Open(), "") << "that character counts as no change";
    }
    EXPECT_EQ(Value(10), 1);
}

TEST_F(EditorTest, ARefusedEntryStopsWhateverWouldLeaveIt) {
    const std::vector<std::function<void()>> leaving = {
        [this] { Click(9, 4); },
        [this] { QTest::mouseClick(Grid().horizontalHeader()->viewport(), Qt::LeftButton); },
        [this] { ClickTab(EditorTab::Descriptions); },
        [this] { Press(Qt::Key_D, Qt::AltModifier); },
        [this] { Press(Qt::Key_Return); },
        [this] { Press(Qt::Key_Tab); },
        [this] { Press(Qt::Key_Backtab, Qt::ShiftModifier); },
        [this] { QTest::mouseClick(editor->txtMessageDisplay.viewport(), Qt::LeftButton); },
        [this] { EXPECT_FALSE(editor->FinishEntry()); }};
    for (const auto& [column, typed, box] : {std::tuple{1, "1", NodeRefused}, {4, "AH", CallError}}) {
        for (std::size_t i = 0; i < leaving.size(); ++i) {
            Begin();
            Enter(3, column, typed);
            leaving.at(i)();
            Settle();
            EXPECT_TRUE(user.Showed({box})) << i;
            EXPECT_EQ(Open(), "3," + std::to_string(column) + ":" + typed) << i;
            EXPECT_TRUE(AllSelected()) << i;
            EXPECT_EQ(editor->CurrentTab, EditorTab::Configuration);
            EXPECT_EQ(Value(2 * 7 + static_cast<std::size_t>(column)), column == 1 ? 0 : 32);
            Type("32");
            Click(9, 4);
            EXPECT_EQ(Open(), "9,4:W32") << "the click decides";
            EXPECT_EQ(Value(2 * 7 + static_cast<std::size_t>(column)), 32);
        }
    }
}

TEST_F(EditorTest, MenusOtherWindowsAndEmptyPlacesValidateNothing) {
    Enter(3, 1, "1");
    QTest::keyClick(frame->windowHandle(), Qt::Key_F, Qt::AltModifier);
    ASSERT_TRUE(QApplication::activePopupWidget());
    QTest::keyClick(frame->windowHandle(), Qt::Key_Escape);
    QTest::keyClick(frame->windowHandle(), Qt::Key_Escape);
    QWidget other;
    other.show();
    other.activateWindow();
    Settle();
    ASSERT_FALSE(editor->txtEntry.hasFocus());
    Activate();
    for (QWidget* place : {static_cast<QWidget*>(editor), static_cast<QWidget*>(Grid().verticalScrollBar())}) {
        ClickButton(place);
        EXPECT_EQ(Open(), "3,1:1");
    }
    EXPECT_TRUE(user.shown.empty());
    Doc().ReloadDisplay = true;
    Tick();
    EXPECT_EQ(Open(), "");
    EXPECT_EQ(Value(15), 0);
}

TEST_F(EditorTest, TabGoesFromCellToCellAndControlTabOutOfTheGrid) {
    EXPECT_TRUE(Grid().hasFocus()) << "where the keyboard starts";
    ClickTab(EditorTab::Configuration);
    EXPECT_TRUE(Grid().hasFocus());
    Enter(2, 7, "9", Qt::Key_Tab);
    EXPECT_EQ(Value(14), 9);
    EXPECT_EQ(Open(), "3,1:0");
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(Open(), "2,7:V9");
    Press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(Open(), "");
    EXPECT_TRUE(editor->txtMessageDisplay.hasFocus());
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(Grid().hasFocus());
    Press(Qt::Key_Tab);
    EXPECT_EQ(Grid().CurrentRow() * 10 + Grid().CurrentColumn(), 31);
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(Grid().CurrentRow() * 10 + Grid().CurrentColumn(), 27);
    Press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_FALSE(Grid().hasFocus());
    Enter(31, 7, "4", Qt::Key_Tab);
    EXPECT_EQ(Open(), "");
    EXPECT_TRUE(editor->txtMessageDisplay.hasFocus()) << "behind the last cell";
}

TEST_F(EditorTest, TheBoxFollowsItsCellAndTheTabsShareTheirPlace) {
    Enter(3, 2, "12");
    QScrollBar& bar = *Grid().verticalScrollBar();
    const QRect before = editor->txtEntry.geometry();
    bar.setValue(1);
    EXPECT_EQ(editor->txtEntry.geometry(), before.translated(0, -editor->SequenceRowHeight));
    EXPECT_TRUE(BoxSeen());
    bar.setValue(3);
    EXPECT_FALSE(BoxSeen());
    EXPECT_EQ(Open(), "3,2:12");
    Type("0");
    EXPECT_TRUE(BoxSeen()) << "typing brings the cell back";
    bar.setValue(bar.maximum());
    Press(Qt::Key_Return);
    EXPECT_EQ(Value(2 * 7 + 2), 120);
    EXPECT_EQ(Open(), "3,3:V1");
    EXPECT_TRUE(BoxSeen());
    bar.setValue(2);
    for (const EditorTab tab : {EditorTab::Descriptions, EditorTab::CommStatus}) {
        ClickTab(tab);
        EXPECT_EQ(Grid().VisibleRows().first, 3);
    }
}

TEST_F(EditorTest, TheKeyboardAloneOpensAndLeavesAndDescriptionsFitTheFile) {
    ClickTab(EditorTab::Descriptions);
    Click(4, 1);
    EXPECT_EQ(Open(), "") << "a node number is not edited here";
    EXPECT_EQ(frame->State().SelectedSequence, 3);
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_F2})
        Press(key);
    EXPECT_EQ(Open(), "4,2:");
    QInputMethodEvent typed;
    typed.setCommitString(QStringLiteral("M\u00FChle \u4E2D"));
    QCoreApplication::sendEvent(&editor->txtEntry, &typed);
    Press(Qt::Key_Return);
    EXPECT_EQ(Doc().CurrentConfiguration.NodeDescription(3), "M\u00FChle ?");
    EXPECT_EQ(Open(), "5,2:");
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    Type("Pump");
    EXPECT_EQ(Open(), "4,2:Pump");
    Press(Qt::Key_Escape);
    Press(Qt::Key_Escape);
    Press(Qt::Key_Down);
    EXPECT_EQ(Grid().CurrentRow(), 5) << "goes on from the sequence in view";
    for (const auto& [number, row] : {std::pair{30, 31}, std::pair{-1, 1}}) {
        frame->State().SelectedSequence = static_cast<std::int16_t>(number);
        editor->ShowSelectedSequence();
        EXPECT_EQ(Grid().CurrentRow(), row);
        EXPECT_TRUE(Grid().VisibleRows().Contains(row));
    }
    const std::string longest(0xFFFF, 'x');
    Doc().CurrentConfiguration.SetNodeDescription(5, longest);
    Doc().ReloadDisplay = true;
    TickAndSettle();
    Click(6, 2);
    Press(Qt::Key_Return);
    EXPECT_EQ(Doc().CurrentConfiguration.NodeDescription(5), longest) << "nothing is cut off by walking over it";
}

} // namespace
} // namespace vantrel
