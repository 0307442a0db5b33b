// The line monitor as the user sees it: bytes with their meaning, pause, clear, the file; and that it costs nothing
// closed.
#include "app/frmHelp.h"
#include "link/frmLineMonitor.h"
#include "tests/windows/EditorFixture.h"

namespace vantrel {
namespace {

class LineMonitorTest : public EditorTest {
protected:
    static void Follow(frmLineMonitor& window) { QMetaObject::invokeMethod(&window.tmrFollow, "timeout"); }
    static std::string Cell(const frmLineMonitor& window, int row, int column) {
        return window.grdRows->model()->index(row, column).data().toString().toStdString();
    }
    static int Rows(const frmLineMonitor& window) { return window.grdRows->model()->rowCount(); }
};

TEST_F(LineMonitorTest, ShowsBytesWithTheirMeaningBesideTheTraceHoldsThemAndSavesThem) {
    WriteText(folder / "Help" / "VANTREL.hlp", "# Main {#main-display}\n# Check {#check-connection}\nbytes\n");
    Menu(Qt::Key_T, Qt::Key_L);
    auto& window = Opened<frmLineMonitor>();
    frame->tmrBackgroungUpdate.setInterval(std::chrono::hours(1)); // Every tick is the test's own.
    EXPECT_FALSE(window.cmdSave->isEnabled());
    line.Forget();
    GoOnline();
    TickAndSettle();
    Follow(window);
    ASSERT_GE(Rows(window), 3);
    EXPECT_FALSE(line.bytes.empty()) << "whoever was told before still is";
    EXPECT_EQ(Cell(window, 0, 0) + " " + Cell(window, 0, 1), "09:05:07 0.000000");
    EXPECT_EQ(Cell(window, 0, 2) + ">" + Cell(window, 0, 3) + " " + Cell(window, 0, 4), "FF>55 sync");

    QTest::mouseClick(window.cmdPause, Qt::LeftButton);
    const int held = Rows(window);
    TickAndSettle();
    Follow(window);
    EXPECT_EQ(Rows(window), held);
    EXPECT_NE(window.lblCount->text().indexOf(QStringLiteral("paused, 2 lines passed since")), -1)
        << window.lblCount->text().toStdString();
    Answer({}, {(folder / "lines").string()});
    ClickButton(window.cmdSave);
    const std::string saved = FileText(folder / "lines.txt");
    EXPECT_EQ(std::ranges::count(saved, '\n'), 1 + held) << "what is shown, and nothing else";
    EXPECT_NE(saved.find("\n09:05:07     0.000000  FF  55  sync\n"), std::string::npos) << saved;

    QTest::mouseClick(window.cmdPause, Qt::LeftButton);
    EXPECT_EQ(Cell(window, held, 4), "paused: 2 lines were not kept");
    QTest::mouseClick(window.cmdClear, Qt::LeftButton);
    EXPECT_EQ(Rows(window), 0);
    TickAndSettle();
    Follow(window);
    EXPECT_EQ(Cell(window, 1, 4).substr(0, 5), "read ") << "the pause has not put it out of step";
    window.activateWindow();
    Settle();
    QTest::keyClick(QApplication::activeWindow(), Qt::Key_F1);
    Settle();
    const auto* help = dynamic_cast<frmHelp*>(QApplication::activeWindow());
    ASSERT_TRUE(help);
    EXPECT_EQ(help->txtTopic->toPlainText(), QStringLiteral("Check\nbytes"));
}

TEST_F(LineMonitorTest, TheOldestGoAndOneThatIsClosedHearsNothing) {
    LineRecorder recorder(clock);
    TrafficLogs logs;
    logs.Add(recorder);
    for (const int byte : {0xFF, 1})
        logs.Exchanged(clock.Now(), static_cast<std::uint8_t>(byte), 0x55);
    auto* window = new frmLineMonitor(recorder, {}, frame.get());
    window->show();
    EXPECT_TRUE(recorder.Entries().empty()) << "closed nothing is kept";
    logs.Exchanged(clock.Now(), 0x1F, 0x1F);
    Follow(*window);
    EXPECT_EQ(Cell(*window, 0, 4), "address 1F..H") << "what passed before was followed";
    QTest::mouseClick(window->cmdClear, Qt::LeftButton);
    logs.Surplus(clock.Now(), 0xAA);
    Follow(*window);
    EXPECT_EQ(Cell(*window, 0, 4), "surplus: AAH came without being asked for");
    for (std::size_t i = 0; i < LineRecorder::Most + 5; ++i) {
        logs.Exchanged(clock.Now(), 0xFF, {});
        if (i == 9) Follow(*window);
    }
    EXPECT_EQ(Cell(*window, 0, 4).substr(0, 4), "sync") << "not yet followed";
    Follow(*window);
    EXPECT_EQ(Rows(*window), static_cast<int>(LineRecorder::Most));
    EXPECT_NE(window->lblCount->text().indexOf(QStringLiteral("older ones that were not kept: 6")), -1);
    delete window;
    logs.Surplus(clock.Now(), 0xAA);
    EXPECT_TRUE(recorder.Entries().empty());
}

} // namespace
} // namespace vantrel
