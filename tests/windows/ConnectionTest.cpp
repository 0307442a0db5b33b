// The check of the connection as a window, and the port dialog's address of a board behind a network.
#include "link/frmCheckConnection.h"
#include "link/frmSetupComm.h"
#include "tests/windows/FrameFixture.h"

namespace vantrel {
namespace {

using namespace std::chrono_literals;

class ConnectionTest : public FrameTest {
protected:
    void Check(const std::function<void(frmCheckConnection&)>& act) {
        const WhenModal<frmCheckConnection> look(act);
        frame->mnuToolsCheckConnection->trigger();
        EXPECT_TRUE(look.Happened());
        Settle();
    }
    static void Until(const std::function<bool()>& reached) {
        for (int i = 0; i < 100'000 && !reached(); ++i)
            QCoreApplication::processEvents();
        EXPECT_TRUE(reached());
    }
    static void UntilOver(const frmCheckConnection& window) {
        Until([&] { return window.cmdClose->text() == QStringLiteral("&Close"); });
    }
};

TEST_F(ConnectionTest, TheCheckShowsItsVerdictAndLeavesTheModeAsItWas) {
    for (const bool online : {false, true}) {
        if (online) GoOnline();
        const int opened = frame->Link().Opened();
        Check([&](frmCheckConnection& window) {
            UntilOver(window);
            EXPECT_TRUE(window.lblVerdict->text().contains(QStringLiteral("200 exchanges went without a flaw")));
            EXPECT_EQ(window.txtSteps->toPlainText().contains(QStringLiteral("ONLINE at 9600 baud")), online);
            window.close();
        });
        EXPECT_EQ(Mode(), online ? "ONLINE" : "OFFLINE");
        EXPECT_TRUE(!online || frame->Link().Opened() == opened);
    }
    Tick();
    EXPECT_TRUE(user.shown.empty());
}

TEST_F(ConnectionTest, CancelStopsTheCheckAtOnceAndNothingIsLeftOpen) {
    for (const bool silent : {false, true}) {
        if (silent) board.AddFault({.kind = FaultKind::NoAnswer});
        MonotonicTime cancelled{};
        Check([&](frmCheckConnection& window) {
            const MonotonicTime begun = clock.Now();
            Until([&] { return silent ? clock.Now() > begun + 1200ms : window.barExchanges->value() > 20; });
            cancelled = clock.Now();
            QTest::mouseClick(window.cmdClose, Qt::LeftButton);
        });
        EXPECT_LE(clock.Now() - cancelled, 100ms);
        EXPECT_EQ(frame->Turns().Waiting(), 0U);
        EXPECT_EQ(Mode(), "OFFLINE") << "and the port is closed";
    }
}

TEST_F(ConnectionTest, ThePortDialogRefusesWhatIsNoAddressAndKeepsWhatIsOne) {
    const WhenModal<frmSetupComm> type([&](frmSetupComm& dialog) {
        for (const char* address : {"rfc2217://plc:70000", "rfc2217://plc-7:4001"}) {
            EXPECT_TRUE(dialog.isVisible());
            dialog.txtNetwork->clear();
            QTest::keyClicks(dialog.txtNetwork, QString::fromLatin1(address));
            QTest::mouseClick(dialog.cmdSave, Qt::LeftButton);
        }
    });
    Menu(Qt::Key_E, Qt::Key_M);
    ASSERT_EQ(user.shown.size(), 1U);
    EXPECT_TRUE(user.shown[0].starts_with("Comm Port|\"rfc2217://plc:70000\" is no address")) << user.shown[0];
    const WhenModal<frmSetupComm> again([](frmSetupComm& dialog) {
        EXPECT_EQ(dialog.txtNetwork->text(), QStringLiteral("rfc2217://plc-7:4001"));
        dialog.reject();
    });
    Menu(Qt::Key_E, Qt::Key_M);
    EXPECT_TRUE(type.Happened() && again.Happened());
}

} // namespace
} // namespace vantrel
