// The link over a simulated board in virtual time, as the tests of everything above the link use it.
#pragma once

#include "link/RSComm.h"
#include "simulator/SimulatedPort.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/SentBytes.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/VirtualClock.h"

#include <gtest/gtest.h>

namespace vantrel {

/// `Person` answers the link's boxes.
template <typename Person = ScriptedDialogs> class BoardLink : public testing::Test {
protected:
    explicit BoardLink(LinePacing pacing = LinePacing::None) : port(board, clock, pacing) { link.SetTrafficLog(&line); }

    void Open() { turns.RunToEnd(link.OpenRSComm(port)); }
    void Close() { turns.RunToEnd(link.CloseRSComm()); }

    TemporaryFolder folder;
    VirtualClock clock;
    Person dialogs;
    SimulatedBoard board;
    SimulatedPort port;
    SentBytes line;
    TurnQueue turns{clock};
    RSComm link{folder / "RSPort.cfg", {1, 4}, clock, dialogs, turns};
};

} // namespace vantrel
