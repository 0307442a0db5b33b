// One pass over the status tab, a value a turn.
#include "document/StatusTab.h"

#include "link/StatusText.h"

#include <optional>

namespace vantrel {

namespace {

bool MayRead(const StatusTabDisplay& display, const RSComm& link) {
    return display.StatusWanted() && link.OnlineMode() && !link.LinkFailed();
}

/// Nothing when what came is no value, or none to be relied on.
std::optional<std::string> Read(RSComm& link, const std::string& address) {
    std::string text = link.RSRead(address);
    if (link.LinkFailed() || link.ReadFailed()) return std::nullopt;
    return text;
}

} // namespace

Task RefreshStatusTab(StatusTabDisplay& display, const SequenceAddresses& nodeNumbers,
                      const SequenceAddresses& statusWords, RSComm& link, TurnQueue& turns) {
    for (int row = 1; row < EditorRowCount; ++row) {
        const auto sequence = static_cast<std::size_t>(row) - 1;
        co_await turns.Next();
        if (!MayRead(display, link)) co_return;
        if (!display.RowVisible(row)) continue;
        if (const auto node = Read(link, nodeNumbers.at(sequence))) display.ShowNode(row, *node);

        co_await turns.Next();
        if (!MayRead(display, link)) co_return;
        // Scrolled out in the meantime.
        if (!display.RowVisible(row)) continue;
        if (const auto status = Read(link, statusWords.at(sequence))) display.ShowStatus(row, StatusDisplay(*status));
    }
}

} // namespace vantrel
