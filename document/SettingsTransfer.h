// Upload and download of the 218 values, as a task that yields once a value. Knows the record, the link and whoever
// displays the progress; knows no window.
#pragma once

#include "document/Configuration.h"
#include "link/RSComm.h"
#include "link/ReadingWalk.h"
#include "platform/Dialogs.h"
#include "platform/Task.h"
#include "platform/TurnQueue.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantrel {

/// The jobs of the progress window: below 10 from the board to the program, from 10 on to the board. Only Data works;
/// the others keep their labels, end at once and write nothing.
enum class TransferMode : int {
    UploadSetupParameters = 0,
    UploadTimingChannels = 1,
    UploadShiftData = 2,
    UploadData = 4,
    DownloadSetupParameters = 10,
    DownloadTimingChannels = 11,
    DownloadShiftData = 12,
    DownloadData = 14,
};

/// The text that the progress window shows for a job.
[[nodiscard]] std::string_view TransferLabel(TransferMode mode);

/// A value as a download writes it: a sign position, blank or "-", in front of the decimal digits.
[[nodiscard]] std::string SignedText(std::int32_t value);

/// The confirmations before a transfer.
[[nodiscard]] MessageBox UploadQuestion();
[[nodiscard]] MessageBox DownloadQuestion();
/// The question of a transfer that is asked for while the program is OFFLINE.
[[nodiscard]] MessageBox OfflineQuestion();

/// Shows how far a transfer is: the progress window, the console's bar.
class TransferDisplay {
public:
    TransferDisplay() = default;
    TransferDisplay(const TransferDisplay&) = delete;
    TransferDisplay& operator=(const TransferDisplay&) = delete;
    virtual ~TransferDisplay() = default;

    virtual void ShowLabel(std::string_view label) = 0;
    /// `done` of `total` values have been transferred.
    virtual void ShowProgress(std::size_t done, std::size_t total) = 0;
};

/// A value that had to be sent twice, or was left half-sent when the link failed, and the bytes that a half-sent
/// attempt may have set to 255.
struct RepeatedWrite {
    std::size_t index;
    std::vector<std::uint16_t> mayHaveReached;
};

/// 0..LastValueIndex.
[[nodiscard]] std::vector<std::size_t> EveryIndex();

/// One transfer between a record and the board. Load(), then Run() once. All that it is given must outlive it, and it
/// its running task.
class SettingsTransfer {
public:
    SettingsTransfer(const SettingsTransfer&) = delete;
    SettingsTransfer& operator=(const SettingsTransfer&) = delete;
    ~SettingsTransfer() = default;
    SettingsTransfer(TransferMode mode, Configuration& record, RSComm& link, Dialogs& dialogs, TurnQueue& turns,
                     TransferDisplay& display);

    /// Only these values, ascending, instead of all: for a download of what differs. Before Load().
    void Only(std::vector<std::size_t> indices) { indices_ = std::move(indices); }
    /// What happens when the progress window opens: the label and the empty bar.
    void Load();
    /// The transfer itself, the board's download flag first. Yields before each value; ends by Cancel, by a failed link
    /// (with its message, unless the user had given up a silent board) or by itself.
    [[nodiscard]] Task Run();
    /// Ends the transfer quietly before its next value. Values already transferred stay transferred. A silent board is
    /// given up at once; call again if it falls silent later.
    void Cancel();

    [[nodiscard]] bool Cancelled() const { return cancelled_; }
    /// How many values, from the first on, were walked before the transfer ended; the one at which the link failed is
    /// not.
    [[nodiscard]] std::size_t Walked() const { return walked_; }
    /// Their indices.
    [[nodiscard]] std::vector<std::size_t> WalkedIndices() const;
    [[nodiscard]] bool HasWalked(std::size_t index) const;
    /// Every value was walked; see also Unconfirmed().
    [[nodiscard]] bool Complete() const { return walked_ == indices_.size(); }
    /// The board echoed that a download begins, or that the transfer has ended ("B105").
    [[nodiscard]] bool FlagRaised() const { return flagRaised_; }
    [[nodiscard]] bool FlagCleared() const { return flagCleared_; }
    /// The user gave up a board that had fallen silent: the link has failed, and a download's flag may be left at 1.
    [[nodiscard]] bool GaveUp() const { return cancelled_ && link_.LinkFailed(); }
    /// Indices, ascending, of walked values that cannot be relied on: writes refused or not confirmed, doubtful reads.
    [[nodiscard]] const std::vector<std::size_t>& Unconfirmed() const { return unconfirmed_; }
    /// The writes of a download that were sent twice, ascending; behind them the one at which the link failed, when it
    /// may have reached more than its own bytes.
    [[nodiscard]] const std::vector<RepeatedWrite>& Repeated() const { return repeated_; }
    /// Bytes that all of it may have set to 255 by the way, ascending; see RSComm::TakeMayHaveReached.
    [[nodiscard]] const std::vector<std::uint16_t>& MayHaveReached() const { return mayHaveReached_; }
    /// The port was opened again in the middle: what was transferred before may be another board's, or lost.
    [[nodiscard]] bool Reconnected() const { return reconnected_; }

private:
    [[nodiscard]] bool HasWork() const;
    [[nodiscard]] bool MayGoOn() const { return !cancelled_ && !link_.LinkFailed(); }
    [[nodiscard]] Task Download();
    [[nodiscard]] Task Upload();
    void Store(const std::optional<JudgedReading>& judged);
    void Advance();
    [[nodiscard]] TaskOf<bool> WriteFlag(std::string value);

    TransferMode mode_;
    Configuration& record_;
    RSComm& link_;
    Dialogs& dialogs_;
    TurnQueue& turns_;
    TransferDisplay& display_;
    bool cancelled_ = false;
    bool flagRaised_ = false;
    bool flagCleared_ = false;
    std::vector<std::size_t> indices_ = EveryIndex();
    std::size_t walked_ = 0;
    bool reconnected_ = false;
    std::vector<std::size_t> unconfirmed_;
    std::vector<RepeatedWrite> repeated_;
    std::vector<std::uint16_t> mayHaveReached_;
};

/// One value that differs between a record and the board.
struct ValueDifference {
    std::size_t index;
    std::int32_t inRecord;
    std::int32_t onBoard;
};

/// Reads values from the board and keeps what differs from the record. Writes nothing to the board. Yields before
/// each value; ends early when the link fails or `Cancel` was called.
class BoardComparison {
public:
    BoardComparison(const Configuration& record, RSComm& link, TurnQueue& turns, TransferDisplay& display);

    /// Only these values, ascending, instead of all. Before Run().
    void Only(std::vector<std::size_t> indices) { indices_ = std::move(indices); }
    /// What the progress window calls it; a literal. Before Run().
    void Called(std::string_view label) { label_ = label; }
    /// The label and the empty bar; Run() begins with it.
    void Load();
    [[nodiscard]] Task Run();
    void Cancel();
    [[nodiscard]] bool Cancelled() const { return cancelled_; }
    /// The port was opened again in the middle: the values may be those of two boards.
    [[nodiscard]] bool Reconnected() const { return reconnected_; }
    [[nodiscard]] bool Complete() const { return compared_ == indices_.size(); }
    /// How many values, from the first on, were compared.
    [[nodiscard]] std::size_t Compared() const { return compared_; }
    [[nodiscard]] const std::vector<ValueDifference>& Differences() const { return differences_; }
    /// Indices of doubtful values: the board did not give them clearly although the link stood.
    [[nodiscard]] const std::vector<std::size_t>& Unread() const { return unread_; }
    /// The record with every value that was read clearly as the board holds it: a copy of the board, when nothing is
    /// unread.
    [[nodiscard]] Configuration OnBoard() const;

private:
    void Compare(const std::optional<JudgedReading>& judged);

    const Configuration& record_;
    RSComm& link_;
    TurnQueue& turns_;
    TransferDisplay& display_;
    std::vector<std::size_t> indices_ = EveryIndex();
    std::string_view label_ = "Comparing Data, Please Standby...";
    bool cancelled_ = false;
    std::size_t compared_ = 0;
    bool reconnected_ = false;
    std::vector<ValueDifference> differences_;
    std::vector<std::size_t> unread_;
};

} // namespace vantrel
