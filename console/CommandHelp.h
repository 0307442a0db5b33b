// The longer texts of the help. Knows the field table and the names of the simulated faults and habits only.
#pragma once

#include <string>

namespace vantrel {

/// Behind the list of commands.
[[nodiscard]] std::string OverallHelp();
/// At the end of every help.
[[nodiscard]] std::string ExitCodesHelp();

/// Every fault and every habit of the simulated board with its sentence; no line break at the end.
[[nodiscard]] std::string FaultList();
[[nodiscard]] std::string HabitList();

// What a command's own help says behind its options; empty or ending in a blank line.

[[nodiscard]] std::string NoFurtherHelp();
[[nodiscard]] std::string AddressHelp();
[[nodiscard]] std::string ReadHelp();
[[nodiscard]] std::string FieldHelp();
[[nodiscard]] std::string SimulateHelp();

} // namespace vantrel
