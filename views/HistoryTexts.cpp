#include "views/HistoryTexts.h"

#include "link/StatusText.h"
#include "text/DelimitedText.h"
#include "text/NumberText.h"
#include "text/TimeText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <variant>

namespace vantrel {

namespace {

constexpr const char* ByteOrderMark = "\xEF\xBB\xBF";

std::string CodeText(std::optional<std::uint16_t> code) {
    return code ? StatusDisplay(std::to_string(*code)) : "not read clearly";
}

std::string TextOf(const SequenceChange& change) {
    const bool first = !change.before && !change.lookBefore;
    const std::string node = change.health == SequenceHealth::Disabled && change.code != DisabledCode ? ", node 0" : "";
    return CodeText(change.code) + node + (first ? "" : " (was " + CodeText(change.before) + ")");
}

std::string TextOf(const NotLookedAt& gap) { return "No sequence was looked at since " + MomentText(gap.since); }

std::string TextOf(const FaultChange& fault) {
    if (fault.code == 0) return "The board reports no fault any more";
    return "The board reports fault code " + HexText(static_cast<std::uint32_t>(fault.code), 2) + "H";
}

std::string TextOf(const AlarmChange& change) {
    return std::string(AlarmNames.at(change.alarm)) + (change.active ? ": active" : ": active no more");
}

std::string TextOf(LinkChange change) {
    switch (change) {
    case LinkChange::Online:
        return "ONLINE";
    case LinkChange::Offline:
        return "OFFLINE";
    case LinkChange::Reopened:
        return "The port was lost and opened again";
    case LinkChange::Lost:
        break;
    }
    return "The link to the board failed";
}

std::string TextOf(const TransferStep& transfer) {
    constexpr std::array<const char*, 5> ends{" begun", " complete", " cancelled", " failed",
                                              " ended, not all of its values reliable"};
    const bool upload = transfer.mode == TransferMode::UploadData;
    return (upload ? "Upload" : "Download") + std::string(ends.at(static_cast<std::size_t>(transfer.step)));
}

std::string StateText(const HistoryEntry& entry) {
    const auto* change = std::get_if<SequenceChange>(&entry.what);
    return change ? std::string(HealthName(change->health)) : std::string();
}

} // namespace

std::optional<std::size_t> SequenceOf(const HistoryEntry& entry) {
    const auto* change = std::get_if<SequenceChange>(&entry.what);
    return change ? std::optional(change->sequence) : std::nullopt;
}

bool Concerns(const HistoryEntry& entry, std::optional<std::size_t> sequence) {
    return !sequence || SequenceOf(entry) == sequence || std::holds_alternative<NotLookedAt>(entry.what) ||
           std::holds_alternative<LinkChange>(entry.what);
}

std::string KindText(const HistoryEntry& entry) {
    constexpr std::array kinds{"Sequence", "Not looked at", "Fault", "Alarm", "Link", "Transfer"};
    static_assert(kinds.size() == std::variant_size_v<Happening>);
    return kinds.at(entry.what.index());
}

std::string WhatText(const HistoryEntry& entry) {
    return std::visit([](const auto& what) { return TextOf(what); }, entry.what);
}

std::string LookBeforeText(const HistoryEntry& entry) {
    const auto* change = std::get_if<SequenceChange>(&entry.what);
    return change && change->lookBefore ? MomentText(*change->lookBefore) : std::string();
}

const std::vector<std::string>& HistoryHeadings() {
    static const std::vector<std::string> headings{"Time", "Sequence", "Kind", "State", "What", "Looked At Before"};
    return headings;
}

std::vector<std::string> HistoryCells(const HistoryEntry& entry) {
    const auto sequence = SequenceOf(entry);
    return {MomentText(entry.at), sequence ? std::to_string(*sequence) : "",
            KindText(entry),      StateText(entry),
            WhatText(entry),      LookBeforeText(entry)};
}

std::string HistoryCsv(const History& history, std::optional<std::size_t> sequence) {
    std::string text = ByteOrderMark + DelimitedLine(HistoryHeadings(), ',');
    const auto& entries = history.Entries();
    std::for_each(entries.rbegin(), entries.rend(), [&](const HistoryEntry& entry) {
        if (Concerns(entry, sequence)) text += DelimitedLine(HistoryCells(entry), ',');
    });
    if (history.Gone() == 0) return text;
    TextRow last(HistoryHeadings().size());
    last.at(4) = "older entries that were not kept: " + std::to_string(history.Gone());
    return text + DelimitedLine(last, ',');
}

} // namespace vantrel
