// An hour at the machine in virtual time: three sequences fail, one flickers, the line has every fault that there is,
// and the user goes back and forth between the status tab and others. Nothing grows, and little is missed. Prints its
// figures.
#include "document/StatusTab.h"
#include "link/TargetMap.h"
#include "simulator/BoardHabits.h"
#include "tests/support/BoardLink.h"
#include "views/HistoryTexts.h"

#include <algorithm>
#include <iostream>
#include <map>

namespace vantrel {
namespace {

using namespace std::chrono_literals;

class HistoryHourTest : public BoardLink<>, public StatusTabDisplay {
protected:
    static constexpr int RowsInSight = 14;
    static constexpr int Flickering = 8;

    HistoryHourTest() : BoardLink(LinePacing::LineSpeed) {
        BoardHabits habits;
        for (const char* status : {"status=4:05", "status=11:0C", "status=17:0A", "status=8:05:1500ms"})
            habits = WithHabit(habits, status).value();
        board.SetHabits(habits);
        for (int sequence = 0; sequence < 30; ++sequence)
            board.PokeWord(static_cast<std::uint16_t>(SequenceBase + SequenceStride * sequence), 2);
        // Whoever pulls the plug puts it back when he sees the warning.
        dialogs.whileShown = [this](const MessageBox&) {
            port.MendLine();
            dialogs.answers = {MessageAnswer::Retry};
        };
    }
    [[nodiscard]] bool StatusWanted() const override { return true; }
    [[nodiscard]] bool RowVisible(int row) const override { return row <= RowsInSight; }
    void ShowNode(int row, const std::string&) override { ++reads[RowVisible(row)]; }
    void ShowStatus(int row, const std::string&) override { ++reads[RowVisible(row)]; }

    void Tick() {
        turns.RunToEnd(survey.LookAtNext(words, link));
        clock.Advance(500ms);
    }
    void Pass() {
        turns.RunToEnd(RefreshStatusTab(*this, survey, nodes, words, link, turns));
        clock.Advance(250ms);
    }
    [[nodiscard]] std::size_t Kept() const {
        std::size_t looks = 0;
        for (std::size_t sequence = 0; sequence < SequenceCount; ++sequence)
            looks += history.Of(sequence).latest.size();
        return looks;
    }

    const SequenceAddresses nodes = NodeNumberAddressTable();
    const SequenceAddresses words = StatusWordAddressTable();
    History history{clock};
    StatusSurvey survey{history};
    std::map<bool, int> reads;
};

TEST_F(HistoryHourTest, KeepsWhatHappensUnderEveryFaultOfTheLineAndDoesNotGrow) {
    Open();
    history.NoteOpening(link.Opened());
    history.NoteLink(LinkChange::Online);
    for (int minute = 0; minute < 60; ++minute) {
        const FaultName& fault = FaultNames().at(static_cast<std::size_t>(minute) % FaultNames().size());
        board.AddFault({.kind = fault.kind, .firstTimeOnly = true, .afterBytes = board.ReceivedBytes() + 100});
        const bool inFront = minute % 10 < 8;
        for (const MonotonicTime end = clock.Now() + 1min; clock.Now() < end;)
            inFront ? Pass() : Tick();
        EXPECT_EQ(board.FaultsLeft(), 0U) << fault.name;
    }
    Pass();
    ASSERT_TRUE(link.OnlineMode() && !link.LinkFailed());
    EXPECT_LE(Kept(), SequenceCount * SequenceRecord::LatestLooks);
    EXPECT_LT(history.Entries().size(), History::MostEntries);
    const double inSight = reads[true];
    EXPECT_GE(inSight / (inSight + reads[false]), 0.93);

    std::map<std::size_t, int> failures;
    for (const HistoryEntry& entry : history.Entries()) {
        const auto* change = std::get_if<SequenceChange>(&entry.what);
        if (change && change->health == SequenceHealth::Failing) ++failures[change->sequence];
    }
    // Six a minute in sight; behind another tab only by chance.
    EXPECT_GT(failures[Flickering], 48 * 6 * 9 / 10);
    EXPECT_EQ(CountHealths(history)[static_cast<std::size_t>(SequenceHealth::Unknown)], 0U);
    std::cout << "an hour: " << board.ReceivedBytes() << " exchanges, " << 100 * inSight / (inSight + reads[false])
              << " % of the readings of rows in sight, " << history.Entries().size() << " entries ("
              << history.Entries().size() * sizeof(HistoryEntry) / 1024 << " KiB), " << Kept() << " looks ("
              << Kept() * sizeof(SequenceRecord::Look) / 1024 << " KiB), " << failures[Flickering] << " of " << 48 * 6
              << " failures of the flickering sequence seen while in sight, " << dialogs.shown.size() << " warnings\n";
}

} // namespace
} // namespace vantrel
