// What every command works with: what was asked for, the host, the program's state, and the ways to talk to the user.
#pragma once

#include "app/Program.h"
#include "console/ConsoleDialogs.h"
#include "console/ConsoleHost.h"
#include "console/ProgressBar.h"
#include "platform/UsageError.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vantrel {

/// The value that belongs to no sequence, by its name on the console.
inline constexpr const char* StatusStackField = "StatusStackAddress";

/// The command line, taken apart. Each command reads what it has options for.
struct Arguments {
    std::string file;
    std::string textFile;
    std::optional<std::string> otherFile;
    std::optional<std::string> output;
    std::vector<std::string> addresses;
    std::vector<std::string> added; ///< Files that belong to a report.
    std::string address;
    std::string value;
    std::string port;
    std::optional<std::string> speed;
    std::optional<std::string> trace;
    bool decode = false; ///< The trace tells what its bytes mean.
    std::optional<std::string> programFolder;
    bool verify = false;
    bool changes = false; ///< Only what differs.
    bool json = false;
    bool all = false;
    bool yes = false;
    bool resetFaults = false;
    bool setClock = false;
    bool watch = false;
    std::optional<std::string> watchFor; ///< "10m"
    bool check = false; ///< A failing sequence ends the command with 1.
    std::optional<std::string> networkAddress;
    std::optional<std::string> sequence;
    std::optional<std::string> field;
    std::optional<std::string> entry; ///< What to store there.
    std::optional<std::string> link;
    std::optional<std::string> listen;
    int lineSpeed = 9600;
    std::vector<std::string> faults;
    std::vector<std::string> habits;
};

struct CommandContext {
    /// Throws UsageError when the named program folder is none.
    CommandContext(const Arguments& commandLine, ConsoleHost& consoleHost);

    const Arguments& arguments;
    ConsoleHost& host;
    Program program;
    ProgressBar progress;
    ConsoleDialogs dialogs;

    /// One line for the user that is no result.
    void Say(const std::string& text);
    /// The same, unless there is nothing to say.
    void SayIf(const std::string& text) {
        if (!text.empty()) Say(text);
    }
};

/// The sequence (0..30) that a text of the command line names. Throws UsageError when it is none.
[[nodiscard]] std::size_t SequenceNumber(const std::string& text);

/// Says what did not happen; the command then ends so.
[[nodiscard]] ExitCode Refuse(CommandContext& context, const std::string& what);

} // namespace vantrel
