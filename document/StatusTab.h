// The live data of the editor's status tab: which values are read from the board, when, and how they are shown. Knows
// the link, whoever displays the rows and the log of what was seen; knows no window.
#pragma once

#include "document/GridTexts.h"
#include "document/StatusLog.h"
#include "link/RSComm.h"
#include "platform/Task.h"
#include "platform/TurnQueue.h"

#include <cstddef>
#include <optional>
#include <string>

namespace vantrel {

/// Shows the communication status of the sequences: the editor's first grid, a console's table. Rows are counted as in
/// the grid, 1..31; row r is sequence r - 1.
class StatusTabDisplay {
public:
    StatusTabDisplay() = default;
    StatusTabDisplay(const StatusTabDisplay&) = delete;
    StatusTabDisplay& operator=(const StatusTabDisplay&) = delete;
    virtual ~StatusTabDisplay() = default;

    /// False ends the pass: nobody looks at the status any more, or the line is wanted for something else.
    [[nodiscard]] virtual bool StatusWanted() const = 0;
    /// Of rows that nobody sees one value is read now and then: the status word, or the node number that it asks for.
    [[nodiscard]] virtual bool RowVisible(int row) const = 0;
    virtual void ShowNode(int row, const std::string& text) = 0;
    virtual void ShowStatus(int row, const std::string& text) = 0;
};

/// What goes on from one pass to the next: where all that is read is noted, and whose turn it is among the sequences
/// that nobody sees.
class StatusSurvey {
public:
    /// Readings of rows in sight for each one out of sight, at the least: the rows in sight keep more than 93 % of the
    /// exchanges.
    static constexpr int ReadingsInSight = 14;

    /// `log` must outlive it.
    explicit StatusSurvey(StatusLog& log) : log_(log) {}

    [[nodiscard]] StatusLog& Log() { return log_; }
    void NoteInSight() { ++inSight_; }
    /// One value of a row, 1..31.
    struct Turn {
        int row;
        bool node; ///< Its node number; otherwise its status word.
    };
    /// The next row out of sight, if one may be read now: the rows in sight have had their share since the last one, or
    /// there are none in sight. A status word that fails without its node being known is followed by the node number:
    /// a sequence without a node is disabled.
    [[nodiscard]] std::optional<Turn> TakeOutOfSight(const StatusTabDisplay& display);
    /// Reads one value of one sequence, and of the next one at the next call, in the same order: for as long as nobody
    /// sees any. The addresses and the link must outlive the task.
    [[nodiscard]] Task LookAtNext(const SequenceAddresses& nodeNumbers, const SequenceAddresses& statusWords,
                                  RSComm& link);

private:
    /// Whether the turn after the last one belongs to the same row's node number.
    [[nodiscard]] bool NodeIsNext() const;

    StatusLog& log_;
    int inSight_ = 0; ///< Readings since the last one out of sight.
    Turn last_{0, false};
};

/// One pass over the rows: node number and status word of each visible one, and at its end one value of one that is
/// not. Yields before every value, so that nothing waits longer than one exchange, and ends at once when the display
/// does not want it, the link is not ONLINE or it has failed, or opened again. A value that stays doubtful reads "-".
/// All arguments must outlive the running task.
Task RefreshStatusTab(StatusTabDisplay& display, StatusSurvey& survey, const SequenceAddresses& nodeNumbers,
                      const SequenceAddresses& statusWords, RSComm& link, TurnQueue& turns);

} // namespace vantrel
