// The passes and writes of the target board view, against the simulated board: order, texts, and what a dying link
// leaves.
#include "views/BoardMonitor.h"

#include "link/TargetMap.h"
#include "tests/support/BoardLink.h"

#include <functional>
#include <map>
#include <vector>

namespace vantrel {
namespace {

class BoardMonitorTest : public BoardLink<>, public BoardDisplay, private TrafficLog {
protected:
    BoardMonitorTest() {
        link.OpenRSComm(port);
        static_cast<void>(link.RSRead("B0")); // the link is in the read mode from now on
        link.SetTrafficLog(this);
        WriteText(folder / "faults.txt", "0A,Early\n45,User\n0a,\"Watchdog, late\"\n42,Dead\n");
        WriteText(folder / "errors.txt", "05,No answer\n");
    }
    /// The bytes read in a whole pass; in the read mode each is two exchanges, high and low address.
    std::vector<int> Run(Task pass) {
        sent_.clear();
        turns.RunToEnd(pass);
        std::vector<int> reads;
        for (std::size_t i = 0; i + 1 < sent_.size(); i += 2)
            reads.push_back(sent_[i] * 256 + sent_[i + 1]);
        return reads;
    }
    std::vector<int> FirstPass() { return Run(monitor.ShowBoardOnline()); }
    void DieAfter(std::size_t bytes) { board.AddFault({.kind = FaultKind::NoAnswer, .afterBytes = received_ + bytes}); }

    [[nodiscard]] bool Active() const override { return active; }
    [[nodiscard]] bool SetupWanted(std::size_t field) const override { return field != edited; }
    void EnableOnline(bool hasClock) override { clockEnabled = hasClock; }
    void EnableReset(bool enabled) override { resetEnabled = enabled; }
    void ShowCaption(BoardCode which, const std::string& text) override { captions[which] = text; }
    void ShowDescription(BoardCode which, const std::string& text) override { descriptions[which] = text; }
    void ShowSetup(std::size_t field, const std::string& value) override { setup[field] = value; }
    void ShowRevision(std::size_t label, const std::string& text) override { revision[label] = text; }
    void ShowGoOnline(bool visible) override { goOnline = visible; }

    TurnQueue turns;
    AlarmFlags alarms{true, true, true};
    BoardMonitor monitor{link, turns, clock, dialogs, alarms, {folder / "faults.txt", folder / "errors.txt"}, *this};
    bool active = true;
    std::optional<std::size_t> edited;
    std::optional<bool> clockEnabled, resetEnabled, goOnline;
    std::map<BoardCode, std::string> captions, descriptions;
    std::map<std::size_t, std::string> setup, revision;
    std::function<void()> onByte;

private:
    void Exchanged(MonotonicTime, std::uint8_t sent, std::optional<std::uint8_t>) override {
        sent_.push_back(sent);
        ++received_;
        if (onByte) onByte();
    }
    void Surplus(MonotonicTime, std::uint8_t) override {}
    std::vector<int> sent_;
    std::size_t received_ = 5; // of the constructor
};

TEST_F(BoardMonitorTest, TheFirstPassShowsCodesDescriptionsAndRevision) {
    monitor.SetBoardType('6');
    board.Poke(CurrentFaultByte, 0x0A);
    board.Poke(CurrentCommErrorByte, 5);
    EXPECT_EQ(FirstPass(), (std::vector<int>{8176, 8177, 8175, 8177, 8179, 8178, 61424, 61425, 61426, 61427, 61428,
                                             61429, 61430, 61431, 61432, 61433}));
    EXPECT_EQ(captions.size(), 4U) << "no slot, no advice";
    EXPECT_EQ(captions[BoardCode::CurrentFault], "Current Fault: Code = 0AH");
    EXPECT_EQ(descriptions[BoardCode::CurrentFault], "Watchdog, late");
    EXPECT_EQ(descriptions[BoardCode::CurrentCommError], "No answer");
    EXPECT_EQ(descriptions[BoardCode::Advice], "None");
    EXPECT_EQ(revision, (std::map<std::size_t, std::string>{{0, "K5216505"}, {1, "1"}, {2, "4"}}));
    EXPECT_EQ(clockEnabled, true);
    EXPECT_EQ(resetEnabled, true);
    EXPECT_EQ(goOnline, false);
    EXPECT_EQ(alarms, (AlarmFlags{true, true, false}));
}

TEST_F(BoardMonitorTest, ABoardWithACoCpuShowsItsSlotWhichAloneAllowsNoReset) {
    monitor.SetBoardType('2');
    board.Poke(CoCpuSlotByte, 0x1B);
    EXPECT_EQ(FirstPass().at(6), CoCpuSlotByte);
    EXPECT_EQ(captions[BoardCode::CoCpuSlot], "CO-CPU Slot: 27");
    EXPECT_EQ(clockEnabled, false);
    EXPECT_EQ(resetEnabled, false);
    EXPECT_EQ(alarms, (AlarmFlags{false, false, true}));
}

TEST_F(BoardMonitorTest, ALinkThatFailsInThePassMakesEveryCode42) {
    board.Poke(CurrentFaultByte, 0x0A);
    for (const std::size_t bytes : {0U, 3U, 20U}) {
        SCOPED_TRACE(bytes);
        board.ClearFaults();
        link.OpenRSComm(port);
        captions.clear();
        DieAfter(bytes);
        static_cast<void>(FirstPass());
        EXPECT_TRUE(link.LinkFailed());
        EXPECT_EQ(captions[BoardCode::CurrentFault], "Current Fault: Code = 42H");
        EXPECT_EQ(captions[BoardCode::LastCommError], "Last Comm Error: Code = 42H");
        EXPECT_EQ(descriptions[BoardCode::CurrentFault], "Dead");
        EXPECT_EQ(resetEnabled, false);
        EXPECT_NE(goOnline, false);
    }
}

TEST_F(BoardMonitorTest, AFileThatCannotBeReadIsReportedAndTheOfflineTextGoes) {
    monitor.ShowBoardOffline();
    EXPECT_EQ(descriptions[BoardCode::LastCommError], "Cannot Communicate with Target Board.");
    std::filesystem::remove(folder / "errors.txt");
    std::filesystem::create_directory(folder / "errors.txt");
    static_cast<void>(FirstPass());
    EXPECT_EQ(descriptions[BoardCode::LastCommError], "");
    EXPECT_EQ(dialogs.shown.at(0).title, "TargetBoard FirstPass");
}

TEST_F(BoardMonitorTest, TheFieldsAreReadInOrderAndAnEditedOneIsLeftAlone) {
    board.Poke(NetworkAddressByte, 7);
    edited = 1;
    EXPECT_EQ(Run(monitor.RefreshSetupFields()),
              (std::vector<int>{8180, 8191, 43012, 43010, 43008, 43016, 43015, 43017}));
    EXPECT_EQ(setup[0], "7");
    EXPECT_EQ(setup.size(), 7U);
    setup.clear();
    onByte = [&] { active = setup.size() < 2; };
    EXPECT_EQ(Run(monitor.RefreshSetupFields()).size(), 4U) << "closed while the fourth value was on its way";
}

TEST_F(BoardMonitorTest, EachValueOfTheClockIsThatOfItsOwnWrite) {
    clock.Advance(std::chrono::seconds(54 * 60 + 52)); // 09:59:59
    onByte = [&] { clock.Advance(std::chrono::milliseconds(250)); };
    EXPECT_EQ(monitor.SetToCurrTime(), WriteOutcome::Written);
    EXPECT_EQ(board.Peek(ClockHourByte, clock.Now()), 9);
    EXPECT_EQ(board.Peek(ClockMinuteByte, clock.Now()), 0);
}

TEST_F(BoardMonitorTest, AResetEndsWithTheLink) {
    for (const int byte : FaultAddresses)
        board.Poke(static_cast<std::uint16_t>(byte), 5);
    DieAfter(2 + 2 * 3); // mode, two values
    EXPECT_EQ(monitor.ResetFaultCodes(), WriteOutcome::LinkFailed);
    EXPECT_EQ(board.Peek(LastCommErrorByte) + board.Peek(CurrentCommErrorByte), 0);
    EXPECT_EQ(board.Peek(CurrentFaultByte), 5);
}

TEST(BoardTexts, AdviceAndEntriesFollowTheirTables) {
    for (const std::string entry : {"00None", "01Replace", "3FReplace", "40Reset", "42Verify", "45User", "5CProgram",
                                    "5DProgram", "7AReset", "7BNone"})
        EXPECT_TRUE(AdviceText(entry.substr(0, 2)).starts_with(entry.substr(2))) << entry;
    for (std::size_t i = 0; i < SetupFieldCount; ++i) {
        EXPECT_EQ(SetupEntry(i, " 0" + std::to_string(SetupFields[i].highest)), std::to_string(SetupFields[i].highest));
        EXPECT_FALSE(SetupEntry(i, std::to_string(SetupFields[i].highest + 1)));
        EXPECT_FALSE(SetupEntry(i, std::to_string(SetupFields[i].lowest - 1)));
        EXPECT_FALSE(SetupEntry(i, "1.5"));
    }
}

TEST(UserProgram, IsFoundBesideTheSetUpFileAndReadWithItsRevision) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "program");
    WriteText(folder / "program" / "k5216-505.trv", "6");
    const ProgramFolder programs(folder.Path(), folder.Path());
    EXPECT_EQ(ReadUserProgram(FindUserProgram(folder / "plant.sdt", programs)).boardType, 54);
    WriteText(folder / "plant.Trv", "A rest\r\n");
    WriteText(folder / "plant.rev", "LINE-7>04;<\r\nmore");
    const UserProgram program = ReadUserProgram(FindUserProgram(folder / "plant.sdt", programs));
    EXPECT_EQ(program.boardType, 65);
    EXPECT_EQ(program.revIdentOnDisk, "LINE-7>");
    EXPECT_EQ(program.revisionNumbers, (std::array<int, 2>{0xBC, 0x04}));
}

} // namespace
} // namespace vantrel
