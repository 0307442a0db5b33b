// The command line: what there is to ask for, how it is written, and the help that says so.
#pragma once

#include "console/Commands.h"

#include <string>
#include <vector>

namespace vantrel {

/// A command line that has been understood, or one that is done with already (help, version, wrong usage).
struct CommandLine {
    const Command* command = nullptr; ///< Nothing: `ended` says how it ended.
    ExitCode ended = ExitCode::Done;
    Arguments arguments{};
};

/// Prints help to `host.out` when asked for, and what is wrong with the usage to `host.err`.
[[nodiscard]] CommandLine ReadCommandLine(const std::vector<std::string>& arguments, ConsoleHost& host);

} // namespace vantrel
