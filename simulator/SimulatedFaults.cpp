// The list of faults and how one is written on a command line.
#include "simulator/SimulatedFaults.h"

#include <algorithm>
#include <charconv>

namespace vantrel {

const std::array<FaultName, 7>& FaultNames() {
    static constexpr std::array<FaultName, 7> names{{
        {FaultKind::NoAnswer, "no-answer", "The board takes the byte and says nothing."},
        {FaultKind::WrongEcho, "wrong-echo", "The echo of an address or data byte comes back inverted."},
        {FaultKind::WrongData, "wrong-data", "The data byte of a read comes back inverted."},
        {FaultKind::LateAnswer, "late-answer", "The board answers 1.5 seconds late."},
        {FaultKind::LostByte, "lost-byte", "The board never sees the byte."},
        {FaultKind::DoubledByte, "doubled-byte", "The board sends its answer twice."},
        {FaultKind::HangUp, "hang-up", "The line goes dead."},
    }};
    return names;
}

std::optional<SimulatedFault> ParseFault(std::string_view text) {
    SimulatedFault fault;
    const auto takeOnce = [&] {
        constexpr std::string_view once = ":once";
        if (fault.firstTimeOnly || !text.ends_with(once)) return;
        fault.firstTimeOnly = true;
        text.remove_suffix(once.size());
    };
    takeOnce();
    if (const std::size_t at = text.find('@'); at != std::string_view::npos) {
        const std::string_view count = text.substr(at + 1);
        const auto [end, error] = std::from_chars(count.data(), count.data() + count.size(), fault.afterBytes);
        if (error != std::errc{} || end != count.data() + count.size()) return std::nullopt;
        text = text.substr(0, at);
    }
    takeOnce();
    const auto& names = FaultNames();
    const auto named =
        std::find_if(names.begin(), names.end(), [&](const FaultName& each) { return each.name == text; });
    if (named == names.end()) return std::nullopt;
    fault.kind = named->kind;
    return fault;
}

} // namespace vantrel
