// What every sequence did, and what happened beside it: faults, alarms, the mode, transfers, lost links. Kept in memory
// within a bound; whoever wants it in a file asks for its table. Knows a clock; no link and no toolkit.
#pragma once

#include "document/SettingsTransfer.h"
#include "document/StatusLog.h"
#include "link/Alarms.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <variant>

namespace vantrel {

/// A sequence was seen in another state than at the look before.
struct SequenceChange {
    std::size_t sequence;
    std::optional<std::uint16_t> before; ///< Nothing at the first look, and when it was not read clearly.
    std::optional<std::uint16_t> code; ///< Nothing: not read clearly.
    SequenceHealth health;
    std::optional<std::chrono::local_seconds> lookBefore; ///< The change lies between that one and this.
};
/// No sequence was looked at from then on until this moment.
struct NotLookedAt {
    std::chrono::local_seconds since;
};
/// The board's current fault code (B8176); 0: none any more.
struct FaultChange {
    int code;
};
struct AlarmChange {
    std::size_t alarm; ///< Its place in AlarmNames.
    bool active;
};
enum class LinkChange { Online, Offline, Lost, Reopened };
struct TransferStep {
    enum class Step { Begun, Complete, Cancelled, Failed, Doubtful };
    TransferMode mode;
    Step step;
};

using Happening = std::variant<SequenceChange, NotLookedAt, FaultChange, AlarmChange, LinkChange, TransferStep>;

struct HistoryEntry {
    std::chrono::local_seconds at;
    Happening what;
};

class History final : public StatusLog {
public:
    /// Behind so many entries the oldest ones go.
    static constexpr std::size_t MostEntries = 100'000;
    /// So long without any look is an entry of its own.
    static constexpr MonotonicTime LongestSilence = std::chrono::seconds(5);
    /// A change was seen as such when the look before it is not longer ago.
    static constexpr MonotonicTime LongestRound = std::chrono::seconds(30);

    /// `clock` must outlive it.
    explicit History(const Clock& clock) : clock_(clock) {}

    void NoteOpening(int opened) override;
    void NoteNode(std::size_t sequence, std::optional<std::uint16_t> node) override;
    void NoteStatus(std::size_t sequence, std::optional<std::uint16_t> code) override;
    void ForgetNodes() override;
    /// The board's current fault code, 0 for none; an entry when it is another than before.
    void NoteFault(int code);
    void NoteAlarms(const AlarmFlags& alarms);
    /// OFFLINE nothing is known of a sequence any more; what was counted stays until the next opening.
    void NoteLink(LinkChange change);
    void NoteTransfer(TransferMode mode, TransferStep::Step step) { Add(TransferStep{mode, step}); }

    [[nodiscard]] const SequenceRecord& Of(std::size_t sequence) const override { return records_.at(sequence); }
    [[nodiscard]] MonotonicTime Now() const override { return clock_.Now(); }
    [[nodiscard]] std::chrono::local_seconds LocalNow() const override { return clock_.LocalNow(); }

    /// The oldest first.
    [[nodiscard]] const std::deque<HistoryEntry>& Entries() const { return entries_; }
    /// How many entries there have been; those that are gone were the first ones.
    [[nodiscard]] std::size_t Added() const { return added_; }
    [[nodiscard]] std::size_t Gone() const { return added_ - entries_.size(); }

private:
    void Add(const Happening& what);
    void NoteSilence();
    void NoteChange(std::size_t sequence, std::optional<std::uint16_t> code, SequenceHealth health);

    const Clock& clock_;
    std::array<SequenceRecord, SequenceCount> records_{};
    std::array<MonotonicTime, SequenceCount> lookedAt_{};
    /// Of any sequence, since the link came ONLINE.
    struct Look {
        MonotonicTime at;
        std::chrono::local_seconds local;
    };
    std::optional<Look> lastLook_;
    std::deque<HistoryEntry> entries_;
    std::size_t added_ = 0;
    std::optional<int> opened_;
    int fault_ = 0;
    AlarmFlags alarms_{};
};

} // namespace vantrel
