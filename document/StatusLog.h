// What has been seen of the sequences while somebody looked: told by whoever reads their status, asked by whoever shows
// it. Knows no board and no window; views/ keeps it.
#pragma once

#include "document/Configuration.h"
#include "link/SequenceHealth.h"

#include "platform/Clock.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>

namespace vantrel {

/// One sequence since the link came ONLINE. Times are those of the looks: what happened between two of them happened at
/// some moment before the second.
struct SequenceRecord {
    /// Codes 0..18 each have a place of their own, all others share the last one.
    static constexpr std::size_t CodePlaces = 20;
    /// So many looks are remembered, the last minutes of a sequence in sight.
    static constexpr std::size_t LatestLooks = 400;

    struct Look {
        MonotonicTime at;
        SequenceHealth health;
    };
    struct Error {
        std::uint16_t code;
        std::chrono::local_seconds at; ///< When it was first seen, this time.
    };

    std::optional<std::uint16_t> node; ///< As far as it is known.
    std::optional<std::uint16_t> code; ///< Nothing: not read, or not clearly.
    std::optional<std::uint16_t> clearCode; ///< The last one that was read clearly.
    SequenceHealth health = SequenceHealth::Unknown;
    std::optional<std::chrono::local_seconds> since; ///< When this state was first seen.
    bool changeSeen = false; ///< Shortly before `since` it was seen in another state.
    std::optional<std::chrono::local_seconds> lastLook;
    std::optional<std::chrono::local_seconds> lastOk;
    std::optional<Error> lastError;
    std::optional<Error> errorBefore; ///< The one before that.
    std::size_t errors = 0; ///< How often it began to fail, or to fail with another code.
    std::array<std::size_t, CodePlaces> looksByCode{};
    std::deque<Look> latest; ///< The oldest first.

    /// The place of a code in `looksByCode`.
    [[nodiscard]] static constexpr std::size_t PlaceOf(std::uint16_t code) {
        return code < CodePlaces - 1 ? code : CodePlaces - 1;
    }
};

class StatusLog {
public:
    StatusLog() = default;
    StatusLog(const StatusLog&) = delete;
    StatusLog& operator=(const StatusLog&) = delete;
    virtual ~StatusLog() = default;

    /// What is told from now on was read since that opening of the port (RSComm::Opened); what was before may be
    /// another board's.
    virtual void NoteOpening(int opened) = 0;
    /// Nothing: not read clearly.
    virtual void NoteNode(std::size_t sequence, std::optional<std::uint16_t> node) = 0;
    virtual void NoteStatus(std::size_t sequence, std::optional<std::uint16_t> code) = 0;
    /// Node numbers may have been written: none is known until it is read again.
    virtual void ForgetNodes() = 0;

    [[nodiscard]] virtual const SequenceRecord& Of(std::size_t sequence) const = 0;
    /// The clock of the looks.
    [[nodiscard]] virtual MonotonicTime Now() const = 0;
    [[nodiscard]] virtual std::chrono::local_seconds LocalNow() const = 0;
};

/// How many sequences are in each state, in the order of SequenceHealths.
using HealthCounts = std::array<std::size_t, SequenceHealths.size()>;
[[nodiscard]] inline HealthCounts CountHealths(const StatusLog& log) {
    HealthCounts counts{};
    for (std::size_t sequence = 0; sequence < SequenceCount; ++sequence)
        ++counts.at(static_cast<std::size_t>(log.Of(sequence).health));
    return counts;
}

} // namespace vantrel
