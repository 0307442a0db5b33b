// A walk over addresses of the board's memory that yields judged readings. Knows the link only.
#pragma once

#include "link/RSComm.h"

#include <cstddef>
#include <optional>
#include <string>

namespace vantrel {

/// Reads one address after another. Each answer is judged by what follows it: a surplus byte makes the first echo of
/// the next exchange wrong, whoever sends it; behind the last one End() looks for it. So a reading is yielded by the
/// call after the one that asked for it. What is doubtful is read once more, after quiet and a fresh sync, before it is
/// called so.
///
/// Between two calls other operations may use the link. A walk that is dropped without End() never yields its last
/// reading. The link must outlive it.
class ReadingWalk {
public:
    explicit ReadingWalk(RSComm& link) : link_(link), openedAt_(link.Opened()) {}
    ReadingWalk(const ReadingWalk&) = delete;
    ReadingWalk& operator=(const ReadingWalk&) = delete;
    ~ReadingWalk() { link_.Forget(neighbour_); }

    /// Reads `address`, which the caller calls `tag`, and yields the reading before it, if there is one.
    [[nodiscard]] TaskOf<std::optional<JudgedReading>> Read(std::string address, std::size_t tag);
    /// Looks for a surplus byte behind the last reading and yields it.
    [[nodiscard]] TaskOf<std::optional<JudgedReading>> End();

    /// The port has been opened again since the walk began: what was read before may be another board's. A pass starts
    /// anew.
    [[nodiscard]] bool Reconnected() const { return link_.Opened() != openedAt_; }

private:
    struct Held {
        std::string address;
        JudgedReading judged;
    };

    /// The held reading's last word, now that what follows it is known.
    [[nodiscard]] TaskOf<std::optional<JudgedReading>> Settle();

    RSComm& link_;
    int openedAt_;
    std::optional<Held> held_;
    RSComm::Neighbour neighbour_;
};

} // namespace vantrel
