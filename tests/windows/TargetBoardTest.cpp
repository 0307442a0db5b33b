// The target board interface as a user meets it: the real window and boxes, clicks and keys, the simulated board in
// process.
#include "tests/windows/ViewFixture.h"
#include "views/frmTargetBoard.h"

#include <QScrollBar>
#include <QTabBar>
#include <QWheelEvent>

#include <memory>
#include <utility>

namespace vantrel {
namespace {

constexpr const char* ResetAsked =
    "WARNING - Fault Code Reset!|Target Board will be reinitialized.\n\nDo you wish to continue?";
constexpr const char* AddressRefused = "Network Address Set-up|Only a Number Between 1 and 32 can be Entered";
constexpr const char* NoBoard = "Cannot Communicate with Target Board.";
class TargetBoardTest : public ViewFixture {
protected:
    TargetBoardTest() {
        WriteText(folder / "Support/FaultErrCodes.txt", "00,None\n0a,\"Watchdog, first\"\n45,User fault\n");
        WriteText(folder / "Support/CommErrCodes.txt", "00,None\n05,No response\n");
        WriteText(folder / "line.TRV", "6\n");
        WriteText(folder / "line.rev", "K52165050104\n");
        board.Poke(CurrentFaultByte, 0x0A);
        board.Poke(LastFaultByte, 0x45);
    }
    /// Opens the view of a board that answers, and closes it without taking an open entry.
    void Show(const std::function<void()>& acts, const char* program = "line.TRV") {
        window = std::make_unique<frmTargetBoard>(ProgramFolder(folder.Path(), folder / "user"), link, turns, dialogs,
                                                  clock, alarms, [this] { ApplyMode(*window); });
        user.shown.clear();
        Online();
        Open(*window, acts, [&] { window->InitializeForm(folder / program); });
    }
    void Settled() { Settle(*window); }
    void Click(QWidget* control) { QTest::mouseClick(control, Qt::LeftButton); }
    void ClickAndSettle(QWidget* control) { Click(control), Settled(); }
    void Tab(int page) {
        QTabBar* bar = window->tabTargetBoard->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(page).center());
    }
    void Key(Qt::Key key) { QTest::keyClick(window->focusWidget(), key); }
    void Type(std::size_t field, const char* text) {
        Click(window->Setup[field].txtSetup);
        QTest::keyClicks(window->Setup[field].txtSetup, QString::fromLatin1(text));
    }
    void Wheel(std::size_t field) {
        QWheelEvent up({}, {}, {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(window->Setup[field].txtSetup, &up);
    }
    [[nodiscard]] std::string Field(std::size_t field) const {
        return window->Setup[field].txtSetup->text().toStdString();
    }
    [[nodiscard]] std::string Description(std::size_t i) const {
        return window->txtTargetBoard[i]->toPlainText().toStdString();
    }
    [[nodiscard]] std::string Shown(std::size_t i) const {
        return window->lblTargetBoard[i]->text().toStdString() + "|" + Description(i);
    }
    [[nodiscard]] int Byte(int address) const { return board.Peek(static_cast<std::uint16_t>(address), clock.Now()); }
    void ExpectOffline() {
        for (const std::size_t i : {0U, 1U, 4U, 5U})
            EXPECT_EQ(Description(i), NoBoard);
        EXPECT_TRUE(window->cmdGoOnline.isVisible() && window->cmdGoOnline.isEnabled());
        EXPECT_FALSE(window->cmdResetFaults->isEnabled() || window->cmdSetToCurrTime->isEnabled());
        EXPECT_FALSE(link.OnlineMode() || port.IsOpen());
    }

    AlarmFlags alarms{};
    std::unique_ptr<frmTargetBoard> window;
};

TEST_F(TargetBoardTest, ShowsTheBoardsFaultsAndRevisionAndResetsThemOnYesOnly) {
    board.Poke(LastCommErrorByte, 5);
    board.Poke(CurrentCommErrorByte, 5);
    Show([&] {
        EXPECT_EQ(Shown(0), "Current Fault: Code = 0AH|Watchdog, first");
        EXPECT_EQ(Shown(4), "Current Comm Error: Code = 05H|No response");
        EXPECT_TRUE(Description(3).starts_with("User program executed an xcall09()"));
        EXPECT_FALSE(window->lblTargetBoard[2]->isVisible() || window->cmdGoOnline.isVisible());
        EXPECT_EQ(alarms, (AlarmFlags{true, true, false}));
        EXPECT_EQ(window->lblRevIdentInPLC[0]->text() + window->lblRevIdentInPLC[1]->text(), "K52165051");
        EXPECT_EQ(window->lblRevIdentOnDisk->text() + window->lblRevNumberOnDisk[0]->text(), "K52165054");
        EXPECT_TRUE(window->lblRevComparison->text().contains("not the one"));
        window->txtTargetBoard[0]->setPlainText("one\ntwo");
        EXPECT_EQ(window->txtTargetBoard[0]->verticalScrollBar()->maximum(), 0) << "two lines have room";
        board.Poke(CurrentFaultByte, 0x45);
        Settled();
        EXPECT_EQ(Shown(0), "Current Fault: Code = 45H|User fault") << "the codes follow the board";
        user.answers = {QMessageBox::No, QMessageBox::Yes};
        Click(window->cmdResetFaults);
        EXPECT_EQ(Byte(CurrentFaultByte), 0x45);
        Click(window->cmdResetFaults);
        for (const int address : {CurrentFaultByte, LastFaultByte, CurrentCommErrorByte, LastCommErrorByte})
            EXPECT_EQ(Byte(address), 0);
        Settled();
        EXPECT_EQ(Shown(0) + Description(3), "Current Fault: Code = 00H|NoneNone");
        EXPECT_FALSE(window->cmdResetFaults->isEnabled());
    });
    EXPECT_EQ(user.shown, (Boxes{ResetAsked, ResetAsked}));
    EXPECT_EQ(alarms, AlarmFlags{});
}

TEST_F(TargetBoardTest, AnEntryIsKeptFromTheRefreshAndWrittenWhenItIsLeft) {
    board.Poke(SerialSetupByte, 200);
    Show([&] {
        Tab(2);
        Click(window->Setup[0].txtSetup);
        board.Poke(NetworkAddressByte, 7);
        Settled();
        EXPECT_EQ(Field(0), "01");
        Key(Qt::Key_Return);
        EXPECT_TRUE(window->Setup[1].txtSetup->hasFocus());
        Settled();
        EXPECT_EQ(Field(0), "07") << "nobody has changed the text";
        Type(0, "9");
        Settled();
        EXPECT_EQ(Field(0), "9");
        Key(Qt::Key_Tab);
        Settled();
        Wheel(0);
        Wheel(1);
        EXPECT_EQ(Field(0) + Field(1), "09201") << "the whole value is stepped, and only where the focus is";
        Key(Qt::Key_Escape);
        const QLabel& mark = *window->Setup[1].lblSetupMark;
        EXPECT_TRUE(mark.isVisible() && mark.text() == QLatin1String("= 200") && mark.font().bold());
        Click(window->Setup[0].updSetup->up);
        Click(window->Setup[0].updSetup->up);
        EXPECT_TRUE(window->Setup[0].updSetup->up->autoRepeat());
        Tab(3);
        Settled();
        EXPECT_EQ(Byte(NetworkAddressByte) + Byte(SerialSetupByte), 11 + 200);
        EXPECT_TRUE(window->fraTargetBoard[3]->isVisible() && !window->fraTargetBoard[2]->isVisible());
        Tab(2);
        Type(1, "00");
        Click(&window->cmdOk);
        TurnsUntil([&] { return !window->isVisible(); });
        EXPECT_TRUE(mark.text().isEmpty());
    });
    EXPECT_EQ(Byte(SerialSetupByte), 0) << "Ok takes the open entry";
    EXPECT_TRUE(user.shown.empty());
}

TEST_F(TargetBoardTest, ARefusedEntryStaysWhateverTheUserDoesNext) {
    const std::vector<std::pair<const char*, std::function<void()>>> ways{
        {"33", [&] { Key(Qt::Key_Tab); }},
        {"0", [&] { Key(Qt::Key_Return); }},
        {"x", [&] { Tab(0); }},
        {"1.5", [&] { Click(&window->cmdOk); }},
    };
    Show([&] {
        Tab(2);
        for (const auto& [text, leave] : ways) {
            user.shown.clear();
            Type(0, text);
            leave();
            Settled();
            EXPECT_EQ(user.shown, Boxes{AddressRefused}) << text;
            EXPECT_EQ(Field(0) + window->Setup[0].txtSetup->selectedText().toStdString(), "0101");
            EXPECT_TRUE(window->isVisible() && window->Setup[0].txtSetup->hasFocus());
        }
    });
    EXPECT_EQ(Byte(NetworkAddressByte), 1);
}

TEST_F(TargetBoardTest, TheClockButtonsSetABoardThatHasAClockWhichIsToldApartWhileItIsOnline) {
    const auto off = [&] { return window->lblClockOff->text().toStdString(); };
    Show([&] {
        Tab(3);
        EXPECT_EQ(window->lblCurrDate->text().toStdString(), "03 - 14 - 2026");
        Click(window->cmdSetToCurrTime);
        ClickAndSettle(window->cmdSetToCurrDate);
        EXPECT_EQ(Field(7) + Field(5) + Field(6) + Field(2) + Field(3) + Field(4), "260314090507");
        EXPECT_EQ(off(), "The board's clock: the same as the computer's clock (to within 1 s).");
        port.CutLine();
        Settled();
        EXPECT_EQ(off(), "") << "nobody can tell";
        port.MendLine();
    });
    WriteText(folder / "other.trv", "2\n");
    board.Poke(CoCpuSlotByte, 12);
    const auto look = [&] {
        EXPECT_EQ(window->lblTargetBoard[2]->text().toStdString(), "CO-CPU Slot: 12");
        EXPECT_TRUE(window->lblTargetBoard[2]->isVisible() && !window->cmdSetToCurrTime->isEnabled());
        EXPECT_EQ(off(), "");
        Tab(2);
        Click(window->Setup[0].txtSetup);
        Wheel(0);
        board.Poke(NetworkAddressByte, 7);
        Settled();
        EXPECT_EQ(Field(0), "07") << "nobody can edit it";
    };
    Show(look, "other.trv");
}

TEST_F(TargetBoardTest, ALinkThatDiesLaterLeavesTheCodesOneThatDiesInTheFirstPassLeavesNone) {
    Show([&] {
        port.CutLine();
        Settled();
        EXPECT_EQ(Shown(0), std::string("Current Fault: Code = 0AH|") + NoBoard);
        ExpectOffline();
        const std::size_t sent = board.ReceivedBytes();
        clock.Advance(std::chrono::seconds(1));
        QMetaObject::invokeMethod(window->findChild<QTimer*>(QStringLiteral("tick")), "timeout");
        EXPECT_EQ(window->lblCurrTime->text().toStdString(), ComputerTimeText(clock.LocalNow()));
        EXPECT_EQ(board.ReceivedBytes(), sent);
        port.MendLine();
        onTurn = [&] {
            if (turnsTaken == 10) port.CutLine();
        };
        ClickAndSettle(&window->cmdGoOnline);
        EXPECT_EQ(Shown(5), std::string("Last Comm Error: Code = 42H|") + NoBoard);
        EXPECT_EQ(window->lblRevComparison->text() + window->lblRevIdentInPLC[1]->text(), "-");
        ExpectOffline();
        onTurn = nullptr;
        port.MendLine();
        ClickAndSettle(&window->cmdGoOnline);
        EXPECT_EQ(Shown(0), "Current Fault: Code = 0AH|Watchdog, first");
    });
    EXPECT_EQ(user.shown, (Boxes{CableWarning, CableWarning}));
}

TEST_F(TargetBoardTest, WhatTheBoardDidNotTakeIsToldAndTheBoxesShowWhatItHolds) {
    BoardHabits habits;
    habits.refused = {
        {CurrentFaultByte, CurrentFaultByte}, {NetworkAddressByte, NetworkAddressByte}, {ClockYearByte, ClockYearByte}};
    board.SetHabits(habits);
    Show([&] {
        Tab(2);
        Type(0, "9");
        Key(Qt::Key_Tab);
        Settled();
        EXPECT_EQ(Field(0), "01");
        Tab(3);
        ClickAndSettle(window->cmdSetToCurrDate);
        Tab(0);
        user.answers = {QMessageBox::Yes};
        ClickAndSettle(window->cmdResetFaults);
        EXPECT_EQ(Shown(0), "Current Fault: Code = 0AH|Watchdog, first");
        EXPECT_TRUE(window->cmdResetFaults->isEnabled());
    });
    EXPECT_EQ(user.shown,
              (Boxes{"Network Address Set-up|The board did not confirm the value 9 (Network Address).\nIt holds 1 now.",
                     "Set to Current Date|The board did not confirm all of it.\nThe boxes show what it holds now.",
                     ResetAsked,
                     "Reset Fault Codes|The board confirmed the reset, but it holds a fault or error code again."}));
}

TEST_F(TargetBoardTest, AWriteUnderWayEndsBeforeTheViewGoesUnlessTheBoardIsSilent) {
    for (const bool silent : {false, true}) {
        board.ClearFaults();
        Show([&] {
            Tab(2);
            Type(0, "9");
            board.AddFault({.kind = FaultKind::LateAnswer, .lateBy = std::chrono::milliseconds(25)});
            Key(Qt::Key_Tab);
            TurnsUntil([&] { return link.TargetMode() == 2 && link.AwaitingSince(); });
            if (silent) Silence();
            const MonotonicTime begun = clock.Now();
            window->close();
            EXPECT_TRUE(window->isVisible());
            TurnsUntil([&] { return !window->isVisible(); });
            EXPECT_LT(clock.Now() - begun, std::chrono::milliseconds(silent ? 100 : 1000));
        });
        EXPECT_EQ(Byte(NetworkAddressByte), silent ? 1 : 9);
        EXPECT_EQ(link.LinkFailed(), silent);
        board.Poke(NetworkAddressByte, 1);
    }
    EXPECT_TRUE(user.Showed({"before the board had confirmed the value 9 (Network Address)"}));
}

} // namespace
} // namespace vantrel
