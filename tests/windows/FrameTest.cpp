// The main frame as a user meets it: menus by their keys, clicks on buttons and panels, dialogs that are answered, the
// simulated board in process.
#include "link/TargetMap.h"
#include "tests/windows/FrameFixture.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QUrl>

#include <algorithm>
#include <set>

namespace vantrel {
namespace {

constexpr const char* SaveChanges = "VANTREL|Save Changes to File?";
constexpr const char* UploadAsked = "Data Upload|You are about to Upload Data from the PLC\n\nDo You Wish to Continue?";
constexpr const char* DownloadAsked =
    "Data Download|You are about to Download Data to the PLC\n\nDo You Wish to Continue?";
constexpr const char* OnlineAsked =
    "Program Offline|Program is Currently OFFLINE\n\nDo You Wish to Switch to ONLINE MODE to Continue?";

TEST_F(FrameTest, StartsUnnamedAndOfflineWithNothingToSave) {
    EXPECT_EQ(Caption(), "VANTREL [unnamed]");
    for (const std::size_t panel : {0U, 2U, 3U})
        ClickPanel(panel);
    EXPECT_EQ(Mode(), "OFFLINE");
    EXPECT_TRUE(frame->tmrBackgroungUpdate.isActive());
    EXPECT_EQ(DateShown(), "");
    EXPECT_EQ(Doc().FilePath, folder / "*.sdt");
    EXPECT_FALSE(frame->mnuEditStackAdd->isEnabled());
    EXPECT_FALSE(frame->sbrMainPanels[2]->text().isEmpty());
    const QString before = frame->sbrMainPanels[3]->text();
    clock.Advance(std::chrono::minutes(1));
    Tick();
    EXPECT_NE(frame->sbrMainPanels[3]->text(), before);
    Menu(Qt::Key_F, Qt::Key_X);
    EXPECT_FALSE(frame->isVisible());
    EXPECT_TRUE(user.shown.empty() && typer.shown.empty());
}

TEST_F(FrameTest, MenusAndButtonsStandInOrderAndEveryAccessKeyIsUniqueInItsMenu) {
    const auto captions = [](const QWidget& menu) {
        std::string shown;
        std::set<QChar> keys;
        for (const QAction* entry : menu.actions()) {
            shown += (entry->isSeparator() ? "-" : entry->text().toStdString()) + "|";
            const qsizetype mark = entry->text().indexOf(QLatin1Char('&'));
            EXPECT_TRUE(entry->isSeparator() || (mark >= 0 && keys.insert(entry->text().at(mark + 1).toLower()).second))
                << shown;
        }
        return shown;
    };
    EXPECT_EQ(captions(*frame->menuBar()), "&File|&Edit|&View|&Tools|&Help|");
    EXPECT_EQ(captions(*frame->mnuFile),
              "&New...|&Open...|&Save|Save &As...|-|&Upload (save) Settings|Download P&rogram|"
              "&Download (restore) Settings|-|&Print Report...|-|Report to PD&F File...|-|E&xit|");
    EXPECT_EQ(
        captions(*frame->mnuEdit),
        "Enable &Offline Editing|-|Co&mm Port|-|TI Status Stack &Address|-|&Undo|&Redo|-|Cu&t|&Copy|&Paste|C&lear|-|"
        "Fill &Down|Fill &Series|-|Duplicate Se&quence|Mo&ve Sequence Up|Move Sequence Dow&n|");
    EXPECT_EQ(captions(*frame->mnuView),
              "O&nline Data|O&ffline Data|-|&Target Board Interface|-|&Communication Interface|-|&Main Display|-|"
              "&Event Log|");
    EXPECT_EQ(captions(*frame->mnuTools),
              "Compare With &Board...|Compare With &File...|-|Check &Set-up|Check Co&nnection...|&Line Monitor|-|"
              "Back &Up Before Download|B&ackups...|");
    EXPECT_EQ(captions(*frame->mnuHelp), "&Help Topics|-|&Save Report for Support...|-|&About VANTREL|");
    std::string toolTips;
    for (const QAction* button : frame->Toolbar1->actions().first(14))
        toolTips += (button->isSeparator() ? "-" : button->toolTip().toStdString()) + "|";
    EXPECT_EQ(toolTips, "|New...|Open...|Save|-|Print|-|Offline Edit|-|Upload (save) Settings|"
                        "Download (restore) Settings|-|Target Board Interface|Communication Interface|");
}

TEST_F(FrameTest, OfflineEditingIsOneStateForEntryAndButton) {
    auto* button = qobject_cast<QAbstractButton*>(frame->Toolbar1->widgetForAction(frame->mnuEditOfflineEditing));
    for (const bool on : {true, false}) {
        on ? Menu(Qt::Key_E, Qt::Key_O) : ClickButton(frame->mnuEditOfflineEditing);
        for (const bool state : {frame->State().offlineEditing, frame->mnuEditOfflineEditing->isChecked(),
                                 button->isChecked(), frame->mnuEditStackAdd->isEnabled()})
            EXPECT_EQ(state, on);
    }
}

TEST_F(FrameTest, NewAsksForTheStackAddressAfterTheSaveQuestion) {
    ChangeDocument("500");
    Answer({No}, {"v77"});
    ClickButton(frame->mnuFileNew);
    EXPECT_EQ(user.shown, (Boxes{SaveChanges}));
    EXPECT_EQ(typer.shown, (Boxes{"TI Status Stack Address|V1"}));
    EXPECT_EQ(Value(0), 77);
    EXPECT_EQ(Caption(), "VANTREL [unnamed]");
}

TEST_F(FrameTest, ABoardThatDoesNotAnswerLeavesTheFrameOffline) {
    port.CutLine();
    ClickPanel(1);
    EXPECT_TRUE(user.Showed({"Comm Port Error|"}));
    port.MendLine();
    board.AddFault({.kind = FaultKind::NoAnswer});
    // The user is not quicker than the box: neither a tick nor a click goes on while it is up.
    user.whileShown = [&] {
        Tick();
        ClickPanel(1);
    };
    Menu(Qt::Key_V, Qt::Key_N, {QMessageBox::Retry});
    Tick();
    EXPECT_EQ(user.shown, (Boxes{CableWarning, CableWarning}));
    EXPECT_EQ(Mode(), "OFFLINE") << "and the port is free for others";
    board.ClearFaults();
    GoOnline();
}

TEST_F(FrameTest, SaveAsAndOpenGoThroughTheFileDialog) {
    ChangeDocument("500");
    Menu(Qt::Key_F, Qt::Key_A, {}, {(folder / "plant").string()});
    EXPECT_EQ(typer.shown, (Boxes{"Save As|"}));
    EXPECT_EQ(Caption(), "VANTREL [plant.sdt]");
    const std::string date = DateShown();
    EXPECT_NE(date, "");
    clock.Advance(std::chrono::hours(1));
    ChangeDocument("600");
    Ctrl(Qt::Key_S);
    EXPECT_TRUE(typer.shown.empty() && user.shown.empty());
    EXPECT_NE(DateShown(), date);
    Ctrl(Qt::Key_N);
    EXPECT_EQ(DateShown(), "");
    Answer({}, {(folder / "plant.sdt").string()});
    Ctrl(Qt::Key_O);
    EXPECT_EQ(Value(0), 600);
    ChangeDocument("700");
    Answer({No});
    ClickButton(frame->mnuFileOpen);
    EXPECT_EQ(typer.shown, (Boxes{"Open|plant.sdt"}));
    EXPECT_EQ(Value(0), 700) << "the open dialog was cancelled";
    Menu(Qt::Key_F, Qt::Key_A, {No}, {(folder / "plant.sdt").string()});
    EXPECT_TRUE(user.shown.size() == 1 && Doc().Changed()) << "asks before an existing file is overwritten";
}

TEST_F(FrameTest, ADroppedFileOpensAndABadOneChangesNothing) {
    const auto drop = [&](const std::string& name) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QString::fromStdString((folder / name).string()))});
        QDragEnterEvent entering({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(frame.get(), &entering);
        QDropEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(frame.get(), &event);
        EXPECT_TRUE(event.isAccepted() && user.shown.empty()) << "no box comes up inside the drop";
        QCoreApplication::processEvents();
    };
    Stored("good.sdt", 900);
    WriteText(folder / "bad.sdt", FileText(folder / "good.sdt").substr(0, 700));
    drop("good.sdt");
    EXPECT_EQ(Caption(), "VANTREL [good.sdt]");
    EXPECT_EQ(Value(0), 900);
    drop("bad.sdt");
    EXPECT_TRUE(user.Showed({"bad.sdt"}));
    EXPECT_EQ(Caption(), "VANTREL [good.sdt]");
    EXPECT_EQ(Value(0), 900);
    user.whileShown = [&] { frame->OpenFile(folder / "bad.sdt"); };
    Menu(Qt::Key_F, Qt::Key_U, {No});
    EXPECT_EQ(user.shown, (Boxes{UploadAsked})) << "refused while a window is up";
}

TEST_F(FrameTest, TheFirstSaveWhileOnlineFetchesTheBoardsValues) {
    GoOnline();
    board.PokeWord(6400, 99, clock.Now());
    duringTransfer = [&](frmProcessing& window) { QTest::mouseClick(window.cmdCancel, Qt::LeftButton); };
    Ctrl(Qt::Key_S);
    EXPECT_EQ(Value(0), 1) << "a cancelled fetch is taken back";
    EXPECT_TRUE(DateShown().empty() && typer.shown.empty());
    EXPECT_EQ(user.shown.size(), 1U) << "and the user is told that nothing was saved";
    Answer({}, {(folder / "plant.sdt").string()});
    Ctrl(Qt::Key_S);
    EXPECT_EQ(Value(0), 99);
    EXPECT_TRUE(std::filesystem::exists(folder / "plant.sdt"));
}

TEST_F(FrameTest, DownloadAndUploadAskAndGoOnlineWhenTheUserWants) {
    frame->OpenFile(Stored("plant.sdt", 500));
    ASSERT_NE(DateShown(), "");
    clock.Advance(std::chrono::hours(1));
    const std::string date = DateShown();
    for (const auto& [entry, asked] : {std::pair{Qt::Key_U, UploadAsked}, std::pair{Qt::Key_D, DownloadAsked}}) {
        Menu(Qt::Key_F, entry, {Yes, No});
        EXPECT_EQ(user.shown, (Boxes{asked, OnlineAsked}));
        EXPECT_EQ(Value(0), 500);
        EXPECT_EQ(DateShown(), date);
        EXPECT_EQ(Mode(), "OFFLINE");
    }
    frame->tmrBackgroungUpdate.stop(); // a tick comes when it is told to
    board.PokeWord(6400, 321, clock.Now());
    Answer({Yes, Yes});
    ClickButton(frame->mnuFileUpload);
    EXPECT_EQ(Mode(), "ONLINE");
    EXPECT_EQ(Value(0), 321);
    EXPECT_NE(DateShown(), date);
    TickAndSettle();
    ASSERT_FALSE(frame->State().refreshTargetStatus);
    board.Poke(CurrentFaultByte, 0x45, clock.Now());
    duringTransfer = [&](frmProcessing&) { Tick(); };
    Doc().CurrentConfiguration.SetValue(0, 500);
    Answer({Yes});
    ClickButton(frame->mnuFileDownload);
    EXPECT_EQ(user.shown, (Boxes{DownloadAsked}));
    EXPECT_EQ(Word(6400), 500);
    EXPECT_EQ(Flag(), 0);
    EXPECT_FALSE(frame->State().alarms[0]) << "the line was the transfer's";
    EXPECT_TRUE(frame->State().refreshTargetStatus);
}

TEST_F(FrameTest, AFileDialogCannotChangeFoldersAndLeadsToTheSamples) {
    std::filesystem::create_directories(folder / "samples" / "precious");
    frame->Boxes().SetSamplesFolder(folder / "samples");
    for (const bool saving : {false, true}) {
        std::string began;
        QTimer::singleShot(0, frame.get(), [&] {
            const auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            began = dialog->directory().dirName().toStdString();
            auto* list = dialog->findChild<QAbstractItemView*>(QStringLiteral("listView"));
            list->setFocus();
            list->selectAll();
            EXPECT_TRUE(dialog->testOption(QFileDialog::ReadOnly));
            QTest::keyClick(list, Qt::Key_Delete);
        });
        (void)(saving ? frame->Boxes().SaveFile({}) : frame->Boxes().OpenFile({}));
        EXPECT_EQ(began == "samples", !saving);
        EXPECT_TRUE(std::filesystem::exists(folder / "samples" / "precious"));
    }
}

TEST_F(FrameTest, UnsavedEditsAreOfferedAtTheNextStartAndGoWithACleanEnd) {
    const auto kept = [&] { return std::filesystem::exists(folder / "user" / "Unsaved"); };
    ChangeDocument("500");
    clock.Advance(std::chrono::minutes(2));
    Tick();
    EXPECT_EQ(DateShown(), "Not saved");
    EXPECT_TRUE(kept());
    const std::filesystem::path named = Stored("named.sdt", 7);
    for (const Answers& answers : {Answers{No, No}, Answers{Yes}}) {
        Start();
        Answer(answers);
        frame->OpenAtStart(named);
        EXPECT_EQ(user.shown.size(), answers.size()) << "what is taken up is not asked for at once";
        EXPECT_TRUE(user.shown[0].starts_with("Unsaved Edits|")) << user.shown[0];
        EXPECT_EQ(Value(0), answers.front() == Yes ? 500 : 7);
    }
    EXPECT_TRUE(frame->sbrMainPanels[0]->text().endsWith("named.sdt"));
    EXPECT_EQ(DateShown(), "Recovered, not saved");
    Answer({No});
    frame->close();
    EXPECT_FALSE(kept());
}

TEST_F(FrameTest, ClosingWithChangesObeysTheAnswer) {
    for (const auto answer : {QMessageBox::Cancel, No, Yes}) {
        Start();
        ChangeDocument("500");
        GoOnline();
        Doc().UploadedBeforeSave = true;
        user.whileShown = [&] { frame->close(); };
        Menu(Qt::Key_F, Qt::Key_X, {answer}, {(folder / "kept").string()});
        Tick();
        EXPECT_EQ(user.shown, Boxes{SaveChanges});
        EXPECT_EQ(frame->isVisible(), answer == QMessageBox::Cancel);
        EXPECT_EQ(std::filesystem::exists(folder / "kept.sdt"), answer == Yes);
        if (answer == No) frame->close();
        EXPECT_EQ(user.shown.size(), 1U) << "closed is closed";
        EXPECT_TRUE(port.IsOpen() && !frame->Link().LinkFailed());
    }
}

TEST_F(FrameTest, ACloseThatComesAtABadMomentWaitsForTheNextTick) {
    // Wished in each box or in the transfer, over a good line and over one that is cut.
    for (const auto& [inBox, cut] : {std::pair{false, false}, {true, false}, {false, true}, {true, true}}) {
        SCOPED_TRACE(testing::Message() << inBox << cut);
        StartOnline();
        if (inBox) user.whileShown = [&] { frame->close(); };
        duringTransfer = [&, inBox = inBox, cut = cut](frmProcessing&) {
            if (cut) port.CutLine();
            if (!inBox) frame->close();
            Tick();
            EXPECT_TRUE(frame->isVisible());
        };
        EXPECT_EQ(Download({Yes}), cut ? 4U : 1U);
        EXPECT_TRUE(frame->isVisible());
        EXPECT_TRUE(cut ? Mode() == "OFFLINE" : Flag() == 0);
        user.whileShown = nullptr;
        Tick();
        EXPECT_FALSE(frame->isVisible());
    }
}

} // namespace
} // namespace vantrel
