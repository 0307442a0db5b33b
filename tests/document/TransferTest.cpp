// Transfers against the simulated board: what reaches it, in which order; and two sides of a set-up: what differs, and
// what is only doubtful.
#include "document/Comparison.h"
#include "document/TransferTexts.h"
#include "tests/support/BoardLink.h"

#include <algorithm>
#include <functional>

namespace vantrel {
namespace {

using enum SequenceField;

class TransferTest : public BoardLink<>, public TransferDisplay {
protected:
    TransferTest() {
        Open();
        line.Forget();
    }
    void Finish(SettingsTransfer& transfer) {
        transfer.Load();
        turns.RunToEnd(transfer.Run());
    }
    void ShowLabel(std::string_view text) override { label = text; }
    void ShowProgress(std::size_t done, std::size_t total) override {
        last = {done, total};
        if (onProgress) onProgress(done);
    }
    [[nodiscard]] int Flag() const { return board.Peek(105, clock.Now()); }

    std::string label;
    std::pair<std::size_t, std::size_t> last;
    std::function<void(std::size_t)> onProgress;
    Configuration record = DefaultRecord("VANTREL_R1.0.0", {});
};

TEST_F(TransferTest, ADownloadWritesTheFlagThenEveryValueInOrderThenTheFlag) {
    SettingsTransfer transfer(TransferMode::DownloadData, record, link, dialogs, turns, *this);
    onProgress = [&](std::size_t done) { EXPECT_EQ(Flag(), done == 0 ? 0 : 1); };
    Finish(transfer);
    EXPECT_EQ(label, "Downloading Data, Please Standby...");
    EXPECT_EQ(last, std::pair(ValueCount, ValueCount));

    const std::vector<std::uint8_t> start{0xFF, 0x02, 0x00, 0x69, 0x01, // sync, mode, "B105" = "1"
                                          0x19, 0x00, 0x01, 0x19, 0x01, 0x00, // "W6400" = " 1"
                                          0x40, 0x00, 0x00, 0x40, 0x01, 0x00, // W16384 = " 0"
                                          0x40, 0x02, 0x00, 0x40, 0x03, 0x00, // W16386 = " 0"
                                          0x40, 0x04, 0x01, 0x40, 0x05, 0x00, // W16388 = " 1"
                                          0x40, 0x06, 0x20, 0x40, 0x07, 0x00}; // W16390 = " 32"
    const std::vector<std::uint8_t> end{0x7C, 0x0C, 0x01, 0x7C, 0x0D, 0x00, // W31756 = " 1"
                                        0x00, 0x69, 0x00}; // "B105" = "0"
    ASSERT_EQ(line.bytes.size(), 2 + 3 + 6 * ValueCount + 3);
    EXPECT_TRUE(std::equal(start.begin(), start.end(), line.bytes.begin()));
    EXPECT_TRUE(std::equal(end.begin(), end.end(), line.bytes.end() - static_cast<std::ptrdiff_t>(end.size())));
    EXPECT_EQ(Flag(), 0);
    EXPECT_TRUE(transfer.Complete() && transfer.Unconfirmed().empty() && transfer.Repeated().empty());
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(TransferTest, AnUploadThatBreaksOffKeepsWhatItCouldNotRead) {
    record.SetValue(57, 7);
    onProgress = [&](std::size_t done) {
        if (done == 57) port.CutLine();
    };
    SettingsTransfer upload(TransferMode::UploadData, record, link, dialogs, turns, *this);
    Finish(upload);
    EXPECT_EQ(upload.Walked(), 57U);
    EXPECT_EQ(record.Value(57), 7);
}

TEST_F(TransferTest, ModesWithoutWorkShowTheirLabelAndWriteNothing) {
    const std::pair<int, const char*> labels[] = {
        {0, "Uploading Set-up Parameters"},    {1, "Uploading Timing Channels"},    {2, "Uploading Shift Data"},
        {10, "Downloading Set-up Parameters"}, {11, "Downloading Timing Channels"}, {12, "Downloading Shift Data"}};
    for (const auto& [mode, shown] : labels) {
        SettingsTransfer transfer(static_cast<TransferMode>(mode), record, link, dialogs, turns, *this);
        Finish(transfer);
        EXPECT_EQ(label, shown + std::string(", Please Standby..."));
        EXPECT_EQ(transfer.Walked(), 0U);
    }
    EXPECT_TRUE(line.bytes.empty());
}

std::string Rows(const std::vector<Difference>& differences) {
    return ComparisonCsv({"", "", "", "", differences}).substr(3 + std::string("Seq #,Field,Here,There\r\n").size());
}

TEST_F(TransferTest, WhatDiffersStandsInOrderAndInTheEditorsNotationAndWhatIsDoubtfulIsNotCalledDifferent) {
    const std::size_t toNode = ValueIndex(3, SendToNode);
    record.SetValue(StatusStackIndex, 500);
    record.SetValue(toNode, 0x1A0);
    record.SetAddressType(toNode, "H");
    record.SetNodeDescription(3, "Filler");
    EXPECT_EQ(Rows(DifferencesBetween(record, DefaultRecord("", {}))),
              ",status stack address,V500,V1\r\n3,To Node,1A0H,W32\r\n3,Description,Filler,\r\n");
    Configuration same = record;
    same.SetAddressType(toNode, "W");
    EXPECT_EQ(Rows(DifferencesBetween(same, record)), "");

    BoardComparison before(record, link, turns, *this);
    before.Only({StatusStackIndex, toNode});
    turns.RunToEnd(before.Run());
    EXPECT_EQ(Rows(DifferencesFrom(record, before)), ",status stack address,V500,V1\r\n3,To Node,1A0H,20H\r\n");
    EXPECT_EQ(before.OnBoard().Value(StatusStackIndex), 1);
    board.AddFault({.kind = FaultKind::DoubledByte});
    BoardComparison comparison(record, link, turns, *this);
    comparison.Load();
    EXPECT_EQ(last, std::pair(std::size_t{0}, ValueCount));
    comparison.Only({StatusStackIndex, toNode});
    turns.RunToEnd(comparison.Run());
    EXPECT_TRUE(comparison.Complete());
    EXPECT_EQ(last, (std::pair<std::size_t, std::size_t>(2, 2)));
    EXPECT_EQ(Rows(DifferencesFrom(record, comparison)),
              ",status stack address,V500,not read clearly\r\n3,To Node,1A0H,not read clearly\r\n");
    EXPECT_EQ(comparison.OnBoard().Value(StatusStackIndex), 500);
}

TEST(TransferTexts, ASequenceThatCameInPartIsToldByItsLastField) {
    EXPECT_EQ(FetchedText(1 + 2 * FieldCount + 3, 0, FieldNaming::Name),
              "Read from the board: the status stack address, sequences 0 to 1, and sequence 2 up to its SendFromTI. "
              "200 of 218 values are as they were.");
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
