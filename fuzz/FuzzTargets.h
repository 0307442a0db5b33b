// What is tried with any bytes: every reader of what others hand the program, each a target with a name. A target ends
// the process when something does not hold that must. Corpora of good and of once fatal inputs lie in `corpus/NAME/`.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>

namespace vantrel::fuzz {

using Input = std::span<const std::uint8_t>;

struct Target {
    std::string_view name;
    void (*take)(Input);
};

void TakeSetupFile(Input input);
void TakeImport(Input input);
void TakeJson(Input input);
void TakeCsv(Input input);
void TakeSettings(Input input); ///< Port settings and known boards.
void TakeDescriptions(Input input); ///< Description files, the user program's TRV and REV.
void TakeHelp(Input input);
void TakeEntries(Input input); ///< Addresses, entries, descriptions, faults of the simulated board.
void TakeCommandLine(Input input); ///< An argument a line.
void TakeLink(Input input); ///< What a board answers.
void TakeTelnet(Input input); ///< What a serial server sends, or its client: the size of a piece, then the bytes.

inline constexpr Target Targets[] = {
    {"setup", TakeSetupFile},
    {"import", TakeImport},
    {"json", TakeJson},
    {"csv", TakeCsv},
    {"help", TakeHelp},
    {"settings", TakeSettings},
    {"descriptions", TakeDescriptions},
    {"entries", TakeEntries},
    {"commands", TakeCommandLine},
    {"link", TakeLink},
    {"telnet", TakeTelnet},
};

/// Nothing for an unknown name.
inline const Target* FindTarget(std::string_view name) {
    for (const Target& target : Targets) {
        if (target.name == name) return &target;
    }
    return nullptr;
}

inline void Require(bool holds) {
    if (!holds) std::abort();
}

inline std::string TextOf(Input input) { return {input.begin(), input.end()}; }

} // namespace vantrel::fuzz
