// Download, upload and comparison against the simulated board: what reaches it, in which order, and what a broken or
// cancelled transfer leaves behind.
#include "document/SettingsTransfer.h"
#include "link/TargetMap.h"
#include "tests/support/BoardLink.h"

#include <algorithm>
#include <functional>

namespace vantrel {
namespace {

class Display final : public TransferDisplay {
public:
    void ShowLabel(std::string_view text) override { label = text; }
    void ShowProgress(std::size_t doneValues, std::size_t total) override {
        EXPECT_EQ(total, ValueCount);
        done = doneValues;
        if (onProgress) onProgress(done);
    }
    std::string label;
    std::size_t done = 0;
    std::function<void(std::size_t)> onProgress;
};

class SentBytes final : public TrafficLog {
public:
    void Exchanged(MonotonicTime, std::uint8_t sent, std::optional<std::uint8_t>) override { bytes.push_back(sent); }
    void Surplus(MonotonicTime, std::uint8_t) override {}
    std::vector<std::uint8_t> bytes;
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
    static void Finish(SettingsTransfer& transfer, TurnQueue& turns) {
        transfer.Load();
        Task task = transfer.Run();
        turns.RunToEnd(task);
    }
    [[nodiscard]] int OnBoard(std::size_t index) const {
        return board.PeekWord(static_cast<std::uint16_t>(std::stoi(DefaultTargetAddress(index).substr(1))),
                              clock.Now());
    }
    [[nodiscard]] int Flag() const { return board.Peek(105, clock.Now()); }

    Display display;
    SentBytes traffic;
    Configuration record = DefaultRecord("VANTREL_R1.0.0", {});
};

TEST_F(TransferTest, ADownloadWritesTheFlagThenEveryValueInOrderThenTheFlag) {
    record = DefaultRecord("VANTREL_R1.0.0", {});
    SettingsTransfer transfer = Transfer(TransferMode::DownloadData);
    transfer.Load();
    display.onProgress = [&](std::size_t) { EXPECT_EQ(Flag(), 1); };
    EXPECT_EQ(display.label, "Downloading Data, Please Standby...");
    Task task = transfer.Run();
    turns.RunToEnd(task);

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
    EXPECT_TRUE(transfer.Complete());
    EXPECT_TRUE(transfer.Unconfirmed().empty());
    EXPECT_TRUE(transfer.Repeated().empty());
    EXPECT_EQ(display.done, ValueCount);
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST(TransferTexts, AreTheProgramsOwn) {
    EXPECT_EQ(SignedText(32), " 32");
    EXPECT_EQ(SignedText(0), " 0");
    EXPECT_EQ(SignedText(-5), "-5");
    struct Case {
        MessageBox box;
        const char* title;
        const char* text;
    };
    for (const Case& one :
         {Case{UploadQuestion(), "Data Upload",
               "You are about to Upload Data from the PLC\n\nDo You Wish to Continue?"},
          Case{DownloadQuestion(), "Data Download",
               "You are about to Download Data to the PLC\n\nDo You Wish to Continue?"},
          Case{OfflineQuestion(), "Program Offline",
               "Program is Currently OFFLINE\n\nDo You Wish to Switch to ONLINE MODE to Continue?"}}) {
        EXPECT_EQ(one.box.title, one.title);
        EXPECT_EQ(one.box.text, one.text);
        EXPECT_EQ(one.box.icon, MessageIcon::Question);
        EXPECT_EQ(one.box.buttons, MessageButtons::YesNo);
    }
}

TEST_F(TransferTest, AnUploadBringsBackTheValuesAndNothingElse) {
    SettingsTransfer download = Transfer(TransferMode::DownloadData);
    Finish(download, turns);
    const Configuration sent = record;
    record = DefaultRecord("VANTREL_R1.0.0", {});
    record.SetAddressType(4, "H");
    record.SetNodeDescription(3, "Palletiser");
    record.Values.resize(10);
    const Configuration before = record;
    board.Poke(105, 1);
    SettingsTransfer upload = Transfer(TransferMode::UploadData);
    Finish(upload, turns);
    EXPECT_EQ(record.Values, sent.Values) << "also where the record had fewer elements";
    EXPECT_EQ(record.NodeDescriptions, before.NodeDescriptions);
    EXPECT_EQ(record.AddressTypes, before.AddressTypes);
    EXPECT_EQ(record.TargetAddresses, before.TargetAddresses);
    EXPECT_EQ(Flag(), 0) << "the flag goes back after uploads too";
    EXPECT_EQ(display.label, "Uploading Data, Please Standby...");
}

TEST_F(TransferTest, CancelStopsBeforeTheNextValueAndResetsTheFlag) {
    SettingsTransfer transfer = Transfer(TransferMode::DownloadData);
    display.onProgress = [&](std::size_t done) {
        if (done == 100) transfer.Cancel();
    };
    Finish(transfer, turns);
    EXPECT_TRUE(transfer.Cancelled());
    EXPECT_FALSE(transfer.Complete());
    EXPECT_EQ(transfer.Walked(), 100U);
    EXPECT_EQ(OnBoard(99), 1099);
    EXPECT_NE(OnBoard(100), 1100);
    EXPECT_EQ(Flag(), 0);
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(TransferTest, CancelGivesUpASilentBoardAtOnce) {
    SettingsTransfer transfer = Transfer(TransferMode::DownloadData);
    transfer.Load();
    Task task = transfer.Run();
    board.AddFault({.kind = FaultKind::NoAnswer, .afterBytes = 300});
    task.Start();
    while (clock.Now() < std::chrono::seconds(1) && !task.Done())
        turns.RunOneOrSleep();
    const MonotonicTime cancelled = clock.Now();
    transfer.Cancel();
    while (!task.Done())
        turns.RunOneOrSleep();
    EXPECT_LT(clock.Now() - cancelled, std::chrono::milliseconds(100));
    EXPECT_TRUE(transfer.GaveUp());
    EXPECT_TRUE(link.LinkFailed());
    EXPECT_TRUE(dialogs.shown.empty()) << "no warning for somebody who has just given up";
    EXPECT_EQ(Flag(), 1);
}

TEST_F(TransferTest, ALineThatDiesEndsTheTransferWithItsMessageAndLeavesTheFlag) {
    for (const TransferMode mode : {TransferMode::DownloadData, TransferMode::UploadData}) {
        SCOPED_TRACE(TransferLabel(mode));
        dialogs.shown.clear();
        port.MendLine();
        Open();
        SettingsTransfer download = Transfer(TransferMode::DownloadData);
        Finish(download, turns);
        board.Poke(105, 1, clock.Now());
        const Configuration before = record;
        display.onProgress = [&](std::size_t done) {
            if (done == 57) port.CutLine();
        };
        SettingsTransfer transfer = Transfer(mode);
        Finish(transfer, turns);
        display.onProgress = nullptr;
        ASSERT_EQ(dialogs.shown.size(), 2U);
        EXPECT_EQ(dialogs.shown[0].title, "WARNING - Communication Error!");
        EXPECT_EQ(dialogs.shown[1].title, "RTFCD7");
        EXPECT_EQ(dialogs.shown[1].text, "Error Processing Request\n\nProcess Not Complete");
        EXPECT_EQ(dialogs.shown[1].icon, MessageIcon::Exclamation);
        EXPECT_EQ(transfer.Walked(), 57U);
        EXPECT_EQ(Flag(), 1);
        EXPECT_EQ(record.Values, before.Values) << "what a dead line could not tell wipes nothing out";
    }
}

TEST_F(TransferTest, ValuesThatDidNotArriveAreNamedAndTheRestGoesOn) {
    record.SetValue(5, -1);
    record.SetValue(9, 70000);
    SettingsTransfer transfer = Transfer(TransferMode::DownloadData);
    Finish(transfer, turns);
    EXPECT_TRUE(transfer.Complete());
    EXPECT_EQ(transfer.Unconfirmed(), (std::vector<std::size_t>{5, 9}));
    EXPECT_EQ(dialogs.shown.size(), 2U);
    EXPECT_EQ(OnBoard(217), 1217);

    board.AddFault({.kind = FaultKind::WrongEcho, .firstTimeOnly = true});
    SettingsTransfer again = Transfer(TransferMode::DownloadData);
    record.SetValue(5, 1);
    record.SetValue(9, 1);
    Finish(again, turns);
    EXPECT_TRUE(again.Unconfirmed().empty()) << "one wrong echo is mended by the repeat";
    EXPECT_EQ(again.MayHaveReached(), (std::vector<std::uint16_t>{0x00FF, 0xFFFF}));
    board.AddFault({.kind = FaultKind::WrongEcho, .firstTimeOnly = true, .afterBytes = traffic.bytes.size() + 20});
    SettingsTransfer third = Transfer(TransferMode::DownloadData);
    Finish(third, turns);
    ASSERT_EQ(third.Repeated().size(), 1U);
    EXPECT_EQ(OnBoard(9), 1);
}

TEST_F(TransferTest, OneByteTooManyOrTooFewSpoilsLittleAndWhatItSpoilsIsNamed) {
    // The byte is still on the wire when the buffer is emptied before the next sync.
    const FaultKind kinds[] = {FaultKind::DoubledByte, FaultKind::LateAnswer, FaultKind::LostByte, FaultKind::NoAnswer};
    for (const FaultKind kind : kinds) {
        for (std::size_t after = 30; after < 40; ++after) {
            SCOPED_TRACE(std::to_string(static_cast<int>(kind)) + " after " + std::to_string(after));
            SettingsTransfer download = Transfer(TransferMode::DownloadData);
            Finish(download, turns);
            const Configuration sent = record;
            board.ClearFaults();
            board.AddFault({.kind = kind, .firstTimeOnly = true, .afterBytes = traffic.bytes.size() + after});
            SettingsTransfer upload = Transfer(TransferMode::UploadData);
            Finish(upload, turns);
            EXPECT_LE(upload.Unconfirmed().size(), 3U);
            for (std::size_t i = 0; i < ValueCount; ++i) {
                const auto& named = upload.Unconfirmed();
                EXPECT_TRUE(record.Value(i) == sent.Value(i) || std::find(named.begin(), named.end(), i) != named.end())
                    << "value " << i << " is wrong, and nobody says so";
            }
            record = sent;
            EXPECT_TRUE(dialogs.shown.empty());
        }
    }
}

TEST_F(TransferTest, AFlagThatTheBoardDidNotEchoIsNotTakenForSet) {
    SettingsTransfer first = Transfer(TransferMode::DownloadData);
    Finish(first, turns);
    EXPECT_TRUE(first.FlagRaised() && first.FlagCleared());
    board.AddFault({.kind = FaultKind::WrongEcho, .afterBytes = 2 * traffic.bytes.size() - 3});
    SettingsTransfer second = Transfer(TransferMode::DownloadData);
    Finish(second, turns);
    EXPECT_TRUE(second.Complete() && second.Unconfirmed().empty());
    EXPECT_TRUE(second.FlagRaised());
    EXPECT_FALSE(second.FlagCleared());
    EXPECT_EQ(Flag(), 1);
}

TEST_F(TransferTest, ModesWithoutWorkShowTheirLabelAndWriteNothing) {
    for (const int mode : {0, 1, 2, 10, 11, 12}) {
        SettingsTransfer transfer = Transfer(static_cast<TransferMode>(mode));
        Finish(transfer, turns);
        EXPECT_NE(display.label.find(mode < 10 ? "Uploading " : "Downloading "), std::string::npos);
        EXPECT_NE(display.label.find(mode % 10 == 0   ? " Set-up Parameters, Please Standby..."
                                     : mode % 10 == 1 ? " Timing Channels, Please Standby..."
                                                      : " Shift Data, Please Standby..."),
                  std::string::npos);
        EXPECT_EQ(transfer.Walked(), 0U);
    }
    EXPECT_TRUE(traffic.bytes.empty());
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(TransferTest, AComparisonNamesEveryDifferenceAndWritesNothing) {
    SettingsTransfer download = Transfer(TransferMode::DownloadData);
    Finish(download, turns);
    board.PokeWord(16384, 7);
    board.Poke(105, 1);
    record.SetValue(217, 3);
    BoardComparison comparison(record, link, turns, display);
    Task task = comparison.Run();
    turns.RunToEnd(task);
    EXPECT_TRUE(comparison.Complete());
    ASSERT_EQ(comparison.Differences().size(), 2U);
    EXPECT_EQ(comparison.Differences()[0].index, 1U);
    EXPECT_EQ(comparison.Differences()[0].inRecord, 1001);
    EXPECT_EQ(comparison.Differences()[0].onBoard, 7);
    EXPECT_EQ(comparison.Differences()[1].onBoard, 1217);
    EXPECT_EQ(Flag(), 1);
}

} // namespace
} // namespace vantrel
