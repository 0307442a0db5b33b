// Download, upload and comparison against the simulated board: what reaches it, in which order, and what a broken or
// cancelled transfer leaves behind.
#include "document/SettingsTransfer.h"
#include "link/TargetMap.h"
#include "tests/support/BoardLink.h"
#include "tests/support/SentBytes.h"

#include <algorithm>
#include <functional>

namespace vantrel {
namespace {

class Display final : public TransferDisplay {
public:
    void ShowLabel(std::string_view text) override { label = text; }
    void ShowProgress(std::size_t done, std::size_t total) override {
        EXPECT_EQ(total, ValueCount);
        if (onProgress) onProgress(done);
    }
    std::string label;
    std::function<void(std::size_t)> onProgress;
};

class TransferTest : public BoardLink<> {
protected:
    TransferTest() : BoardLink(LinePacing::LineSpeed) {
        for (std::size_t i = 0; i < ValueCount; ++i)
            record.SetValue(i, static_cast<std::int32_t>(1000 + i));
        Open();
        link.SetTrafficLog(&traffic);
    }
    SettingsTransfer Transfer(TransferMode mode) { return {mode, record, link, dialogs, turns, display}; }
    void Finish(SettingsTransfer& transfer) {
        transfer.Load();
        Task task = transfer.Run();
        turns.RunToEnd(task);
    }
    [[nodiscard]] int Flag() const { return board.Peek(105, clock.Now()); }

    Display display;
    SentBytes traffic;
    Configuration record = DefaultRecord("VANTREL_R1.0.0", {});
};

TEST_F(TransferTest, ADownloadWritesTheFlagThenEveryValueInOrderThenTheFlag) {
    record = DefaultRecord("VANTREL_R1.0.0", {});
    SettingsTransfer transfer = Transfer(TransferMode::DownloadData);
    display.onProgress = [&](std::size_t done) { EXPECT_EQ(Flag(), done == 0 ? 0 : 1); };
    Finish(transfer);
    EXPECT_EQ(display.label, "Downloading Data, Please Standby...");

    const std::vector<std::uint8_t> start{0xFF, 0x02, 0x00, 0x69, 0x01, // sync, mode, "B105" = "1"
                                          0x19, 0x00, 0x01, 0x19, 0x01, 0x00, // "W6400" = " 1"
                                          0x40, 0x00, 0x00, 0x40, 0x01, 0x00, // W16384 = " 0"
                                          0x40, 0x02, 0x00, 0x40, 0x03, 0x00, // W16386 = " 0"
                                          0x40, 0x04, 0x01, 0x40, 0x05, 0x00, // W16388 = " 1"
                                          0x40, 0x06, 0x20, 0x40, 0x07, 0x00}; // W16390 = " 32"
    const std::vector<std::uint8_t> end{0x7C, 0x0C, 0x01, 0x7C, 0x0D, 0x00, // W31756 = " 1"
                                        0x00, 0x69, 0x00}; // "B105" = "0"
    ASSERT_EQ(traffic.bytes.size(), 2 + 3 + 6 * ValueCount + 3);
    EXPECT_TRUE(std::equal(start.begin(), start.end(), traffic.bytes.begin()));
    EXPECT_TRUE(std::equal(end.begin(), end.end(), traffic.bytes.end() - static_cast<std::ptrdiff_t>(end.size())));
    EXPECT_EQ(Flag(), 0);
    EXPECT_TRUE(transfer.Complete() && transfer.Unconfirmed().empty() && transfer.Repeated().empty());
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(TransferTest, AnUploadBringsBackTheValuesAndOneThatBreaksOffKeepsWhatItCouldNotRead) {
    SettingsTransfer download = Transfer(TransferMode::DownloadData);
    Finish(download);
    const Configuration sent = record;
    record.Values.resize(10);
    SettingsTransfer upload = Transfer(TransferMode::UploadData);
    Finish(upload);
    EXPECT_EQ(record.Values, sent.Values) << "also where the record had fewer elements";
    display.onProgress = [&](std::size_t done) {
        if (done == 57) port.CutLine();
    };
    SettingsTransfer broken = Transfer(TransferMode::UploadData);
    Finish(broken);
    EXPECT_EQ(broken.Walked(), 57U);
    EXPECT_EQ(record.Values, sent.Values);
    ASSERT_EQ(dialogs.shown.size(), 2U);
    EXPECT_EQ(dialogs.shown[1].text, "Error Processing Request\n\nProcess Not Complete");
}

TEST_F(TransferTest, ValuesThatDidNotArriveAreNamedAndTheRestGoesOn) {
    record.SetValue(5, -1);
    record.SetValue(9, 70000);
    SettingsTransfer transfer = Transfer(TransferMode::DownloadData);
    Finish(transfer);
    EXPECT_TRUE(transfer.Complete());
    EXPECT_EQ(transfer.Unconfirmed(), (std::vector<std::size_t>{5, 9}));
    EXPECT_EQ(dialogs.shown.size(), 2U);
    EXPECT_EQ(board.PeekWord(31756, clock.Now()), 1217) << "the last one";

    // One wrong echo is mended by the repeat: of the flag, and of the low byte of the address of value 2.
    for (const std::size_t after : {0U, 20U})
        board.AddFault(
            {.kind = FaultKind::WrongEcho, .firstTimeOnly = true, .afterBytes = traffic.bytes.size() + after});
    record.SetValue(5, 1);
    record.SetValue(9, 1);
    SettingsTransfer again = Transfer(TransferMode::DownloadData);
    Finish(again);
    EXPECT_TRUE(again.Unconfirmed().empty());
    EXPECT_EQ(again.MayHaveReached(), (std::vector<std::uint16_t>{0x00FF, 0x40FD, 0x40FF, 0xFFFF}));
    ASSERT_EQ(again.Repeated().size(), 1U);
    EXPECT_EQ(again.Repeated()[0].index, 2U);
    EXPECT_EQ(again.Repeated()[0].mayHaveReached, (std::vector<std::uint16_t>{0x40FD, 0x40FF}));
}

TEST_F(TransferTest, ModesWithoutWorkShowTheirLabelAndWriteNothing) {
    const std::pair<int, const char*> labels[] = {
        {0, "Uploading Set-up Parameters"},    {1, "Uploading Timing Channels"},    {2, "Uploading Shift Data"},
        {10, "Downloading Set-up Parameters"}, {11, "Downloading Timing Channels"}, {12, "Downloading Shift Data"}};
    for (const auto& [mode, label] : labels) {
        SettingsTransfer transfer = Transfer(static_cast<TransferMode>(mode));
        Finish(transfer);
        EXPECT_EQ(display.label, label + std::string(", Please Standby..."));
        EXPECT_EQ(transfer.Walked(), 0U);
    }
    EXPECT_TRUE(traffic.bytes.empty());
}

} // namespace
} // namespace vantrel
