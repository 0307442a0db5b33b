// What the target board view reads from the board and writes to it: the passes, the resets, the clock. Knows the link,
// the queue and the description files; no toolkit.
#pragma once

#include "link/Alarms.h"
#include "link/RSComm.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/Folders.h"
#include "platform/Task.h"
#include "platform/TurnQueue.h"
#include "views/BoardTexts.h"
#include "views/UserProgram.h"

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

namespace vantrel {

/// Where the passes show what they have read, and what they ask before they read on.
class BoardDisplay {
public:
    BoardDisplay() = default;
    BoardDisplay(const BoardDisplay&) = delete;
    BoardDisplay& operator=(const BoardDisplay&) = delete;
    virtual ~BoardDisplay() = default;

    /// False once the display is closed: nothing is read or shown any more.
    [[nodiscard]] virtual bool Active() const = 0;
    /// Whether a set-up field (0..7) takes a new text now: 0 and 1 when visible, 2 to 7 when enabled, and none that
    /// is being edited.
    [[nodiscard]] virtual bool SetupWanted(std::size_t field) const = 0;

    /// The board answers: revision labels and set-up fields come to life. On a board without a clock the clock's labels
    /// and buttons are disabled, and so are all set-up fields.
    virtual void EnableOnline(bool hasClock) = 0;
    virtual void EnableReset(bool enabled) = 0;
    /// The caption above a code (never the advice; the slot only on a board with a CO-CPU).
    virtual void ShowCaption(BoardCode which, const std::string& text) = 0;
    /// The description of a fault or error, or the advice (never the slot).
    virtual void ShowDescription(BoardCode which, const std::string& text) = 0;
    /// `field`: 0..7. `value`: whole, in decimal; TwoDigits() of it are to be shown.
    virtual void ShowSetup(std::size_t field, const std::string& value) = 0;
    /// What the board holds: label 0 the ident, as it grows character by character, 1 and 2 the revision numbers.
    virtual void ShowRevision(std::size_t label, const std::string& text) = 0;
    /// The button that goes ONLINE again.
    virtual void ShowGoOnline(bool visible) = 0;
};

/// The description files, below the program folder.
struct BoardFiles {
    std::filesystem::path faults; ///< `FaultErrCodes.txt`
    std::filesystem::path commErrors; ///< `CommErrCodes.txt`
};
[[nodiscard]] BoardFiles BoardFilesOf(const ProgramFolder& folder);

/// Everything handed in must outlive the monitor, and the monitor its passes. A pass yields before every single read
/// and then looks whether it may go on: the display active, the link ONLINE and not failed.
class BoardMonitor {
public:
    /// `alarms` are set by the first pass, from what the board reported.
    BoardMonitor(RSComm& link, TurnQueue& turns, const Clock& clock, Dialogs& dialogs, AlarmFlags& alarms,
                 BoardFiles files, BoardDisplay& display)
        : link_(link), turns_(turns), clock_(clock), dialogs_(dialogs), alarms_(alarms), files_(std::move(files)),
          display_(display) {}

    /// The board type decides about the CO-CPU slot and the clock.
    void SetBoardType(std::int16_t boardType) { boardType_ = boardType; }

    /// The first pass after going ONLINE, and again after a reset: the six codes with captions, descriptions and
    /// advice, then the revision that the board holds. When the link has failed by its end, all codes read "42" and
    /// none enables the reset. An error of the description files is shown as "TargetBoard FirstPass".
    [[nodiscard]] Task ShowBoardOnline();
    /// One pass over the eight set-up fields, in their order. A value that cannot be relied on is not shown; the next
    /// pass brings it.
    [[nodiscard]] Task RefreshSetupFields();
    /// The OFFLINE text in the four description boxes, and the button; everything else keeps its contents.
    void ShowBoardOffline();

    /// Whether the board's answers to the last first pass can be relied on. What was not read leaves the alarms as they
    /// were.
    [[nodiscard]] bool Reliable() const { return reliable_; }
    /// The code texts last read, in the order of `FaultAddresses`.
    [[nodiscard]] const std::array<std::string, BoardCodeCount>& FaultCodes() const { return faultCodes_; }

    // Writes, at once and in one go, for use between the passes' turns. None is sent while OFFLINE or when the link has
    // failed, and the rest is dropped as soon as it fails. They tell the worst that became of their values.

    /// "0" to the communication error codes, then to the fault codes. Ask with ResetQuestion() first, and show the
    /// board again afterwards unless the link has failed.
    WriteOutcome ResetFaultCodes();
    /// The computer's time or date, each value as it is at the moment of its own write.
    WriteOutcome SetToCurrTime();
    WriteOutcome SetToCurrDate();
    /// `value`: as SetupEntry has let it pass.
    WriteOutcome WriteSetup(std::size_t field, const std::string& value);

private:
    /// A link that went OFFLINE under the pass is as good as failed.
    [[nodiscard]] bool LinkDown() const { return link_.LinkFailed() || !link_.OnlineMode(); }
    /// Yields, then reads one byte into `value_`; a second time when the first answer cannot be relied on. Leaves
    /// nothing there when the display is closed or the link down.
    [[nodiscard]] Task ReadByte(int byte);
    [[nodiscard]] Task ReadCodes();
    [[nodiscard]] Task ShowWhatIsKnown();
    [[nodiscard]] Task ReadSlotAgain();
    [[nodiscard]] Task ReadRevision();
    void ShowCodes();
    void ShowDescriptions();
    void ShowInDescriptions(const std::string& text);
    void ShowDescriptionsFrom(const std::filesystem::path& file, BoardCode current, BoardCode last);
    void ShowAdvice();
    void ShowDeadLink();
    WriteOutcome Write(int byte, const std::string& value);

    RSComm& link_;
    TurnQueue& turns_;
    const Clock& clock_;
    Dialogs& dialogs_;
    AlarmFlags& alarms_;
    BoardFiles files_;
    BoardDisplay& display_;
    std::int16_t boardType_ = 0;
    std::array<std::string, BoardCodeCount> faultCodes_;
    std::optional<std::string> value_;
    bool reliable_ = true;
    bool offlineTextShown_ = false; ///< Stands in the description boxes.
};

} // namespace vantrel
