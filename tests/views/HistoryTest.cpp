// The history in virtual time: what counts as a change and as an error, what was not looked at, and where it ends.
#include "document/StatusTexts.h"
#include "views/HistoryTexts.h"

#include "tests/support/VirtualClock.h"
#include "text/TimeText.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

class HistoryTest : public testing::Test {
protected:
    HistoryTest() { history.NoteOpening(1); }
    /// A look at sequence 3 every half a second.
    void Look(const std::vector<std::optional<std::uint16_t>>& codes) {
        for (const auto& code : codes) {
            clock.Advance(500ms);
            history.NoteStatus(3, code);
        }
    }
    [[nodiscard]] Texts Entries() const {
        Texts texts;
        for (const HistoryEntry& entry : history.Entries())
            texts.push_back(MomentText(entry.at).substr(11) + " " + WhatText(entry));
        return texts;
    }
    [[nodiscard]] const SequenceRecord& Record() const { return history.Of(3); }

    VirtualClock clock;
    History history{clock};
};

TEST_F(HistoryTest, EveryChangeIsKeptWithItsTimeAndOnlyWhatBeginsToFailIsAnError) {
    Look({2, 2, 5, 5, std::nullopt, 5, 0x0C, 2});
    EXPECT_EQ(Entries(), (Texts{"09:05:07 02: Comm to Node OK",
                                "09:05:08 05: No Slave Response, Timeout (was 02: Comm to Node OK)",
                                "09:05:09 not read clearly (was 05: No Slave Response, Timeout)",
                                "09:05:10 05: No Slave Response, Timeout (was not read clearly)",
                                "09:05:10 0C: Xmitt No Acknowledge (was 05: No Slave Response, Timeout)",
                                "09:05:11 02: Comm to Node OK (was 0C: Xmitt No Acknowledge)"}));
    EXPECT_EQ(Record().errors, 2U) << "a doubtful reading in between is no second error";
    EXPECT_EQ(Record().lastError->code, 0x0C);
    EXPECT_EQ(TimeOfDayText(Record().lastError->at) + TimeOfDayText(*Record().since), "09:05:1009:05:11");
    EXPECT_EQ(Record().looksByCode.at(5) * 100 + Record().looksByCode.at(2), 303U);
    EXPECT_EQ(Record().latest.size(), 8U);
    history.NoteOpening(2);
    EXPECT_EQ(Record().errors + Record().latest.size(), 0U) << "another board, perhaps";
    EXPECT_EQ(Entries().size(), 7U) << "what was seen stays";
    EXPECT_EQ(Entries().back(), "09:05:11 The port was lost and opened again") << "at once: there was no silence";
    Look({2});
    clock.Advance(2h);
    history.NoteOpening(3);
    EXPECT_EQ(Entries().at(8) + Entries().at(9), "11:05:11 No sequence was looked at since 2026-03-14 09:05:11"
                                                 "11:05:11 The port was lost and opened again");
}

TEST_F(HistoryTest, AChangeThatNobodyWatchedIsNoSeenOneAndTheTimeWithoutALookIsAnEntry) {
    Look({5});
    EXPECT_FALSE(Record().changeSeen) << "how long it had been so before is unknown";
    Look({2});
    EXPECT_TRUE(Record().changeSeen);
    clock.Advance(40s);
    Look({5});
    EXPECT_FALSE(Record().changeSeen);
    EXPECT_EQ(Entries().at(2), "09:05:48 No sequence was looked at since 2026-03-14 09:05:08");
    EXPECT_EQ(LookBeforeText(history.Entries().back()), "2026-03-14 09:05:08");
    EXPECT_NE(HistoryCsv(history, 3).find(Entries().at(2).substr(9)), std::string::npos) << "one sequence's list, too";
    history.NoteLink(LinkChange::Offline);
    EXPECT_TRUE(Record().health == SequenceHealth::Unknown && !Record().since);
    EXPECT_EQ(Record().errors, 2U) << "counted until the next opening";
    clock.Advance(1h);
    history.NoteLink(LinkChange::Online);
    history.NoteOpening(2);
    Look({2});
    EXPECT_EQ(Entries().back(), "10:05:49 02: Comm to Node OK") << "OFFLINE nobody was to look";
    clock.Advance(10s);
    history.NoteLink(LinkChange::Lost);
    EXPECT_EQ(Entries().at(Entries().size() - 2), "10:05:59 No sequence was looked at since 2026-03-14 10:05:49");
}

TEST_F(HistoryTest, HealthIsTheCodesUnlessThereIsNoNode) {
    using Case = std::tuple<std::optional<std::uint16_t>, std::optional<std::uint16_t>, SequenceHealth>;
    for (const auto& [code, node, health] :
         {Case{2, {}, SequenceHealth::Ok}, Case{0, 5, SequenceHealth::Disabled}, Case{5, 0, SequenceHealth::Disabled},
          Case{5, {}, SequenceHealth::Failing}, Case{1, 5, SequenceHealth::Failing},
          Case{{}, 0, SequenceHealth::Unknown}}) {
        history.NoteNode(3, node);
        history.NoteStatus(3, code);
        EXPECT_EQ(Record().health, health);
        const bool told = StatusHint(Record(), 3, clock.LocalNow()).find("counts as disabled") != std::string::npos;
        EXPECT_EQ(told, code == 5 && node == 0);
    }
    history.NoteNode(3, 0);
    history.NoteStatus(3, 5);
    EXPECT_EQ(CountHealths(history), (HealthCounts{0, 0, 1, 30}));
    history.ForgetNodes();
    history.NoteStatus(3, 5);
    EXPECT_EQ(CountHealths(history), (HealthCounts{0, 1, 0, 30})) << "the node may be another one since";
    history.NoteOpening(2);
    history.NoteStatus(3, 5);
    history.NoteNode(3, 0);
    EXPECT_EQ(CountHealths(history), (HealthCounts{0, 0, 1, 30})) << "the node came second";
    EXPECT_TRUE(Record().errors == 0 && !Record().lastError);
    EXPECT_EQ(Entries().back(), "09:05:07 05: No Slave Response, Timeout, node 0 (was 05: No Slave Response, Timeout)");
    history.NoteOpening(3);
    Look({0x0C, 2, 2, 5});
    history.NoteNode(3, 0);
    EXPECT_EQ(Record().errors, 1U);
    EXPECT_EQ(Record().lastError->code, 0x0C) << "the one before was one";
    EXPECT_EQ(Entries().back(), "09:05:09 05: No Slave Response, Timeout, node 0 (was 05: No Slave Response, Timeout)");
}

TEST_F(HistoryTest, WhatHappenedBesideTheSequencesStandsWithThemAndInTheTable) {
    history.NoteLink(LinkChange::Online);
    history.NoteFault(0);
    history.NoteFault(0x45);
    history.NoteFault(0x45);
    history.NoteAlarms({true, false, false});
    history.NoteTransfer(TransferMode::DownloadData, TransferStep::Step::Failed);
    Look({4});
    history.NoteLink(LinkChange::Lost);
    const std::string time = "2026-03-14 09:05:07,";
    EXPECT_EQ(HistoryCsv(history), "\xEF\xBB\xBFTime,Sequence,Kind,State,What,Looked At Before\r\n" + time +
                                       ",Link,,The link to the board failed,\r\n" + time +
                                       "3,Sequence,failing,\"04: Xmitt Timeout, No Response\",\r\n" + time +
                                       ",Transfer,,Download failed,\r\n" + time +
                                       ",Alarm,,Target Board Fault: active,\r\n" + time +
                                       ",Fault,,The board reports fault code 45H,\r\n" + time + ",Link,,ONLINE,\r\n");
    const std::string one = HistoryCsv(history, 3);
    EXPECT_EQ(std::count(one.begin(), one.end(), '\n'), 4) << "with the link's coming and going";
}

TEST_F(HistoryTest, TheOldestGoBehindTheBoundAndTheTableSaysSo) {
    for (std::size_t i = 0; i < History::MostEntries + 7; ++i)
        Look({i % 2 == 0 ? std::uint16_t{2} : std::uint16_t{5}});
    EXPECT_EQ(history.Entries().size(), History::MostEntries);
    EXPECT_EQ(history.Gone(), 7U);
    EXPECT_EQ(Record().latest.size(), SequenceRecord::LatestLooks);
    const std::string table = HistoryCsv(history);
    EXPECT_TRUE(table.ends_with(",,,,older entries that were not kept: 7,\r\n"));
}

} // namespace
} // namespace vantrel
