// Where a command's program folder is, and lines for the user.
#include "console/CommandContext.h"

#include "console/PrintableText.h"
#include "platform/SafeFile.h"

#include <filesystem>
#include <ostream>
#include <system_error>

namespace vantrel {

namespace {

ProgramFolder FolderFor(const Arguments& arguments) {
    if (!arguments.programFolder) return ProgramFolder::Find(std::nullopt);
    const std::filesystem::path folder = PathFromUtf8(*arguments.programFolder);
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error)) {
        throw UsageError("--program-folder: there is no folder \"" + *arguments.programFolder + "\".");
    }
    return ProgramFolder::Find(folder);
}

} // namespace

CommandContext::CommandContext(const Arguments& commandLine, ConsoleHost& consoleHost)
    : arguments(commandLine), host(consoleHost), program(FolderFor(commandLine), consoleHost.clock),
      progress(consoleHost.err, consoleHost.clock, consoleHost.drawsProgress),
      dialogs(consoleHost, progress, commandLine.yes) {
    program.InitDefaults();
}

void CommandContext::Say(const std::string& text) {
    progress.EndLine();
    host.err << PrintableText(text, Layout::Keep) << '\n' << std::flush;
}

ExitCode Refuse(CommandContext& context, const std::string& what) {
    context.Say(what);
    return ExitCode::Refused;
}

} // namespace vantrel
