#include "views/History.h"

#include <utility>

namespace vantrel {

void History::Add(const Happening& what) {
    entries_.push_back({clock_.LocalNow(), what});
    if (entries_.size() > MostEntries) entries_.pop_front();
    ++added_;
}

void History::NoteOpening(int opened) {
    if (std::exchange(opened_, opened) == opened) return;
    // In the middle: the user has plugged in again what was lost, after as long as that took.
    if (lastLook_) {
        NoteSilence();
        Add(LinkChange::Reopened);
    }
    records_ = {};
    lastLook_.reset();
    fault_ = 0;
    alarms_ = {};
}

void History::NoteNode(std::size_t sequence, std::optional<std::uint16_t> node) {
    SequenceRecord& record = records_.at(sequence);
    const bool wasUnknown = !std::exchange(record.node, node);
    if (!wasUnknown || node != std::uint16_t{0} || record.health != SequenceHealth::Failing) return;
    // It was taken for a running one, until now.
    record.health = SequenceHealth::Disabled;
    record.latest.back().health = record.health;
    Add(SequenceChange{sequence, record.code, record.code, record.health, record.lastLook});
    if (!record.lastError || record.lastError->at != record.since) return;
    --record.errors;
    record.lastError = record.errorBefore;
}

void History::ForgetNodes() {
    for (SequenceRecord& record : records_)
        record.node.reset();
}

void History::NoteSilence() {
    const Look now{clock_.Now(), clock_.LocalNow()};
    if (lastLook_ && now.at - lastLook_->at > LongestSilence) Add(NotLookedAt{lastLook_->local});
    lastLook_ = now;
}

void History::NoteStatus(std::size_t sequence, std::optional<std::uint16_t> code) {
    NoteSilence();
    SequenceRecord& record = records_.at(sequence);
    const SequenceHealth health = HealthOf(code, record.node);
    if (!record.since || code != record.code || health != record.health) NoteChange(sequence, code, health);
    const MonotonicTime now = clock_.Now();
    record.lastLook = clock_.LocalNow();
    lookedAt_.at(sequence) = now;
    if (code) ++record.looksByCode.at(SequenceRecord::PlaceOf(*code));
    if (health == SequenceHealth::Ok) record.lastOk = record.lastLook;
    record.latest.push_back({now, health});
    if (record.latest.size() > SequenceRecord::LatestLooks) record.latest.pop_front();
}

void History::NoteChange(std::size_t sequence, std::optional<std::uint16_t> code, SequenceHealth health) {
    SequenceRecord& record = records_.at(sequence);
    const auto at = clock_.LocalNow();
    Add(SequenceChange{sequence, record.code, code, health, record.lastLook});
    record.changeSeen = record.lastLook && clock_.Now() - lookedAt_.at(sequence) <= LongestRound;
    record.since = at;
    record.code = code;
    record.health = health;
    // What was not read clearly for a moment is no error of its own.
    if (!code || std::exchange(record.clearCode, code) == code || health != SequenceHealth::Failing) return;
    record.errorBefore = std::exchange(record.lastError, {{*code, at}});
    ++record.errors;
}

void History::NoteFault(int code) {
    if (std::exchange(fault_, code) != code) Add(FaultChange{code});
}

void History::NoteAlarms(const AlarmFlags& alarms) {
    for (std::size_t i = 0; i < AlarmCount; ++i) {
        if (std::exchange(alarms_.at(i), alarms.at(i)) != alarms.at(i)) Add(AlarmChange{i, alarms.at(i)});
    }
}

void History::NoteLink(LinkChange change) {
    NoteSilence(); // A box may have stood there for hours.
    Add(change);
    lastLook_.reset();
    if (change == LinkChange::Online || change == LinkChange::Reopened) return;
    for (SequenceRecord& record : records_) {
        record.code.reset();
        record.health = SequenceHealth::Unknown;
        record.since.reset();
    }
}

} // namespace vantrel
