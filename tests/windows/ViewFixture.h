// A window on the link in front of the tests' person: real boxes, the windows' own queue, the simulated board in
// process and in virtual time.
#pragma once

#include "link/RSComm.h"
#include "platform/QtDialogs.h"
#include "platform/QtTurnQueue.h"
#include "simulator/SimulatedPort.h"
#include "tests/support/SentBytes.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/VirtualClock.h"
#include "tests/windows/BoxAnswerer.h"
#include "views/frmLiveView.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>

namespace vantrel {

class ViewFixture : public testing::Test {
protected:
    ViewFixture() {
        dialogs.SetOnClosed([this] { turns.Poke(); });
        dialogs.SetQuietTime(std::chrono::milliseconds(0));
        link.SetTrafficLog(&line);
    }
    void Online() { turns.RunToEnd(link.OpenRSComm(port)); }
    /// As the frame does it: begins, and tells the view when it is through.
    void ApplyMode(frmLiveView& view) {
        ++applied;
        mode_ = Switch(view);
        mode_.Start();
    }
    /// Lets a view run, does `acts` once it has read what it reads first, and closes it with its close button.
    void Open(frmLiveView& view, const std::function<void()>& acts, const std::function<void()>& run) {
        // By a timer that is none of the posted events, so that those behind it are sent to whoever waits in here.
        QTimer::singleShot(1, &view, [&] {
            Settle(view);
            line.Forget();
            acts();
            view.close();
        });
        run();
        EXPECT_EQ(turns.Waiting(), 0U);
    }
    /// Until what was done so far has had its effects: after more turns than a first pass and one over the fields take,
    /// or more rounds of the event loop than anything without a turn.
    void Settle(frmLiveView& view) {
        turnsTaken = 0;
        for (int quiet = 0; turnsTaken < 250 && quiet < 30; ++quiet) {
            const int before = turnsTaken;
            Turns(1);
            if (turnsTaken != before || turns.Waiting() > 0) quiet = 0;
        }
        TurnsUntil([&] { return !link.Busy() && !dialogs.BoxUp(); });
        // As a window manager does when a box has gone.
        view.activateWindow();
        Turns(2);
    }
    /// The board answers no more, and that has been so for a while.
    void Silence() {
        board.AddFault({.kind = FaultKind::NoAnswer});
        TurnsUntil([&] { return link.AwaitingSince() && clock.Now() > *link.AwaitingSince() + RSComm::SilenceTime; });
    }
    static void Turns(int count) {
        for (int i = 0; i < count; ++i)
            QCoreApplication::processEvents();
    }
    /// The words that are read in so many turns.
    Texts WordsIn(int turnCount) {
        line.Forget();
        Turns(turnCount);
        return line.Words();
    }
    static void TurnsUntil(const std::function<bool()>& reached) {
        for (int i = 0; i < 10'000 && !reached(); ++i)
            Turns(1);
        EXPECT_TRUE(reached());
    }

    TemporaryFolder folder;
    VirtualClock clock;
    BoxAnswerer user;
    QtDialogs dialogs;
    SimulatedBoard board;
    SimulatedPort port{board, clock, LinePacing::None};
    SentBytes line;
    int turnsTaken = 0; ///< Since the view was opened or settled last.
    std::function<void()> onTurn;
    std::function<void()> onError = [] { ADD_FAILURE() << "an error left the window"; };
    QtTurnQueue turns{clock,
                      [this] {
                          if (dialogs.BoxUp()) return false;
                          ++turnsTaken;
                          if (onTurn) onTurn();
                          return true;
                      },
                      [this] { onError(); }};
    RSComm link{folder / "RSPort.cfg", {1, 4}, clock, dialogs, turns};
    int applied = 0;

private:
    Task Switch(frmLiveView& view) {
        const bool online = link.OnlineMode();
        link.SetOnlineMode(false);
        if (online) co_await link.OpenRSComm(port);
        if (!link.OnlineMode()) co_await link.CloseRSComm();
        view.ModeChanged();
    }
    Task mode_;
};

} // namespace vantrel
