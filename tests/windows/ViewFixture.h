// A live view in front of the tests' person: real boxes, the windows' own queue, the simulated board in process and in
// virtual time.
#pragma once

#include "link/RSComm.h"
#include "platform/QtDialogs.h"
#include "platform/QtTurnQueue.h"
#include "simulator/SimulatedPort.h"
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
    }
    void Online() { turns.RunToEnd(link.OpenRSComm(port)); }
    /// As the frame does it: begins, and tells the view when it is through.
    void ApplyMode(frmLiveView& view) {
        ++applied;
        mode_ = Switch(view);
        mode_.Start();
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
    std::function<void()> onTurn;
    QtTurnQueue turns{clock,
                      [this] {
                          if (dialogs.BoxUp()) return false;
                          if (onTurn) onTurn();
                          return true;
                      },
                      [] { ADD_FAILURE() << "an error left the view"; }};
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
