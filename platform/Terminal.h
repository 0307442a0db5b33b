// What the console asks of its host: is a person there, how wide is the line, has the person pressed Ctrl+C.
#pragma once

#include <atomic>
#include <string>
#include <vector>

namespace vantrel {

[[nodiscard]] bool StandardInputIsTerminal();
[[nodiscard]] bool StandardErrorIsTerminal();

/// Some hosts give a program with windows no terminal. From now on what it writes to its standard streams goes to the
/// terminal of the program that started it, unless they lead somewhere already. False when there is none: whoever
/// started it from the desktop sees only windows.
[[nodiscard]] bool JoinTerminal();

/// From now on an interrupt (Ctrl+C, a request to terminate, a closed terminal) sets this flag instead of ending the
/// process; a second one ends it as usual.
[[nodiscard]] const std::atomic<bool>& CatchInterrupts();

/// The arguments of the command line in UTF-8, program name first.
[[nodiscard]] std::vector<std::string> CommandLineArguments(int argc, char** argv);

} // namespace vantrel
