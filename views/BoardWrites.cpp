// What the target board view writes, and how it looks whether the board holds it.
#include "views/BoardMonitor.h"

#include <utility>

namespace vantrel {

namespace {

using namespace std::chrono_literals;
using std::chrono::local_seconds;

/// What the user must know of several writes: the worst of them.
WriteOutcome Worse(WriteOutcome one, WriteOutcome other) {
    const auto rank = [](WriteOutcome outcome) {
        switch (outcome) {
        case WriteOutcome::Written:
            return 0;
        case WriteOutcome::NotConfirmed:
            return 1;
        case WriteOutcome::Refused:
            return 2;
        case WriteOutcome::LinkFailed:
            break;
        }
        return 3;
    };
    return rank(one) < rank(other) ? other : one;
}

std::chrono::hh_mm_ss<std::chrono::seconds> TimeOf(local_seconds now) {
    return std::chrono::hh_mm_ss<std::chrono::seconds>(now - std::chrono::floor<std::chrono::days>(now));
}
std::chrono::year_month_day DateOf(local_seconds now) {
    return std::chrono::year_month_day(std::chrono::floor<std::chrono::days>(now));
}

int Hour(local_seconds now) { return static_cast<int>(TimeOf(now).hours().count()); }
int Minute(local_seconds now) { return static_cast<int>(TimeOf(now).minutes().count()); }
int Second(local_seconds now) { return static_cast<int>(TimeOf(now).seconds().count()); }
int Month(local_seconds now) { return static_cast<int>(static_cast<unsigned>(DateOf(now).month())); }
int Day(local_seconds now) { return static_cast<int>(static_cast<unsigned>(DateOf(now).day())); }
int Year(local_seconds now) {
    constexpr int century = 100;
    return static_cast<int>(DateOf(now).year()) % century;
}

/// Whether a clock that was set between two moments can show `number` at the later one.
bool CanShow(std::uint32_t number, int (*part)(local_seconds), local_seconds first, local_seconds last) {
    // The board's seconds need not begin with the computer's.
    for (local_seconds at = first; at <= last + 1s; at += 1s) {
        if (std::cmp_equal(number, part(at))) return true;
    }
    return false;
}

/// Whether field `field` holds `value`, written a moment ago. A clock may have gone on since.
bool Holds(std::size_t field, std::uint32_t number, const std::string& value) {
    const SetupField& limits = SetupFields.at(field);
    const std::string read = std::to_string(number);
    if (read == value) return true;
    const bool wraps = value == std::to_string(limits.highest) && std::cmp_equal(number, limits.lowest);
    return field >= FirstClockField && (wraps || (number > 0 && std::to_string(number - 1) == value));
}

} // namespace

TaskOf<WriteOutcome> BoardMonitor::ResetFaultCodes() {
    display_.EnableReset(false);
    RSComm::Line line = co_await link_.TakeLine();
    WriteOutcome outcome = WriteOutcome::Written;
    BeginWriting();
    for (const int byte : {LastCommErrorByte, CurrentCommErrorByte, LastFaultByte, CurrentFaultByte}) {
        if (LinkDown()) co_return WriteOutcome::LinkFailed;
        const WriteOutcome written = co_await Write(line, byte, "0");
        outcome = Worse(outcome, written);
    }
    co_return outcome;
}

TaskOf<WriteOutcome> BoardMonitor::SetToCurrTime() {
    const ClockParts parts{{{2, Hour}, {3, Minute}, {4, Second}}};
    return SetClock(parts);
}

TaskOf<WriteOutcome> BoardMonitor::SetToCurrDate() {
    const ClockParts parts{{{5, Month}, {6, Day}, {7, Year}}};
    return SetClock(parts);
}

TaskOf<WriteOutcome> BoardMonitor::SetClock(ClockParts parts) {
    RSComm::Line line = co_await link_.TakeLine();
    const local_seconds begun = clock_.LocalNow();
    WriteOutcome outcome = WriteOutcome::Written;
    BeginWriting();
    for (const ClockPart& part : parts) {
        if (LinkDown()) co_return WriteOutcome::LinkFailed;
        const std::string value = std::to_string(part.of(clock_.LocalNow()));
        const WriteOutcome written = co_await Write(line, SetupFields.at(part.field).byte, value);
        outcome = Worse(outcome, written);
    }
    for (const ClockPart& part : parts) {
        const Reading reading = co_await ReadBack(line, part.field);
        if (reading.HasLinkFailed()) co_return WriteOutcome::LinkFailed;
        const auto number = reading.Number();
        if (!number || !CanShow(*number, part.of, begun, clock_.LocalNow()))
            outcome = Worse(outcome, WriteOutcome::NotConfirmed);
    }
    co_return outcome;
}

TaskOf<WriteOutcome> BoardMonitor::WriteSetup(std::size_t field, std::string value) {
    RSComm::Line line = co_await link_.TakeLine();
    if (LinkDown()) co_return WriteOutcome::LinkFailed;
    BeginWriting();
    const WriteOutcome outcome = co_await Write(line, SetupFields.at(field).byte, value);
    const Reading reading = co_await ReadBack(line, field);
    if (reading.HasLinkFailed()) co_return WriteOutcome::LinkFailed;
    const auto number = reading.Number();
    if (number && Holds(field, *number, value)) co_return outcome;
    co_return Worse(outcome, WriteOutcome::NotConfirmed);
}

void BoardMonitor::BeginWriting() {
    clockComparison_.Forget();
    repeated_ = false;
    reached_.clear();
}

TaskOf<WriteOutcome> BoardMonitor::Write(RSComm::Line& line, int byte, std::string value) {
    const WriteResult written = co_await line.RSWrite(ByteAddress(byte), std::move(value));
    repeated_ = repeated_ || written.repeated;
    reached_.insert(reached_.end(), written.mayHaveReached.begin(), written.mayHaveReached.end());
    co_return written.outcome;
}

TaskOf<Reading> BoardMonitor::ReadBack(RSComm::Line& line, std::size_t field) {
    if (LinkDown()) co_return Reading::LinkFailed();
    const Reading reading = co_await line.Read(ByteAddress(SetupFields.at(field).byte));
    if (LinkDown()) co_return Reading::LinkFailed();
    if (display_.Active()) display_.ShowSetup(field, reading.TextOr(UnreadText));
    co_return reading;
}

} // namespace vantrel
