// The status of all sequences, read again and again, and every change of it as a line with its time. Writes nothing to
// the board.
#pragma once

#include "console/LinkSession.h"
#include "document/GridTexts.h"
#include "views/History.h"

#include <bitset>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vantrel {

/// "90s", "10m" or "8h", more than nothing and at most 1000 hours; nothing for any other text.
[[nodiscard]] std::optional<MonotonicTime> WatchTime(std::string_view text);

class StatusWatch {
public:
    /// Both must outlive it. Throws UsageError for a time that is none.
    StatusWatch(CommandContext& context, LinkSession& session);

    /// Prints until the time is over, an interrupt, or the link has failed.
    [[nodiscard]] ExitCode Run();

private:
    [[nodiscard]] bool MayRead() const;
    [[nodiscard]] bool TimeIsOver() const;
    /// All of them after an opening, later those that were not read clearly.
    void ReadUnknownNodes();
    void ReadStatuses();
    /// What the history holds beyond what has been printed.
    void Print();
    [[nodiscard]] ExitCode End();

    CommandContext& context_;
    LinkSession& session_;
    History history_;
    std::optional<MonotonicTime> time_; ///< How long, if not until an interrupt.
    MonotonicTime begun_{0};
    const SequenceAddresses nodes_ = NodeNumberAddressTable();
    const SequenceAddresses statuses_ = StatusWordAddressTable();
    std::size_t printed_ = 0;
    std::bitset<SequenceCount> clear_; ///< The sequences whose status has been read clearly.
    bool failed_ = false; ///< A sequence has been seen failing.
};

} // namespace vantrel
