// The passes over one sequence, and the texts that they show.
#include "views/SequenceMonitor.h"

#include "document/ValueDisplay.h"
#include "link/TargetMap.h"
#include "text/NumberText.h"
#include "views/ReadingPass.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>
#include <vector>

namespace vantrel {

namespace {

std::optional<double> NumberOf(std::string_view text) {
    const double number = LeadingNumber(text);
    return IsNumeric(text) && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/// The tags of the data pass; a row's words follow each other.
constexpr std::size_t StatusTag = 0;
constexpr std::size_t DataTag(const WordPlace& place) {
    return 2 * static_cast<std::size_t>(place.row) + (place.column == DataDirection::Send ? 0 : 1);
}

/// So many words in sight are read before those that are followed come again: a few times a second on the slowest line.
constexpr int ReadsBetweenFollowed = 8;

} // namespace

bool SequenceMonitor::Outdated() const {
    return shown_ && *shown_ != Shown{SettingsBaseOf(selectedSequence_), link_.Opened()};
}

void SequenceMonitor::BeginSettings(std::int16_t settingsBase) {
    const Shown now{settingsBase, link_.Opened()};
    if (std::exchange(shown_, now) == now) return;
    display_.ShowStatus(UnreadText);
    for (const FieldDescription& one : FieldTable()) {
        ShowSetting(one.field, UnreadText);
        ShowSetUp(one.field, Reading::Doubtful(std::nullopt));
    }
    display_.ClearData();
}

Task SequenceMonitor::RefreshSettings(std::int16_t settingsBase) {
    const std::string description = record_.NodeDescription(Sequence());
    display_.ShowDescription(description.empty() ? UnreadText : description);
    std::vector<std::string> addresses;
    for (std::size_t i = 0; i < FieldCount; ++i)
        addresses.push_back(record_.TargetAddress(static_cast<std::size_t>(settingsBase) + i));
    const std::function<bool()> mayRead = [this, settingsBase] {
        return MayRead() && SettingsBaseOf(selectedSequence_) == settingsBase;
    };
    const std::function<void(const JudgedReading&)> take = [this, settingsBase](const JudgedReading& judged) {
        const auto field = static_cast<SequenceField>(judged.tag);
        const std::string type = record_.AddressType(static_cast<std::size_t>(settingsBase) + judged.tag);
        ShowSetting(field, judged.reading.IsValue() ? SettingDisplay(field, judged.reading.TextOr(UnreadText), type)
                                                    : std::string(UnreadText));
        ShowSetUp(field, judged.reading);
    };
    bool complete = false;
    do {
        BeginSettings(settingsBase);
        complete = co_await ReadInTurns(link_, turns_, addresses, mayRead, take);
    } while (!complete && mayRead());
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

void SequenceMonitor::ShowSetUp(SequenceField field, const Reading& onBoard) {
    const std::size_t index = ValueIndex(Sequence(), field);
    const auto number = onBoard.Number();
    display_.ShowSetUp(field, DisplayValue(record_, index), number && !std::cmp_equal(*number, record_.Value(index)));
}

Task SequenceMonitor::RefreshStatusAndData() {
    const std::size_t sequence = Sequence();
    ReadingWalk walk(link_);
    co_await turns_.Next();
    if (!MayGoOn(walk, sequence)) co_return;
    (void)co_await walk.Read(StatusWordAddress(sequence), StatusTag);
    int sinceFollowed = ReadsBetweenFollowed;
    for (int row = 1; row <= DataWordCount; ++row) {
        for (const DataDirection column : {DataDirection::Send, DataDirection::Receive}) {
            std::vector<WordPlace> next;
            if (sinceFollowed >= ReadsBetweenFollowed) {
                next = display_.FollowedWords();
                sinceFollowed = 0;
            }
            // What nobody looks at takes no turn: others would count it as a read.
            if (display_.RowVisible(row)) {
                next.push_back({row, column});
                ++sinceFollowed;
            }
            if (next.empty()) continue;
            const bool goesOn = co_await ReadWords(walk, sequence, std::move(next));
            if (!goesOn) co_return;
        }
    }
    const auto last = co_await walk.End();
    if (last && MayGoOn(walk, sequence)) ShowWord(*last);
}

TaskOf<bool> SequenceMonitor::ReadWords(ReadingWalk& walk, std::size_t sequence, std::vector<WordPlace> places) {
    for (const WordPlace& place : places) {
        co_await turns_.Next();
        if (!MayGoOn(walk, sequence)) co_return false;
        const auto before = co_await walk.Read(DataWordAddress(sequence, place.column, place.row), DataTag(place));
        if (!MayGoOn(walk, sequence)) co_return false;
        if (before) ShowWord(*before);
    }
    co_return true;
}

void SequenceMonitor::ShowWord(const JudgedReading& judged) {
    const std::string text = judged.reading.TextOr(UnreadText);
    if (judged.tag == StatusTag) {
        display_.ShowStatus(judged.reading.IsValue() ? StatusDisplay(text) : text);
    } else {
        const auto column = judged.tag % 2 == 0 ? DataDirection::Send : DataDirection::Receive;
        display_.ShowDataWord(static_cast<int>(judged.tag / 2), column, text);
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
