// The live data of the editor's status tab: which values are read from the board, when, and how they are shown. Knows
// the link and whoever displays the rows; knows no window.
#pragma once

#include "document/GridTexts.h"
#include "link/RSComm.h"
#include "platform/Task.h"
#include "platform/TurnQueue.h"

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
    /// Rows that nobody sees are not read.
    [[nodiscard]] virtual bool RowVisible(int row) const = 0;
    virtual void ShowNode(int row, const std::string& text) = 0;
    virtual void ShowStatus(int row, const std::string& text) = 0;
};

/// One pass over the rows: node number and status word of each visible one. Yields before every value, so that nothing
/// waits longer than one exchange, and ends at once when the display does not want it, the link is not ONLINE or it
/// has failed, or opened again. A value that stays doubtful reads "-". All arguments must outlive the running task.
Task RefreshStatusTab(StatusTabDisplay& display, const SequenceAddresses& nodeNumbers,
                      const SequenceAddresses& statusWords, RSComm& link, TurnQueue& turns);

} // namespace vantrel
