// What the communication interface view shows of one sequence, and the passes that fetch it from the board. Knows the
// record, the link and the queue; no toolkit.
#pragma once

#include "document/Configuration.h"
#include "link/RSComm.h"
#include "link/Reading.h"
#include "link/ReadingWalk.h"
#include "link/StatusText.h"
#include "platform/Task.h"
#include "platform/TurnQueue.h"
#include "views/DataWords.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

inline constexpr int HighestSequence = static_cast<int>(SequenceCount) - 1;

/// Where the passes show what they have read, and what they ask before they read on.
class SequenceDisplay {
public:
    enum class SettingsGrid { Send = 0, Receive = 1 };

    SequenceDisplay() = default;
    SequenceDisplay(const SequenceDisplay&) = delete;
    SequenceDisplay& operator=(const SequenceDisplay&) = delete;
    virtual ~SequenceDisplay() = default;

    /// False once the display is closed: nothing is read or shown any more.
    [[nodiscard]] virtual bool Active() const = 0;
    /// Whether the user sees row `row` (1..120) of the data words; only such rows are read.
    [[nodiscard]] virtual bool RowVisible(int row) const = 0;
    /// Data words that somebody follows over time: they are read out of sight as well, and several times in a pass.
    [[nodiscard]] virtual std::vector<WordPlace> FollowedWords() const { return {}; }

    virtual void ShowDescription(const std::string& text) = 0;
    virtual void ShowNodeNumber(const std::string& text) = 0;
    /// `row`: 1..3, as the fields of either direction follow each other.
    virtual void ShowSetting(SettingsGrid grid, int row, const std::string& text) = 0;
    /// What the open document says of a setting, beside what the board holds. `differs`: the board's value is known,
    /// and is another one.
    virtual void ShowSetUp(SequenceField, const std::string& /*text*/, bool /*differs*/) {}
    virtual void ShowStatus(const std::string& text) = 0;
    /// `row`: 1..120, the number of the word.
    virtual void ShowDataWord(int row, DataDirection column, const std::string& text) = 0;
    /// The data words that stand there are another sequence's, or another board's.
    virtual void ClearData() = 0;
};

/// Reads `selectedSequence` (0..30), whatever it is at that moment. Everything handed in must outlive the monitor, and
/// the monitor its passes. A pass yields before every single read and then looks whether it may go on: the display
/// active, the link ONLINE and not failed, the selection as it was when the pass began. A value that stays doubtful
/// reads "-".
class SequenceMonitor {
public:
    SequenceMonitor(const Configuration& record, RSComm& link, TurnQueue& turns, const std::int16_t& selectedSequence,
                    SequenceDisplay& display)
        : record_(record), link_(link), turns_(turns), selectedSequence_(selectedSequence), display_(display) {}

    /// The description, which needs no board, and then the seven settings that stand at `settingsBase` (the index of
    /// the sequence's node number) and behind it, as the board holds them. What is shown of another sequence, or of a
    /// board before the port was opened again, becomes dashes first; when the port is opened again in the middle, the
    /// pass begins anew.
    [[nodiscard]] Task RefreshSettings(std::int16_t settingsBase);
    /// The status, then the data words of the visible rows, and those that are followed; row by row, the sent word
    /// before the received one. Ends when the port is opened again.
    [[nodiscard]] Task RefreshStatusAndData();

    /// What RefreshSettings() has shown is of another sequence than the selected one, or was read before the port was
    /// opened again: it has to run again.
    [[nodiscard]] bool Outdated() const;

private:
    /// What the display shows, or is about to.
    struct Shown {
        std::int16_t settingsBase;
        int opened; ///< How often the port had been, by then.
        bool operator==(const Shown&) const = default;
    };

    [[nodiscard]] bool MayRead() const { return display_.Active() && link_.OnlineMode() && !link_.LinkFailed(); }
    [[nodiscard]] std::size_t Sequence() const { return static_cast<std::size_t>(selectedSequence_); }
    void BeginSettings(std::int16_t settingsBase);
    void ShowSetting(SequenceField field, const std::string& text);
    void ShowSetUp(SequenceField field, const Reading& onBoard);
    [[nodiscard]] bool MayGoOn(const ReadingWalk& walk, std::size_t sequence) const {
        return MayRead() && Sequence() == sequence && !walk.Reconnected();
    }
    /// False when the pass has to end.
    [[nodiscard]] TaskOf<bool> ReadWords(ReadingWalk& walk, std::size_t sequence, std::vector<WordPlace> places);
    void ShowWord(const JudgedReading& judged);

    const Configuration& record_;
    RSComm& link_;
    TurnQueue& turns_;
    const std::int16_t& selectedSequence_;
    SequenceDisplay& display_;
    std::optional<Shown> shown_;
};

/// How the value `text` of a field, as read from the board, is shown in the notation `type`: counts as they are, a
/// TI-505 address behind its letter, a node's address as "W" + decimal or, for "H", hexadecimal + "H".
[[nodiscard]] std::string SettingDisplay(SequenceField field, const std::string& text, const std::string& type);

/// Index of the node number of a sequence: its settings' base.
[[nodiscard]] constexpr std::int16_t SettingsBaseOf(std::int16_t sequence) {
    return static_cast<std::int16_t>(ValueIndex(static_cast<std::size_t>(sequence), SequenceField::NodeNumber));
}

/// The sequence that an entered number means, rounded, halves to even. What lies below 0 counts as 0; nothing for what
/// is no number or lies above 30.
[[nodiscard]] std::optional<std::int16_t> SequenceEntry(std::string_view text);
/// The sequence one step (1 or -1) beside an entered number, kept within 0..30; beside `otherwise` when the entry is
/// no number.
[[nodiscard]] std::int16_t SteppedSequence(std::string_view text, int step, std::int16_t otherwise);

} // namespace vantrel
