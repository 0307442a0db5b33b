// The progress window and the wait window as a user meets them: the real windows and boxes, the simulated board in
// process.
#include "app/frmProcessing.h"
#include "app/frmWaitDisplay.h"
#include "platform/QtDialogs.h"
#include "platform/QtTurnQueue.h"
#include "platform/RuntimeError.h"
#include "simulator/SimulatedPort.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/VirtualClock.h"
#include "tests/windows/BoxAnswerer.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace std::chrono_literals;

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

/// Does something from the event loop, once, as soon as the board has been silent for a while.
class WhenSilent {
public:
    WhenSilent(const RSComm& link, const Clock& clock, std::function<void()> act) : act_(std::move(act)) {
        timer_.callOnTimeout([this, &link, &clock] {
            const auto since = link.AwaitingSince();
            if (since && clock.Now() > *since + 300ms && act_) std::exchange(act_, nullptr)();
        });
        timer_.start(0);
    }
    [[nodiscard]] bool Happened() const { return !act_; }

private:
    std::function<void()> act_;
    QTimer timer_;
};

class ProcessingTest : public testing::Test {
protected:
    ProcessingTest() {
        for (std::size_t i = 0; i < ValueCount; ++i)
            record.SetValue(i, static_cast<std::int32_t>(1000 + i));
        dialogs.SetQuietTime(0ms);
        dialogs.SetOnClosed([this] { turns.Poke(); });
        Open();
        link.SetTrafficLog(&traffic);
    }
    void Open() {
        beforeTurn = nullptr;
        turns.RunToEnd(link.OpenRSComm(port));
    }
    void FallSilent() { board.AddFault({.kind = FaultKind::NoAnswer}); }
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

    TemporaryFolder folder;
    VirtualClock clock;
    QtDialogs dialogs;
    SimulatedBoard board;
    SimulatedPort port{board, clock, LinePacing::LineSpeed};
    BoxAnswerer user;
    Traffic traffic;
    std::function<void()> beforeTurn;
    int errors = 0;
    QtTurnQueue turns{clock,
                      [this] {
                          if (beforeTurn) beforeTurn();
                          return !dialogs.BoxUp();
                      },
                      [this] { ++errors; }};
    RSComm link{folder / "RSPort.cfg", {1, 4}, clock, dialogs, turns};
    Configuration record = DefaultRecord("VANTREL_R1.0.0", {});
    frmProcessing window{TransferMode::DownloadData, record, link, dialogs, turns, nullptr};
};

TEST_F(ProcessingTest, RunsOnceShownToTheEndAndCloses) {
    bool beforeShown = false;
    int flagInBetween = 0;
    beforeTurn = [&] {
        beforeShown = beforeShown || !window.isVisible();
        flagInBetween = window.prgProcessing->value() == 100 ? Flag() : flagInBetween;
    };
    const frmProcessing::Result result = window.RunModal();
    EXPECT_TRUE(result.complete && !result.cancelled && !result.failed);
    EXPECT_TRUE(result.unconfirmed.empty() && result.repeated.empty() && !result.flagLeft && !result.reconnected);
    EXPECT_FALSE(beforeShown);
    EXPECT_EQ(flagInBetween, 1);
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
        Open();
        frmProcessing cancelled(TransferMode::DownloadData, record, link, dialogs, turns, nullptr);
        bool stayed = false;
        beforeTurn = [&] {
            if (cancelled.prgProcessing->value() != 100) return;
            way(cancelled);
            way(cancelled);
            stayed = cancelled.isVisible() && cancelled.cmdCancel->isEnabled();
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
        Open();
        user.shown.clear();
        frmProcessing cut(TransferMode::DownloadData, record, link, dialogs, turns, nullptr);
        if (cutAt == 0) port.CutLine();
        beforeTurn = [&] {
            if (cut.prgProcessing->value() == cutAt) port.CutLine();
        };
        bool alive = true;
        user.whileShown = [&] { alive = alive && cut.isVisible(); };
        const frmProcessing::Result result = cut.RunModal();
        EXPECT_TRUE(result.failed && !result.complete && !result.cancelled);
        EXPECT_TRUE(alive);
        EXPECT_EQ(user.shown, (std::vector<std::string>{CableWarning, NotComplete}));
        EXPECT_FALSE(cut.isVisible());
        EXPECT_EQ(turns.Waiting(), 0U);
    }
}

TEST_F(ProcessingTest, ACancelGivesUpASilentBoardAtOnceAndWithoutABox) {
    for (const TransferMode mode : {TransferMode::DownloadData, TransferMode::UploadData}) {
        for (const int silentAt : {0, 57}) {
            SCOPED_TRACE(testing::Message() << static_cast<int>(mode) << " at " << silentAt);
            board = SimulatedBoard();
            Open();
            frmProcessing silent(mode, record, link, dialogs, turns, nullptr);
            beforeTurn = [&] {
                if (silent.prgProcessing->value() != silentAt) return;
                FallSilent();
                beforeTurn = nullptr;
            };
            MonotonicTime cancelled{};
            const WhenSilent cancel(link, clock, [&] {
                cancelled = clock.Now();
                QTest::mouseClick(silent.cmdCancel, Qt::LeftButton);
            });
            const frmProcessing::Result result = silent.RunModal();
            EXPECT_LE(clock.Now() - cancelled, 100ms);
            EXPECT_TRUE(cancel.Happened() && result.cancelled && !result.complete && !result.failed);
            EXPECT_EQ(result.flagLeft, mode == TransferMode::DownloadData);
            EXPECT_TRUE(link.LinkFailed());
            EXPECT_TRUE(user.shown.empty());
        }
    }
}

TEST_F(ProcessingTest, ABoardThatFallsSilentAfterTheCancelIsGivenUpByAnotherOne) {
    beforeTurn = [&] {
        if (window.prgProcessing->value() != 100) return;
        window.close();
        // What is left to do is to lower the flag.
        FallSilent();
        beforeTurn = nullptr;
    };
    const WhenSilent again(link, clock, [&] { QTest::keyClick(&window, Qt::Key_Escape); });
    const frmProcessing::Result result = window.RunModal();
    EXPECT_TRUE(again.Happened() && result.cancelled && result.flagLeft);
    EXPECT_EQ(OnBoard(), 100U);
    EXPECT_TRUE(user.shown.empty());
}

TEST_F(ProcessingTest, ACancelWhileTheLinkAsksEndsTheTransferWhateverIsAnswered) {
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
    EXPECT_EQ(user.shown, (std::vector<std::string>{CableWarning}));
    EXPECT_EQ(window.prgProcessing->value(), 57);
}

TEST_F(ProcessingTest, AWriteThatWasSentTwiceIsNamedAlthoughItWasConfirmed) {
    traffic.onByte = [&] {
        if (window.prgProcessing->value() != 57) return;
        board.AddFault({.kind = FaultKind::LostByte, .firstTimeOnly = true});
        traffic.onByte = nullptr;
    };
    const frmProcessing::Result result = window.RunModal();
    EXPECT_TRUE(result.complete && result.unconfirmed.empty());
    ASSERT_EQ(result.repeated.size(), 1U);
    EXPECT_EQ(result.repeated[0].index, 57U);
    EXPECT_EQ(OnBoard(), ValueCount);
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
