// The check of the connection as a window, and the port dialog's address of a board behind a network.
#include "link/frmCheckConnection.h"
#include "link/frmSetupComm.h"
#include "tests/windows/FrameFixture.h"

namespace vantrel {
namespace {

using namespace std::chrono_literals;

TEST_F(FrameTest, TheCheckOfTheConnectionShowsItsVerdictOrIsCancelledAtOnceAndLeavesTheModeAsItWas) {
    enum Way { Offline, Cancelled, CancelledInSilence, Online };
    for (const Way way : {Offline, Cancelled, CancelledInSilence, Online}) {
        board.ClearFaults();
        if (way == CancelledInSilence) board.AddFault({.kind = FaultKind::NoAnswer});
        if (way == Online) GoOnline();
        const bool whole = way == Offline || way == Online;
        MonotonicTime closed{};
        const WhenModal<frmCheckConnection> look([&](frmCheckConnection& window) {
            const MonotonicTime late = clock.Now() + 1200ms;
            while (whole ? window.cmdClose->text() != QStringLiteral("&Close")
                         : window.barExchanges->value() < 20 && clock.Now() < late)
                QCoreApplication::processEvents();
            EXPECT_EQ(window.lblVerdict->text().contains(QStringLiteral("200 exchanges went without a flaw")), whole);
            EXPECT_EQ(window.txtSteps->toPlainText().contains(QStringLiteral("ONLINE at 9600")), way == Online);
            EXPECT_EQ(window.barExchanges->maximum(), 200);
            closed = clock.Now();
            QTest::mouseClick(window.cmdClose, Qt::LeftButton);
        });
        frame->mnuToolsCheckConnection->trigger();
        EXPECT_TRUE(look.Happened());
        EXPECT_LE(clock.Now() - closed, 100ms);
        EXPECT_EQ(frame->Turns().Waiting(), 0U);
        EXPECT_EQ(Mode(), way == Online ? "ONLINE" : "OFFLINE") << "and the port with it";
    }
    EXPECT_EQ(frame->Link().Opened(), 1) << "the open link was used";
}

TEST_F(FrameTest, ThePortDialogRefusesWhatIsNoAddressAndKeepsWhatIsOne) {
    for (const std::string address : {"rfc2217://plc:70000", "rfc2217://plc-7:4001"}) {
        Within<frmSetupComm>(Qt::Key_E, Qt::Key_M, [&](frmSetupComm& dialog) {
            QTest::keyClicks(dialog.txtNetwork, QString::fromStdString(address));
            QTest::mouseClick(dialog.cmdSave, Qt::LeftButton);
        });
    }
    EXPECT_TRUE(user.Showed({"Comm Port|\"rfc2217://plc:70000\" is no address"}));
    Within<frmSetupComm>(Qt::Key_E, Qt::Key_M, [](frmSetupComm& dialog) {
        EXPECT_EQ(dialog.txtNetwork->text(), QStringLiteral("rfc2217://plc-7:4001"));
    });
}

} // namespace
} // namespace vantrel
