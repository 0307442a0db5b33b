// The progress window and the wait window as a user meets them: the real windows and boxes, the simulated board in
// process.
#include "app/frmProcessing.h"
#include "app/frmWaitDisplay.h"
#include "platform/QtDialogs.h"
#include "platform/QtTurnQueue.h"
#include "platform/RuntimeError.h"
#include "tests/support/BoardLink.h"
#include "tests/windows/BoxAnswerer.h"

namespace vantrel {
namespace {

class Traffic final : public TrafficLog {
public:
    void Exchanged(MonotonicTime /*at*/, std::uint8_t /*sent*/, std::optional<std::uint8_t> /*answer*/) override {
        ++bytes;
        if (onByte) onByte();
    }
    void Surplus(MonotonicTime /*at*/, std::uint8_t /*byte*/) override {}
    int bytes = 0;
    std::function<void()> onByte;
};

class ProcessingTest : public BoardLink<QtDialogs> {
protected:
    ProcessingTest() : BoardLink(LinePacing::LineSpeed) {
        for (std::size_t i = 0; i < ValueCount; ++i)
            record.SetValue(i, static_cast<std::int32_t>(1000 + i));
        link.OpenRSComm(port);
        link.SetTrafficLog(&traffic);
        dialogs.SetOnClosed([this] { turns.Poke(); });
    }
    /// The values from index 0 on that have reached the board.
    [[nodiscard]] std::size_t OnBoard() const {
        std::size_t count = 0;
        while (count < ValueCount &&
               board.PeekWord(static_cast<std::uint16_t>(std::stoi(DefaultTargetAddress(count).substr(1))),
                              clock.Now()) == 1000 + count)
            ++count;
        return count;
    }
    [[nodiscard]] int Flag() const { return board.Peek(105, clock.Now()); }

    BoxAnswerer user;
    Traffic traffic;
    std::function<void()> beforeTurn;
    int errors = 0;
    QtTurnQueue turns{[this] {
                          if (beforeTurn) beforeTurn();
                          return !link.Busy() && !dialogs.BoxUp();
                      },
                      [this] { ++errors; }};
    Configuration record = DefaultRecord("VANTREL_R1.0.0", {});
    frmProcessing window{TransferMode::DownloadData, record, link, dialogs, turns, nullptr};
};

TEST_F(ProcessingTest, RunsOnceShownToTheEndAndCloses) {
    bool beforeShown = false;
    beforeTurn = [&] {
        beforeShown = beforeShown || !window.isVisible();
        EXPECT_EQ(Flag(), 1);
    };
    const frmProcessing::Result result = window.RunModal();
    EXPECT_TRUE(result.complete && !result.cancelled && !result.failed);
    EXPECT_TRUE(result.unconfirmed.empty());
    EXPECT_FALSE(beforeShown);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.lblProcessing->text().toStdString(), "Downloading Data, Please Standby...");
    EXPECT_EQ(window.prgProcessing->maximum(), 218);
    EXPECT_EQ(window.prgProcessing->value(), 218);
    EXPECT_EQ(OnBoard(), ValueCount);
    EXPECT_EQ(Flag(), 0);
    EXPECT_EQ(turns.Waiting(), 0U);
    EXPECT_TRUE(user.shown.empty());
}

TEST_F(ProcessingTest, CancelEscapeAndTheCloseButtonStopBeforeTheNextValue) {
    using Way = void (*)(frmProcessing&);
    for (const Way way : {Way([](frmProcessing& to) { QTest::mouseClick(to.cmdCancel, Qt::LeftButton); }),
                          Way([](frmProcessing& to) { QTest::keyClick(&to, Qt::Key_Escape); }),
                          Way([](frmProcessing& to) { to.close(); })}) {
        board = SimulatedBoard();
        link.OpenRSComm(port);
        frmProcessing cancelled(TransferMode::DownloadData, record, link, dialogs, turns, nullptr);
        bool stayed = false;
        beforeTurn = [&] {
            if (cancelled.prgProcessing->value() != 100) return;
            way(cancelled);
            way(cancelled);
            stayed = cancelled.isVisible() && !cancelled.cmdCancel->isEnabled();
        };
        const frmProcessing::Result result = cancelled.RunModal();
        EXPECT_TRUE(result.cancelled && !result.complete && !result.failed);
        EXPECT_TRUE(stayed) << "the transfer closes the window, not the user";
        EXPECT_FALSE(cancelled.isVisible());
        EXPECT_EQ(OnBoard(), 100U);
        EXPECT_EQ(Flag(), 0);
    }
    EXPECT_TRUE(user.shown.empty());
}

TEST_F(ProcessingTest, CancelDuringTheLastValueLetsItFinish) {
    traffic.onByte = [&] {
        if (window.prgProcessing->value() == 217) QTest::mouseClick(window.cmdCancel, Qt::LeftButton);
    };
    EXPECT_TRUE(window.RunModal().complete);
    EXPECT_EQ(OnBoard(), ValueCount);
    EXPECT_EQ(Flag(), 0);
}

TEST_F(ProcessingTest, ACancelBeforeTheFirstValueIsNotForgotten) {
    beforeTurn = [&] {
        beforeTurn = nullptr;
        QTest::keyClick(&window, Qt::Key_Escape);
    };
    EXPECT_TRUE(window.RunModal().cancelled);
    EXPECT_LE(OnBoard(), 1U);
    EXPECT_EQ(Flag(), 0);
}

TEST_F(ProcessingTest, ACutLineEndsInOneWarningAndOneMessageAndTheWindowCloses) {
    for (const int cutAt : {0, 57}) {
        SCOPED_TRACE(cutAt);
        port.MendLine();
        link.OpenRSComm(port);
        user.shown.clear();
        frmProcessing cut(TransferMode::DownloadData, record, link, dialogs, turns, nullptr);
        if (cutAt == 0) port.CutLine();
        beforeTurn = [&] {
            if (cut.prgProcessing->value() == cutAt) port.CutLine();
        };
        bool alive = true;
        user.whileShown = [&] {
            cut.close();
            alive = alive && (cut.isVisible() || cutAt == 0);
        };
        const frmProcessing::Result result = cut.RunModal();
        EXPECT_TRUE(result.failed && !result.complete && !result.cancelled);
        EXPECT_TRUE(alive);
        EXPECT_EQ(user.shown, (std::vector<std::string>{CableWarning, NotComplete}));
        EXPECT_FALSE(cut.isVisible());
        EXPECT_EQ(turns.Waiting(), 0U);
    }
}

TEST_F(ProcessingTest, ACancelWhileTheLinkAsksTakesEffectAfterTheExchange) {
    beforeTurn = [&] {
        if (window.prgProcessing->value() == 57) port.CutLine();
    };
    user.answers = {QMessageBox::Retry};
    user.whileShown = [&] {
        beforeTurn = nullptr;
        port.MendLine();
        window.close();
        EXPECT_TRUE(link.Busy() && window.isVisible());
    };
    EXPECT_TRUE(window.RunModal().cancelled);
    EXPECT_EQ(user.shown.size(), 1U);
    EXPECT_EQ(window.prgProcessing->value(), 58);
    EXPECT_EQ(Flag(), 0);
}

TEST_F(ProcessingTest, AModeWithoutWorkShowsItsLabelAndClosesAtOnce) {
    for (const int mode : {0, 1, 2, 10, 11, 12}) {
        frmProcessing idle(static_cast<TransferMode>(mode), record, link, dialogs, turns, nullptr);
        bool visible = false;
        beforeTurn = [&] { visible = idle.isVisible(); };
        EXPECT_TRUE(idle.RunModal().complete);
        EXPECT_TRUE(visible);
        EXPECT_EQ(idle.lblProcessing->text().toStdString(), TransferLabel(static_cast<TransferMode>(mode)));
        EXPECT_FALSE(idle.isVisible());
    }
    EXPECT_EQ(traffic.bytes, 0);
}

TEST_F(ProcessingTest, AnUnexpectedErrorReachesTheLastHandlerAndTheWindowCloses) {
    traffic.onByte = [&] {
        if (window.prgProcessing->value() == 9) throw RuntimeError(ErrorNumber::DiskFull, "Disk full");
    };
    EXPECT_TRUE(window.RunModal().failed);
    EXPECT_EQ(errors, 1);
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(link.Busy());
}

TEST_F(ProcessingTest, TheWaitWindowStaysForItsJobAndOnlyForIt) {
    for (const bool fails : {false, true}) {
        frmWaitDisplay* shown = nullptr;
        int steps = 0;
        const auto job = [&]() -> Task {
            for (; steps < 3; ++steps) {
                QTest::keyClick(shown, Qt::Key_Escape);
                EXPECT_TRUE(shown->isVisible());
                co_await turns.Next();
            }
            if (fails) throw RuntimeError(ErrorNumber::PrinterError, "Printer error");
        };
        frmWaitDisplay wait(WaitSelector::Report, job, turns, nullptr);
        shown = &wait;
        EXPECT_EQ(wait.lblWait->text().toStdString(), "Generating Report, Please Standby ...");
        EXPECT_EQ(wait.RunModal(), !fails);
        EXPECT_EQ(steps, 3);
        EXPECT_FALSE(wait.isVisible());
    }
    EXPECT_EQ(errors, 1);
    frmWaitDisplay idle(WaitSelector::None, {}, turns, nullptr);
    EXPECT_EQ(idle.lblWait->text().toStdString(), "Please Standby ...");
    EXPECT_TRUE(idle.RunModal());
}

} // namespace
} // namespace vantrel
