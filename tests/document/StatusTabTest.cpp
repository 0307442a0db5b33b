// One pass over the status tab, against the simulated board: which rows are read, how they are shown, what ends it.
#include "document/StatusTab.h"

#include "simulator/BoardHabits.h"
#include "tests/support/BoardLink.h"

#include <algorithm>
#include <functional>
#include <set>

namespace vantrel {
namespace {

/// Remembers how often each sequence was looked at, and what it is told last.
class Looks final : public StatusLog {
public:
    void NoteOpening(int opened) override { lastOpening = opened; }
    void NoteNode(std::size_t sequence, std::optional<std::uint16_t> node) override { records[sequence].node = node; }
    void NoteStatus(std::size_t sequence, std::optional<std::uint16_t> code) override {
        records[sequence].code = code;
        ++looks[sequence];
    }
    void ForgetNodes() override {}
    [[nodiscard]] const SequenceRecord& Of(std::size_t sequence) const override { return records.at(sequence); }
    [[nodiscard]] MonotonicTime Now() const override { return {}; }
    [[nodiscard]] std::chrono::local_seconds LocalNow() const override { return {}; }

    std::array<SequenceRecord, SequenceCount> records{};
    std::array<int, SequenceCount> looks{};
    int lastOpening = 0;
};

class StatusTabTest : public BoardLink<>, public StatusTabDisplay {
protected:
    StatusTabTest() { Open(); }
    Texts Pass() {
        shown.clear();
        turns.RunToEnd(RefreshStatusTab(*this, survey, nodes, words, link, turns));
        return shown;
    }
    [[nodiscard]] bool StatusWanted() const override { return wanted; }
    [[nodiscard]] bool RowVisible(int row) const override { return visible.contains(row); }
    void ShowNode(int row, const std::string& text) override { Show(row, "node " + text); }
    void ShowStatus(int row, const std::string& text) override { Show(row, text); }
    void Show(int row, const std::string& text) {
        shown.push_back(std::to_string(row) + " " + text);
        if (onShow) onShow();
    }

    const SequenceAddresses nodes = NodeNumberAddressTable(); ///< The pass borrows them.
    const SequenceAddresses words = StatusWordAddressTable();
    std::set<int> visible{1, 2, 31};
    bool wanted = true;
    std::function<void()> onShow;
    Texts shown;
    Looks log;
    StatusSurvey survey{log};
};

TEST_F(StatusTabTest, ReadsTheVisibleRowsInOrderAndEndsBetweenTheTwoValuesOfARow) {
    EXPECT_EQ(Pass(), (Texts{"1 node 0", "1 00: Comm Disabled", "2 node 0", "2 00: Comm Disabled", "31 node 0",
                             "31 00: Comm Disabled"}));
    // A value is shown when what follows it has proved it: the first while the second is read.
    onShow = [this] { wanted = false; };
    EXPECT_EQ(Pass(), (Texts{"1 node 0"}));
    EXPECT_EQ(Pass(), Texts{});
    wanted = true;
    onShow = [this] { visible.erase(2); };
    EXPECT_EQ(Pass().at(2), "31 node 0") << "scrolled out before its turn";
}

TEST_F(StatusTabTest, RowsOutOfSightAreReadInTurnAndTakeLessThanSevenPercentOfTheExchanges) {
    Pass();
    for (const int rowsInSight : {1, 4, 14, 30}) {
        visible.clear();
        for (int row = 1; row <= rowsInSight; ++row)
            visible.insert(visible.end(), 31 - row);
        log.looks = {};
        line.Forget();
        for (int pass = 0; pass < 31 * StatusSurvey::ReadingsInSight; ++pass)
            Pass();
        const auto inSight = [this](const std::string& word) {
            const auto places = {std::find(nodes.begin(), nodes.end(), word) - nodes.begin(),
                                 std::find(words.begin(), words.end(), word) - words.begin()};
            return std::ranges::any_of(places, [this](auto place) { return visible.contains(int(place) + 1); });
        };
        const Texts read = line.Words();
        const auto kept = static_cast<double>(std::ranges::count_if(read, inSight));
        EXPECT_GE(kept / static_cast<double>(read.size()), 0.93) << rowsInSight << " rows in sight";
        EXPECT_GT(*std::ranges::min_element(log.looks), 0) << "the line of all is complete";
        std::cout << rowsInSight << " rows in sight: " << 100 * kept / static_cast<double>(read.size())
                  << " % of the exchanges\n";
    }
    visible.clear();
    EXPECT_EQ(Pass().size(), 1U) << "with none in sight, one a pass";
}

TEST_F(StatusTabTest, WhereNobodySeesTheRowsOneStatusWordALookIsReadInTurn) {
    Pass();
    line.Forget();
    log.looks = {};
    for (int look = 0; look < 32; ++look)
        turns.RunToEnd(survey.LookAtNext(nodes, words, link));
    EXPECT_EQ(line.bytes.size(), 32U * 4);
    EXPECT_EQ(log.looks.front(), 2);
    EXPECT_EQ(*std::ranges::min_element(log.looks), 1);
    EXPECT_EQ(log.lastOpening, link.Opened());
    board.AddFault({.kind = FaultKind::DoubledByte});
    log.records[1].code = OkCode;
    turns.RunToEnd(survey.LookAtNext(nodes, words, link));
    EXPECT_FALSE(log.records[1].code) << "not read clearly, so nothing is known";
}

TEST_F(StatusTabTest, WhatFailsOutOfSightIsAskedForItsNodeOnceARound) {
    board.SetHabits(WithHabit({}, "status=25:05").value());
    log.records[25].node.reset();
    visible.clear();
    for (int turn = 0; turn < 26; ++turn)
        Pass();
    EXPECT_EQ(Pass(), Texts{"26 node 0"});
    EXPECT_EQ(Pass().front().substr(0, 3), "27 ");
    log.records[25].node.reset();
    for (int turn = 0; turn < 30; ++turn)
        turns.RunToEnd(survey.LookAtNext(nodes, words, link));
    EXPECT_FALSE(log.records[25].node);
    turns.RunToEnd(survey.LookAtNext(nodes, words, link));
    EXPECT_EQ(log.records[25].node, 0);
}

} // namespace
} // namespace vantrel
