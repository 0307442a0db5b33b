// The passes and writes of the target board view, against the simulated board: order, texts, and what a dying link
// leaves.
#include "views/BoardMonitor.h"

#include "link/TargetMap.h"
#include "platform/RuntimeError.h"
#include "tests/support/BoardLink.h"

#include <map>
#include <set>
#include <tuple>
#include <vector>

namespace vantrel {
namespace {

class BoardMonitorTest : public BoardLink<>, public BoardDisplay {
protected:
    BoardMonitorTest() {
        Open();
        (void)turns.RunToEnd(link.RSRead("B0")); // the link is in the read mode from now on
        WriteText(folder / "faults.txt", "0A,Early\n45,User\n0a,\"Watchdog, late\"\n42,Dead\n");
        WriteText(folder / "errors.txt", "05,No answer\n");
    }
    /// The bytes read in a whole pass; in the read mode each is two exchanges, high and low address.
    std::vector<int> Run(Task pass) {
        line.Forget();
        turns.RunToEnd(pass);
        std::vector<int> reads;
        for (std::size_t i = 0; i + 1 < line.bytes.size(); i += 2)
            reads.push_back(line.bytes[i] * 256 + line.bytes[i + 1]);
        return reads;
    }
    std::vector<int> FirstPass() { return Run(monitor.ShowBoardOnline()); }
    /// Faults that strike one after another.
    void Spoil(FaultKind kind, int times, std::size_t afterBytes = 0) {
        for (; times > 0; --times)
            board.AddFault({.kind = kind, .firstTimeOnly = true, .afterBytes = board.ReceivedBytes() + afterBytes});
    }

    [[nodiscard]] bool Active() const override { return active; }
    [[nodiscard]] bool SetupWanted(std::size_t) const override { return true; }
    void EnableOnline(bool hasClock) override { clockEnabled = hasClock; }
    void EnableReset(bool enabled) override { resetEnabled = enabled; }
    void ShowCaption(BoardCode which, const std::string& text) override { captions[which] = text; }
    void ShowDescription(BoardCode which, const std::string& text) override { descriptions[which] = text; }
    void ShowSetup(std::size_t field, const std::string& value) override { setup[field] = value; }
    void ShowRevision(std::size_t label, const std::string& text) override { revision[label] = text; }
    void ShowGoOnline(bool visible) override { goOnline = visible; }

    AlarmFlags alarms{true, true, true};
    BoardMonitor monitor{link, turns, clock, dialogs, alarms, {folder / "faults.txt", folder / "errors.txt"}, *this};
    bool active = true;
    std::optional<bool> clockEnabled, resetEnabled, goOnline;
    std::map<BoardCode, std::string> captions, descriptions;
    std::map<std::size_t, std::string> setup, revision;
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
    EXPECT_EQ(std::tuple(clockEnabled, resetEnabled, goOnline), std::tuple(true, true, false));
    EXPECT_EQ(alarms, (AlarmFlags{true, true, false}));
}

TEST_F(BoardMonitorTest, ABoardWithACoCpuShowsItsSlotWhichAloneAllowsNoReset) {
    monitor.SetBoardType('2');
    board.Poke(CoCpuSlotByte, 0x1B);
    EXPECT_EQ(FirstPass().at(6), CoCpuSlotByte);
    EXPECT_EQ(captions[BoardCode::CoCpuSlot], "CO-CPU Slot: 27");
    EXPECT_EQ(std::tuple(clockEnabled, resetEnabled), std::tuple(false, false));
    EXPECT_EQ(alarms, (AlarmFlags{false, false, true}));
}

TEST_F(BoardMonitorTest, AFileThatIsMissingOrCannotBeReadSaysSoInItsOwnBoxes) {
    monitor.ShowBoardOffline();
    EXPECT_EQ(descriptions[BoardCode::LastCommError], "Cannot Communicate with Target Board.");
    board.Poke(CurrentFaultByte, 0x45);
    std::filesystem::remove(folder / "errors.txt");
    std::filesystem::create_directory(folder / "errors.txt");
    static_cast<void>(FirstPass());
    EXPECT_EQ(descriptions[BoardCode::LastCommError], "errors.txt could not be read.");
    EXPECT_EQ(descriptions[BoardCode::CurrentFault], "User");
    ASSERT_EQ(dialogs.shown.size(), 1U);
    EXPECT_EQ(dialogs.shown[0].title, "TargetBoard FirstPass");
    std::filesystem::remove_all(folder / "errors.txt");
    WriteText(folder / "errors.txt", "00,Fine\n");
    std::filesystem::remove(folder / "faults.txt");
    board.Poke(CurrentFaultByte, 0x5C);
    Run(monitor.RefreshCodes());
    EXPECT_EQ(descriptions[BoardCode::CurrentFault], "faults.txt was not found.") << "and not the code before";
    EXPECT_EQ(descriptions[BoardCode::LastFault], "faults.txt was not found.");
    EXPECT_EQ(descriptions[BoardCode::LastCommError], "Fine");
    EXPECT_EQ(dialogs.shown.size(), 1U);
}

TEST_F(BoardMonitorTest, TheCodesFollowTheBoardAndWhatHasNotChangedIsLeftAlone) {
    static_cast<void>(FirstPass());
    EXPECT_EQ(resetEnabled, false);
    captions.clear();
    descriptions.clear();
    resetEnabled.reset();
    EXPECT_EQ(Run(monitor.RefreshCodes()), (std::vector<int>{8176, 8177, 8175, 8177, 8179, 8178}));
    EXPECT_TRUE(captions.empty() && descriptions.empty() && !resetEnabled);
    board.Poke(LastFaultByte, 0x45);
    Run(monitor.RefreshCodes());
    EXPECT_EQ(captions[BoardCode::LastFault] + descriptions[BoardCode::LastFault], "Last Fault: Code = 45HUser");
    EXPECT_TRUE(descriptions[BoardCode::Advice].starts_with("User program"));
    EXPECT_EQ(resetEnabled, true);
    EXPECT_EQ(alarms, AlarmFlags{}) << "a last fault is none";
    for (const int code : {0x0A, 0x45}) {
        board.Poke(CurrentFaultByte, static_cast<std::uint8_t>(code));
        Run(monitor.RefreshCodes());
    }
    EXPECT_EQ(descriptions[BoardCode::CurrentFault], "User");
    EXPECT_EQ(alarms, (AlarmFlags{true, false, false}));
}

TEST_F(BoardMonitorTest, ACodeThatStaysSpoiledIsTwoDashes) {
    monitor.SetBoardType('2');
    static_cast<void>(FirstPass());
    alarms = {true, false, true};
    Spoil(FaultKind::WrongEcho, 2);
    Run(monitor.RefreshCodes());
    EXPECT_EQ(captions[BoardCode::CurrentFault] + descriptions[BoardCode::CurrentFault], "Current Fault: Code = --H");
    EXPECT_EQ(captions[BoardCode::LastFault], "Last Fault: Code = 00H");
    EXPECT_EQ(alarms, (AlarmFlags{true, false, false})) << "what was not told says nothing";
    EXPECT_FALSE(monitor.Reliable());
    Spoil(FaultKind::WrongEcho, 8);
    Run(monitor.RefreshCodes());
    EXPECT_EQ(captions[BoardCode::CoCpuSlot] + descriptions[BoardCode::Advice], "CO-CPU Slot: --");
}

TEST_F(BoardMonitorTest, ARevisionThatWasDoubtfulIsADashUntilItIsReadAgain) {
    const std::map<std::size_t, std::string> whole{{0, "K5216505"}, {1, "1"}, {2, "4"}};
    // A wrong echo makes the value before it doubtful as well, but for the first of a pass.
    for (const auto& [place, times, dashes] : {std::tuple{6U, 2, std::set<std::size_t>{0}}, {15U, 3, {1, 2}}}) {
        Spoil(FaultKind::WrongEcho, times, 2 * std::size_t{place});
        static_cast<void>(FirstPass());
        auto expected = whole;
        for (const std::size_t label : dashes)
            expected[label] = "-";
        EXPECT_EQ(revision, expected);
        EXPECT_FALSE(monitor.RevisionKnown());
        Run(monitor.RefreshCodes());
        EXPECT_TRUE(monitor.RevisionKnown());
        EXPECT_EQ(revision, whole);
        EXPECT_EQ(Run(monitor.RefreshCodes()).size(), BoardCodeCount);
    }
}

TEST_F(BoardMonitorTest, AfterAReconnectionEverythingIsReadAnew) {
    board.Poke(CurrentFaultByte, 0x0A);
    int bytes = 0;
    line.onByte = [&] {
        if (++bytes != 8) return;
        board.Poke(CurrentFaultByte, 0x45);
        port.CutLine();
        port.MendLine();
    };
    dialogs.answers = {MessageAnswer::Retry, MessageAnswer::Retry};
    static_cast<void>(FirstPass());
    EXPECT_EQ(captions[BoardCode::CurrentFault], "Current Fault: Code = 45H");
    EXPECT_FALSE(monitor.Outdated());
    setup.clear();
    bytes = 0;
    EXPECT_LT(Run(monitor.RefreshSetupFields()).size(), SetupFieldCount) << "the pass has ended";
    EXPECT_TRUE(monitor.Outdated());
    active = false;
    static_cast<void>(FirstPass());
    EXPECT_EQ(captions[BoardCode::CurrentFault] + descriptions[BoardCode::CurrentFault] + setup[0],
              "Current Fault: Code = --H-");
}

TEST_F(BoardMonitorTest, EachValueOfTheClockIsThatOfItsOwnWrite) {
    clock.Advance(std::chrono::seconds(54 * 60 + 52)); // 09:59:59
    line.onByte = [&] { clock.Advance(std::chrono::milliseconds(250)); };
    EXPECT_EQ(turns.RunToEnd(monitor.SetToCurrTime()), WriteOutcome::Written);
    EXPECT_EQ(board.Peek(ClockHourByte, clock.Now()), 9);
    EXPECT_EQ(board.Peek(ClockMinuteByte, clock.Now()), 0);
}

TEST_F(BoardMonitorTest, AWriteIsDoneWhenTheBoardHoldsIt) {
    // The board's clock goes on between a write and its look.
    line.onByte = [&] {
        if (board.Peek(ClockSecondByte, clock.Now()) == 59) clock.Advance(std::chrono::seconds(1));
    };
    EXPECT_EQ(turns.RunToEnd(monitor.WriteSetup(FirstClockField + 2, "59")), WriteOutcome::Written);
    EXPECT_EQ(setup[FirstClockField + 2], "0");
    line.onByte = [&] { clock.Advance(std::chrono::milliseconds(15)); };
    EXPECT_EQ(turns.RunToEnd(monitor.SetToCurrTime()), WriteOutcome::Written);
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

TEST(BoardTexts, ABoxOfTwoDigitsHasTheWholeValueBesideItWhereItNeedsOne) {
    using Case = std::tuple<std::size_t, const char*, const char*, const char*>;
    for (const auto& [field, value, box, mark] :
         {Case{0, "7", "07", ""}, Case{0, "55", "55", "! 55 is not possible"},
          Case{0, "255", "55", "! 255 is not possible"}, Case{1, "200", "00", "= 200"},
          Case{2, "25", "25", "! 25 is not possible"}, Case{5, "0", "00", "! 0 is not possible"},
          Case{7, "200", "00", "! 200 is not possible"}, Case{5, "12", "12", ""}, Case{4, "-", "-", ""}}) {
        EXPECT_EQ(SetupBoxText(value), box);
        EXPECT_EQ(SetupMark(field, value), mark) << field;
    }
    EXPECT_EQ(SetupNotConfirmed(0, "7", "1").text,
              "The board did not confirm the value 7 (Network Address).\nIt holds 1 now.");
}

TEST(UserProgram, IsFoundBesideTheSetUpFileAndReadWithItsRevision) {
    const TemporaryFolder folder;
    WriteText(folder / "program" / "k5216-505.trv", "6");
    const ProgramFolder programs(folder.Path(), folder.Path());
    EXPECT_EQ(ReadUserProgram(FindUserProgram(folder / "plant.sdt", programs)).boardType, 54);
    WriteText(folder / "plant.Trv", "A rest\r\n");
    WriteText(folder / "plant.rev", "LINE-7>04;<\r\nmore");
    const UserProgram program = ReadUserProgram(FindUserProgram(folder / "plant.sdt", programs));
    EXPECT_EQ(program.boardType, 65);
    EXPECT_EQ(program.revIdentOnDisk, "LINE-7>");
    EXPECT_EQ(program.revisionNumbers, (std::array<int, 2>{0xBC, 0x04}));
    for (const char* numbers : {"-5", "+1", " 1", "G0"}) {
        WriteText(folder / "plant.rev", std::string("IDENT01") + numbers + "\n");
        EXPECT_THROW((void)ReadUserProgram(FindUserProgram(folder / "plant.sdt", programs)), RuntimeError) << numbers;
    }
}

} // namespace
} // namespace vantrel
