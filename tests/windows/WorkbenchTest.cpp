// Undo, blocks of cells, comparing and checking, as a user does them in the frame.
#include "app/frmCompare.h"
#include "document/frmCheck.h"
#include "tests/windows/EditorFixture.h"

#include <QClipboard>
#include <QTreeWidget>

namespace vantrel {

namespace {

using enum SequenceField;
constexpr auto Yes = QMessageBox::Yes;
constexpr auto No = QMessageBox::No;

class WorkbenchTest : public EditorTest {
protected:
    void Paste(int row, int column, const char* text) {
        QApplication::clipboard()->setText(QString::fromUtf8(text));
        if (editor->CurrentTab != EditorTab::Configuration) ClickTab(EditorTab::Configuration);
        Click(row, column);
        Press(Qt::Key_V, Qt::ControlModifier);
        Settle();
    }
    std::string Offered(const char* name) {
        const auto* action = editor->findChild<QAction*>(QLatin1String(name));
        return (action->isEnabled() ? "" : "-") + action->text().toStdString();
    }
    template <typename Window> Window& Opened() {
        auto* window = frame->findChild<Window*>();
        EXPECT_TRUE(window && window->isVisible());
        return *window;
    }
    std::uint16_t OnBoard(std::size_t index) {
        return Word(static_cast<std::uint16_t>(std::stoi(DefaultTargetAddress(index).substr(1))));
    }
};

TEST_F(WorkbenchTest, ABlockIsPastedUndoneAndDoneAgainAsOneStep) {
    EXPECT_EQ(Offered("mnuEditUndo"), "-&Undo");
    Enter(1, 1, "7");
    Press(Qt::Key_Return);
    Press(Qt::Key_Escape);
    EXPECT_EQ(Offered("mnuEditUndo"), "&Undo Entry");
    Paste(2, 3, "From TI\tTo Node\nV10\tW40\nV20\t33\n");
    ASSERT_EQ(user.shown.size(), 1U);
    EXPECT_NE(user.shown[0].find("sequence 2, To Node: \"33\": Only an Even Value"), std::string::npos)
        << user.shown[0];
    EXPECT_EQ(Value(ValueIndex(1, SendFromTI)), 1) << "nothing is stored";
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
    Forget();
    Enter(5, 1, "9");
    Press(Qt::Key_Return);
    EXPECT_EQ(OnBoard(ValueIndex(4, NodeNumber)), 9);
    Press(Qt::Key_Escape);
    Press(Qt::Key_Z, Qt::ControlModifier);
    Settle();
    EXPECT_EQ(OnBoard(ValueIndex(4, NodeNumber)), 0);
    EXPECT_TRUE(user.shown.empty());
}

TEST_F(WorkbenchTest, OfWhatDiffersFromTheBoardOnlyWhatIsTickedIsSentOrTaken) {
    GoOnline();
    Answer({Yes});
    Menu(Qt::Key_F, Qt::Key_D);
    const auto at = [](std::size_t sequence) { return ValueIndex(sequence, SendWordCount); };
    for (std::size_t sequence = 0; sequence < 5; ++sequence)
        Doc().CurrentConfiguration.SetValue(at(sequence), 10);
    Forget();
    Menu(Qt::Key_T, Qt::Key_B);
    auto& window = Opened<frmCompare>();
    ASSERT_EQ(window.Report().differences.size(), 5U);
    const auto tick = [&](const std::set<int>& ticked) {
        for (int i = 0; i < window.lstDifferences->topLevelItemCount(); ++i)
            window.lstDifferences->topLevelItem(i)->child(0)->setCheckState(0, ticked.contains(i) ? Qt::Checked
                                                                                                  : Qt::Unchecked);
    };
    tick({0, 1});
    QTest::mouseClick(window.cmdSend, Qt::LeftButton);
    Settle();
    EXPECT_EQ(OnBoard(at(1)) + OnBoard(at(2)), 10);
    ASSERT_EQ(window.Report().differences.size(), 3U);
    tick({0, 1});
    QTest::mouseClick(window.cmdTake, Qt::LeftButton);
    Settle();
    EXPECT_EQ(Value(at(2)) + Value(at(3)) + Value(at(4)), 10);
    EXPECT_EQ(window.Report().differences.size(), 1U);
    EXPECT_EQ(Offered("mnuEditUndo"), "&Undo Taking Differences");
    EXPECT_FALSE(window.Old());
    Doc().CurrentConfiguration.SetValue(at(7), 3);
    Tick();
    EXPECT_TRUE(window.Old());
    EXPECT_FALSE(window.cmdSend->isEnabled());
    EXPECT_TRUE(user.shown.empty());
}

TEST_F(WorkbenchTest, TheBoardsValuesAreSavedAsAnySetUpIs) {
    GoOnline();
    Menu(Qt::Key_T, Qt::Key_B);
    std::filesystem::create_directory(folder / "my.dir");
    typer.entries = {(folder / "my.dir" / "line").string()};
    QTest::mouseClick(Opened<frmCompare>().cmdSaveBoard, Qt::LeftButton);
    ASSERT_EQ(user.shown.size(), 1U);
    EXPECT_NE(user.shown[0].find("in a folder's name"), std::string::npos) << user.shown[0];
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
    Answer({No});
    Menu(Qt::Key_F, Qt::Key_D);
    ASSERT_EQ(user.shown.size(), 1U);
    EXPECT_NE(user.shown[0].find("found 1 error"), std::string::npos) << user.shown[0];
    auto& window = Opened<frmCheck>();
    auto* finding = window.lstFindings->topLevelItem(0);
    EXPECT_EQ(finding->text(1), QStringLiteral("sequence 3, To TI"));
    window.lstFindings->itemActivated(finding, 0);
    EXPECT_EQ(editor->CurrentTab, EditorTab::Configuration);
    EXPECT_EQ(Grid().CurrentRow() * 10 + Grid().CurrentColumn(), 47);
    QTest::mouseClick(window.stpMemory, Qt::LeftButton, {},
                      window.stpMemory->BlockRect(1).topLeft().toPoint() + QPoint(2, 2));
    EXPECT_EQ(Grid().CurrentRow() * 10 + Grid().CurrentColumn(), 37);
    Answer({Yes});
    Menu(Qt::Key_F, Qt::Key_D);
    EXPECT_EQ(user.shown.size(), 1U) << "only the download's own question";
}

} // namespace

} // namespace vantrel
