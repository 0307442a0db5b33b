// Help and About as the user reaches them, and what the frame remembers from one run to the next.
#include "app/frmAbout.h"
#include "app/frmHelp.h"
#include "app/frmSupport.h"
#include "link/frmSetupComm.h"
#include "tests/windows/FrameFixture.h"

#include <QPrintDialog>
#include <QSignalSpy>
#include <QTextTable>

namespace vantrel {
namespace {

class HelpTest : public FrameTest {
protected:
    HelpTest() {
        WriteText(folder / "Help" / "VANTREL.hlp", "# First steps {#first-steps}\nsee [port](#comm-port)\n"
                                                   "# Main {#main-display}\ngrid\n# Port {#comm-port}\ncable\n");
    }
    [[nodiscard]] static frmHelp* Window() {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (auto* help = dynamic_cast<frmHelp*>(window); help && help->isVisible()) return help;
        }
        return nullptr;
    }
    [[nodiscard]] static std::string Shown() {
        const frmHelp* help = Window();
        return help ? help->txtTopic->toPlainText().toStdString() : "";
    }
    static void F1() {
        QTest::keyClick(QApplication::activeWindow(), Qt::Key_F1);
        QCoreApplication::processEvents();
    }
    /// The help, over the frame.
    frmHelp& Help() {
        Activate();
        F1();
        EXPECT_TRUE(Window());
        return *Window();
    }
};

TEST_F(HelpTest, F1OpensTheTopicOfTheWindowInFrontAlsoOfAModalOne) {
    Activate();
    F1();
    EXPECT_EQ(Shown(), "Main\ngrid");
    std::string beside;
    Within<frmSetupComm>(Qt::Key_E, Qt::Key_M, [&](frmSetupComm& dialog) {
        F1();
        beside = Shown();
        if (frmHelp* help = Window()) {
            QTest::keyClicks(help->txtSearch, QStringLiteral("GRID"));
            EXPECT_EQ(Shown(), "Main\ngrid") << "the search works beside the modal window";
        }
        dialog.close();
    });
    EXPECT_EQ(beside, "Port\ncable");
}

TEST_F(HelpTest, AReportForSupportIsListedAndSavedOnlyThen) {
    WriteText(folder / "line.trace", "traced");
    frame->SetTrace(folder / "line.trace", nullptr);
    const auto list = [&](bool save) {
        std::string names;
        Answer({}, {(folder / "report").string()});
        Within<frmSupport>(Qt::Key_H, Qt::Key_S, [&](frmSupport& window) {
            for (int row = 0; row < window.lstItems->topLevelItemCount(); ++row)
                names += window.lstItems->topLevelItem(row)->text(0).toStdString() + "|";
            names += window.lblLeftOut->text().toStdString();
            save ? window.accept() : window.reject();
        });
        return names;
    };
    EXPECT_TRUE(list(false).ends_with("set-up.sdt|line.trace|events.csv|"));
    EXPECT_FALSE(std::filesystem::exists(folder / "report.zip"));
    Start();
    EXPECT_TRUE(list(true).ends_with("set-up.sdt|line.trace|events.csv|")) << "of the run before";
    EXPECT_GT(std::filesystem::file_size(folder / "report.zip"), 3399U);
    (void)list(true);
    EXPECT_TRUE(user.Showed({"report.zip\" is there already"})) << "with the ending that nobody typed";
    std::filesystem::remove(folder / "line.trace");
    EXPECT_TRUE(list(false).ends_with("set-up.sdt|events.csv|"));
}

TEST_F(HelpTest, LinksLeadOnAndBackLeadsBack) {
    frmHelp* help = &Help();
    EXPECT_FALSE(help->cmdBack->isEnabled());
    help->lstContents->setCurrentRow(0);
    emit help->txtTopic->anchorClicked(QUrl(QStringLiteral("#comm-port")));
    EXPECT_EQ(Shown(), "Port\ncable");
    help->cmdBack->trigger();
    EXPECT_EQ(Shown(), "First steps\nsee port");
    help->cmdBack->trigger();
    EXPECT_EQ(Shown(), "Main\ngrid");
    QTest::keyClicks(help->txtSearch, QStringLiteral("nowhere"));
    EXPECT_EQ(help->lstContents->item(0)->text().toStdString(), "No topic holds these words");
}

TEST_F(HelpTest, TheSearchGoesFromRowToRowAndDrawsATopicOnce) {
    WriteText(folder / "Help" / "VANTREL.hlp", "# Main {#main-display}\ndisk, line, full\n# Messages {#messages}\n"
                                               "| A | B |\n|---|---|\n| full disk | one |\n| full line | two |\n"
                                               "| full disk | three |\n# Last {#last}\n| disk | full |\n|---|---|\n");
    frmHelp* help = &Help();
    const auto found = [&] { return help->txtTopic->textCursor().block().text().toStdString(); };
    const auto foundIn = [&] {
        QTextTable* table = help->txtTopic->textCursor().currentTable();
        return table ? table->cellAt(help->txtTopic->textCursor()).row() : -1;
    };
    QSignalSpy drawn(help->txtTopic, &QTextBrowser::textChanged);
    QTest::keyClicks(help->txtSearch, QStringLiteral("full di"));
    EXPECT_EQ(Shown().substr(0, 8), "Messages") << "all words in one row, not in one topic";
    EXPECT_EQ(std::pair(foundIn(), found()), std::pair(1, std::string("full disk")));
    EXPECT_GT(help->txtTopic->textCursor().currentTable()->format().cellPadding(), 0) << "room in the cells";
    const auto before = drawn.count();
    QTest::keyClicks(help->txtSearch, QStringLiteral("sk"));
    EXPECT_EQ(drawn.count(), before);
    QTest::keyClick(help->txtSearch, Qt::Key_Return);
    EXPECT_EQ(foundIn(), 3);
    help->cmdNext->trigger();
    EXPECT_EQ(std::pair(Shown().substr(0, 4), foundIn()), std::pair(std::string("Last"), 0));
    EXPECT_TRUE(help->ShowMessage("VANTREL: full line"));
    EXPECT_EQ(foundIn(), 2);
    EXPECT_FALSE(help->ShowMessage("nothing of the kind"));
    int inBox = -1;
    user.whileShown = [&] {
        F1();
        help = Window();
        inBox = help ? foundIn() : -1;
        QApplication::activeModalWidget()->activateWindow();
    };
    frame->Boxes().Show({.title = "VANTREL", .text = "full line"});
    EXPECT_EQ(inBox, 2);
    user.whileShown = nullptr;
}

TEST_F(HelpTest, ThePrintDialogGoesWithTheHelp) {
#ifdef _WIN32
    GTEST_SKIP() << "the print dialog is the host's own, and waits for a person";
#endif
    frmHelp* help = &Help();
    help->cmdPrint->trigger();
    const QPointer<QPrintDialog> dialog = help->findChild<QPrintDialog*>();
    ASSERT_TRUE(dialog && dialog->isVisible());
    delete help;
    EXPECT_FALSE(dialog);
}

TEST_F(HelpTest, AMissingFileIsNamedAndAboutShowsTheVersion) {
    std::filesystem::remove(folder / "Help" / "VANTREL.hlp");
    Activate();
    F1();
    EXPECT_TRUE(user.Showed({"VANTREL.hlp\" is missing"}));
    Within<frmAbout>(Qt::Key_H, Qt::Key_A, [&](frmAbout& about) {
        EXPECT_EQ(about.lblVersion->text().toStdString(), "Version " + VersionNumber());
        QTest::mouseClick(about.cmdSysInfo, Qt::LeftButton);
        QTest::keyClick(&about, Qt::Key_Return);
        EXPECT_FALSE(about.isVisible());
    });
    EXPECT_EQ(user.shown.back(), "VANTREL|System Information Is Unavailable At This Time");
}

TEST_F(HelpTest, PlaceAndFolderOutliveTheRun) {
    Menu(Qt::Key_F, Qt::Key_O, {}, {Stored("plants/one.sdt", 9)});
    ASSERT_EQ(Value(0), 9);
    frame->resize(901, 702);
    frame->close();
    Start();
    EXPECT_EQ(frame->size(), QSize(901, 702));
    Menu(Qt::Key_F, Qt::Key_O, {}, {"one.sdt"});
    EXPECT_EQ(Value(0), 9) << "the dialog begins in the folder last used";
}

} // namespace
} // namespace vantrel
