// What the frame keeps from one run to the next for the user: the files used last, what boards held before a download,
// and which board a file was for.
#include "app/frmBackups.h"
#include "link/TargetMap.h"
#include "tests/windows/FrameFixture.h"

namespace vantrel {
namespace {

using RememberedTest = FrameTest;

TEST_F(RememberedTest, TheFilesOpenedLastStandInTheMenuAndOpenAsOpenDoes) {
    const auto listed = [&] {
        emit frame->mnuFile->aboutToShow();
        std::string shown;
        for (const QAction* entry : frame->mnuFile->actions()) {
            if (entry->objectName().startsWith(QLatin1String("mnuFileRecent")))
                shown += entry->text().right(5).toStdString() + (entry->isEnabled() ? "|" : " is gone|");
        }
        return shown;
    };
    EXPECT_EQ(listed(), "");
    for (const char* name : {"a.sdt", "b.sdt", "none"})
        frame->OpenFile(std::string(name) == "none" ? folder / name : std::filesystem::path(Stored(name, 7)));
    Start();
    EXPECT_EQ(listed(), "b.sdt|a.sdt|") << "in the next run; what did not open is no file";
    std::filesystem::remove(folder / "b.sdt");
    EXPECT_EQ(listed(), "b.sdt is gone|a.sdt|");
    ChangeDocument("500");
    Menu(Qt::Key_F, Qt::Key_2, {QMessageBox::Cancel, No});
    EXPECT_TRUE(Boxes{"VANTREL|Save Changes to File?"} == user.shown && Value(0) == 500);
    Menu(Qt::Key_F, Qt::Key_2);
    EXPECT_EQ(Caption(), "VANTREL [a.sdt]");
}

TEST_F(RememberedTest, WhatTheBoardHeldIsKeptBeforeADownloadAndOpensAsANewSetup) {
    EXPECT_FALSE(frame->mnuToolsBackUp->isChecked());
    Menu(Qt::Key_T, Qt::Key_U);
    Start();
    EXPECT_TRUE(frame->mnuToolsBackUp->isChecked()) << "remembered";
    const auto kept = [&] { return Backups(folder / "user" / "Backups").Find().found; };
    board.PokeWord(StatusStackByte, 4000);
    frame->OpenFile(Stored("plant.sdt", 500));
    GoOnline();
    (void)Download({Yes});
    EXPECT_EQ(Word(StatusStackByte), 500);
    ASSERT_EQ(kept().size(), 1U);
    EXPECT_EQ(kept()[0].record.Value(0), 4000);
    EXPECT_EQ(kept()[0].board, "network address 1, program ident \"K5216505\"");
    Within<frmBackups>(Qt::Key_T, Qt::Key_A, [](frmBackups& window) {
        EXPECT_EQ(window.lstBackups->topLevelItem(0)->text(1), "1");
        EXPECT_EQ(window.lblSkipped->textFormat(), Qt::PlainText) << "names of files are no markup";
        QTest::keyClick(&window, Qt::Key_Return);
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_TRUE(Value(0) == 4000 && !Doc().Changed());
    board.Poke(NetworkAddressByte, 7);
    (void)Download({Yes, No});
    EXPECT_TRUE(user.Showed({"", "Then:  network address 1,"}));
    Answer({}, {(folder / "again").string()});
    Ctrl(Qt::Key_S);
    EXPECT_EQ(Value(0), 4000) << "no fetch from the board";
    EXPECT_EQ(Caption(), "VANTREL [again.sdt]");
    EXPECT_EQ(kept()[0].record.Value(0), 4000);
}

TEST_F(RememberedTest, WithoutACopyItDownloadsOnlyWhenTheUserSaysSo) {
    Menu(Qt::Key_T, Qt::Key_U);
    WriteText(folder / "user", "no folder");
    frame->OpenFile(Stored("plant.sdt", 500));
    GoOnline();
    for (const auto answer : {No, Yes}) {
        (void)Download({Yes, answer});
        EXPECT_TRUE(user.Showed({"", "Data Download|No copy of the board's values was kept"}));
        EXPECT_EQ(Word(StatusStackByte), answer == Yes ? 500 : 1);
    }
}

TEST_F(RememberedTest, AnotherBoardThanTheFilesIsNamedBeforeADownload) {
    frame->OpenFile(Stored("plant.sdt", 500));
    GoOnline();
    EXPECT_EQ(Download({Yes}), 1U) << "no board is known";
    board.Poke(NetworkAddressByte, 7);
    board.PokeWord(StatusStackByte, 9);
    ASSERT_EQ(Download({Yes, No}), 2U);
    EXPECT_EQ(user.shown[1], "Data Download|The board that answers is not the one that this set-up was last sent to or "
                             "fetched from.\n\nThen:  network address 1, program ident \"K5216505\"\nNow:  network "
                             "address 7, program ident \"K5216505\"\n\nDo You Wish to Continue?");
    EXPECT_EQ(Word(StatusStackByte), 9);
    EXPECT_EQ(Download({Yes, Yes}), 2U);
    EXPECT_EQ(Download({Yes}), 1U) << "it is the file's board now";
    board.Poke(NetworkAddressByte, 8);
    Menu(Qt::Key_F, Qt::Key_U, {Yes});
    EXPECT_EQ(Download({Yes}), 1U) << "fetched from";
}

} // namespace
} // namespace vantrel
