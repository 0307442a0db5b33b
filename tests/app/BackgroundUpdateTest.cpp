// The tick against the simulated board: what the user is told, what it costs the line, what it leaves alone.
#include "app/BackgroundUpdate.h"

#include "link/TargetMap.h"
#include "tests/support/BoardLink.h"

namespace vantrel {
namespace {

class BackgroundUpdateTest : public BoardLink<> {
protected:
    BackgroundUpdateTest() : BoardLink(LinePacing::LineSpeed) { program.InitDefaults(); }
    void Tick(int times = 1) {
        for (int i = 0; i < times; ++i)
            turns.RunToEnd(update.Tick(transferring));
    }
    /// Bytes on the line while something happens.
    template <typename Happens> std::size_t Traffic(Happens happens) {
        line.Forget();
        happens();
        return line.bytes.size();
    }

    Program program{ProgramFolder(folder.Path(), folder.Path()), clock};
    BackgroundUpdate update{program, link, clock};
    bool transferring = false;
};

constexpr const char* Normal = "Set-up Program is Currently ONLINE\n-- System Normal --";

TEST_F(BackgroundUpdateTest, AlarmsAreReadWhenTheProgramGoesOnlineAndEveryTwentiethTick) {
    board.Poke(CurrentFaultByte, 0x45);
    Open();
    Tick();
    EXPECT_EQ(update.PanelText(), "System Message:  Faults Active in PLC");
    EXPECT_EQ(program.systemMessage, "***** SYSTEM ALARM *****\nTarget Board Fault\n\n");
    board.Poke(CurrentFaultByte, 0);
    board.Poke(CurrentCommErrorByte, 5);
    EXPECT_EQ(Traffic([&] { Tick(19); }), 19 * 2U);
    EXPECT_EQ(program.alarms, (AlarmFlags{false, false, false}))
        << "the fault that every tick reads is believed at once";
    EXPECT_EQ(Traffic([&] { Tick(); }), 2 * 2U);
    EXPECT_EQ(program.systemMessage, "***** SYSTEM ALARM *****\nCommunication Error\n\n");
    EXPECT_FALSE(program.refreshTargetStatus);
}

TEST_F(BackgroundUpdateTest, TheCoCpuAlarmIsThatOfABoardThatHasOne) {
    program.document.FilePath = folder / "plant.sdt";
    WriteText(folder / "plant.trv", "2");
    board.Poke(CoCpuSlotByte, 3);
    Open();
    Tick();
    EXPECT_EQ(program.systemMessage, "***** SYSTEM ALARM *****\nCO-CPU Fault\n\n");
    program.document.FilePath = folder / "other.sdt";
    Tick();
    EXPECT_EQ(program.systemMessage, Normal);
}

TEST_F(BackgroundUpdateTest, ATransferHasTheLineToItself) {
    transferring = true;
    Open();
    EXPECT_EQ(Traffic([&] { Tick(25); }), 0U);
    EXPECT_EQ(program.systemMessage, "Set-up Program is Currently ONLINE") << "nobody has asked the board yet";
    EXPECT_TRUE(program.refreshTargetStatus) << "as soon as the transfer is over";
}

} // namespace
} // namespace vantrel
