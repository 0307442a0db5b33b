// An hour with the program, in virtual time: the whole frame works on the simulated board, its person opens this and
// starts that, and once a minute something goes wrong on the line.
#include "document/frmMain.h"
#include "tests/windows/FrameFixture.h"

namespace vantrel {
namespace {

using namespace std::chrono_literals;

class HourTest : public FrameTest {
protected:
    HourTest() {
        // Time is the clock's alone: the host's timers neither help nor disturb.
        frame->tmrBackgroungUpdate.stop();
        editor->tmrStatusTab.setInterval(24h);
        user.whileShown = [this] { MeetBox(); };
        for (std::size_t i = 0; i < ValueCount; ++i)
            Doc().CurrentConfiguration.SetValue(i, static_cast<std::int32_t>(2 + i));
    }
    void HalfSecond() {
        clock.Advance(500ms);
        Tick();
        QMetaObject::invokeMethod(&editor->tmrStatusTab, "timeout");
        for (int round = 0; round < 8; ++round)
            QCoreApplication::processEvents();
    }
    /// At most so long; true when it has come about.
    bool Pass(
        MonotonicTime longest, const std::function<bool()>& until = [] { return false; }) {
        for (const MonotonicTime end = clock.Now() + longest; !until() && clock.Now() < end;)
            HalfSecond();
        return until();
    }
    void Mend() {
        board.ClearFaults();
        port.MendLine();
    }
    /// The program's time goes on under a box. Says Yes to every question, and Retry as often as the minute wants.
    void MeetBox() {
        const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        HalfSecond();
        ClickPanel(1);
        const bool again = box->button(QMessageBox::Retry) && ++warnings > 0 && retries > 0;
        user.answers.assign(1, again ? QMessageBox::Retry : QMessageBox::Yes);
        if (!box->button(user.answers.front())) user.answers.clear();
        if (again && --retries == 0 && minute % 4 == 3) Mend();
        armed = true;
    }

    /// Opens the view, gives the fault its time, goes on with the view and closes it.
    void InView(Qt::Key entry) {
        const WhenModal<QDialog> script([&](QDialog& view) {
            const auto click = [&view](const char* button) {
                QTest::mouseClick(view.findChild<QPushButton*>(QLatin1String(button)), Qt::LeftButton);
            };
            armed = true;
            Pass(20s);
            Mend();
            // A byte that went lost before is still waited for.
            Pass(6s);
            if (!frame->Link().OnlineMode()) click("cmdGoOnline");
            bytes = 0;
            EXPECT_TRUE(Pass(20s, [&] { return bytes > 150; })) << "more than the ticks alone";
            click("cmdOk");
        });
        Menu(Qt::Key_V, entry);
        EXPECT_TRUE(script.Happened());
    }
    void Transfer() {
        const WhenModal<frmProcessing> script([&](frmProcessing& window) {
            const auto gone = [&] { return !window.isVisible(); };
            // A board that is late with every byte would take half an hour.
            if (!Pass(5min, gone)) QTest::mouseClick(window.cmdCancel, Qt::LeftButton);
            EXPECT_TRUE(Pass(10s, gone)) << "the transfer never ends";
        });
        Menu(Qt::Key_F, minute % 5 == 4 ? Qt::Key_U : Qt::Key_D);
    }
    void Tabs() {
        armed = true;
        for (const int tab : {1, 2, 0}) {
            QTest::mouseClick(&editor->tbsComm, Qt::LeftButton, {}, editor->tbsComm.tabRect(tab).center());
            Pass(5s);
        }
    }
    void ExpectUsableAndUnharmed() {
        Pass(6s);
        user.shown.clear();
        if (Mode() == "OFFLINE") GoOnline();
        for (const int node : {31 - minute % 20, int{before.Value(1)}}) {
            board.PokeWord(WordOf(1), static_cast<std::uint16_t>(node), clock.Now());
            EXPECT_TRUE(Pass(30s, [&] { return editor->fgComm[0].Text(1, 1) == QString::number(node); })) << node;
        }
        EXPECT_LE(frame->Turns().Waiting(), 1U);
        // What the fault has spoilt on its way is transferred again, as the program asks.
        if (minute % 5 > 2) Transfer();
        EXPECT_LE(user.shown.size(), 1U) << "only the question";
        EXPECT_FALSE(DocumentChanged(Doc().CurrentConfiguration, before, ProgramVersion()));
        for (std::size_t i = 0; i < ValueCount; ++i)
            EXPECT_EQ(Word(WordOf(i)), Value(i)) << i;
        EXPECT_EQ(Flag(), 0);
    }
    static std::uint16_t WordOf(std::size_t i) {
        return static_cast<std::uint16_t>(std::stoi(DefaultTargetAddress(i).substr(1)));
    }
    /// Each kind of fault strikes once and, some minutes later, until it is mended; always in the midst of something.
    void Exchanged(MonotonicTime /*at*/, std::uint8_t /*sent*/, std::optional<std::uint8_t> /*answer*/) override {
        ++bytes;
        const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        EXPECT_FALSE(box && box->button(QMessageBox::Retry)) << "traffic under the link's own question";
        if (!armed || bytesToFault == 0 || --bytesToFault > 0) return;
        const int kinds = static_cast<int>(FaultNames().size());
        const auto kind = FaultNames().at(static_cast<std::size_t>(minute % kinds)).kind;
        const bool once = minute / kinds % 2 == 0;
        board.AddFault({.kind = kind, .firstTimeOnly = once});
        if (kind == FaultKind::HangUp && !once) port.CutLine();
    }

    frmMain* editor = dynamic_cast<frmMain*>(frame->findChild<QWidget*>(QStringLiteral("frmMain")));
    Configuration before;
    int minute = 0, bytesToFault = 0, retries = 0, warnings = 0, bytes = 0;
    bool armed = false; ///< The minute's work has begun.
};

TEST_F(HourTest, AFaultAMinuteLeavesProgramAndDocumentAsTheyWere) {
    Transfer();
    before = Doc().CurrentConfiguration;
    const auto windows = QApplication::topLevelWidgets().size();
    for (const MonotonicTime start = clock.Now(); minute < 60; Pass(start + ++minute * 1min - clock.Now())) {
        SCOPED_TRACE(testing::Message() << "minute " << minute);
        armed = false;
        retries = minute % 3;
        bytesToFault = 1 + minute * 13 % 90;
        if (minute % 5 == 0) Tabs();
        if (minute % 5 == 1) InView(Qt::Key_C);
        if (minute % 5 == 2) InView(Qt::Key_T);
        if (minute % 5 > 2) Transfer();
        EXPECT_EQ(bytesToFault, 0) << "the fault has not struck";
        Mend();
        ExpectUsableAndUnharmed();
    }
    EXPECT_GT(warnings, 20);
    Menu(Qt::Key_V, Qt::Key_F);
    Pass(5s);
    EXPECT_EQ(frame->Turns().Waiting(), 0U);
    EXPECT_EQ(QApplication::topLevelWidgets().size(), windows);
}

} // namespace
} // namespace vantrel
