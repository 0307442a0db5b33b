// Two sides of a set-up: what differs, what is only doubtful, and that only what was ticked is sent.
#include "document/Comparison.h"

#include "link/TargetMap.h"
#include "tests/support/BoardLink.h"
#include "tests/support/SentBytes.h"

#include <string>
#include <vector>

namespace vantrel {

namespace {

using enum SequenceField;

struct NoDisplay final : TransferDisplay {
    void ShowLabel(std::string_view) override {}
    void ShowProgress(std::size_t done, std::size_t total) override { last = {done, total}; }
    std::pair<std::size_t, std::size_t> last;
};

class ComparisonTest : public BoardLink<> {
protected:
    ComparisonTest() {
        Open();
        SettingsTransfer download(TransferMode::DownloadData, record, link, dialogs, turns, display);
        turns.RunToEnd(download.Run());
        record.SetValue(StatusStackIndex, 500);
        record.SetValue(ValueIndex(3, SendToNode), 0x1A0);
        record.SetAddressType(ValueIndex(3, SendToNode), "H");
        record.SetNodeDescription(3, "Filler");
    }

    std::string Rows(const std::vector<Difference>& differences) {
        return ComparisonCsv({"", "", "", "", differences})
            .substr(3 + std::string("Seq #,Field,Here,There\r\n").size());
    }

    NoDisplay display;
    Configuration record = DefaultRecord("VANTREL_R1.0.0", {});
};

TEST_F(ComparisonTest, RowsStandInOrderAndInTheEditorsNotation) {
    EXPECT_EQ(Rows(DifferencesBetween(record, DefaultRecord("", {}))),
              ",status stack address,V500,V1\r\n3,To Node,1A0H,W32\r\n3,Description,Filler,\r\n");
    const Configuration same = record;
    record.SetAddressType(ValueIndex(3, SendToNode), "W");
    EXPECT_EQ(Rows(DifferencesBetween(record, same)), "");
}

TEST_F(ComparisonTest, BesideTheBoardWhatIsDoubtfulIsNotCalledDifferent) {
    board.AddFault({.kind = FaultKind::DoubledByte});
    BoardComparison comparison(record, link, turns, display);
    comparison.Only({StatusStackIndex, ValueIndex(3, SendToNode)});
    turns.RunToEnd(comparison.Run());
    EXPECT_TRUE(comparison.Complete());
    EXPECT_EQ(display.last, (std::pair<std::size_t, std::size_t>(2, 2)));
    EXPECT_EQ(Rows(DifferencesFrom(record, comparison)),
              ",status stack address,V500,not read clearly\r\n3,To Node,1A0H,not read clearly\r\n");
    EXPECT_EQ(comparison.OnBoard().Value(StatusStackIndex), 500);
}

TEST_F(ComparisonTest, OnlyWhatWasTickedIsSentAndReadBack) {
    BoardComparison before(record, link, turns, display);
    turns.RunToEnd(before.Run());
    EXPECT_EQ(Rows(DifferencesFrom(record, before)), ",status stack address,V500,V1\r\n3,To Node,1A0H,20H\r\n");
    EXPECT_EQ(before.OnBoard().Value(StatusStackIndex), 1);

    SentBytes sent;
    link.SetTrafficLog(&sent);
    SettingsTransfer transfer(TransferMode::DownloadData, record, link, dialogs, turns, display);
    transfer.Only({ValueIndex(3, SendToNode)});
    turns.RunToEnd(transfer.Run());
    EXPECT_TRUE(transfer.Complete() && transfer.FlagRaised() && transfer.FlagCleared());
    EXPECT_LT(sent.bytes.size(), 20U); // A mode step, two flags and one word.
    EXPECT_EQ(board.PeekWord(SequenceBase + 3 * SequenceStride + 2 * 3, clock.Now()), 0x1A0);
    EXPECT_EQ(board.PeekWord(StatusStackByte, clock.Now()), 1);
}

TEST(ComparisonReport, SaysNoDifferencesOnlyWhereThatWasShown) {
    ComparisonReport report{"plant.sdt", "the board", "2026-03-14 09:05", "", {}};
    EXPECT_NE(ComparisonText(report).find("\nNo differences.\n"), std::string::npos);
    report.remark = "Only 7 of 218 values were read.";
    EXPECT_EQ(ComparisonText(report).find("No differences"), std::string::npos);
    EXPECT_NE(ComparisonText(report).find("Only 7 of 218"), std::string::npos);
}

} // namespace

} // namespace vantrel
