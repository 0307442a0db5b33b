// Whether the windows stay alive while the board does not answer: a heartbeat in the real event loop and in real time,
// in every operation of the frame, with a board that is healthy, silent, late or lost. The figures are printed; only
// what somebody would call a standstill fails.
#include "platform/SystemClock.h"
#include "tests/windows/FrameFixture.h"

#include <QElapsedTimer>
#include <QEventLoop>

#include <iostream>

namespace vantrel {
namespace {

using namespace std::chrono_literals;

constexpr qint64 Standstill = 500; ///< Milliseconds.
constexpr auto LookTime = 100ms;

class HeartbeatTest : public testing::Test {
protected:
    HeartbeatTest() {
        user.habit = {QMessageBox::Yes, QMessageBox::Cancel, QMessageBox::Ok};
        heart.setTimerType(Qt::PreciseTimer);
        heart.callOnTimeout([this] {
            if (since.isValid()) longest = std::max(longest, since.restart());
        });
        heart.start(10ms);
    }
    void StartFrame(bool online) {
        frame.reset();
        board = SimulatedBoard();
        // On the old one late answers are still on their way.
        port = std::make_unique<SimulatedPort>(board, clock, LinePacing::LineSpeed);
        frame = std::make_unique<frmMDIMain>(ProgramFolder(folder.Path(), folder / "user"), clock, *port);
        frame->Boxes().SetQuietTime(0ms);
        frame->show();
        if (online) frame->mnuViewOnline->trigger();
        Until([&] { return frame->Link().OnlineMode() == online; });
        ASSERT_EQ(frame->Link().OnlineMode(), online);
    }
    static void Loop(std::chrono::milliseconds time) {
        QEventLoop loop;
        QTimer::singleShot(time, Qt::PreciseTimer, &loop, &QEventLoop::quit);
        loop.exec();
    }
    static void Until(const std::function<bool()>& done) {
        QElapsedTimer time;
        for (time.start(); !done() && time.elapsed() < 2 * Standstill;)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    void GoOffline() {
        frame->mnuViewOffline->trigger();
        EXPECT_EQ(frame->sbrMainPanels[1]->text().toStdString(), "OFFLINE");
        Until([&] { return !frame->Link().OnlineMode(); });
    }
    void Exit() {
        frame->close();
        Until([&] { return !frame->isVisible(); });
    }
    /// A modal window blocks its command; that it is left comes from a timer.
    void Modal(QAction* command, const char* name) {
        QTimer::singleShot(LookTime, Qt::PreciseTimer, frame.get(), [this, name] {
            if (auto* window = frame->findChild<QDialog*>(QLatin1String(name))) window->close();
        });
        command->trigger();
    }
    void Tick() { QMetaObject::invokeMethod(&frame->tmrBackgroungUpdate, "timeout"); }

    TemporaryFolder folder;
    SystemClock clock;
    BoxAnswerer user;
    EntryTyper typer;
    SimulatedBoard board;
    std::unique_ptr<SimulatedPort> port;
    std::unique_ptr<frmMDIMain> frame;
    QTimer heart;
    QElapsedTimer since; ///< The last beat.
    qint64 longest = 0;
};

TEST_F(HeartbeatTest, NoOperationOfTheFrameStopsTheEventLoopWhateverTheBoardDoes) {
    const auto fault = [this](FaultKind kind, std::chrono::milliseconds by = {}) {
        return [this, kind, by] { board.AddFault({.kind = kind, .lateBy = by}); };
    };
    const std::pair<const char*, std::function<void()>> conditions[] = {
        {"healthy", [] {}},
        {"silent", fault(FaultKind::NoAnswer)},
        {"30 ms late", fault(FaultKind::LateAnswer, 30ms)},
        {"600 ms late", fault(FaultKind::LateAnswer, 600ms)},
        {"lost", [this] { port->CutLine(); }},
    };
    // With whether the frame is ONLINE when it begins.
    const std::tuple<const char*, bool, std::function<void()>> operations[] = {
        {"going ONLINE", false, [this] { frame->mnuViewOnline->trigger(), Loop(LookTime), GoOffline(); }},
        {"going OFFLINE", true, [this] { GoOffline(), Loop(LookTime); }},
        {"the tick", true, [this] { Tick(), Loop(LookTime), Tick(), Loop(20ms), GoOffline(); }},
        {"a download", true, [this] { Modal(frame->mnuFileDownload, "frmProcessing"); }},
        {"the communication view", true, [this] { Modal(frame->mnuViewCommStatus, "frmCommInterface"); }},
        {"the target board view", true, [this] { Modal(frame->mnuViewTargetBoardStatus, "frmTargetBoard"); }},
        {"the stack address", true, [this] { frame->mnuEditStackAdd->trigger(), Loop(LookTime), GoOffline(); }},
        {"the end", true, [this] { Tick(), Loop(LookTime), Exit(); }},
    };
    for (const auto& [condition, begin] : conditions) {
        for (const auto& [operation, online, run] : operations) {
            SCOPED_TRACE(testing::Message() << operation << ", board " << condition);
            StartFrame(online);
            begin();
            QElapsedTimer whole;
            whole.start();
            since.start();
            longest = 0;
            run();
            since.invalidate();
            std::cout << operation << ", board " << condition << ": longest gap " << longest << " of "
                      << whole.elapsed() << " ms\n";
            EXPECT_LT(longest, Standstill);
            EXPECT_LT(whole.elapsed(), 2 * LookTime.count() + Standstill) << "to the end of what is given up";
        }
    }
}

} // namespace
} // namespace vantrel
