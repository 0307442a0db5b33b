// The commands, one function each. A command asks, does, reports and says how it ended; RuntimeError leaves it for a
// file that could not be read or written, UsageError for an argument that cannot be.
#pragma once

#include "console/CommandContext.h"
#include "console/ConsoleHost.h"

namespace vantrel {

[[nodiscard]] ExitCode NewCommand(CommandContext& context);
[[nodiscard]] ExitCode ShowCommand(CommandContext& context);
[[nodiscard]] ExitCode ImportCommand(CommandContext& context);
[[nodiscard]] ExitCode SetCommand(CommandContext& context);
[[nodiscard]] ExitCode ReportCommand(CommandContext& context);
[[nodiscard]] ExitCode DownloadCommand(CommandContext& context);
[[nodiscard]] ExitCode UploadCommand(CommandContext& context);
[[nodiscard]] ExitCode CompareCommand(CommandContext& context);
[[nodiscard]] ExitCode ReadCommand(CommandContext& context);
[[nodiscard]] ExitCode WriteCommand(CommandContext& context);
[[nodiscard]] ExitCode StatusCommand(CommandContext& context);
[[nodiscard]] ExitCode BoardCommand(CommandContext& context);
[[nodiscard]] ExitCode PortsCommand(CommandContext& context);
[[nodiscard]] ExitCode SimulateCommand(CommandContext& context);
[[nodiscard]] ExitCode DemoCommand(CommandContext& context);

} // namespace vantrel
