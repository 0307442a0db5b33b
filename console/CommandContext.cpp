// Where a command's program folder is, and lines for the user.
#include "console/CommandContext.h"

#include "document/FieldTable.h"
#include "text/NumberText.h"
#include "text/PathText.h"
#include "text/PrintableText.h"

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
    program.document.FileNamedBy = NamesFrom::User;
}

void CommandContext::Say(const std::string& text) {
    progress.EndLine();
    host.err << PrintableText(text, Layout::Keep) << '\n' << std::flush;
}

std::size_t SequenceNumber(const std::string& text) {
    constexpr auto highest = static_cast<std::int32_t>(SequenceCount) - 1;
    const auto number = WholeNumber(text);
    if (!number || *number < 0 || *number > highest) {
        throw UsageError("There is no sequence \"" + text + "\". Sequence numbers go from 0 to " +
                         std::to_string(highest) + ".");
    }
    return static_cast<std::size_t>(*number);
}

ExitCode Refuse(CommandContext& context, const std::string& what) {
    context.Say(what);
    return ExitCode::Refused;
}

} // namespace vantrel
