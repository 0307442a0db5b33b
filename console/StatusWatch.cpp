#include "console/StatusWatch.h"

#include "console/ResultJson.h"
#include "link/StatusAdvice.h"
#include "link/StatusText.h"
#include "text/Padding.h"
#include "text/TimeText.h"
#include "views/HistoryTexts.h"
#include "views/ReadingPass.h"

#include <charconv>
#include <functional>
#include <ostream>
#include <vector>

namespace vantrel {

namespace {

std::optional<std::uint16_t> WordOf(const Reading& reading) {
    const auto number = reading.Number();
    return number ? std::optional(static_cast<std::uint16_t>(*number)) : std::nullopt;
}

std::string TimeJson(std::chrono::local_seconds at) { return DayText(at) + "T" + TimeOfDayText(at); }

Json EntryJson(const HistoryEntry& entry) {
    Json json{{"time", TimeJson(entry.at)}, {"kind", KindText(entry)}};
    const auto* change = std::get_if<SequenceChange>(&entry.what);
    if (!change) {
        json["what"] = WhatText(entry);
        return json;
    }
    json["sequence"] = change->sequence;
    json["state"] = HealthName(change->health);
    json["statusCode"] = ValueJson(change->code);
    json["status"] = change->code ? Json(StatusText(*change->code)) : Json(nullptr);
    json["statusCodeBefore"] = ValueJson(change->before);
    json["lookedAtBefore"] = change->lookBefore ? Json(TimeJson(*change->lookBefore)) : Json(nullptr);
    if (change->health == SequenceHealth::Failing) {
        json["cause"] = AdviceOn(*change->code).cause;
        json["remedy"] = AdviceOn(*change->code).remedy;
    }
    return json;
}

std::string EntryLine(const HistoryEntry& entry) {
    constexpr std::size_t widest = 2;
    const auto sequence = SequenceOf(entry);
    const std::string about = sequence ? "sequence " + PadLeft(std::to_string(*sequence), widest) + "  " : "";
    return MomentText(entry.at) + "  " + about + WhatText(entry) + "\n";
}

} // namespace

std::optional<MonotonicTime> WatchTime(std::string_view text) {
    int count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    const std::string_view unit = text.substr(static_cast<std::size_t>(end - text.data()));
    if (error != std::errc{} || count <= 0 || (unit != "s" && unit != "m" && unit != "h")) return std::nullopt;
    const MonotonicTime one = unit == "s"   ? MonotonicTime(std::chrono::seconds(1))
                              : unit == "m" ? MonotonicTime(std::chrono::minutes(1))
                                            : MonotonicTime(std::chrono::hours(1));
    if (count > std::chrono::hours(1000) / one) return std::nullopt;
    return count * one;
}

StatusWatch::StatusWatch(CommandContext& context, LinkSession& session)
    : context_(context), session_(session), history_(context.host.clock) {
    const auto& wanted = context.arguments.watchFor;
    if (!wanted) return;
    time_ = WatchTime(*wanted);
    if (!time_) throw UsageError("--for: \"" + *wanted + "\" is no time. Write it as 90s, 10m or 8h.");
}

bool StatusWatch::TimeIsOver() const { return time_ && context_.host.clock.Now() - begun_ >= *time_; }

bool StatusWatch::MayRead() const { return !session_.Interrupted() && !session_.Failed() && !TimeIsOver(); }

void StatusWatch::ReadUnknownNodes() {
    std::vector<std::size_t> sequences;
    std::vector<std::string> addresses;
    for (std::size_t sequence = 0; sequence < nodes_.size(); ++sequence) {
        if (history_.Of(sequence).node) continue;
        sequences.push_back(sequence);
        addresses.push_back(nodes_.at(sequence));
    }
    if (sequences.empty()) return;
    const std::function<bool()> mayRead = [this] { return MayRead(); };
    const std::function<void(const JudgedReading&)> take = [&](const JudgedReading& judged) {
        history_.NoteNode(sequences.at(judged.tag), WordOf(judged.reading));
    };
    session_.Run(ReadInTurns(session_.Link(), session_.Turns(), addresses, mayRead, take));
}

void StatusWatch::ReadStatuses() {
    const std::function<bool()> mayRead = [this] { return MayRead(); };
    const std::function<void(const JudgedReading&)> take = [this](const JudgedReading& judged) {
        const auto code = WordOf(judged.reading);
        history_.NoteStatus(judged.tag, code);
        if (code) clear_.set(judged.tag);
        Print();
    };
    session_.Run(ReadInTurns(session_.Link(), session_.Turns(), {statuses_.begin(), statuses_.end()}, mayRead, take));
}

void StatusWatch::Print() {
    const auto& entries = history_.Entries();
    for (; printed_ < history_.Added(); ++printed_) {
        const HistoryEntry& entry = entries.at(printed_ - history_.Gone());
        const auto* change = std::get_if<SequenceChange>(&entry.what);
        if (change && change->health == SequenceHealth::Failing) failed_ = true;
        context_.host.out << (context_.arguments.json ? JsonLine(EntryJson(entry)) : EntryLine(entry)) << std::flush;
    }
}

ExitCode StatusWatch::Run() {
    begun_ = context_.host.clock.Now();
    std::optional<int> opened;
    while (MayRead()) {
        if (opened != session_.Link().Opened()) {
            opened = session_.Link().Opened();
            history_.NoteOpening(*opened);
            history_.NoteLink(LinkChange::Online);
            Print();
        }
        ReadUnknownNodes();
        ReadStatuses();
    }
    if (session_.Failed()) history_.NoteLink(LinkChange::Lost);
    Print();
    return End();
}

ExitCode StatusWatch::End() {
    if (session_.Failed()) return Refuse(context_, "The link to the board failed.");
    if (context_.arguments.check && failed_) return Refuse(context_, "At least one sequence failed meanwhile.");
    // Without a time an interrupt is the way to end.
    if (session_.Interrupted() && time_) return Refuse(context_, "Cancelled.");
    if (context_.arguments.check && !clear_.all()) {
        return Refuse(context_, "Some of this was not read reliably. Run the command again.");
    }
    return ExitCode::Done;
}

} // namespace vantrel
