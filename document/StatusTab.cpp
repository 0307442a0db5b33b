// One pass over the status tab, a value a turn.
#include "document/StatusTab.h"

#include "link/Reading.h"
#include "link/ReadingWalk.h"
#include "link/StatusText.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace vantrel {

namespace {

bool MayRead(const StatusTabDisplay& display, const RSComm& link) {
    return display.StatusWanted() && link.OnlineMode() && !link.LinkFailed();
}

/// The walk's tags: two for each row.
constexpr std::size_t NodeTag(int row) { return 2 * static_cast<std::size_t>(row); }
constexpr std::size_t StatusTag(int row) { return NodeTag(row) + 1; }

std::optional<std::uint16_t> WordOf(const Reading& reading) {
    const auto number = reading.Number();
    return number ? std::optional(static_cast<std::uint16_t>(*number)) : std::nullopt;
}

void Show(StatusTabDisplay& display, StatusLog& log, const RSComm& link, const std::optional<JudgedReading>& judged) {
    if (!judged || judged->reading.HasLinkFailed() || !MayRead(display, link)) return;
    const int row = static_cast<int>(judged->tag / 2);
    const std::size_t sequence = static_cast<std::size_t>(row) - 1;
    // Noted before it is shown: who shows it may want to say more.
    if (judged->tag == NodeTag(row)) {
        log.NoteNode(sequence, WordOf(judged->reading));
        display.ShowNode(row, judged->reading.TextOr(UnreadText));
        return;
    }
    log.NoteStatus(sequence, WordOf(judged->reading));
    const auto status = judged->reading.Number();
    display.ShowStatus(row, status ? StatusDisplay(std::to_string(*status)) : UnreadText);
}

} // namespace

bool StatusSurvey::NodeIsNext() const {
    if (last_.row == 0 || last_.node) return false;
    const SequenceRecord& record = log_.Of(static_cast<std::size_t>(last_.row) - 1);
    return !record.node && HealthOf(record.code, record.node) == SequenceHealth::Failing;
}

std::optional<StatusSurvey::Turn> StatusSurvey::TakeOutOfSight(const StatusTabDisplay& display) {
    std::optional<int> next;
    bool anyInSight = false;
    for (int i = 0; i < EditorRowCount - 1; ++i) {
        const int row = (last_.row + i) % (EditorRowCount - 1) + 1;
        const bool visible = display.RowVisible(row);
        anyInSight = anyInSight || visible;
        if (!visible && !next) next = row;
    }
    if (!next || (anyInSight && inSight_ < ReadingsInSight)) return std::nullopt;
    inSight_ = 0;
    const bool node = NodeIsNext() && !display.RowVisible(last_.row);
    last_ = {node ? last_.row : *next, node};
    return last_;
}

Task StatusSurvey::LookAtNext(const SequenceAddresses& nodeNumbers, const SequenceAddresses& statusWords,
                              RSComm& link) {
    const int opened = link.Opened();
    const bool node = NodeIsNext();
    last_ = {node ? last_.row : last_.row % (EditorRowCount - 1) + 1, node};
    const std::size_t sequence = static_cast<std::size_t>(last_.row) - 1;
    const Reading value = co_await link.Read((node ? nodeNumbers : statusWords).at(sequence));
    if (value.HasLinkFailed() || link.Opened() != opened || !link.OnlineMode()) co_return;
    log_.NoteOpening(opened);
    if (node) log_.NoteNode(sequence, WordOf(value));
    if (!node) log_.NoteStatus(sequence, WordOf(value));
}

Task RefreshStatusTab(StatusTabDisplay& display, StatusSurvey& survey, const SequenceAddresses& nodeNumbers,
                      const SequenceAddresses& statusWords, RSComm& link, TurnQueue& turns) {
    ReadingWalk walk(link);
    StatusLog& log = survey.Log();
    if (MayRead(display, link)) log.NoteOpening(link.Opened());
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
        Show(display, log, link, beforeNode);
        survey.NoteInSight();

        co_await turns.Behind();
        if (!MayRead(display, link)) co_return;
        // Scrolled out in the meantime.
        if (!display.RowVisible(row)) continue;
        const auto beforeStatus = co_await walk.Read(statusWords.at(sequence), StatusTag(row));
        if (walk.Reconnected()) co_return;
        Show(display, log, link, beforeStatus);
        survey.NoteInSight();
    }
    if (const auto turn = survey.TakeOutOfSight(display)) {
        co_await turns.Behind();
        if (!MayRead(display, link)) co_return;
        const std::string& address =
            (turn->node ? nodeNumbers : statusWords).at(static_cast<std::size_t>(turn->row) - 1);
        const std::size_t tag = turn->node ? NodeTag(turn->row) : StatusTag(turn->row);
        const auto before = co_await walk.Read(address, tag);
        if (walk.Reconnected()) co_return;
        Show(display, log, link, before);
    }
    const auto last = co_await walk.End();
    if (!walk.Reconnected()) Show(display, log, link, last);
}

} // namespace vantrel
