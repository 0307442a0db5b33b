// The command support: one file for the maintainers, of which everything is named before it is written.
#include "app/SupportReport.h"
#include "console/Commands.h"
#include "console/SetupFiles.h"
#include "document/FileQuestions.h"
#include "platform/SafeFile.h"
#include "text/PathText.h"

#include <ostream>

namespace vantrel {

namespace {

MessageBox WriteQuestion(const std::filesystem::path& file) {
    return {.title = "Report for Support",
            .text = "All of this, and nothing else, goes into " + QuotedPath(file) + ". Write it?",
            .icon = MessageIcon::Question,
            .buttons = MessageButtons::YesNo};
}

std::filesystem::path ArchiveNamed(const std::string& name) {
    std::filesystem::path file = PathFromUtf8(name);
    if (!HasExtension(file, ".zip")) file += ".zip";
    return file;
}

SupportSources SourcesOf(const Arguments& arguments) {
    SupportSources sources{.program = "vantrelctl", .withSetup = arguments.otherFile.has_value()};
    for (const std::string& file : arguments.added)
        sources.files.push_back(PathFromUtf8(file));
    return sources;
}

ExitCode Support(CommandContext& context) {
    const Arguments& arguments = context.arguments;
    const std::filesystem::path file = ArchiveNamed(arguments.file);
    if (arguments.otherFile && !OpenSetupFile(context, SetupFileNamed(*arguments.otherFile), OtherVersion::Note))
        return ExitCode::Refused;
    const SupportReport report(context.program, SourcesOf(arguments), context.host.clock.LocalNow());
    context.host.err << report.ListText();
    if (context.dialogs.Show(WriteQuestion(file)) != MessageAnswer::Yes || !MayReplace(file, context.dialogs))
        return Refuse(context, "Nothing was written.");
    ReplaceFile(file, report.Archive(), OldTail::Drop,
                [&](const std::string& warning) { context.Say("Warning: " + warning); });
    context.host.out << Utf8FromPath(std::filesystem::absolute(file)) << '\n';
    // A file that was named and is not in it is not what was asked for.
    return report.LeftOut().empty() ? ExitCode::Done : ExitCode::FileError;
}

} // namespace

const Command SupportCommand{
    "support",
    "Put versions, settings, a set-up and what else is named into one file for the maintainers",
    [](CommandOptions& options) {
        options.Place("OUT", options.to.file, "The zip file to write");
        options.Place("FILE", options.to.otherFile, "The set-up file that the trouble is with");
        options.Option("--add", "FILE", options.to.added,
                       "A file that belongs to it, a trace or an event log; may be given\nmore than once");
        options.Yes();
    },
    "  vantrelctl support report.zip plant.sdt --add line.trace\n",
    Support,
    [] {
        return std::string("Everything that goes in is listed first, with its size; nothing else goes in.\n"
                           "Nothing is sent anywhere.\n\n");
    }};

} // namespace vantrel
