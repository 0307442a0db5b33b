// The communication interface view as a user meets it: keys and clicks, real boxes, the simulated board in process.
#include "tests/windows/ViewFixture.h"
#include "views/frmCommInterface.h"
#include "views/frmPlot.h"

#include <QToolButton>

#include <algorithm>

namespace vantrel {
namespace {

constexpr const char* Refusal = "Sequence Number|Only a Number Between 0 and 30 can be Entered";

class CommInterfaceTest : public ViewFixture {
protected:
    CommInterfaceTest() {
        document.InitDefaults();
        Online();
    }
    void Show(const std::function<void()>& acts) {
        Open(view, acts, [&] { view.InitializeForm(); });
    }
    /// The words read in one pass, from one status word to the next.
    std::size_t ReadsInPass() {
        const auto words = WordsIn(500);
        const auto status = StatusWordAddress(static_cast<std::size_t>(selected));
        const auto first = std::find(words.begin(), words.end(), status);
        return first == words.end() ? 0 : static_cast<std::size_t>(std::find(first + 1, words.end(), status) - first);
    }
    void Type(const std::string& text, std::optional<Qt::Key> end = {}) {
        view.activateWindow(); // as a window manager does when a box has gone
        Turns(2);
        view.txtSetup.setFocus();
        QTest::keyClicks(&view.txtSetup, QString::fromStdString(text));
        if (end) QTest::keyClick(&view.txtSetup, *end);
        Turns(20);
    }
    [[nodiscard]] std::string Number() const { return view.txtSetup.text().toStdString(); }
    [[nodiscard]] std::string Status() const { return view.lblSetting[2].text().toStdString(); }
    [[nodiscard]] QColor Colour() const { return view.fgSettings[2].BodyColor(); }

    Document document{"VANTREL_R1.0.0", clock};
    std::int16_t selected = 3;
    frmCommInterface view{document, link, turns, dialogs, clock, selected, [this] { ApplyMode(view); }};
};

TEST_F(CommInterfaceTest, ReadsTheSelectedSequenceAndOfItsDataOnlyWhatIsSeen) {
    Show([&] {
        EXPECT_EQ(Number(), "3");
        EXPECT_FALSE(view.cmdGoOnline.isVisible());
        EXPECT_EQ(Status(), "00: Comm Disabled");
        EXPECT_EQ(view.fgSettings[0].Text(2, 1), QStringLiteral("V1"));
        EXPECT_EQ(view.fgSettings[1].Text(2, 1), QStringLiteral("W32"));
        const std::size_t tall = ReadsInPass();
        EXPECT_GE(tall, 31U) << "15 rows and the status";
        view.fgSettings[2].setFixedHeight(view.fgSettings[2].height() / 2);
        EXPECT_NEAR(static_cast<double>(ReadsInPass()), static_cast<double>(tall) / 2, 3);
        view.showMinimized();
        Turns(200);
        EXPECT_TRUE(WordsIn(200).empty()) << "nobody looks";
        view.showNormal();
        EXPECT_GT(ReadsInPass(), 0U);
    });
    EXPECT_EQ(applied, 0);
}

TEST_F(CommInterfaceTest, WordsAreShownInTheChosenFormatAndMarkedWhereTheyChangeOrAreNotUsed) {
    std::optional<WordNotation> chosen;
    view.SetOnNotationChosen([&](WordNotation notation) { chosen = notation; });
    board.PokeWord(static_cast<std::uint16_t>(SequenceBase + SequenceStride * 3 + 2), 1); // one word is sent
    Show([&] {
        QtFormatGrid& words = view.fgSettings[2];
        const auto cell = [&](int row, int role) { return words.model()->index(row - 1, 0).data(role); };
        EXPECT_EQ(words.Text(1, 1), QStringLiteral("0"));
        EXPECT_TRUE(!cell(1, Qt::ForegroundRole).isValid() && cell(2, Qt::ForegroundRole).isValid())
            << "beyond the count";
        view.cboNotation.setFocus();
        QTest::keyClick(&view.cboNotation, Qt::Key_End);
        EXPECT_EQ(words.Text(1, 1), QStringLiteral("0000 0000 0000 0000"));
        EXPECT_EQ(chosen, WordNotation::Binary);
        board.PokeWord(static_cast<std::uint16_t>(SendDataBase + SequenceStride * 3), 5);
        TurnsUntil([&] { return words.Text(1, 1).endsWith(QStringLiteral("0101")); });
        EXPECT_TRUE(cell(1, Qt::BackgroundRole).isValid() && !cell(2, Qt::BackgroundRole).isValid());
        clock.Advance(std::chrono::seconds(1));
        QMetaObject::invokeMethod(&view.tmrFade, "timeout");
        EXPECT_FALSE(cell(1, Qt::BackgroundRole).isValid());
    });
}

TEST_F(CommInterfaceTest, WhatTheSetUpSaysStandsBesideWhatTheBoardHolds) {
    document.CurrentConfiguration.SetValue(ValueIndex(3, SequenceField::NodeNumber), 9);
    document.CurrentConfiguration.SetValue(ValueIndex(3, SequenceField::SendToNode), 40);
    Show([&] {
        EXPECT_EQ(view.lblSetUpNode.text(), QStringLiteral("Set-up: \u2260 9"));
        EXPECT_EQ(view.fgSettings[0].Text(3, 2), QStringLiteral("\u2260 W40"));
        EXPECT_EQ(view.fgSettings[0].Text(2, 2), QStringLiteral("V1"));
        EXPECT_EQ(view.fgSettings[0].Text(3, 1), QStringLiteral("W32")) << "the given columns stay";
    });
}

TEST_F(CommInterfaceTest, ThePlotFollowsTheSelectedWordsBesideTheViewAndStandsStillWhenPaused) {
    board.PokeWord(static_cast<std::uint16_t>(SendDataBase + SequenceStride * 3), 5);
    Show([&] {
        view.fgSettings[2].SetCurrentCell(1, 1);
        QTest::mouseClick(&view.cmdPlot, Qt::LeftButton);
        auto* plot = view.findChild<frmPlot*>();
        ASSERT_TRUE(plot && plot->isVisible() && view.isVisible());
        EXPECT_EQ(plot->cboColumn[0].currentText(), QStringLiteral("Send"));
        EXPECT_EQ(plot->cboColumn[1].currentText(), QStringLiteral("None"));
        EXPECT_EQ(plot->spnRow[1].accessibleName(), QStringLiteral("Word of line 2"));
        plot->spnRow[0].setValue(100);
        plot->cboColumn[1].setFocus();
        QTest::keyClick(&plot->cboColumn[1], Qt::Key_End);
        const std::string word = DataWordAddress(3, DataDirection::Send, 100);
        EXPECT_GT(std::ranges::count(WordsIn(300), word), 0) << "out of sight";
        const auto draw = [&] {
            clock.Advance(std::chrono::seconds(2));
            Turns(300);
            QMetaObject::invokeMethod(&plot->tmrDraw, "timeout");
            return plot->chart.Picture();
        };
        EXPECT_NE(draw(), draw());
        QTest::mouseClick(&plot->cmdPause, Qt::LeftButton);
        EXPECT_EQ(draw(), draw());
        plot->close();
        EXPECT_EQ(std::ranges::count(WordsIn(300), word), 0);
    });
}

TEST_F(CommInterfaceTest, ThePlotOfASequenceThatSendsNothingBeginsWithWhatItReceives) {
    board.PokeWord(static_cast<std::uint16_t>(SequenceBase + SequenceStride * 3 + 2), 0);
    Show([&] {
        Turns(300);
        QTest::mouseClick(&view.cmdPlot, Qt::LeftButton);
        auto* plot = view.findChild<frmPlot*>();
        EXPECT_EQ(plot->cboColumn[0].currentText(), QStringLiteral("Receive"));
        EXPECT_EQ(plot->spnRow[0].value(), 1);
    });
}

TEST(StripChartTest, MarksStandAtRoundValuesAndTimes) {
    using Case = std::tuple<double, double, int, ChartScale>;
    for (const auto& [low, high, most, marks] :
         {Case{0, 27000, 8, {0, 30000, 5000}}, Case{5, 5, 8, {4, 6, 1}}, Case{0, 0, 8, {0, 1, 1}},
          Case{-7, 120, 5, {-50, 150, 50}}, Case{0, 65535, 0, {0, 100000, 50000}}}) {
        const ChartScale scale = ValueScale(low, high, most);
        EXPECT_TRUE(scale.low == marks.low && scale.high == marks.high && scale.step == marks.step)
            << scale.low << " " << scale.high << " " << scale.step;
    }
    EXPECT_EQ(TimeStep(60, 8), 10);
    EXPECT_EQ(TimeStep(28800, 8), 3600);
    EXPECT_EQ(TimeStep(30, 0), 30);
}

TEST_F(CommInterfaceTest, AnEntryMovesToItsSequenceAndABadOneIsRefusedAndRestored) {
    document.CurrentConfiguration.SetNodeDescription(30, "Mixer");
    Show([&] {
        for (const Qt::Key end : {Qt::Key_Return, Qt::Key_Tab}) {
            user.shown.clear();
            Type("31", end);
            EXPECT_EQ(user.shown, (Boxes{Refusal}));
            EXPECT_EQ(Number() + view.txtSetup.selectedText().toStdString(), "33");
            EXPECT_EQ(view.focusWidget(), &view.txtSetup);
            EXPECT_EQ(selected, 3);
        }
        QTest::keyClicks(&view.txtSetup, QStringLiteral("31"));
        QTest::mouseClick(&view.cmdOk, Qt::LeftButton);
        Turns(10);
        EXPECT_EQ(user.shown.size(), 2U);
        EXPECT_TRUE(view.isVisible()) << "not closed over a bad entry";
        user.shown.clear();
        Type("-5", Qt::Key_Tab);
        EXPECT_EQ(Number(), "0");
        line.Forget();
        view.fgSettings[2].SetText(100, 1, QStringLiteral("7"));
        Type("30", Qt::Key_Enter);
        EXPECT_TRUE(view.fgSettings[2].Text(100, 1).isEmpty()) << "another sequence's word";
        EXPECT_TRUE(view.cmdDefault.hasFocus());
        EXPECT_EQ(view.lblSetting[1].text(), QStringLiteral("Mixer"));
        QTest::keyClick(&view, Qt::Key_Return);
        EXPECT_TRUE(view.isVisible());
        Type("29");
        QTest::mouseClick(&view.cmdOk, Qt::LeftButton);
        Turns(10);
        EXPECT_FALSE(view.isVisible());
    });
    EXPECT_TRUE(user.shown.empty());
    EXPECT_EQ(selected, 29) << "the choice survives the view";
}

TEST_F(CommInterfaceTest, AnotherProgramChecksNothingAndEscapeRestoresThenLeavesThenCloses) {
    Show([&] {
        Type("99");
        QWidget elsewhere;
        elsewhere.show();
        elsewhere.activateWindow();
        Turns(10);
        ASSERT_FALSE(view.txtSetup.hasFocus());
        view.activateWindow();
        Turns(10);
        EXPECT_EQ(Number(), "99");
        for (const bool leaves : {false, true}) {
            QTest::keyClick(&view.txtSetup, Qt::Key_Escape);
            EXPECT_EQ(Number(), "3");
            EXPECT_EQ(view.txtSetup.hasFocus(), !leaves);
            EXPECT_EQ(view.Entry.EscapePending, !leaves);
        }
        Turns(10);
        EXPECT_TRUE(view.isVisible());
        QTest::keyClick(&view.cmdDefault, Qt::Key_Escape);
        EXPECT_FALSE(view.isVisible());
    });
    EXPECT_TRUE(user.shown.empty());
    EXPECT_EQ(selected, 3);
}

TEST_F(CommInterfaceTest, ASilentBoardHoldsUpNeitherTheViewNorItsEnd) {
    Show([&] {
        const auto notice = [&] {
            QMetaObject::invokeMethod(&view.tmrNotRefreshed, "timeout");
            return view.lblNotRefreshed.text().toStdString();
        };
        EXPECT_EQ(notice(), "");
        Silence();
        TurnsUntil([&] { return clock.Now() >= *link.AwaitingSince() + std::chrono::milliseconds(1500); });
        EXPECT_EQ(notice(), "Not refreshed: waiting for the board ... 1 s");
        Type("7", Qt::Key_Return);
        EXPECT_EQ(selected, 7) << "the view is alive";
        EXPECT_EQ(view.lblSetting[0].text(), QStringLiteral("-"));
        Type("9");
        const MonotonicTime begun = clock.Now();
        line.Forget();
        view.close();
        EXPECT_FALSE(view.isVisible());
        EXPECT_LT(clock.Now() - begun, std::chrono::milliseconds(100));
        EXPECT_TRUE(link.LinkFailed());
        Turns(100);
        EXPECT_TRUE(line.Words().empty());
    });
    EXPECT_EQ(selected, 7) << "an open entry is dropped";
    EXPECT_TRUE(user.shown.empty());
}

TEST_F(CommInterfaceTest, AnotherBoardBehindTheSamePortIsShownWhole) {
    Show([&] {
        user.answers = {QMessageBox::Retry};
        board.PokeWord(16384 + 512 * 3, 77); // node number
        board.PokeWord(16384 + 512 * 3 + 4, 99); // the first address
        view.fgSettings[2].SetText(100, 1, QStringLiteral("7"));
        port.CutLine();
        port.MendLine();
        Settle(view);
        EXPECT_EQ(view.lblSetting[0].text() + view.fgSettings[0].Text(2, 1), QStringLiteral("77V99"));
        EXPECT_TRUE(view.fgSettings[2].Text(100, 1).isEmpty()) << "the old board's word";
    });
    EXPECT_EQ(user.shown.size(), 1U);
}

TEST_F(CommInterfaceTest, HeldArrowsLeaveOneSettingsPassOfTheLastNumber) {
    Show([&] {
        for (int i = 0; i < 4; ++i)
            QTest::mouseClick(view.updSetup.up, Qt::LeftButton);
        view.txtSetup.setFocus();
        for (int i = 0; i < 30; ++i)
            QTest::keyClick(view.focusWidget(), Qt::Key_Up);
        EXPECT_EQ(Number(), "30");
        Turns(100);
        const auto words = line.Words();
        for (std::size_t field = 0; field < FieldCount; ++field)
            EXPECT_EQ(std::count(words.begin(), words.end(), DefaultTargetAddress(211 + field)), 1);
        EXPECT_EQ(std::count(words.begin(), words.end(), DefaultTargetAddress(204)), 0);
        QTest::mouseClick(view.updSetup.down, Qt::LeftButton);
    });
    EXPECT_EQ(selected, 29);
    EXPECT_TRUE(user.shown.empty());
}

TEST_F(CommInterfaceTest, ClosedInTheMiddleOfAReadItGoesAfterItAndReadsNoMore) {
    for (const bool inBox : {false, true}) {
        SCOPED_TRACE(inBox);
        std::size_t bytes = 0;
        Show([&] {
            const auto wish = [&] {
                view.close();
                // An arrow that is held down, and the keyboard, do not know that a box is up.
                view.updSetup.up->click();
                EXPECT_TRUE(view.isVisible()) << "put off";
            };
            line.onByte = [&] {
                if (inBox) port.CutLine();
                if (!inBox && ++bytes == 2) wish();
            };
            user.whileShown = wish;
            TurnsUntil([&] { return !view.isVisible(); });
            EXPECT_TRUE(inBox || bytes == 4) << "the word under way is finished";
        });
        EXPECT_EQ(user.shown.size(), inBox ? 1U : 0U);
        EXPECT_EQ(selected, 3);
    }
}

TEST_F(CommInterfaceTest, ADeadLinkGreysTheViewOnceAndGoOnlineBringsItBack) {
    Show([&] {
        EXPECT_EQ(Colour(), QColor(0, 0, 255));
        QTest::keyClicks(&view.txtSetup, QStringLiteral("12"));
        port.CutLine();
        Settle(view);
        EXPECT_EQ(user.shown.size(), 1U);
        EXPECT_EQ(applied, 1);
        EXPECT_EQ(Status(), "Offline");
        EXPECT_EQ(Number(), "3") << "an open entry is not taken";
        EXPECT_EQ(Colour(), view.palette().color(QPalette::Disabled, QPalette::Text));
        EXPECT_EQ(view.fgSettings[0].Text(2, 1), QStringLiteral("V1")) << "what was shown last stays";
        EXPECT_FALSE(view.txtSetup.isEnabled() || view.updSetup.isEnabled());
        EXPECT_EQ(turns.Waiting(), 0U) << "OFFLINE it sleeps";

        QTest::mouseClick(&view.cmdGoOnline, Qt::LeftButton);
        Settle(view);
        EXPECT_EQ(Status(), "Offline") << "the line is still cut";
        EXPECT_TRUE(view.cmdGoOnline.hasFocus());
        port.MendLine();
        QTest::keyClick(&view.cmdGoOnline, Qt::Key_Return);
        Settle(view);
        EXPECT_EQ(Status(), "00: Comm Disabled");
        EXPECT_EQ(Colour(), QColor(0, 0, 255));
        EXPECT_TRUE(view.txtSetup.hasFocus() && !view.cmdGoOnline.isVisible());
        EXPECT_EQ(user.shown.size(), 2U);
        EXPECT_EQ(applied, 3);

        link.SetOnlineMode(false); // by the frame
        ApplyMode(view);
        Settle(view);
        EXPECT_EQ(Status(), "Offline");
    });
}

TEST_F(CommInterfaceTest, OpenedOfflineItShowsTheDescriptionAndBeginsAtTheButton) {
    turns.RunToEnd(link.CloseRSComm());
    Show([&] {
        EXPECT_EQ(Status() + view.lblSetting[1].text().toStdString(), "Offline-");
        EXPECT_TRUE(view.cmdGoOnline.hasFocus());
        QTest::keyClick(&view.cmdGoOnline, Qt::Key_Tab);
        QTest::keyClick(view.focusWidget(), Qt::Key_Return);
        EXPECT_FALSE(view.isVisible());
    });
}

} // namespace
} // namespace vantrel
