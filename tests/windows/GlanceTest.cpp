// Which sequence fails, as the user sees it: lamps, counts and filters on the status tab, the line below the system
// message, the event log and its file.
#include "link/StatusAdvice.h"
#include "link/StatusText.h"
#include "link/TargetMap.h"
#include "simulator/BoardHabits.h"
#include "tests/windows/EditorFixture.h"
#include "views/frmEventLog.h"

#include <QClipboard>
#include <QScrollBar>
#include <QToolButton>

#include <set>

namespace vantrel {
namespace {

using namespace std::chrono_literals;

class GlanceTest : public EditorTest {
protected:
    GlanceTest() {
        // What reads is what a test starts.
        frame->tmrBackgroungUpdate.stop();
        Doc().CurrentConfiguration.SetNodeDescription(4, "Fuel oil");
        for (int sequence = 0; sequence < 30; ++sequence)
            board.PokeWord(static_cast<std::uint16_t>(SequenceBase + SequenceStride * sequence), 2);
        Show("4:05");
    }
    /// `status`: SEQUENCE:CODE, the code in hexadecimal.
    void Show(const std::string& status) { board.SetHabits(WithHabit({}, "status=" + status).value()); }
    /// So many that every row has been read.
    void Passes() {
        for (int pass = 0; pass < 31; ++pass)
            StatusPass();
    }
    [[nodiscard]] std::string Counts() const {
        std::string text;
        for (const QToolButton& button : editor->cmdHealth) {
            if (button.isVisible()) text += button.text().toStdString() + "|";
        }
        return text;
    }
    [[nodiscard]] Texts Rows() {
        Texts rows;
        for (int row = 1; row <= 31; ++row) {
            if (!Grid().isRowHidden(row - 1)) rows.push_back(Cell(row, 0));
        }
        return rows;
    }
    [[nodiscard]] std::string Hint(int row, int column) {
        return Grid().model()->index(row - 1, column - 1).data(Qt::ToolTipRole).toString().toStdString();
    }
    [[nodiscard]] qint64 Lamp(int row) {
        return Grid().model()->index(row - 1, 1).data(Qt::DecorationRole).value<QIcon>().cacheKey();
    }
    [[nodiscard]] std::string Message() const { return editor->txtMessageDisplay.toPlainText().toStdString(); }
    /// How many pixels of a row's status have the colour of a lamp, on the right where no lamp is.
    [[nodiscard]] int Ticks(int row, ProgramIcon lamp) {
        const QImage image = Grid().grab().toImage();
        const QRect cell = Grid().CellRect(row, 2);
        int count = 0;
        for (int x = cell.center().x(); x < cell.right(); ++x) {
            for (int y = cell.top(); y < cell.bottom(); ++y)
                count += image.pixelColor(x, y) == LampColor(lamp) ? 1 : 0;
        }
        return count;
    }
    void Pick(SequenceHealth health) {
        QTest::mouseClick(&editor->cmdHealth.at(static_cast<std::size_t>(health)), Qt::LeftButton);
    }
};

TEST_F(GlanceTest, TheStatusTabCountsAndShowsWhatFailsAndTheGivenColumnsStayAsTheyAre) {
    EXPECT_EQ(Counts(), "") << "OFFLINE";
    GoOnline();
    StatusPass();
    EXPECT_NE(Counts().find(" unknown|"), std::string::npos) << "rows out of sight come one by one";
    Passes();
    EXPECT_EQ(Counts(), "29 OK|1 failing|1 disabled|");
    EXPECT_EQ(Cell(5, 1) + " " + Cell(5, 2), "2 05: No Slave Response, Timeout");
    EXPECT_EQ(Cell(5, 3) + "," + Cell(5, 4), "Fuel oil,1");
    EXPECT_EQ(Cell(5, 5), "09:05:07  05: No Slave Response, Timeout");
    EXPECT_EQ(Cell(5, 6) + Cell(4, 5), "before 09:05:07");
    EXPECT_EQ(std::set({Lamp(1), Lamp(5), Lamp(31)}).size(), 3U);
    EXPECT_EQ(Lamp(1), Lamp(2));
    clock.Advance(2s);
#ifndef _WIN32 // Where no screen is there, its letters leave the strip no room.
    EXPECT_GT(Ticks(5, ProgramIcon::LampBad), Ticks(1, ProgramIcon::LampGood)) << "a failure stands higher";
    EXPECT_GT(Ticks(1, ProgramIcon::LampGood), 0);
#endif
    EXPECT_EQ(Ticks(1, ProgramIcon::LampBad) + Ticks(5, ProgramIcon::LampGood), 0);
    EXPECT_NE(Hint(5, 2).find(std::string(AdviceOn(5).remedy).substr(0, 30)), std::string::npos);
    Tick();
    EXPECT_EQ(Message(), "Set-up Program is Currently ONLINE\n-- System Normal --\n"
                         "1 sequence was failing when last read: 4.");
    EXPECT_EQ(frame->sbrMainPanels[0]->text(), QStringLiteral("System Message:  All Faults Normal"));

    Pick(SequenceHealth::Failing);
    EXPECT_EQ(Rows(), Texts{"4"});
    Show("7:0A");
    Passes();
    EXPECT_EQ(Rows(), Texts{"7"}) << "the rows follow what they are";
    EXPECT_EQ(Cell(5, 6), "09:05:09") << "this change was seen";
    Pick(SequenceHealth::Failing);
    EXPECT_EQ(Rows().size(), 31U);
    Pick(SequenceHealth::Ok);
    Menu(Qt::Key_V, Qt::Key_F);
    EXPECT_EQ(Counts(), "");
    EXPECT_EQ(Rows().size(), 31U) << "OFFLINE nothing is left out";
    EXPECT_EQ(Message(), "Set-up Program is Currently OFFLINE");
}

TEST_F(GlanceTest, ANarrowWindowScrollsTheColumnsBehindTheGivenOnes) {
    QtFormatGrid& grid = editor->fgComm[0];
    EXPECT_EQ(grid.ColumnCount(), 7);
    EXPECT_EQ(grid.Text(0, 2), QStringLiteral("Communication Status"));
    EXPECT_GE(grid.viewport()->width(), grid.columnWidth(0) + grid.columnWidth(1)) << "the given ones always fit";
    EXPECT_GT(grid.horizontalScrollBar()->maximum(), 0);
    EXPECT_GE(grid.VisibleRows().last, 14) << "the scroll bar takes no row its place";
}

TEST_F(GlanceTest, BehindAnotherTabOrWindowOneStatusWordATickIsRead) {
    GoOnline();
    StatusPass();
    const auto status = [this] {
        line.Forget();
        TickAndSettle();
        // The tick's own poll of the board's fault is a byte, two exchanges.
        return (line.bytes.size() - 2) / 4;
    };
    TickAndSettle();
    EXPECT_EQ(status(), 0U) << "the tab reads by itself";
    ClickTab(EditorTab::Configuration);
    EXPECT_EQ(status(), 1U);
    ClickTab(EditorTab::CommStatus);
    QDialog modal(frame.get());
    modal.open();
    EXPECT_EQ(status(), 1U);
}

TEST_F(GlanceTest, TheEventLogFollowsFiltersCopiesAndIsSavedOnRequest) {
    GoOnline();
    Passes();
    Menu(Qt::Key_V, Qt::Key_E);
    auto& log = Opened<frmEventLog>();
    EXPECT_LE(log.width(), std::max(log.screen()->availableSize().width(), log.minimumSizeHint().width()));
    const QAbstractItemModel& rows = *log.grdRows->model();
    EXPECT_FALSE(rows.headerData(0, Qt::Vertical).isValid());
    const auto cell = [&](int row, int column) { return rows.index(row, column).data().toString().toStdString(); };
    EXPECT_EQ(rows.rowCount(), 1 + 31);
    EXPECT_EQ(cell(31, 4), "ONLINE") << "the oldest is the last";
    clock.Advance(1s);
    Show("9:0C");
    Passes();
    QMetaObject::invokeMethod(&log.tmrFollow, "timeout");
    EXPECT_EQ(rows.rowCount(), 1 + 31 + 2);
    EXPECT_EQ(cell(0, 1) + cell(0, 3), "9failing");
    log.cboSequence->setCurrentIndex(1 + 9);
    EXPECT_EQ(rows.rowCount(), 2 + 1);
    EXPECT_EQ(cell(2, 4), "ONLINE") << "no list reads like an unbroken watch";
    log.grdRows->selectRow(1);
    QTest::keyClick(&log, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
              "2026-03-14 09:05:07\t9\tSequence\tOK\t02: Comm to Node OK\t\n");
    QApplication::clipboard()->clear();
    QTest::keyClick(&log, Qt::Key_C);
    EXPECT_TRUE(QApplication::clipboard()->text().isEmpty());

    const std::filesystem::path file = folder / "events.csv";
    EXPECT_FALSE(std::filesystem::exists(file)) << "kept in a file on request only";
    Answer({}, {(folder / "events").string()});
    ClickButton(log.cmdSave);
    EXPECT_EQ(FileText(file).substr(3, 5), "Time,");
    EXPECT_NE(FileText(file).find("09:05:08,9,Sequence,failing,0C: Xmitt No Acknowledge"), std::string::npos);
    EXPECT_EQ(FileText(file).find(",8,Sequence"), std::string::npos) << "of the chosen sequence alone";
    board.PokeWord(CurrentFaultByte, 0x45);
    TickAndSettle();
    Tick();
    log.cboSequence->setCurrentIndex(0);
    EXPECT_EQ(cell(0, 4) + "|" + cell(1, 4), "Target Board Fault: active|The board reports fault code 45H");
}

TEST_F(GlanceTest, TheEventLogSaysThatTheOldestHaveGone) {
    History history(clock);
    for (std::size_t i = 0; i <= History::MostEntries; ++i)
        history.NoteFault(static_cast<int>(i % 2) + 1);
    const frmEventLog log(history, {}, nullptr);
    EXPECT_TRUE(log.lblCount->text().endsWith(QStringLiteral("; older ones that were not kept: 1")));
}

} // namespace
} // namespace vantrel
