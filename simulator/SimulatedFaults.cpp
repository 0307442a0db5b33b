// The list of faults and how one is written on a command line.
#include "simulator/SimulatedFaults.h"

#include "simulator/DurationText.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace vantrel {

namespace {

template <typename Number> bool ReadNumber(std::string_view text, Number& number, int base) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    return error == std::errc{} && end == text.data() + text.size();
}

/// What of a fault its text has named already.
struct Named {
    bool once = false;
    bool bytes = false;
    bool measure = false;
};

bool ReadLateness(std::string_view text, SimulatedFault& fault) {
    const auto lateBy = ParseDuration(text);
    if (lateBy) fault.lateBy = *lateBy;
    return lateBy.has_value();
}

bool ReadBits(std::string_view text, SimulatedFault& fault) {
    return text.ends_with('H') && ReadNumber(text.substr(0, text.size() - 1), fault.flips, 16) && fault.flips != 0;
}

bool ReadMeasure(std::string_view text, SimulatedFault& fault) {
    if (fault.kind == FaultKind::LateAnswer) return ReadLateness(text, fault);
    const bool spoils = fault.kind == FaultKind::SpoiledAnswer || fault.kind == FaultKind::SpoiledByte;
    return spoils && ReadBits(text, fault);
}

/// One of ":once", "@BYTES" and the fault's own measure.
bool ReadSuffix(std::string_view text, SimulatedFault& fault, Named& named) {
    const std::string_view word = text.substr(1);
    if (text.front() == '@') return !std::exchange(named.bytes, true) && ReadNumber(word, fault.afterBytes, 10);
    if (word != "once") return !std::exchange(named.measure, true) && ReadMeasure(word, fault);
    fault.firstTimeOnly = true;
    return !std::exchange(named.once, true);
}

} // namespace

const std::array<FaultName, 11>& FaultNames() {
    static constexpr std::array<FaultName, 11> names{{
        {FaultKind::NoAnswer, "no-answer", "The board takes the byte, and its answer is lost."},
        {FaultKind::SpoiledAnswer, "spoiled-answer",
         "An answer comes back with wrong bits (all, or as :01H); the board goes on."},
        {FaultKind::SpoiledByte, "spoiled-byte", "A byte reaches the board with wrong bits (all, or as :01H)."},
        {FaultKind::WrongEcho, "wrong-echo", "An echo comes back inverted; the board drops a value not yet complete."},
        {FaultKind::WrongData, "wrong-data", "The data byte of a read comes back inverted."},
        {FaultKind::LateAnswer, "late-answer", "The board answers late, by 1.5 seconds or as in late-answer:600ms."},
        {FaultKind::LostByte, "lost-byte", "The board never sees the byte."},
        {FaultKind::DoubledByte, "doubled-byte", "The board sends its answer twice."},
        {FaultKind::HangUp, "hang-up", "The line goes dead."},
        {FaultKind::ShortedLines, "shorted-lines",
         "Transmit and receive touch: a byte comes back itself, and the board sees none."},
        {FaultKind::LatencyTimer, "latency-timer", "An adapter hands over what it has received every 16 ms only."},
    }};
    return names;
}

std::optional<SimulatedFault> ParseFault(std::string_view text) {
    const std::size_t nameEnds = std::min(text.find_first_of(":@"), text.size());
    const auto& names = FaultNames();
    const auto found = std::find_if(names.begin(), names.end(),
                                    [&](const FaultName& each) { return each.name == text.substr(0, nameEnds); });
    if (found == names.end()) return std::nullopt;
    SimulatedFault fault;
    fault.kind = found->kind;
    Named named;
    for (text.remove_prefix(nameEnds); !text.empty();) {
        const std::size_t end = std::min(text.find_first_of(":@", 1), text.size());
        if (!ReadSuffix(text.substr(0, end), fault, named)) return std::nullopt;
        text.remove_prefix(end);
    }
    return fault;
}

} // namespace vantrel
