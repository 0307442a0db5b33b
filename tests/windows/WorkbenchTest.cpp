// Undo, blocks of cells, comparing and checking, as a user does them in the frame.
#include "app/frmCompare.h"
#include "document/frmCheck.h"
#include "link/TargetMap.h"
#include "tests/windows/EditorFixture.h"

#include <QClipboard>
#include <QTreeWidget>

namespace vantrel {

namespace {

using enum SequenceField;

class WorkbenchTest : public EditorTest {
protected:
    void Paste(int row, int column, const char* text) {
        QApplication::clipboard()->setText(QString::fromUtf8(text));
        if (editor->CurrentTab != EditorTab::Configuration) ClickTab(EditorTab::Configuration);
        Click(row, column);
        Press(Qt::Key_V, Qt::ControlModifier);
    }
    std::string Offered(const char* name) {
        const auto* action = editor->findChild<QAction*>(QLatin1String(name));
        return (action->isEnabled() ? "" : "-") + action->text().toStdString();
    }
    std::uint16_t OnBoard(std::size_t index) {
        return Word(static_cast<std::uint16_t>(std::stoi(DefaultTargetAddress(index).substr(1))));
    }
};

TEST_F(WorkbenchTest, ABlockIsPastedUndoneAndDoneAgainAsOneStep) {
    EXPECT_EQ(Offered("mnuEditUndo"), "-&Undo");
    Enter(1, 1, "7", Qt::Key_Return);
    Press(Qt::Key_Escape);
    EXPECT_EQ(Offered("mnuEditUndo"), "&Undo Entry");
    Paste(2, 3, "From TI\tTo Node\nV10\tW40\nV20\t33\n");
    EXPECT_TRUE(user.Showed({"sequence 2, To Node: \"33\": Only an Even Value"}));
    EXPECT_EQ(Value(ValueIndex(1, SendFromTI)), 1) << "nothing is stored";
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(user.shown.size(), 2U) << "the keys are still the grid's";
    Forget();
    Paste(2, 3, "V10\tW40\nV20\t20H\n");
    EXPECT_EQ(Cell(2, 3) + Cell(2, 4) + Cell(3, 3) + Cell(3, 4), "V10W40V2020H");
    EXPECT_EQ(Offered("mnuEditUndo"), "&Undo Paste");
    Press(Qt::Key_Escape);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Cell(2, 3) + Cell(3, 4) + Cell(1, 1), "V1W327");
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Cell(1, 1), "0");
    EXPECT_FALSE(Doc().Changed());
    for (int i = 0; i < 2; ++i)
        Press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(Cell(3, 4) + Cell(1, 1), "20H7");
    EXPECT_EQ(Offered("mnuEditRedo"), "-&Redo");
    Answer({No});
    frame->mnuFileNew->trigger();
    Settle();
    EXPECT_EQ(Offered("mnuEditUndo"), "-&Undo");
}

TEST_F(WorkbenchTest, EveryCommandOnABlockIsNamedInTheMenuAndTakenBack) {
    EXPECT_EQ(Offered("mnuEditPaste"), "-&Paste") << "the status tab has no cells to change";
    for (const auto& [row, text] : {std::pair{1, "7"}, {2, "9"}, {3, "20"}})
        Enter(row, 1, text, Qt::Key_Return);
    const Configuration before = Doc().CurrentConfiguration;
    for (const auto& [command, caption] : {std::pair{"Cut", "Cut"},
                                           {"Clear", "Clear"},
                                           {"FillDown", "Fill Down"},
                                           {"FillSeries", "Fill Series"},
                                           {"Duplicate", "Duplicate Sequence"},
                                           {"MoveUp", "Move Sequence Up"},
                                           {"MoveDown", "Move Sequence Down"}}) {
        Click(command == std::string("MoveUp") ? 2 : 1, 1);
        for (int i = 0; i < 2; ++i)
            Press(Qt::Key_Down, Qt::ShiftModifier);
        editor->findChild<QAction*>(QStringLiteral("mnuEdit") + QLatin1String(command))->trigger();
        EXPECT_EQ(Offered("mnuEditUndo"), std::string("&Undo ") + caption);
        EXPECT_FALSE(EditsBetween(before, Doc().CurrentConfiguration).empty()) << command;
        Press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_TRUE(EditsBetween(before, Doc().CurrentConfiguration).empty()) << command;
        EXPECT_EQ(Offered("mnuEditRedo"), std::string("&Redo ") + caption);
    }
    ClickTab(EditorTab::Descriptions);
    Click(1, 2);
    Type("Pump");
    Press(Qt::Key_Return);
    EXPECT_EQ(Offered("mnuEditUndo"), "&Undo Description");
    Type("Valve");
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Open(), "2,2:") << "in the box it takes back typing";
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Offered("mnuEditRedo"), "&Redo Description") << "and with none left the step before";
    EXPECT_TRUE(user.shown.empty());
}

TEST_F(WorkbenchTest, OnlineABlockIsSentAfterOneQuestionAndAnUndoneEntryGoesBackToTheBoard) {
    GoOnline();
    for (const auto answer : {No, Yes}) {
        Answer({answer});
        Paste(2, 3, "V10\tW40\n");
        EXPECT_EQ(user.shown.size(), 1U);
        EXPECT_EQ(Value(ValueIndex(1, SendFromTI)), answer == Yes ? 10 : 1);
    }
    EXPECT_EQ(OnBoard(ValueIndex(1, SendFromTI)), 10);
    EXPECT_EQ(OnBoard(ValueIndex(1, SendToNode)), 40);
    EXPECT_EQ(Flag(), 0);
    Press(Qt::Key_Escape);
    for (const auto& [key, asked] : {std::pair(Qt::Key_Z, "Undo Paste: 2 "), {Qt::Key_Y, "Redo Paste: 2 "}}) {
        Answer({Yes});
        Press(key, Qt::ControlModifier);
        EXPECT_TRUE(user.Showed({asked}));
    }
    Forget();
    Enter(5, 1, "9", Qt::Key_Return);
    EXPECT_EQ(OnBoard(ValueIndex(4, NodeNumber)), 9);
    Press(Qt::Key_Escape);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(OnBoard(ValueIndex(4, NodeNumber)), 0);
    EXPECT_TRUE(user.shown.empty());
}

TEST_F(WorkbenchTest, AValueInDoubtStaysRedUntilATransferIsSureOfIt) {
    GoOnline();
    const auto red = [this] {
        const auto& cells = *Grid().model();
        return cells.data(cells.index(1, 2), Qt::ForegroundRole).isValid();
    };
    board.AddFault({.kind = FaultKind::WrongEcho});
    Enter(2, 3, "9", Qt::Key_Return);
    for (const bool sure : {false, true}) {
        if (sure) board.ClearFaults();
        (void)Download({Yes});
        EXPECT_EQ(red(), !sure);
    }
}

TEST_F(WorkbenchTest, BeforeABlockIsSentAnotherBoardIsNamedOnceAConnection) {
    frame->OpenFile(Stored("plant.sdt", 500));
    GoOnline();
    (void)Download({Yes});
    board.Poke(NetworkAddressByte, 7);
    for (const auto& [answers, stored] : {std::pair{Answers{Yes, No}, 1}, {{Yes, Yes}, 10}, {{Yes}, 12}}) {
        Answer(answers);
        Paste(2, 3, stored == 12 ? "V12\tW42\n" : "V10\tW40\n");
        EXPECT_EQ(user.shown.size(), answers.size());
        EXPECT_EQ(OnBoard(ValueIndex(1, SendFromTI)), stored);
        EXPECT_EQ(Value(ValueIndex(1, SendFromTI)), stored);
    }
    Menu(Qt::Key_V, Qt::Key_F);
    GoOnline();
    Answer({Yes, No});
    Paste(2, 3, "V11\tW44\n");
    EXPECT_EQ(user.shown.size(), 2U);
}

TEST_F(WorkbenchTest, OfWhatDiffersFromTheBoardOnlyWhatIsTickedIsSentOrTaken) {
    GoOnline();
    (void)Download({Yes});
    const auto at = [](std::size_t sequence) { return ValueIndex(sequence, SendWordCount); };
    for (std::size_t sequence = 0; sequence < 5; ++sequence)
        Doc().CurrentConfiguration.SetValue(at(sequence), 10);
    Menu(Qt::Key_V, Qt::Key_F);
    Menu(Qt::Key_T, Qt::Key_B, {Yes});
    EXPECT_TRUE(user.shown.size() == 1 && user.shown[0].starts_with("Program Offline|")) << "the way of a transfer";
    Forget();
    auto& window = Opened<frmCompare>();
    ASSERT_EQ(window.Report().differences.size(), 5U);
    EXPECT_EQ(window.Report().there, "the board, network address 1, program ident \"K5216505\"");
    const auto tick = [&](const std::set<int>& ticked) {
        for (int i = 0; i < window.lstDifferences->topLevelItemCount(); ++i)
            window.lstDifferences->topLevelItem(i)->child(0)->setCheckState(0, ticked.contains(i) ? Qt::Checked
                                                                                                  : Qt::Unchecked);
    };
    tick({0, 1});
    ClickButton(window.cmdSend);
    EXPECT_EQ(OnBoard(at(1)) + OnBoard(at(2)), 10);
    ASSERT_EQ(window.Report().differences.size(), 3U);
    tick({0, 1});
    Enter(1, 1, "99");
    QTest::mouseClick(window.cmdTake, Qt::LeftButton);
    EXPECT_EQ(window.Report().differences.size(), 3U) << "the box behind it is refused";
    Press(Qt::Key_Escape);
    Forget();
    ClickButton(window.cmdTake);
    EXPECT_EQ(Value(at(2)) + Value(at(3)) + Value(at(4)), 10);
    EXPECT_EQ(window.Report().differences.size(), 1U);
    EXPECT_EQ(Offered("mnuEditUndo"), "&Undo Taking Differences");
    EXPECT_FALSE(window.Old());
    for (const char* name : {"list", "list.csv", "list"}) {
        EXPECT_TRUE(user.shown.empty());
        Answer({No}, {(folder / name).string()});
        ClickButton(window.cmdSaveList);
    }
    EXPECT_TRUE(user.Showed({"list.txt\" is there already"})) << "with the ending that nobody typed";
    EXPECT_EQ(FileText(folder / "list.txt"), ComparisonText(window.Report()));
    EXPECT_EQ(FileText(folder / "list.csv"), ComparisonCsv(window.Report()));
    Forget();
    Doc().CurrentConfiguration.SetValue(at(7), 3);
    Tick();
    EXPECT_TRUE(window.Old());
    EXPECT_FALSE(window.cmdSend->isEnabled());
    EXPECT_TRUE(user.shown.empty());
}

TEST_F(WorkbenchTest, TheComparisonSaysWhatItKnowsAndOffersWhatCanBeDone) {
    const auto nothing = [](const auto&...) {};
    frmCompare window({nothing, nothing, nothing, nothing, nothing, nothing, nothing}, frame.get());
    const auto offered = [&] {
        std::string names;
        for (const QPushButton* button : {window.cmdSend, window.cmdTake, window.cmdSaveBoard, window.cmdRepeat})
            names += button->isEnabled() ? button->text().remove(u'&').front().toLatin1() : '-';
        return names;
    };
    const Difference different{.sequence = 2, .index = ValueIndex(2, SendToNode), .here = "W40", .there = "W42"};
    const Difference doubtful{.sequence = 3, .index = ValueIndex(3, SendToNode), .here = "W40", .doubtful = true};
    using Case = std::tuple<std::vector<Difference>, const char*, const char*, const char*>;
    for (const auto& [rows, remark, state, buttons] :
         {Case{{}, "", "No differences.", "--SC"}, Case{{different}, "", "1 difference.", "STSC"},
          Case{
              {different, doubtful, doubtful}, "", "1 difference. 2 not read clearly: they may differ or not.", "ST-C"},
          Case{{doubtful}, "", "0 differences. 1 not read clearly: they may differ or not.", "S--C"},
          Case{{different, different}, "Cut off.", "2 differences. Cut off.", "ST-C"},
          Case{{}, "Cut off.", "0 differences. Cut off.", "---C"}}) {
        window.Show({"here", "there", "now", remark, rows});
        window.SetOnline(true);
        EXPECT_EQ(window.lblState->text().toStdString(), state);
        EXPECT_EQ(offered(), buttons) << state;
        window.SetOnline(false);
        EXPECT_EQ(window.lblState->text().toStdString(), state + std::string(" OFFLINE nothing can be sent."));
        EXPECT_EQ(offered(), "-" + std::string(buttons).substr(1));
    }
    window.Show({"here", "there", "now", "", {different}});
    window.lstDifferences->topLevelItem(0)->setCheckState(0, Qt::Unchecked);
    window.SetOnline(true);
    EXPECT_EQ(offered(), "--SC") << "nothing is ticked";
    window.Show({"here", "there", "now", "", {different, doubtful}});
    EXPECT_EQ(window.lstDifferences->topLevelItem(0)->checkState(0), Qt::Unchecked) << "as it was before";
    window.MarkOld("It has changed.");
    EXPECT_EQ(offered(), "---C");
}

TEST_F(WorkbenchTest, WhatIsRefusedInTheBoxStopsTheCommandBehindIt) {
    Enter(1, 1, "7", Qt::Key_Return);
    for (const char* name : {"mnuEditUndo", "mnuEditClear", "mnuEditFillSeries"}) {
        Enter(1, 1, "99");
        Forget();
        editor->findChild<QAction*>(QLatin1String(name))->trigger();
        EXPECT_EQ(user.shown.size(), 1U) << name;
        EXPECT_EQ(Value(ValueIndex(0, NodeNumber)), 7) << name;
        Press(Qt::Key_Escape);
    }
    GoOnline();
    Enter(1, 1, "99");
    for (const auto& [menu, entry] : {std::pair{Qt::Key_T, Qt::Key_B}, {Qt::Key_T, Qt::Key_S}, {Qt::Key_F, Qt::Key_D}})
        Menu(menu, entry);
    EXPECT_TRUE(!frame->findChild<frmCompare*>() && !frame->findChild<frmCheck*>());
    EXPECT_EQ(user.shown.size(), 4U) << "the refusal alone, each time";
}

TEST_F(WorkbenchTest, TheBoardsValuesAreSavedAsAnySetUpIs) {
    GoOnline();
    Menu(Qt::Key_T, Qt::Key_B);
    std::filesystem::create_directory(folder / "my.dir");
    typer.entries = {(folder / "my.dir" / "line").string()};
    QTest::mouseClick(Opened<frmCompare>().cmdSaveBoard, Qt::LeftButton);
    EXPECT_TRUE(user.Showed({"in a folder's name"}));
    EXPECT_TRUE(std::filesystem::exists(folder / "my.sdt"));
}

TEST_F(WorkbenchTest, AFileIsComparedAgainWithTheSameFile) {
    typer.entries = {(folder / Stored("other.sdt", 7)).string()};
    Menu(Qt::Key_T, Qt::Key_F);
    EXPECT_EQ(Opened<frmCompare>().Report().differences.size(), 1U);
    Doc().CurrentConfiguration.SetValue(ValueIndex(0, NodeNumber), 9);
    Tick();
    EXPECT_TRUE(Opened<frmCompare>().Old());
    QTest::mouseClick(Opened<frmCompare>().cmdRepeat, Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Opened<frmCompare>().Report().differences.size(), 2U);
}

TEST_F(WorkbenchTest, AnOverlapIsListedDrawnAndToldBeforeADownloadOnce) {
    for (const std::size_t sequence : {2U, 3U}) {
        for (const auto& [field, value] : {std::pair{NodeNumber, 5}, {ReceiveWordCount, 10}, {ReceiveToTI, 100}})
            Doc().CurrentConfiguration.SetValue(ValueIndex(sequence, field), value);
        Doc().CurrentConfiguration.SetValue(ValueIndex(3, ReceiveToTI), 105);
    }
    GoOnline();
    (void)Download({No});
    EXPECT_TRUE(user.Showed({"found 1 error"}));
    auto& window = Opened<frmCheck>();
    auto* finding = window.lstFindings->topLevelItem(0);
    EXPECT_EQ(finding->text(1), QStringLiteral("sequence 3, To TI"));
    QTest::mouseClick(window.lstFindings->viewport(), Qt::LeftButton, {},
                      window.lstFindings->visualItemRect(finding).center());
    EXPECT_EQ(editor->CurrentTab, EditorTab::Configuration);
    EXPECT_EQ(Grid().CurrentRow() * 10 + Grid().CurrentColumn(), 47);
    const QImage strip = window.stpMemory->grab().toImage();
    const QPoint inside = window.stpMemory->BlockRect(1).topLeft().toPoint() + QPoint(2, 2);
    EXPECT_NE(strip.pixel(inside), strip.pixel(strip.width() - 1, 0)) << "drawn";
    EXPECT_EQ(window.stpMemory->Blocks()[0].label + window.stpMemory->Blocks()[1].label, QStringLiteral("Stack2"));
    EXPECT_FALSE(window.stpMemory->BlockRect(1).intersects(window.stpMemory->BlockRect(2))) << "both can be read";
    QTest::mouseClick(window.stpMemory, Qt::LeftButton, {}, inside);
    EXPECT_EQ(Grid().CurrentRow() * 10 + Grid().CurrentColumn(), 37);
    EXPECT_EQ(Download({Yes}), 1U) << "only the download's own question";
}

TEST_F(WorkbenchTest, AStackThatReceivedWordsOverwriteIsDrawnAsWrong) {
    Doc().CurrentConfiguration.SetValue(StatusStackIndex, 90);
    for (const auto& [field, value] : {std::pair{NodeNumber, 5}, {ReceiveWordCount, 10}, {ReceiveToTI, 85}})
        Doc().CurrentConfiguration.SetValue(ValueIndex(2, field), value);
    Menu(Qt::Key_T, Qt::Key_S);
    const auto& blocks = Opened<frmCheck>().stpMemory->Blocks();
    EXPECT_EQ(blocks.size(), 2U);
    for (const auto& block : blocks)
        EXPECT_TRUE(block.wrong) << block.label.toStdString();
}

} // namespace

} // namespace vantrel
