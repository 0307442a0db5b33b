// What the console asks of its host: is a person there, how wide is the line, has the person pressed Ctrl+C.
#pragma once

#include <atomic>
#include <string>
#include <vector>

namespace vantrel {

[[nodiscard]] bool StandardInputIsTerminal();
[[nodiscard]] bool StandardErrorIsTerminal();

/// From now on an interrupt (Ctrl+C, a request to terminate, a closed terminal) sets this flag instead of ending the
/// process; a second one ends it as usual.
[[nodiscard]] const std::atomic<bool>& CatchInterrupts();

/// The arguments of the command line in UTF-8, program name first.
[[nodiscard]] std::vector<std::string> CommandLineArguments(int argc, char** argv);

} // namespace vantrel
