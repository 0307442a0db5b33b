// The sequence editor in the real frame: cells are clicked, keys go to whatever has the focus, the simulated board is
// on the port.
#include "document/frmMain.h"

#include "tests/views/ReadAddresses.h"
#include "tests/windows/FrameFixture.h"

#include <QHeaderView>
#include <QInputMethodEvent>
#include <QScrollBar>

#include <algorithm>

namespace vantrel {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* NodeRefused = "VANTREL Configuration|Only a Number Between 2 and 32 can be Entered";
constexpr const char* CallError = "VANTREL|Error Number = 5";

class EditorTest : public FrameTest {
protected:
    EditorTest() { Begin(); }
    EditorTest(const EditorTest&) = delete;
    EditorTest& operator=(const EditorTest&) = delete;
    /// The frame says goodbye to the board when it goes, after the log.
    ~EditorTest() override { frame->Link().SetTrafficLog(nullptr); }
    void Begin() {
        Start();
        editor = dynamic_cast<frmMain*>(frame->findChild<QWidget*>(QStringLiteral("frmMain")));
        ASSERT_TRUE(editor);
        Activate();
        Settle();
    }
    void ClickTab(EditorTab tab) {
        const int index = static_cast<int>(tab) - 1;
        QTest::mouseClick(&editor->tbsComm, Qt::LeftButton, {}, editor->tbsComm.tabRect(index).center());
        Settle();
    }
    void Click(int row, int column) {
        const QRect cell = Grid().CellRect(row, column).translated(-Grid().viewport()->pos());
        QTest::mouseClick(Grid().viewport(), Qt::LeftButton, {}, cell.center());
    }
    /// Opens a cell of the configuration tab and replaces its text.
    void Enter(int row, int column, const std::string& text) {
        if (editor->CurrentTab != EditorTab::Configuration) ClickTab(EditorTab::Configuration);
        Click(row, column);
        Type(text);
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
    ReadAddresses line;
};

TEST_F(EditorTest, AnEntryIsStoredInItsNotationAndARefusedOneKeepsTheBox) {
    struct Case {
        int column;
        std::string typed;
        std::string shown; ///< Of a refused one: what its message is about.
    };
    for (const Case& one : {Case{1, "0", "0"}, Case{2, "13.5", "14"}, Case{3, "v1200", "V1200"}, Case{4, "20h", "20H"},
                            Case{4, "w8174", "W8174"}, Case{6, "fffeh", "FFFEH"}, Case{7, "34463", "V34463"}}) {
        Enter(5, one.column, one.typed);
        Press(Qt::Key_Return);
        EXPECT_EQ(Cell(5, one.column), one.shown);
    }
    EXPECT_EQ(Value(4 * 7 + 6), 65534);
    EXPECT_EQ(Doc().CurrentConfiguration.AddressType(4 * 7 + 6), "H");
    for (const Case& one : {Case{1, "1", "a Number Between 2 and 32"}, Case{3, "X1", "a Number Between V1 and V34463"},
                            Case{6, "1FH", "an Even Value Between 20H and FFFEH"}}) {
        const std::int32_t before = Value(static_cast<std::size_t>(one.column));
        Enter(1, one.column, one.typed);
        Press(Qt::Key_Return);
        EXPECT_EQ(user.shown, (Texts{"VANTREL Configuration|Only " + one.shown + " can be Entered"}));
        EXPECT_EQ(Open(), "1," + std::to_string(one.column) + ":" + one.typed);
        EXPECT_TRUE(AllSelected());
        EXPECT_EQ(Value(static_cast<std::size_t>(one.column)), before);
        Press(Qt::Key_Escape);
        Forget();
    }
}

TEST_F(EditorTest, EnterAndTheArrowsMoveOnWithTheBoxOpen) {
    Enter(30, 6, "40");
    Press(Qt::Key_Return);
    EXPECT_EQ(Open(), "30,7:V1");
    EXPECT_TRUE(AllSelected());
    Press(Qt::Key_Return);
    EXPECT_EQ(Open(), "31,1:0");
    Press(Qt::Key_Down);
    EXPECT_EQ(Open(), "31,1:0");
    Press(Qt::Key_Up);
    EXPECT_EQ(Open(), "30,1:0");
    Type("33");
    Press(Qt::Key_Up);
    EXPECT_EQ(Open(), "30,1:33");
    EXPECT_FALSE(editor->ArrowMove);
    Press(Qt::Key_Escape);
    Enter(31, 7, "5");
    Press(Qt::Key_Return);
    EXPECT_EQ(Open(), "");
    EXPECT_TRUE(editor->cmdDefault.hasFocus());
    EXPECT_EQ(Value(217), 5);
    Enter(1, 2, "120");
    Press(Qt::Key_Up);
    EXPECT_EQ(Open(), "1,2:120") << "stored without moving";
    EXPECT_EQ(editor->SavedCellText, QStringLiteral("120"));
}

TEST_F(EditorTest, EscapeUndoesAndThenCloses) {
    Enter(2, 3, "77");
    Press(Qt::Key_Escape);
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
        [this] { Press(Qt::Key_Tab); },
        [this] { Press(Qt::Key_Backtab, Qt::ShiftModifier); },
        [this] { QTest::mouseClick(editor->txtMessageDisplay.viewport(), Qt::LeftButton); },
        [this] { EXPECT_FALSE(editor->FinishEntry()); }};
    for (const auto& [typed, box] : {std::pair{"1", NodeRefused}, std::pair{"AH", CallError}}) {
        const int column = typed == std::string("AH") ? 4 : 1;
        for (std::size_t i = 0; i < leaving.size(); ++i) {
            Begin();
            Enter(3, column, typed);
            leaving.at(i)();
            Settle();
            Activate();
            ASSERT_EQ(user.shown.size(), 1U) << i;
            EXPECT_TRUE(user.shown.front().starts_with(box)) << user.shown.front();
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
        QTest::mouseClick(place, Qt::LeftButton);
        Settle();
        EXPECT_EQ(Open(), "3,1:1");
    }
    EXPECT_TRUE(user.shown.empty());
    Doc().ReloadDisplay = true;
    Tick();
    EXPECT_EQ(Open(), "");
    EXPECT_EQ(Value(15), 0);
}

TEST_F(EditorTest, LookingWritesNothingAndEnterAlwaysWrites) {
    const std::vector<std::function<void()>> leaving = {[this] { Click(9, 4); },
                                                        [this] { Press(Qt::Key_Up); },
                                                        [this] { Press(Qt::Key_Down); },
                                                        [this] { Press(Qt::Key_Tab); },
                                                        [this] { Press(Qt::Key_Backtab, Qt::ShiftModifier); },
                                                        [this] { Press(Qt::Key_Tab, Qt::ControlModifier); },
                                                        [this] { ClickTab(EditorTab::Descriptions); },
                                                        [this] { EXPECT_TRUE(editor->FinishEntry()); }};
    GoOnline();
    // The record and the board differ, and the record's value is none that could be entered.
    Doc().CurrentConfiguration.SetValue(8, 1);
    board.PokeWord(16384 + 512, 7);
    for (std::size_t i = 0; i < leaving.size(); ++i) {
        Enter(2, 1, "7");
        Press(Qt::Key_Backspace);
        Type("1");
        EXPECT_TRUE(editor->EntryChanged);
        leaving.at(i)();
        Settle();
        EXPECT_EQ(Word(16384 + 512), 7) << i;
        EXPECT_NE(Open().substr(0, 4), "2,1:") << i;
    }
    EXPECT_EQ(user.shown, Texts{});
    Doc().CurrentConfiguration.SetValue(8, 5);
    Doc().ReloadDisplay = true;
    Tick();
    ClickTab(EditorTab::Configuration);
    Click(2, 1);
    Press(Qt::Key_Return);
    EXPECT_EQ(Word(16384 + 512), 5) << "Enter is an entry, changed or not";
    EXPECT_EQ(Open(), "2,2:0");
}

TEST_F(EditorTest, AnEntryOnItsWayStaysOnItsCellAndIsWrittenOnce) {
    GoOnline();
    Enter(2, 2, "12");
    BeLate();
    std::vector<int> words;
    line.onByte = [&] {
        const int word = Word(16384 + 512 + 2);
        if (Flag() == 1 && (words.empty() || words.back() != word)) words.push_back(word);
    };
    frame->Link().SetTrafficLog(&line);
    Strike(Qt::Key_Return);
    EXPECT_TRUE(editor->Writing());
    EXPECT_EQ(Seen(), "2,2:12");
    EXPECT_EQ(Value(9), 12) << "checked and stored at once";
    EXPECT_TRUE(Marked(2, 2));
    Strike(Qt::Key_Return);
    Type("V77");
    Strike(Qt::Key_Tab);
    Type("40");
    Strike(Qt::Key_Return);
    EXPECT_EQ(Seen(), "2,2:12");
    Settle();
    EXPECT_EQ(words, (std::vector{0, 12}));
    EXPECT_FALSE(Marked(2, 2));
    EXPECT_EQ(Value(10), 77) << "typed ahead for the next cells";
    EXPECT_EQ(Value(11), 40);
    EXPECT_EQ(Open(), "2,5:0");
}

TEST_F(EditorTest, NothingStandsStillWhileAnEntryIsOnItsWay) {
    const std::vector<std::function<void()>> going = {
        [this] { Strike(Qt::Key_Escape); },
        [this] { QTest::mouseClick(&editor->tbsComm, Qt::LeftButton, {}, editor->tbsComm.tabRect(2).center()); },
        [this] { EXPECT_TRUE(editor->FinishEntry()); },
        [this] {
            Doc().ReloadDisplay = true;
            Doc().CurrentConfiguration.SetNodeDescription(0, "refilled");
            Tick();
            EXPECT_FALSE(Doc().ReloadDisplay);
        }};
    GoOnline();
    for (std::size_t i = 0; i < going.size(); ++i) {
        const int value = 12 + static_cast<int>(i);
        Enter(2, 2, std::to_string(value));
        BeLate();
        Strike(Qt::Key_Return);
        going.at(i)();
        EXPECT_TRUE(editor->Writing()) << i;
        EXPECT_EQ(Seen(), "") << i;
        Settle();
        EXPECT_EQ(Word(16384 + 512 + 2), value) << i;
        EXPECT_EQ(Open(), "") << i;
        ClickTab(EditorTab::Configuration);
        EXPECT_EQ(Cell(2, 2), std::to_string(value)) << i;
        EXPECT_FALSE(Marked(2, 2));
    }
    EXPECT_EQ(user.shown, Texts{});
}

TEST_F(EditorTest, AnEntryThatTheBoardMakesItsOwnOfComesBack) {
    const auto makesItsOwn = [this] {
        if (Flag() == 0 && Word(16384 + 512 + 6) == 416) board.PokeWord(16384 + 512 + 6, 418, clock.Now());
    };
    const Texts told{"VANTREL Configuration|The board confirmed 1A0H for sequence 1, SendToNode, but holds 1A2H now.\n"
                     "Enter it once more."};
    GoOnline();
    Enter(2, 4, "1A0h");
    line.onByte = makesItsOwn;
    frame->Link().SetTrafficLog(&line);
    Press(Qt::Key_Return);
    EXPECT_EQ(user.shown, told);
    EXPECT_EQ(Value(11), 416);
    EXPECT_EQ(Open(), "2,4:1A2H");
    EXPECT_TRUE(Marked(2, 4));
    Click(9, 4);
    EXPECT_EQ(Value(11), 416) << "leaving it is no entry";
    Forget();

    Enter(2, 4, "1A0h");
    ClickTab(EditorTab::Descriptions);
    EXPECT_EQ(user.shown, told);
    EXPECT_EQ(Open(), "2,4:1A2H") << "from another tab as well";
    Forget();

    Type("1A0h");
    Click(9, 2);
    Type("3");
    Settle();
    EXPECT_EQ(user.shown, told);
    EXPECT_EQ(Open(), "9,2:3") << "not out of the middle of another entry";
    EXPECT_EQ(Cell(2, 4), "1A2H");
}

TEST_F(EditorTest, ALinkThatDiesInAWriteThroughCostsNoEntry) {
    GoOnline();
    Enter(2, 2, "17");
    line.onByte = [&] {
        if (Flag() == 1) port.CutLine();
    };
    frame->Link().SetTrafficLog(&line);
    Press(Qt::Key_Down);
    Activate();
    ASSERT_EQ(user.shown.size(), 2U);
    EXPECT_EQ(user.shown.front(), CableWarning);
    EXPECT_NE(user.shown.back().find("before the board had confirmed 17 for sequence 1, SendWordCount."),
              std::string::npos);
    EXPECT_EQ(Value(9), 17);
    EXPECT_EQ(Cell(2, 2), "17");
    EXPECT_EQ(Open(), "3,2:0");
    Tick();
    EXPECT_EQ(Mode(), "OFFLINE");
}

TEST_F(EditorTest, TheEndOfTheProgramWaitsForTheEntryButNotForASilentBoard) {
    for (const int late : {40, 950}) {
        Begin();
        GoOnline();
        Enter(2, 2, "17");
        BeLate(std::chrono::milliseconds(late));
        const bool silent = late > 60;
        Answer(silent ? std::deque{QMessageBox::Ok, QMessageBox::No} : std::deque{QMessageBox::No});
        frame->close();
        EXPECT_TRUE(frame->isVisible());
        Settle();
        Settle();
        EXPECT_FALSE(frame->isVisible());
        EXPECT_EQ(Word(16384 + 512 + 2), silent ? 0 : 17);
        ASSERT_EQ(user.shown.size(), silent ? 2U : 1U);
        EXPECT_EQ(user.shown.front().find("The link failed before") != std::string::npos, silent);
    }
}

TEST_F(EditorTest, TabGoesFromCellToCellAndControlTabOutOfTheGrid) {
    EXPECT_TRUE(Grid().hasFocus()) << "where the keyboard starts";
    ClickTab(EditorTab::Configuration);
    EXPECT_TRUE(Grid().hasFocus());
    Enter(2, 7, "9");
    Press(Qt::Key_Tab);
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
    Enter(31, 7, "4");
    Press(Qt::Key_Tab);
    EXPECT_EQ(Open(), "");
    EXPECT_TRUE(editor->txtMessageDisplay.hasFocus()) << "behind the last cell";
}

TEST_F(EditorTest, TheTabsShareTheirPlace) {
    ClickTab(EditorTab::Configuration);
    Grid().verticalScrollBar()->setValue(5);
    const int first = Grid().VisibleRows().first;
    ASSERT_GT(first, 1);
    for (const EditorTab tab : {EditorTab::Descriptions, EditorTab::CommStatus}) {
        ClickTab(tab);
        EXPECT_EQ(Grid().VisibleRows().first, first);
    }
}

TEST_F(EditorTest, TheGridIsRefilledAfterAnUpload) {
    GoOnline();
    ClickTab(EditorTab::Configuration);
    board.PokeWord(16384 + 512 + 2, 99);
    Answer({QMessageBox::Yes});
    Menu(Qt::Key_F, Qt::Key_U);
    EXPECT_EQ(Cell(2, 2), "99");
}

TEST_F(EditorTest, TheBoxFollowsItsCellAndWaitsOutOfSight) {
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
}

TEST_F(EditorTest, TheStatusTabReadsWhatIsSeenAndOnlyWhileItIsSeen) {
    const auto pass = [this] {
        line.Forget();
        QMetaObject::invokeMethod(&editor->tmrStatusTab, "timeout");
        Settle();
        return line.Words();
    };
    GoOnline();
    pass();
    frame->Link().SetTrafficLog(&line);
    const RowRange seen = Grid().VisibleRows();
    ASSERT_LT(seen.last, 31);
    Texts expected;
    for (int row = seen.first; row <= seen.last; ++row) {
        expected.push_back("W" + std::to_string(16384 + 512 * (row - 1)));
        expected.push_back("W" + std::to_string(6914 + 2 * (row - 1)));
    }
    EXPECT_EQ(pass(), expected);
    EXPECT_EQ(Cell(seen.last, 2), "00: Comm Disabled");
    EXPECT_EQ(Cell(31, 2), "-- : -");
    {
        QDialog modal(frame.get());
        modal.open();
        EXPECT_EQ(pass(), Texts{});
    }
    line.Forget();
    QMetaObject::invokeMethod(&editor->tmrStatusTab, "timeout");
    for (int i = 0; line.Words().empty(); ++i) {
        ASSERT_LT(i, 1000);
        QCoreApplication::processEvents();
    }
    ClickTab(EditorTab::Configuration);
    EXPECT_EQ(line.Words().size(), 1U) << "a turn for each value, none after the change";
    EXPECT_EQ(pass(), Texts{});
    ClickTab(EditorTab::CommStatus);
    EXPECT_EQ(Cell(1, 2), "00: Comm Disabled");
    Menu(Qt::Key_V, Qt::Key_F);
    Settle();
    EXPECT_EQ(Cell(1, 1) + Cell(1, 2), "--- : -");
    EXPECT_EQ(pass(), Texts{});
}

} // namespace
} // namespace vantrel
