// Whether the windows stay alive while the board does not answer: a heartbeat in the real event loop and in real time,
// in every operation of the frame, with a board that is healthy, silent, late or lost. The figures are printed; only
// what somebody would call a standstill fails.
#include "app/frmMDIMain.h"
#include "platform/SystemClock.h"
#include "simulator/SimulatedPort.h"
#include "tests/support/TemporaryFolder.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLineEdit>
#include <QMessageBox>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iostream>
#include <memory>
#include <string>

namespace vantrel {
namespace {

using namespace std::chrono_literals;

constexpr qint64 Standstill = 500; ///< Milliseconds.

/// The longest time that the event loop was away.
class Heartbeat {
public:
    Heartbeat() {
        timer_.setTimerType(Qt::PreciseTimer);
        timer_.callOnTimeout([this] { Beat(); });
        timer_.start(10ms);
    }
    void Begin(std::string what) {
        what_ = std::move(what);
        since_.start();
    }
    void Beat() {
        if (!since_.isValid()) return;
        const qint64 gap = since_.restart();
        if (gap <= longest) return;
        longest = gap;
        longestIn = what_;
    }
    void End() {
        Beat();
        since_.invalidate();
    }
    qint64 longest = 0;
    std::string longestIn;

private:
    QTimer timer_;
    QElapsedTimer since_;
    std::string what_;
};

/// Yes to every question, Cancel to every warning, and no entry.
class Person {
public:
    Person() {
        timer_.callOnTimeout([] {
            auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (auto* box = qobject_cast<QMessageBox*>(window)) {
                for (const auto button : {QMessageBox::Yes, QMessageBox::Cancel, QMessageBox::Ok}) {
                    if (box->button(button)) return box->button(button)->click();
                }
            } else if (window && window->objectName() == QLatin1String("AskText")) {
                window->reject();
            }
        });
        timer_.start(5ms);
    }

private:
    QTimer timer_;
};

struct Condition {
    const char* name;
    bool answers;
    std::function<void(SimulatedBoard&, SimulatedPort&)> begin;
};

class HeartbeatTest : public testing::Test {
protected:
    void StartFrame(bool online) {
        frame.reset();
        board = SimulatedBoard();
        // On the old one late answers are still on their way.
        port = std::make_unique<SimulatedPort>(board, clock, LinePacing::LineSpeed);
        frame = std::make_unique<frmMDIMain>(ProgramFolder(folder.Path(), folder / "user"), clock, *port);
        frame->Boxes().SetQuietTime(0ms);
        frame->show();
        if (online) frame->mnuViewOnline->trigger();
        for (int i = 0; i < 100 && (i < 2 || frame->Link().OnlineMode() != online); ++i)
            Loop(10ms);
        ASSERT_EQ(frame->Link().OnlineMode(), online);
    }
    static void Loop(std::chrono::milliseconds time) {
        QEventLoop loop;
        QTimer::singleShot(time, Qt::PreciseTimer, &loop, &QEventLoop::quit);
        loop.exec();
    }
    /// What is asked for takes effect at once; how long that took at the most is kept in `longest`.
    void Effect(qint64& longest, const std::function<void()>& act, const std::function<bool()>& done) {
        QElapsedTimer time;
        time.start();
        act();
        while (!done() && time.elapsed() < 2 * Standstill)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        longest = std::max(longest, time.elapsed());
    }
    void GoOffline() {
        Effect(
            offline, [this] { frame->mnuViewOffline->trigger(); },
            [this] {
                return frame->sbrMainPanels[1]->text() == QLatin1String("OFFLINE") && !frame->Link().OnlineMode();
            });
    }
    void Exit() {
        Effect(
            exit, [this] { frame->close(); }, [this] { return !frame->isVisible(); });
    }
    /// A modal window blocks its command; that it is left comes from a timer.
    void Modal(QAction* command, const char* name) {
        QTimer::singleShot(LookTime, Qt::PreciseTimer, frame.get(), [this, name] {
            auto* window = frame->findChild<QDialog*>(QLatin1String(name));
            if (!window) return;
            sinceCancel.start();
            // A board that answers is let finish its value.
            if (!answers) {
                QObject::connect(window, &QDialog::finished, frame.get(),
                                 [this] { cancel = std::max(cancel, sinceCancel.elapsed()), ++cancels; });
            }
            window->close();
        });
        command->trigger();
    }

    static constexpr auto LookTime = 100ms;
    TemporaryFolder folder;
    SystemClock clock;
    Person person;
    SimulatedBoard board;
    std::unique_ptr<SimulatedPort> port;
    std::unique_ptr<frmMDIMain> frame;
    Heartbeat heart;
    QElapsedTimer sinceCancel;
    bool answers = true; ///< The board, sooner than it counts as silent.
    int cancels = 0;
    qint64 cancel = 0, offline = 0, exit = 0;
};

TEST_F(HeartbeatTest, NoOperationOfTheFrameStopsTheEventLoopWhateverTheBoardDoes) {
    const auto late = [](std::chrono::milliseconds by) {
        return [by](SimulatedBoard& on, SimulatedPort&) { on.AddFault({.kind = FaultKind::LateAnswer, .lateBy = by}); };
    };
    const Condition conditions[] = {
        {"healthy", true, [](SimulatedBoard&, SimulatedPort&) {}},
        {"silent", false, [](SimulatedBoard& on, SimulatedPort&) { on.AddFault({.kind = FaultKind::NoAnswer}); }},
        {"30 ms late", true, late(30ms)},
        {"600 ms late", false, late(600ms)},
        {"lost", false, [](SimulatedBoard&, SimulatedPort& to) { to.CutLine(); }},
    };
    struct Operation {
        const char* name;
        bool online; ///< When it begins.
        std::function<void()> run;
    };
    const auto tick = [this] { QMetaObject::invokeMethod(&frame->tmrBackgroungUpdate, "timeout"); };
    const Operation operations[] = {
        {"going ONLINE", false, [this] { frame->mnuViewOnline->trigger(), Loop(LookTime), GoOffline(); }},
        {"going OFFLINE", true, [this] { GoOffline(), Loop(LookTime); }},
        {"the tick", true, [&, this] { tick(), Loop(LookTime), tick(), Loop(20ms), GoOffline(); }},
        {"a download", true, [this] { Modal(frame->mnuFileDownload, "frmProcessing"); }},
        {"the communication view", true, [this] { Modal(frame->mnuViewCommStatus, "frmCommInterface"); }},
        {"the target board view", true, [this] { Modal(frame->mnuViewTargetBoardStatus, "frmTargetBoard"); }},
        {"the stack address", true, [this] { frame->mnuEditStackAdd->trigger(), Loop(LookTime), GoOffline(); }},
        {"the end", true, [&, this] { tick(), Loop(LookTime), Exit(); }},
    };
    for (const Condition& condition : conditions) {
        for (const Operation& operation : operations) {
            StartFrame(operation.online);
            answers = condition.answers;
            condition.begin(board, *port);
            heart.Begin(std::string(operation.name) + ", board " + condition.name);
            operation.run();
            heart.End();
        }
    }
    std::cout << "Heartbeat: longest gap " << heart.longest << " ms (" << heart.longestIn << "); Cancel and Close "
              << cancel << " ms, Offline " << offline << " ms, Exit " << exit << " ms\n";
    EXPECT_GE(cancels, 6) << "of three windows, silent and 600 ms late";
    for (const qint64 time : {heart.longest, cancel, offline, exit})
        EXPECT_LT(time, Standstill);
}

} // namespace
} // namespace vantrel
