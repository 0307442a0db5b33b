// The sequence editor ONLINE: what is written and when, what is told, and the live status.
#include "tests/windows/EditorFixture.h"

#include <QScrollBar>

namespace vantrel {
namespace {

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
    EXPECT_EQ(user.shown, Boxes{});
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
    Strike(Qt::Key_Return);
    EXPECT_TRUE(editor->Writing());
    EXPECT_EQ(Seen(), "2,2:12");
    Strike(Qt::Key_PageDown);
    EXPECT_GT(Grid().verticalScrollBar()->value(), 0) << "looking is free meanwhile";
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
    EXPECT_EQ(user.shown, Boxes{});
}

TEST_F(EditorTest, AnEntryThatTheBoardMakesItsOwnOfComesBack) {
    const Boxes told{"VANTREL Configuration|The board confirmed 1A0H for sequence 1, To Node, but holds 1A2H now.\n"
                     "Enter it once more."};
    GoOnline();
    line.onByte = [this] {
        if (Flag() == 0 && Word(16384 + 512 + 6) == 416) board.PokeWord(16384 + 512 + 6, 418, clock.Now());
    };
    const std::pair<std::function<void()>, const char*> goingOn[] = {
        {[this] { Press(Qt::Key_Return); }, "2,4:1A2H"},
        {[this] { ClickTab(EditorTab::Descriptions); }, "2,4:1A2H"}, // from another tab as well
        {[this] { Click(9, 2), Type("3"); }, "9,2:3"}}; // not out of the middle of another entry
    for (const auto& [goOn, open] : goingOn) {
        Forget();
        Enter(2, 4, "1A0h");
        goOn();
        Settle();
        EXPECT_EQ(user.shown, told);
        EXPECT_EQ(Value(11), 416);
        EXPECT_EQ(Open(), open);
        EXPECT_EQ(Cell(2, 4), "1A2H");
        EXPECT_TRUE(Marked(2, 4));
        Click(9, 4);
        EXPECT_EQ(Value(11), 416) << "leaving it is no entry";
    }
}

TEST_F(EditorTest, EntriesOnALinkThatDiesAreKeptAndToldOfTogether) {
    GoOnline();
    Enter(2, 2, "17");
    BeLate();
    Click(3, 2);
    Type("18");
    line.onByte = [&] {
        if (Flag() == 1) port.CutLine();
    };
    Press(Qt::Key_Down);
    Activate();
    for (const char* name : {"17 for sequence 1, # Send", "18 for sequence 2"})
        EXPECT_TRUE(user.Showed({CableWarning, name}));
    EXPECT_EQ(Value(9), 17);
    EXPECT_EQ(Cell(2, 2), "17");
    EXPECT_EQ(Open(), "4,2:0");
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
        EXPECT_TRUE(user.Showed(silent ? Boxes{"The link failed before", "Save Changes"} : Boxes{"Save Changes"}));
    }
}

TEST_F(EditorTest, TheGridIsRefilledAfterAnUpload) {
    GoOnline();
    ClickTab(EditorTab::Configuration);
    board.PokeWord(16384 + 512 + 2, 99);
    Menu(Qt::Key_F, Qt::Key_U, {Yes});
    EXPECT_EQ(Cell(2, 2), "99");
}

TEST_F(EditorTest, ARefillThatIsAskedForBehindABoxComesAfterIt) {
    GoOnline();
    port.CutLine();
    user.whileShown = [this] {
        Doc().ReloadDisplay = true;
        Tick();
        EXPECT_TRUE(Doc().ReloadDisplay) << "the pass that has failed is still under the box";
    };
    StatusPass();
    EXPECT_EQ(user.shown, Boxes{CableWarning});
    EXPECT_FALSE(Doc().ReloadDisplay);
}

TEST_F(EditorTest, AnotherBoardBeginsWithDashes) {
    GoOnline();
    StatusPass();
    ASSERT_EQ(Cell(1, 2), "00: Comm Disabled");
    Grid().verticalScrollBar()->setValue(3);
    port.CutLine();
    port.MendLine();
    Answer({QMessageBox::Retry});
    StatusPass();
    StatusPass();
    EXPECT_EQ(user.shown, Boxes{CableWarning});
    EXPECT_EQ(Cell(1, 1) + Cell(1, 2), "--- : -") << "out of sight, and of the board before";
    EXPECT_EQ(Cell(5, 2), "00: Comm Disabled");
}

TEST_F(EditorTest, TheStatusTabReadsWhatIsSeenAndOnlyWhileItIsSeen) {
    const auto pass = [this] {
        line.Forget();
        StatusPass();
        return line.Words();
    };
    GoOnline();
    StatusPass();
    const RowRange seen = Grid().VisibleRows();
    ASSERT_LT(seen.last, 31);
    const Texts words = pass();
    ASSERT_EQ(words.size(), 2 * static_cast<std::size_t>(seen.last - seen.first + 1) + 1) << "and one out of sight";
    EXPECT_EQ((Texts{words[0], words[1], words[2]}), (Texts{"W16384", "W6914", "W16896"}));
    EXPECT_EQ(Cell(seen.last, 2), "00: Comm Disabled");
    EXPECT_EQ(Cell(31, 2), "-- : -");
    {
        QDialog modal(frame.get());
        modal.open();
        EXPECT_EQ(pass(), Texts{});
    }
    ClickTab(EditorTab::Configuration);
    EXPECT_EQ(pass(), Texts{});
    ClickTab(EditorTab::CommStatus);
    EXPECT_EQ(Cell(1, 2), "00: Comm Disabled");
    Menu(Qt::Key_V, Qt::Key_F);
    EXPECT_EQ(Cell(1, 1) + Cell(1, 2), "--- : -");
    EXPECT_EQ(pass(), Texts{});
}

} // namespace
} // namespace vantrel
