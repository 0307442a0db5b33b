// What the target board view reads from the board and writes to it: the passes, the resets, the clock. Knows the link,
// the queue and the description files; no toolkit.
#pragma once

#include "link/Alarms.h"
#include "link/RSComm.h"
#include "link/Reading.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/Folders.h"
#include "platform/Task.h"
#include "platform/TurnQueue.h"
#include "views/BoardTexts.h"
#include "views/ClockComparison.h"
#include "views/UserProgram.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

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
    /// `field`: 0..7. `value`: whole, in decimal; "-" when it cannot be relied on. A box shows SetupBoxText() of it.
    virtual void ShowSetup(std::size_t field, const std::string& value) = 0;
    /// What the board holds: label 0 the ident, as it grows character by character, 1 and 2 the revision numbers; "-"
    /// for what is not known.
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
/// and then looks whether it may go on: the display active, the link ONLINE and not failed. A code that stays doubtful
/// reads "--" and has no description; another value reads "-". When the port is opened again in the middle,
/// ShowBoardOnline() begins anew, and the other passes end.
class BoardMonitor {
public:
    /// `alarms` are set by every pass over the codes, from what the board reported.
    BoardMonitor(RSComm& link, TurnQueue& turns, const Clock& clock, Dialogs& dialogs, AlarmFlags& alarms,
                 BoardFiles files, BoardDisplay& display)
        : link_(link), turns_(turns), clock_(clock), dialogs_(dialogs), alarms_(alarms), files_(std::move(files)),
          display_(display) {}

    /// The board type decides about the CO-CPU slot and the clock.
    void SetBoardType(std::int16_t boardType) { boardType_ = boardType; }

    /// The first pass after going ONLINE, and again after a reset: the six codes with captions, descriptions and
    /// advice, then the revision that the board holds. What was shown of a board before the port was opened again goes
    /// first. When the link has failed by its end, all codes read "42" and none enables the reset. A description file
    /// that cannot be read is shown as "TargetBoard FirstPass"; its own two boxes say so, too.
    [[nodiscard]] Task ShowBoardOnline();
    /// One pass over the six codes: captions, descriptions, advice and the reset follow when a code has changed. A
    /// revision of which a part was doubtful is read once more.
    [[nodiscard]] Task RefreshCodes();
    /// One pass over the eight set-up fields, in their order.
    [[nodiscard]] Task RefreshSetupFields();
    /// What these passes say of the board's clock; two of them at the least. Only a board with a clock has one.
    [[nodiscard]] const ClockComparison& ComparedClock() const { return clockComparison_; }
    /// The OFFLINE text in the four description boxes, and the button; everything else keeps its contents.
    void ShowBoardOffline();

    /// The port has been opened again since the last first pass began: what is shown may be another board's.
    [[nodiscard]] bool Outdated() const { return opened_ != link_.Opened(); }
    /// Every code that was read last is reliable, and so is the whole revision. What is not leaves its alarm as it was.
    [[nodiscard]] bool Reliable() const;
    /// All of the revision has been read reliably.
    [[nodiscard]] bool RevisionKnown() const { return revisionKnown_; }
    /// A fault or error code other than 0 was read last (the slot is none).
    [[nodiscard]] bool AnyCode() const;
    std::array<std::string, BoardCodeCount> FaultCodes; ///< The code texts last read, in the order of `FaultAddresses`.

    // Writes, for use between the passes' turns, each in one go. None is sent while OFFLINE or when the link has
    // failed, and the rest is dropped as soon as it fails. They tell the worst that became of their values.

    /// "0" to the communication error codes, then to the fault codes. Ask with ResetQuestion() first, and show the
    /// board again afterwards unless the link has failed. The board may raise a code again at once, so that none is
    /// read back here.
    [[nodiscard]] TaskOf<WriteOutcome> ResetFaultCodes();
    // What follows is read back and shown; NotConfirmed as well when the board holds something else.

    /// The computer's time or date, each value as it is at the moment of its own write.
    [[nodiscard]] TaskOf<WriteOutcome> SetToCurrTime();
    [[nodiscard]] TaskOf<WriteOutcome> SetToCurrDate();
    /// `value`: as SetupEntry has let it pass.
    [[nodiscard]] TaskOf<WriteOutcome> WriteSetup(std::size_t field, std::string value);
    /// Bytes that the last one of these, half-sent, may have set to 255 (WriteResult).
    [[nodiscard]] const std::vector<std::uint16_t>& MayHaveReached() const { return reached_; }
    /// A value of the last one of these had to be sent twice.
    [[nodiscard]] bool Repeated() const { return repeated_; }

private:
    using Codes = std::array<std::optional<int>, BoardCodeCount>; ///< Nothing for a doubtful one.
    using Take = std::function<void(const JudgedReading&)>;

    /// A link that went OFFLINE under the pass is as good as failed.
    [[nodiscard]] bool LinkDown() const { return link_.LinkFailed() || !link_.OnlineMode(); }
    [[nodiscard]] bool MayRead() const { return display_.Active() && !LinkDown(); }
    /// False when the pass has to end; see ReadInTurns().
    [[nodiscard]] TaskOf<bool> ReadAll(std::vector<int> bytes, Take take);
    [[nodiscard]] TaskOf<bool> ShowWhatTheBoardSays();
    [[nodiscard]] TaskOf<bool> ReadCodes();
    [[nodiscard]] TaskOf<bool> ReadSlotAgain();
    [[nodiscard]] TaskOf<bool> ReadRevision();
    /// What one pass has read of the clock, and when.
    struct ClockReadings {
        std::array<std::optional<std::uint32_t>, SetupFieldCount> values{};
        std::array<std::chrono::local_seconds, SetupFieldCount> at{};
        [[nodiscard]] std::optional<ClockPass> Pass() const;
    };
    void BeginShowing();
    void ForgetShown();
    void SetAlarms();
    void ShowCodes();
    /// Whether an error of a description file is shown in a box, too.
    enum class Errors { Report, Keep };
    void ShowDescriptions(Errors errors);
    void ShowDescriptionsFrom(const std::filesystem::path& file, std::array<BoardCode, 2> codes, Errors errors);
    void ShowInDescriptions(const std::string& text);
    void ShowAdvice();
    void ShowDeadLink();

    // Writes (BoardWrites.cpp)
    struct ClockPart {
        std::size_t field;
        int (*of)(std::chrono::local_seconds);
    };
    using ClockParts = std::array<ClockPart, 3>;
    [[nodiscard]] TaskOf<WriteOutcome> SetClock(ClockParts parts);
    /// Writes one byte of an operation, and notes what became of it.
    [[nodiscard]] TaskOf<WriteOutcome> Write(RSComm::Line& line, int byte, std::string value);
    void BeginWriting();
    [[nodiscard]] TaskOf<Reading> ReadBack(RSComm::Line& line, std::size_t field);

    RSComm& link_;
    TurnQueue& turns_;
    const Clock& clock_;
    Dialogs& dialogs_;
    AlarmFlags& alarms_;
    BoardFiles files_;
    BoardDisplay& display_;
    std::int16_t boardType_ = 0;
    Codes codes_;
    ClockComparison clockComparison_;
    int opened_ = -1; ///< How often the port had been when the last first pass began.
    bool revisionKnown_ = false;
    bool repeated_ = false;
    std::vector<std::uint16_t> reached_;
};

} // namespace vantrel
