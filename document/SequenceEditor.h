// Editing without a window: a text entered for a value or a description becomes an edit, which is stored at once and,
// ONLINE, written through to the board. Knows the record, the entry rules and the link.
#pragma once

#include "document/Edit.h"
#include "document/WriteThrough.h"
#include "platform/Signal.h"
#include "platform/Task.h"
#include "platform/TurnQueue.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

namespace vantrel {

/// The entry box of an editor, whoever shows it.
enum class EntryState {
    Shut,
    Open,
    OnItsWay, ///< Its entry is stored and being written to the board; the box waits for the answer.
    Refused, ///< By the entry rules or by the board; the user has been told.
};

/// What became of a value that was written through to the board.
struct LandedEdit {
    ValueEdit edit{};
    WriteThroughResult result{};

    /// The board has confirmed every step and holds the value.
    [[nodiscard]] bool Confirmed() const;
    [[nodiscard]] bool HasLinkFailed() const;
    /// What the board holds now, in the notation of the entry; the entry itself where that is unknown.
    [[nodiscard]] std::string CellText() const;
    /// What the user has to know of it; empty when there is nothing to tell.
    [[nodiscard]] std::string Message() const;

private:
    [[nodiscard]] std::string Verdict() const;
};

class SequenceEditor {
public:
    /// Hears, in a turn of its own, of every write-through that has ended; of several for one value only the last.
    using Landed = std::function<void(const LandedEdit&)>;

    /// Stores only: there is no board. The record must outlive the editor.
    explicit SequenceEditor(Configuration& record) : record_(record) {}
    /// All that is borrowed must outlive the editor.
    SequenceEditor(Configuration& record, RSComm& link, TurnQueue& turns, Landed landed);

    /// Judges a text entered at a place and applies the edit that it comes to; a refused one changes nothing. Throws as
    /// CheckEntry does.
    EditAnswer Enter(const EditPlace& place, const std::string& text);
    /// Stores an edit at once, whatever stood there. ONLINE, a value is on its way to the board from then on; writes
    /// reach the link in the order of these calls, and before whatever asks for the link later.
    void Apply(const Edit& edit);

    /// Value `index` is being written to the board, or waits for that.
    [[nodiscard]] bool OnItsWay(std::size_t index) const;
    [[nodiscard]] bool Writing() const { return !onTheirWay_.empty(); }
    /// Ends when nothing is on its way any more. The editor must outlive it.
    [[nodiscard]] Task Written();
    /// The board did not confirm value `index` as it was entered last.
    [[nodiscard]] bool Unconfirmed(std::size_t index) const { return unconfirmed_.contains(index); }
    /// Another document: what was not confirmed is past.
    void ForgetUnconfirmed() { unconfirmed_.clear(); }
    /// A transfer has told what the board holds at `index`.
    void Confirm(std::size_t index) { unconfirmed_.erase(index); }
    /// The record still holds what the edit made of it.
    [[nodiscard]] bool Stands(const ValueEdit& edit) const;

private:
    struct Board {
        Board(RSComm& itsLink, TurnQueue& itsTurns, Landed itsLanded)
            : link(itsLink), turns(itsTurns), landed(std::move(itsLanded)), ended(itsTurns) {}
        RSComm& link;
        TurnQueue& turns;
        Landed landed;
        Signal ended;
    };

    void Send(const ValueEdit& edit);
    [[nodiscard]] Task WriteAndTell(ValueEdit edit, std::string address);
    void Land(const LandedEdit& landed);

    Configuration& record_;
    std::optional<Board> board_;
    std::vector<std::size_t> onTheirWay_; ///< Indices; one twice when it was entered again meanwhile.
    std::set<std::size_t> unconfirmed_;
    std::list<Task> sends_; ///< One for each value on its way, and ended ones.
};

} // namespace vantrel
