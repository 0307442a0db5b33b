// The frame with a board that is silent or slow: what the user sees meanwhile, what can be given up, and what is told
// of a transfer afterwards.
#include "link/frmSetupComm.h"
#include "tests/windows/FrameFixture.h"

#include <QElapsedTimer>

namespace vantrel {
namespace {

using namespace std::chrono_literals;

class SilentBoardTest : public FrameTest {
protected:
    void FallSilent() { board.AddFault({.kind = FaultKind::NoAnswer}); }
    void BeLate(std::chrono::milliseconds by) { board.AddFault({.kind = FaultKind::LateAnswer, .lateBy = by}); }
    /// Lets the time pass for somebody who waits for the board.
    void Pass(MonotonicTime time) {
        for (const MonotonicTime end = clock.Now() + time; clock.Now() < end && frame->Link().Busy();)
            QCoreApplication::processEvents();
    }
    [[nodiscard]] std::string Message() const { return frame->sbrMainPanels[0]->text().toStdString(); }
    [[nodiscard]] std::string ModeText() const { return frame->sbrMainPanels[1]->text().toStdString(); }
};

TEST_F(SilentBoardTest, OpeningLooksOfflineUntilTheBoardAnswersAndIsGivenUpAtOnce) {
    const std::function<void()> ways[] = {[this] { frame->mnuViewOffline->trigger(); }, [this] { ClickPanel(1); },
                                          [this] { frame->mnuFileExit->trigger(); }};
    for (const auto& way : ways) {
        Start();
        FallSilent();
        frame->mnuViewOnline->trigger();
        Pass(2500ms);
        Tick();
        EXPECT_EQ(ModeText(), "OFFLINE");
        EXPECT_TRUE(frame->mnuViewOffline->isChecked() && !frame->mnuViewOnline->isChecked());
        EXPECT_EQ(Message(), "System Message:  Waiting for the board ... 2 s");
        const MonotonicTime wished = clock.Now();
        way();
        Settle();
        EXPECT_LE(clock.Now() - wished, 100ms);
        EXPECT_FALSE(port.IsOpen());
        board.ClearFaults();
        if (frame->isVisible()) GoOnline();
        EXPECT_TRUE(user.shown.empty());
    }
    EXPECT_FALSE(frame->isVisible());
}

TEST_F(SilentBoardTest, OnlineAfterOfflineWhileThePortIsBeingOpenedCountsForItself) {
    FallSilent();
    frame->mnuViewOnline->trigger();
    Pass(500ms);
    frame->mnuViewOffline->trigger();
    board.ClearFaults();
    frame->mnuViewOnline->trigger();
    Settle();
    EXPECT_EQ(Mode(), "ONLINE");
    EXPECT_TRUE(user.shown.empty());
}

TEST_F(SilentBoardTest, NothingIsCalledNormalWhileTheBoardIsSilentAndOfflineTakesEffectAtOnce) {
    Tick();
    EXPECT_EQ(Message(), "System Message:  Program is Currently OFFLINE");
    GoOnline();
    Tick();
    EXPECT_EQ(Message(), "System Message:  All Faults Normal");
    FallSilent();
    Tick();
    for (const char* seconds : {"1", "2", "3"}) {
        Pass(1010ms);
        Tick();
        EXPECT_EQ(Message(), std::string("System Message:  Waiting for the board ... ") + seconds + " s");
        EXPECT_EQ(frame->State().systemMessage.find("Normal"), std::string::npos);
    }
    EXPECT_TRUE(frame->Link().Busy());
    frame->mnuViewOffline->trigger();
    EXPECT_EQ(ModeText(), "OFFLINE");
    Settle();
    EXPECT_EQ(Mode(), "OFFLINE");
    Tick();
    EXPECT_EQ(Message(), "System Message:  Comm Fault with Q6700");
    EXPECT_TRUE(user.shown.empty());
}

TEST_F(SilentBoardTest, TheGoodbyeGoesOnBehindAnOfflineFrameAndAWishMeanwhileIsKept) {
    for (const bool online : {false, true}) {
        StartOnline();
        BeLate(600ms);
        frame->mnuViewOffline->trigger();
        EXPECT_TRUE(ModeText() == "OFFLINE" && port.IsOpen());
        Pass(200ms);
        if (online) ClickPanel(1);
        board.ClearFaults();
        Settle();
        EXPECT_EQ(Mode(), online ? "ONLINE" : "OFFLINE");
        EXPECT_TRUE(user.shown.empty());
    }
    // The end says goodbye, too, and waits for a second at the most.
    for (const bool silent : {false, true}) {
        GoOnline();
        if (silent) FallSilent();
        Tick();
        const MonotonicTime end = clock.Now();
        frame.reset();
        EXPECT_FALSE(port.IsOpen());
        EXPECT_LE(clock.Now() - end, silent ? 1200ms : 100ms);
        EXPECT_TRUE(silent || line.bytes.back() == 0xFF);
        Start();
    }
    EXPECT_TRUE(user.shown.empty());
}

TEST_F(SilentBoardTest, ATransferWaitsForTheBoardUnlessTheUserGivesItUp) {
    for (const bool givenUp : {true, false}) {
        Start();
        FallSilent();
        Answer({Yes, Yes});
        frame->mnuFileDownload->trigger();
        Pass(500ms);
        for (const QAction* entry : {frame->mnuFileDownload, frame->mnuFileUpload, frame->mnuFileNew})
            EXPECT_FALSE(entry->isEnabled());
        if (givenUp) frame->mnuViewOffline->trigger();
        Settle();
        Tick();
        EXPECT_EQ(user.shown.size(), givenUp ? 2U : 4U) << "two questions, cable warning, not complete";
        EXPECT_TRUE(frame->mnuFileDownload->isEnabled() && frame->mnuFileNew->isEnabled());
        EXPECT_EQ(Mode(), "OFFLINE");
    }
}

TEST_F(SilentBoardTest, TheStackAddressIsAskedForOnceTheBoardHasAnsweredAndNotAfterOffline) {
    for (const bool givenUp : {true, false}) {
        StartOnline();
        board.PokeWord(6400, 77, clock.Now());
        BeLate(givenUp ? 900ms : 40ms);
        frame->mnuEditStackAdd->trigger();
        Pass(100ms);
        EXPECT_FALSE(frame->mnuEditStackAdd->isEnabled());
        if (givenUp) frame->mnuViewOffline->trigger();
        Settle();
        EXPECT_EQ(typer.shown, givenUp ? Boxes{} : (Boxes{"TI Status Stack Address|V77"}));
        EXPECT_EQ(frame->mnuEditStackAdd->isEnabled(), !givenUp);
        EXPECT_TRUE(user.shown.empty());
    }
}

TEST_F(SilentBoardTest, WhatATransferMayHaveLeftBehindIsTold) {
    // How many boxes come up with the question, how the second one begins, and what the last one names.
    using Case = std::tuple<Qt::Key, std::function<void(frmProcessing&)>, std::size_t, std::string, std::string>;
    const auto fault = [this](FaultKind kind) {
        return [this, kind](frmProcessing&) { board.AddFault({.kind = kind, .firstTimeOnly = true}); };
    };
    const auto giveUp = [this](frmProcessing& window) {
        FallSilent();
        QTimer::singleShot(0, &window, [this, &window] {
            Pass(200ms);
            QTest::mouseClick(window.cmdCancel, Qt::LeftButton);
        });
    };
    const auto reopen = [this](frmProcessing&) {
        user.answers = {QMessageBox::Retry};
        user.whileShown = [this] { port.MendLine(); };
        port.CutLine();
    };
    const std::string again = "VANTREL|These values had to be sent a second time before the board confirmed them. ";
    for (const auto& [entry, during, boxes, told, named] :
         {Case{Qt::Key_D, fault(FaultKind::LostByte), 2, again, "sequence 14, # Send: B23807"},
          Case{Qt::Key_D, [this](frmProcessing&) { board.AddFault({.kind = FaultKind::WrongEcho}); }, 3,
               "VANTREL|These values were not confirmed by the board. Download again:\n", "B105"},
          Case{Qt::Key_U, [this](frmProcessing&) { board.AddFault({.kind = FaultKind::DoubledByte}); }, 2,
               "VANTREL|These values were not read reliably. Upload again:\n", "sequence 14, From TI"},
          Case{Qt::Key_D, reopen, 4, CableWarning, "The link was lost and taken up again"},
          Case{Qt::Key_D, giveUp, 2, "VANTREL|B105 of the board may have been left", "B105"},
          Case{Qt::Key_U, giveUp, 1, "", "B105"}}) {
        StartOnline();
        duringTransfer = during;
        Menu(Qt::Key_F, entry, {Yes});
        ASSERT_EQ(user.shown.size(), boxes) << testing::PrintToString(user.shown);
        EXPECT_TRUE(boxes < 2 || user.shown[1].starts_with(told)) << user.shown[1];
        EXPECT_EQ(user.shown.back().find(named) == std::string::npos, boxes < 2) << user.shown.back();
    }
}

TEST_F(SilentBoardTest, ThePortDialogGivesASilentBoardUpAndOpensThePortAgain) {
    for (const bool silent : {false, true}) {
        StartOnline();
        if (silent) FallSilent();
        Tick();
        Pass(200ms);
        Within<frmSetupComm>(Qt::Key_E, Qt::Key_M, [&](frmSetupComm& dialog) {
            const MonotonicTime begun = clock.Now();
            dialog.txtCommPort->setText(QStringLiteral("3"));
            QTest::mouseClick(dialog.cmdSave, Qt::LeftButton);
            dialog.close();
            while (dialog.isVisible())
                QCoreApplication::processEvents();
            EXPECT_LE(clock.Now() - begun, 100ms);
        });
        EXPECT_EQ(FileText(folder / "Support" / "RSPort.cfg").substr(0, 6), "3,9600");
        EXPECT_EQ(user.shown, silent ? Boxes{CableWarning} : Boxes{}) << "of the port that was opened again";
        EXPECT_EQ(Mode(), silent ? "OFFLINE" : "ONLINE");
        EXPECT_TRUE(frame->mnuEditCommPort->isEnabled());
    }
}

TEST(BoxTest, OneThatNobodyAskedForTakesNoKeyAtFirstAndNeverAHeldOne) {
    for (const bool unasked : {true, false}) {
        QtDialogs dialogs;
        dialogs.SetQuietTime(100ms);
        QElapsedTimer up;
        qint64 taken = 0;
        QTimer typing;
        typing.callOnTimeout([&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box) return;
            if (!up.isValid()) up.start();
            taken = up.elapsed();
            QKeyEvent held(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier, {}, true);
            if (unasked) QCoreApplication::sendEvent(box, &held);
            ASSERT_TRUE(box->isVisible());
            QTest::keyClick(box, Qt::Key_Return);
        });
        typing.start(5ms);
        EXPECT_EQ(dialogs.Show({.title = "t", .text = "x", .buttons = MessageButtons::RetryCancel, .unasked = unasked}),
                  MessageAnswer::Retry);
        EXPECT_EQ(taken >= 50, unasked) << taken << " ms";
    }
}

} // namespace
} // namespace vantrel
