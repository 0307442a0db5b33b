// The table of commands. What stands in it is all that the command line knows of them.
#pragma once

#include "console/CommandContext.h"
#include "console/ConsoleHost.h"

#include <span>
#include <string>

namespace CLI {
class App;
}

namespace vantrel {

struct Command {
    const char* name;
    const char* summary;
    void (*addOptions)(CLI::App&, Arguments&);
    std::string (*furtherHelp)();
    const char* examples;
    ExitCode (*run)(CommandContext&);
};

/// In the order of the help.
[[nodiscard]] std::span<const Command> Commands();

} // namespace vantrel
