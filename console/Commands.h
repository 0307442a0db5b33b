// The commands. Each stands whole in a file of its own kind: its name, what it takes, its help and what it does.
#pragma once

#include "console/CommandContext.h"
#include "console/CommandOptions.h"
#include "console/ConsoleHost.h"

#include <string>

namespace vantrel {

/// A command asks, does, reports and says how it ended; RuntimeError leaves it for a file that could not be read or
/// written, UsageError for an argument that cannot be.
struct Command {
    const char* name;
    const char* summary;
    void (*takes)(CommandOptions&);
    const char* examples;
    ExitCode (*run)(CommandContext&);
    std::string (*furtherHelp)() = nullptr; ///< Behind the options; ends in a blank line.
};

extern const Command NewCommand;
extern const Command ShowCommand;
extern const Command ReportCommand;
extern const Command ImportCommand;
extern const Command ExportCommand;
extern const Command CheckCommand;
extern const Command SetCommand;
extern const Command DownloadCommand;
extern const Command UploadCommand;
extern const Command BackupCommand;
extern const Command CompareCommand;
extern const Command ReadCommand;
extern const Command WriteCommand;
extern const Command StatusCommand;
extern const Command BoardCommand;
extern const Command PortsCommand;
extern const Command DoctorCommand;
extern const Command SupportCommand;
extern const Command SimulateCommand;
extern const Command DemoCommand;

} // namespace vantrel
