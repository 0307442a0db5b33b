// Upload and download of the 218 values, as a task that yields once a value. Knows the record, the link and whoever
// displays the progress; knows no window.
#pragma once

#include "document/Configuration.h"
#include "link/RSComm.h"
#include "platform/Dialogs.h"
#include "platform/Task.h"
#include "platform/TurnQueue.h"

#include <cstddef>
#include <string>
#include <string_view>
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

/// One transfer between a record and the board. Load(), then Run() once. All that it is given must outlive it, and it
/// its running task.
class SettingsTransfer {
public:
    SettingsTransfer(const SettingsTransfer&) = delete;
    SettingsTransfer& operator=(const SettingsTransfer&) = delete;
    ~SettingsTransfer() = default;
    SettingsTransfer(TransferMode mode, Configuration& record, RSComm& link, Dialogs& dialogs, TurnQueue& turns,
                     TransferDisplay& display);

    /// What happens when the progress window opens: the label, the empty bar, and the board's download flag.
    void Load();
    /// The transfer itself. Yields before each value; ends by Cancel, by a failed link (with its message) or by itself.
    [[nodiscard]] Task Run();
    /// Ends the transfer quietly before its next value. Values already transferred stay transferred.
    void Cancel() { cancelled_ = true; }

    [[nodiscard]] bool Cancelled() const { return cancelled_; }
    /// How many values, from index 0 on, were walked before the transfer ended; the one at which the link failed is
    /// not.
    [[nodiscard]] std::size_t Walked() const { return walked_; }
    /// Every value was walked; see also Unconfirmed().
    [[nodiscard]] bool Complete() const { return walked_ == ValueCount; }
    /// The board echoed that a download begins, or that the transfer has ended ("B105").
    [[nodiscard]] bool FlagRaised() const { return flagRaised_; }
    [[nodiscard]] bool FlagCleared() const { return flagCleared_; }
    /// Indices, ascending, of walked values that cannot be relied on: writes refused or not echoed, reads without an
    /// answer of their own.
    [[nodiscard]] const std::vector<std::size_t>& Unconfirmed() const { return unconfirmed_; }

private:
    [[nodiscard]] bool HasWork() const;
    void NoteUnconfirmed(std::size_t index);
    /// True when the value arrived where it was going.
    [[nodiscard]] bool UploadValue(std::size_t index);
    [[nodiscard]] bool DownloadValue(std::size_t index);

    TransferMode mode_;
    Configuration& record_;
    RSComm& link_;
    Dialogs& dialogs_;
    TurnQueue& turns_;
    TransferDisplay& display_;
    bool cancelled_ = false;
    bool flagRaised_ = false;
    bool flagCleared_ = false;
    std::size_t walked_ = 0;
    std::vector<std::size_t> unconfirmed_;
};

/// One value that differs between a record and the board.
struct ValueDifference {
    std::size_t index;
    std::int32_t inRecord;
    std::int32_t onBoard;
};

/// Reads every value from the board and keeps what differs from the record. Writes nothing to the board. Yields before
/// each value; ends early when the link fails or `Cancel` was called.
class BoardComparison {
public:
    BoardComparison(const Configuration& record, RSComm& link, TurnQueue& turns, TransferDisplay& display);

    [[nodiscard]] Task Run();
    void Cancel() { cancelled_ = true; }
    [[nodiscard]] bool Complete() const { return compared_ == ValueCount; }
    /// How many values, from index 0 on, were compared.
    [[nodiscard]] std::size_t Compared() const { return compared_; }
    [[nodiscard]] const std::vector<ValueDifference>& Differences() const { return differences_; }
    /// Indices of values that the board did not give although the link stood.
    [[nodiscard]] const std::vector<std::size_t>& Unread() const { return unread_; }

private:
    const Configuration& record_;
    RSComm& link_;
    TurnQueue& turns_;
    TransferDisplay& display_;
    bool cancelled_ = false;
    std::size_t compared_ = 0;
    std::vector<ValueDifference> differences_;
    std::vector<std::size_t> unread_;
};

} // namespace vantrel
