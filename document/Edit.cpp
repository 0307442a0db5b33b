// From an entered text to an edit, from an edit to the record; steps turned around, and found by comparing two records.
#include "document/Edit.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vantrel {

Edit TurnedAround(Edit edit) {
    std::visit([](auto& one) { std::swap(one.before, one.after); }, edit);
    return edit;
}

EditAnswer EditOf(const Configuration& record, const EditPlace& place, const std::string& text) {
    if (!place.field) {
        return DescriptionEdit{place.sequence, record.NodeDescription(place.sequence), DescriptionToStore(text)};
    }
    const EntryAnswer answer = CheckEntry(*place.field, text);
    if (const auto* refused = std::get_if<RefusedEntry>(&answer)) return *refused;
    const auto& accepted = std::get<AcceptedEntry>(answer);
    const std::size_t index = ValueIndex(place.sequence, *place.field);
    return ValueEdit{
        index, {record.Value(index), record.AddressType(index)}, {accepted.value, std::string(1, accepted.notation)}};
}

EditStep TurnedAround(const EditStep& step) {
    EditStep back{step.name, {}};
    std::ranges::transform(step.edits.rbegin(), step.edits.rend(), std::back_inserter(back.edits),
                           [](const Edit& edit) { return TurnedAround(edit); });
    return back;
}

std::vector<Edit> EditsBetween(const Configuration& before, const Configuration& after) {
    std::vector<Edit> edits;
    for (std::size_t index = 0; index < ValueCount; ++index) {
        const ValueEdit edit{
            index, {before.Value(index), before.AddressType(index)}, {after.Value(index), after.AddressType(index)}};
        if (edit.before != edit.after) edits.emplace_back(edit);
    }
    for (std::size_t sequence = 0; sequence < SequenceCount; ++sequence) {
        const DescriptionEdit edit{sequence, before.NodeDescription(sequence), after.NodeDescription(sequence)};
        if (edit.before != edit.after) edits.emplace_back(edit);
    }
    return edits;
}

void Store(Configuration& record, const Edit& edit) {
    if (const auto* description = std::get_if<DescriptionEdit>(&edit)) {
        record.SetNodeDescription(description->sequence, description->after);
        return;
    }
    const auto& value = std::get<ValueEdit>(edit);
    record.SetValue(value.index, value.after.value);
    record.SetAddressType(value.index, value.after.notation);
}

} // namespace vantrel
