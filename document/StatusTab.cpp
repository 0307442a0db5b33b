// One pass over the status tab, a value a turn.
#include "document/StatusTab.h"

#include "link/ReadingWalk.h"
#include "link/StatusText.h"

#include <cstddef>
#include <optional>
#include <string>

namespace vantrel {

namespace {

constexpr const char* Unread = "-";

bool MayRead(const StatusTabDisplay& display, const RSComm& link) {
    return display.StatusWanted() && link.OnlineMode() && !link.LinkFailed();
}

/// The walk's tags: two for each row.
constexpr std::size_t NodeTag(int row) { return 2 * static_cast<std::size_t>(row); }
constexpr std::size_t StatusTag(int row) { return NodeTag(row) + 1; }

void Show(StatusTabDisplay& display, const RSComm& link, const std::optional<JudgedReading>& judged) {
    if (!judged || judged->reading.HasLinkFailed() || !MayRead(display, link)) return;
    const int row = static_cast<int>(judged->tag / 2);
    if (judged->tag == NodeTag(row)) {
        display.ShowNode(row, judged->reading.TextOr(Unread));
    } else if (const auto status = judged->reading.Number()) {
        display.ShowStatus(row, StatusDisplay(std::to_string(*status)));
    } else {
        display.ShowStatus(row, Unread);
    }
}

} // namespace

Task RefreshStatusTab(StatusTabDisplay& display, const SequenceAddresses& nodeNumbers,
                      const SequenceAddresses& statusWords, RSComm& link, TurnQueue& turns) {
    ReadingWalk walk(link);
    for (int row = 1; row < EditorRowCount; ++row) {
        const auto sequence = static_cast<std::size_t>(row) - 1;
        // What nobody sees takes no turn from the rows that somebody does.
        if (!display.RowVisible(row)) continue;
        co_await turns.Behind();
        if (!MayRead(display, link)) co_return;
        if (!display.RowVisible(row)) continue;
        const auto beforeNode = co_await walk.Read(nodeNumbers.at(sequence), NodeTag(row));
        // What was read before the port was opened again may be another board's; the next pass begins anew.
        if (walk.Reconnected()) co_return;
        Show(display, link, beforeNode);

        co_await turns.Behind();
        if (!MayRead(display, link)) co_return;
        // Scrolled out in the meantime.
        if (!display.RowVisible(row)) continue;
        const auto beforeStatus = co_await walk.Read(statusWords.at(sequence), StatusTag(row));
        if (walk.Reconnected()) co_return;
        Show(display, link, beforeStatus);
    }
    const auto last = co_await walk.End();
    if (!walk.Reconnected()) Show(display, link, last);
}

} // namespace vantrel
