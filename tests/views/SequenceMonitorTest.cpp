// The passes of the communication interface view, against the simulated board: what they read, in which order, when
// they stop, and how it is shown.
#include "views/SequenceMonitor.h"
#include "views/History.h"

#include "document/StatusTab.h"
#include "link/TargetMap.h"
#include "tests/support/BoardLink.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <set>

namespace vantrel {
namespace {

class SequenceMonitorTest : public BoardLink<>, public SequenceDisplay {
protected:
    SequenceMonitorTest() { Online(); }
    /// The link is in the read mode from then on.
    void Online() {
        port.MendLine();
        Open();
        (void)turns.RunToEnd(link.RSRead("W0"));
    }
    /// The words read in a whole pass.
    Texts Run(Task pass) {
        line.Forget();
        turns.RunToEnd(pass);
        return line.Words();
    }
    Texts Settings() { return Run(monitor.RefreshSettings(SettingsBaseOf(selected))); }
    void Store(std::size_t index, std::uint16_t value) {
        board.PokeWord(static_cast<std::uint16_t>(std::stoi(DefaultTargetAddress(index).substr(1))), value);
    }
    /// The port has to be opened again, and finds another board there.
    void ChangeBoards() {
        for (std::size_t field = 0; field < FieldCount; ++field)
            Store(FieldCount * static_cast<std::size_t>(selected) + 1 + field, 77);
        port.CutLine();
        port.MendLine();
        dialogs.answers = {MessageAnswer::Retry};
    }

    [[nodiscard]] bool Active() const override { return active; }
    [[nodiscard]] bool RowVisible(int row) const override { return visible.contains(row); }
    void ShowDescription(const std::string& text) override { Show("description", text); }
    void ShowNodeNumber(const std::string& text) override { Show("node", text); }
    void ShowSetting(SettingsGrid grid, int row, const std::string& text) override {
        Show((grid == SettingsGrid::Send ? "send " : "receive ") + std::to_string(row), text);
    }
    void ShowStatus(const std::string& text) override { Show("status", text); }
    [[nodiscard]] std::vector<WordPlace> FollowedWords() const override { return followed; }
    void ShowSetUp(SequenceField field, const std::string& text, bool differs) override {
        setUp.at(static_cast<std::size_t>(field)) = text + (differs ? "!" : "");
    }
    void ShowDataWord(int row, DataDirection column, const std::string& text) override {
        Show(std::to_string(row) + (column == DataDirection::Send ? "s" : "r"), text);
    }
    void ClearData() override {
        std::erase_if(now, [](const auto& one) { return one.first.front() <= '9'; });
    }
    void Show(const std::string& where, const std::string& text) {
        now[where] = text;
        if (text == "-") return;
        shown.push_back(where + "=" + text);
        if (onShow) onShow();
    }
    /// How many settings show something.
    [[nodiscard]] std::size_t Known() const {
        return static_cast<std::size_t>(std::count_if(
            now.begin(), now.end(), [](const auto& one) { return one.first != "description" && one.second != "-"; }));
    }

    Configuration record = DefaultRecord("VANTREL_R1.0.0", {});
    std::int16_t selected = 0;
    SequenceMonitor monitor{record, link, turns, selected, *this};
    bool active = true;
    std::set<int> visible{1, 2};
    std::vector<WordPlace> followed;
    std::array<std::string, FieldCount> setUp; ///< "!" behind what differs.
    Texts shown; ///< In their order; dashes are not counted.
    std::map<std::string, std::string> now;
    std::function<void()> onShow;
};

TEST_F(SequenceMonitorTest, TheHighestSequenceIsReadFromItsOwnWordsInOrder) {
    selected = 30;
    record.SetNodeDescription(30, "Mixer");
    record.SetAddressType(214, "h");
    record.SetAddressType(213, "v");
    for (std::size_t field = 0; field < FieldCount; ++field)
        Store(211 + field, static_cast<std::uint16_t>(250 + field));
    EXPECT_EQ(Settings(), (Texts{"W31744", "W31746", "W31748", "W31750", "W31752", "W31754", "W31756"}));
    EXPECT_EQ(shown, (Texts{"description=Mixer", "node=250", "send 1=251", "send 2=v252", "send 3=FDH", "receive 1=254",
                            "receive 2=W255", "receive 3=V256"}));
    shown.clear();
    visible = {1, 120};
    EXPECT_EQ(Run(monitor.RefreshStatusAndData()), (Texts{"W6974", "W31760", "W32000", "W31998", "W32238"}));
    ASSERT_EQ(shown.size(), 5U);
    EXPECT_EQ(shown.front(), "status=05: No Slave Response, Timeout");
    EXPECT_TRUE(shown[1].starts_with("1s=") && shown[4].starts_with("120r="));
}

TEST_F(SequenceMonitorTest, TheRecordsOwnAddressesAreReadAndAnEmptyDescriptionIsADash) {
    record.TargetAddresses.at(4) = "W100";
    EXPECT_EQ(Settings().at(3), "W100");
    EXPECT_EQ(now["description"], "-");
    record.SetNodeDescription(0, "Pump");
    shown.clear();
    link.SetOnlineMode(false);
    EXPECT_TRUE(Settings().empty());
    EXPECT_EQ(shown, (Texts{"description=Pump"})) << "needs no board";
    EXPECT_TRUE(Run(monitor.RefreshStatusAndData()).empty());
}

TEST_F(SequenceMonitorTest, BetweenTwoReadsOthersGetATurnAndWhoeverWantsNoMoreEndsThePass) {
    const std::function<void()> reasons[] = {[&] { selected = 1; }, [&] { active = false; },
                                             [&] { link.SetOnlineMode(false); }};
    for (const auto& reason : reasons) {
        for (const bool settings : {false, true}) {
            selected = 0;
            active = true;
            Online();
            line.Forget();
            shown.clear();
            Task pass = settings ? monitor.RefreshSettings(SettingsBaseOf(0)) : monitor.RefreshStatusAndData();
            pass.Start();
            for (std::size_t reads = 0; reads < 3; ++reads) {
                EXPECT_EQ(line.Words().size(), reads) << "yields before each";
                EXPECT_TRUE(turns.RunOne());
            }
            reason();
            turns.RunOne();
            EXPECT_TRUE(pass.Done());
            EXPECT_EQ(line.Words().size(), 3U);
            EXPECT_EQ(shown.size(), 2U) << "the third word proves itself no more";
        }
    }
}

TEST_F(SequenceMonitorTest, AfterAReconnectionNothingOfTheOldBoardStays) {
    std::size_t at = 0;
    onShow = [&] {
        if (shown.size() == at) ChangeBoards();
    };
    for (const std::size_t last : {3U, 6U}) { // in the middle, and while the last value is looked at
        selected = static_cast<std::int16_t>(last);
        shown.clear();
        at = last;
        Settings();
        EXPECT_FALSE(monitor.Outdated());
        EXPECT_EQ(now["node"] + now["send 1"] + now["receive 1"], "777777") << "the pass began anew";
    }
    shown.clear();
    at = 3;
    Run(monitor.RefreshStatusAndData());
    EXPECT_EQ(shown.size(), 3U) << "and this one ended";
    EXPECT_TRUE(monitor.Outdated());
    onShow = nullptr;
    active = false;
    Settings();
    EXPECT_EQ(Known(), 0U) << "dashes until the new board has told";
}

TEST_F(SequenceMonitorTest, FollowedWordsAreReadOutOfSightAndAgainAfterEveryEightOthers) {
    followed = {{120, DataDirection::Send}};
    visible = {1, 2, 3, 4, 5};
    const Texts words = Run(monitor.RefreshStatusAndData());
    ASSERT_EQ(words.size(), 13U);
    EXPECT_TRUE(words[1] == "W16638" && words[10] == "W16638" && words[2] == "W16400" && words[11] == "W16408");
    visible.clear();
    EXPECT_EQ(Run(monitor.RefreshStatusAndData()), (Texts{"W6914", "W16638"}));
}

/// The status tab behind the view.
struct TabBehind final : StatusTabDisplay {
    [[nodiscard]] bool StatusWanted() const override { return true; }
    [[nodiscard]] bool RowVisible(int row) const override { return row > 1 && row < 16; }
    void ShowNode(int, const std::string&) override {}
    void ShowStatus(int, const std::string&) override {}
};

TEST_F(SequenceMonitorTest, TheStatusPassBehindTheViewHasOneReadInEight) {
    for (int row = 1; row <= 15; ++row)
        visible.insert(row);
    TabBehind tab;
    History history(clock);
    StatusSurvey survey(history);
    const SequenceAddresses nodes = NodeNumberAddressTable();
    const SequenceAddresses statuses = StatusWordAddressTable();
    for (const bool slow : {false, true}) {
        // A slow board suspends each read half way.
        if (slow) board.AddFault({.kind = FaultKind::LateAnswer, .lateBy = std::chrono::milliseconds(8)});
        line.Forget();
        Task front;
        Task behind;
        while (line.bytes.size() < 4 * 800) {
            if (front.Done()) (front = monitor.RefreshStatusAndData()).Start();
            if (behind.Done()) (behind = RefreshStatusTab(tab, survey, nodes, statuses, link, turns)).Start();
            turns.RunOneOrSleep();
        }
        const Texts words = line.Words();
        const auto isBehind = [&](const std::string& word) {
            return std::ranges::count(nodes, word) + std::ranges::count(statuses, word) > 0 && word != statuses[0];
        };
        // A look out of sight may be at the word that the view reads, too.
        EXPECT_NEAR(static_cast<double>(std::ranges::count_if(words, isBehind)), 100, 1) << slow;
    }
}

TEST_F(SequenceMonitorTest, WhatTheDocumentSaysStandsBesideAndOnlyAKnownValueDiffersFromIt) {
    record.SetValue(2, 40);
    record.SetValue(3, 9);
    record.SetAddressType(4, "H");
    using SetUp = std::array<std::string, FieldCount>;
    const SetUp same{"0", "40", "V9", "20H", "0", "W32", "V1"};
    link.SetOnlineMode(false);
    Settings();
    EXPECT_EQ(setUp, same) << "needs no board";
    Online();
    Store(3, 9);
    SetUp marked = same;
    marked[1] += "!";
    Settings();
    EXPECT_EQ(setUp, marked);
    // A value that stays doubtful is no other value.
    board.AddFault({.kind = FaultKind::WrongEcho});
    Settings();
    EXPECT_EQ(now["send 1"], "-");
    EXPECT_EQ(setUp[1], "40");
}

TEST(SequenceEntryTest, TakesNumbersUpToThirtyAndCountsBelowZeroAsZero) {
    // The number is -1 where the text is refused.
    using Case = std::tuple<const char*, int, int, int>;
    for (const auto& [text, number, up, down] :
         {Case{"0", 0, 1, 0}, Case{"30", 30, 30, 29}, Case{" 7 ", 7, 8, 6}, Case{"31", -1, 30, 29},
          Case{"30.1", -1, 30, 29}, Case{"-5", 0, 1, 0}, Case{"+2.5", 2, 3, 1}, Case{"3e1", 30, 30, 29},
          Case{"", -1, 6, 4}, Case{"abc", -1, 6, 4}, Case{"5x", -1, 6, 4}, Case{"inf", -1, 6, 4}, Case{"+-5", -1, 6, 4},
          Case{"1e999", -1, 6, 4}}) {
        EXPECT_EQ(SequenceEntry(text).value_or(-1), number) << text;
        EXPECT_EQ(SteppedSequence(text, 1, 5), up) << text;
        EXPECT_EQ(SteppedSequence(text, -1, 5), down) << text;
    }
}

} // namespace
} // namespace vantrel
