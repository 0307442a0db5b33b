// From a text to an edit, from an edit to the record and the board, and what the user has to know of its landing.
#include "document/SequenceEditor.h"

#include "document/ValueDisplay.h"
#include "link/TargetAddress.h"
#include "link/TargetMap.h"

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

std::string TextOf(std::size_t index, const NotedValue& value) {
    return DisplayValue(index, value.value, value.notation);
}

} // namespace

bool LandedEdit::Confirmed() const {
    return result.Holds(edit.after.value) && result.flagRaised && result.flagLowered && !result.reconnected;
}

bool LandedEdit::HasLinkFailed() const { return result.onBoard.HasLinkFailed(); }

std::string LandedEdit::CellText() const {
    NotedValue shown = edit.after;
    if (const auto held = result.onBoard.Number()) shown.value = static_cast<std::int32_t>(*held);
    return TextOf(edit.index, shown);
}

std::string LandedEdit::Message() const {
    std::string text = Verdict();
    if (text.empty()) return text;
    if (result.reconnected) text += "\nThe link was lost and taken up again in the middle of it.";
    if (result.begun && !result.flagLowered) text += "\nIts " + std::string(WriteThroughFlag) + " may be left at 1.";
    text += HalfSentLine(result.mayHaveReached);
    if (!Confirmed()) text += HasLinkFailed() ? "\nEnter it once more when ONLINE again." : "\nEnter it once more.";
    return text;
}

std::string LandedEdit::Verdict() const {
    const std::string entered = TextOf(edit.index, edit.after) + " for " + ValueLabel(edit.index);
    const std::string holds = "holds " + CellText() + " now.";
    const std::string unclear = "hat it holds now could not be read clearly.";
    const bool clear = result.onBoard.IsValue();
    if (HasLinkFailed()) return "The link failed before the board had confirmed " + entered + ".";
    if (!result.written.Confirmed()) {
        return "The board did not confirm " + entered + ".\n" + (clear ? "It " + holds : "W" + unclear);
    }
    if (!result.Holds(edit.after.value)) {
        return "The board confirmed " + entered + ", but " + (clear ? holds : "w" + unclear);
    }
    if (!Confirmed()) return "The board holds " + entered + ", but did not confirm all steps of the entry.";
    if (!result.mayHaveReached.empty()) return "The board holds " + entered + ", but it had to be sent twice.";
    return {};
}

SequenceEditor::SequenceEditor(Configuration& record, RSComm& link, TurnQueue& turns, Landed landed) : record_(record) {
    board_.emplace(link, turns, std::move(landed));
}

EditAnswer SequenceEditor::Enter(const EditPlace& place, const std::string& text) {
    EditAnswer answer = EditOf(record_, place, text);
    if (const auto* edit = std::get_if<Edit>(&answer)) Apply(*edit);
    return answer;
}

void SequenceEditor::Apply(const Edit& edit) {
    Store(record_, edit);
    const auto* value = std::get_if<ValueEdit>(&edit);
    if (!value) return;
    unconfirmed_.erase(value->index);
    // Also when the link has failed: the user may be about to choose Retry, and hears of it if not.
    if (board_ && board_->link.OnlineMode()) Send(*value);
}

void SequenceEditor::Send(const ValueEdit& edit) {
    std::erase_if(sends_, [](const Task& send) { return send.Done(); });
    onTheirWay_.push_back(edit.index);
    // Started at once, so that it has its place in the line before whatever asks for the link next.
    sends_.push_back(WriteAndTell(edit, record_.TargetAddress(edit.index)));
    sends_.back().Start();
}

Task SequenceEditor::WriteAndTell(ValueEdit edit, std::string address) {
    LandedEdit landed;
    landed.result = co_await WriteThrough(board_->link, std::move(address), edit.after.value);
    landed.edit = std::move(edit);
    // Never inside the call that sent it, nor behind a box of the user's.
    co_await board_->turns.Next();
    Land(landed);
}

void SequenceEditor::Land(const LandedEdit& landed) {
    const std::size_t index = landed.edit.index;
    onTheirWay_.erase(std::find(onTheirWay_.begin(), onTheirWay_.end(), index));
    board_->ended.Raise();
    if (OnItsWay(index)) return;
    if (!landed.Confirmed() && Stands(landed.edit)) unconfirmed_.insert(index);
    board_->landed(landed);
}

bool SequenceEditor::OnItsWay(std::size_t index) const {
    return std::find(onTheirWay_.begin(), onTheirWay_.end(), index) != onTheirWay_.end();
}

Task SequenceEditor::Written() {
    while (Writing())
        co_await board_->ended.Raised();
}

bool SequenceEditor::Stands(const ValueEdit& edit) const {
    return NotedValue{record_.Value(edit.index), record_.AddressType(edit.index)} == edit.after;
}

} // namespace vantrel
