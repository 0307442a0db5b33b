// The console twin as one call: command line in, exit code out. Everything it touches comes through the host.
#pragma once

#include "console/ConsoleHost.h"

#include <string>
#include <vector>

namespace vantrel {

/// Runs one command. `arguments`: UTF-8, without the program's name. Returns an ExitCode as the shell wants it; every
/// error has been told on `host.err` by then.
[[nodiscard]] int RunConsole(const std::vector<std::string>& arguments, ConsoleHost& host);

} // namespace vantrel
