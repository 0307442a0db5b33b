// The passes as the plain loops that they are, and the texts that they show.
#include "views/SequenceMonitor.h"

#include "document/ValueDisplay.h"
#include "link/TargetMap.h"
#include "text/NumberText.h"

#include <algorithm>
#include <cmath>

namespace vantrel {

namespace {

std::optional<double> NumberOf(std::string_view text) {
    const double number = LeadingNumber(text);
    return IsNumeric(text) && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

} // namespace

bool SequenceMonitor::MayRead() const { return display_.Active() && link_.OnlineMode() && !link_.LinkFailed(); }

std::optional<std::string> SequenceMonitor::Read(const std::string& address) {
    const std::string text = link_.RSRead(address);
    return MayRead() && !link_.ReadFailed() ? std::optional(text) : std::nullopt;
}

Task SequenceMonitor::RefreshSettings(std::int16_t settingsBase) {
    const std::string description = record_.NodeDescription(Sequence());
    display_.ShowDescription(description.empty() ? "-" : description);
    for (const FieldDescription& one : FieldTable()) {
        co_await turns_.Next();
        if (!MayRead()) co_return;
        const std::size_t index = static_cast<std::size_t>(settingsBase) + static_cast<std::size_t>(one.field);
        const auto text = Read(record_.TargetAddress(index));
        if (!MayRead()) co_return;
        // No later pass would replace a wrong value, or what stands there for another sequence.
        const bool reliable = text && !link_.SurplusFollows();
        ShowSetting(one.field, reliable ? SettingDisplay(one.field, *text, record_.AddressType(index)) : "-");
    }
}

void SequenceMonitor::ShowSetting(SequenceField field, const std::string& text) {
    constexpr int rows = 3;
    if (field == SequenceField::NodeNumber) {
        display_.ShowNodeNumber(text);
        return;
    }
    const int place = static_cast<int>(field) - static_cast<int>(SequenceField::SendWordCount);
    display_.ShowSetting(static_cast<SequenceDisplay::SettingsGrid>(place / rows), place % rows + 1, text);
}

Task SequenceMonitor::RefreshStatusAndData() {
    co_await turns_.Next();
    if (!MayRead()) co_return;
    if (const auto status = Read(StatusWordAddress(Sequence()))) display_.ShowStatus(StatusDisplay(*status));
    for (int row = 1; row <= DataWordCount; ++row) {
        for (const DataDirection column : {DataDirection::Send, DataDirection::Receive}) {
            co_await turns_.Next();
            if (!MayRead()) co_return;
            if (!display_.RowVisible(row)) break;
            if (const auto text = Read(DataWordAddress(Sequence(), column, row)))
                display_.ShowDataWord(row, column, *text);
        }
    }
}

std::string SettingDisplay(SequenceField field, const std::string& text, const std::string& type) {
    switch (field) {
    case SequenceField::SendFromTI:
    case SequenceField::ReceiveToTI:
        return type + text;
    case SequenceField::SendToNode:
    case SequenceField::ReceiveFromNode:
        if (type == "H" || type == "h") return DisplayValue(LeadingInteger(text).value_or(0), type);
        return "W" + text;
    default:
        return text;
    }
}

std::optional<std::int16_t> SequenceEntry(std::string_view text) {
    const auto number = NumberOf(text);
    if (!number || *number > HighestSequence) return std::nullopt;
    return static_cast<std::int16_t>(RoundHalfToEven(std::max(*number, 0.0)));
}

std::int16_t SteppedSequence(std::string_view text, int step, std::int16_t otherwise) {
    const double from = std::clamp<double>(NumberOf(text).value_or(otherwise), 0, HighestSequence);
    return static_cast<std::int16_t>(std::clamp<double>(RoundHalfToEven(from) + step, 0, HighestSequence));
}

} // namespace vantrel
