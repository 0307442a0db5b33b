// The command report: the printed report as text, on standard output or in a file.
#include "app/ReportFile.h"
#include "console/Commands.h"
#include "console/SetupFiles.h"
#include "console/TextPrinter.h"
#include "document/DocumentFiles.h"
#include "document/FileQuestions.h"
#include "platform/SafeFile.h"
#include "platform/TurnQueue.h"
#include "report/Report.h"
#include "text/PathText.h"

#include <algorithm>
#include <ostream>
#include <system_error>

namespace vantrel {

namespace {

namespace fs = std::filesystem;

bool Open(CommandContext& context, const std::string& name) {
    if (!MeansTextFile(PathFromUtf8(name))) return OpenSetupFile(context, SetupFileNamed(name), OtherVersion::Note);
    OpenTextFile(context, name);
    return true;
}

/// As everything on the console writes it, whatever the host's own way is.
std::string DateText(std::chrono::local_seconds time) {
    std::string text = IsoText(OleDate::FromLocal(time));
    std::replace(text.begin(), text.end(), 'T', ' ');
    return text;
}

std::string ReportText(const CommandContext& context) {
    const Document& document = context.program.document;
    TextPrinter printer;
    TurnQueue turns(context.host.clock);
    Task task = PrintReport({.record = document.CurrentConfiguration,
                             .name = document.BracketName,
                             .generalDate = [&] { return DateText(context.host.clock.LocalNow()); }},
                            printer, turns);
    turns.RunToEnd(task);
    return printer.Document();
}

bool MayWrite(CommandContext& context, const fs::path& file) {
    std::error_code error;
    if (!fs::exists(file, error)) return true;
    if (fs::equivalent(file, context.program.document.FilePath, error)) {
        throw UsageError("--output: the report must not take the place of the file that it is about.");
    }
    return context.dialogs.Show(ReplaceQuestion(file)) == MessageAnswer::Yes;
}

} // namespace

ExitCode ReportCommand(CommandContext& context) {
    const Arguments& arguments = context.arguments;
    if (!Open(context, arguments.file)) return ExitCode::Refused;
    const std::string text = ReportText(context);
    if (!arguments.output) {
        context.host.out << text;
        return ExitCode::Done;
    }
    const fs::path file = PathFromUtf8(*arguments.output);
    if (!MayWrite(context, file)) return Refuse(context, "Nothing was written.");
    ReplaceFile(file, std::vector<std::uint8_t>(text.begin(), text.end()), OldTail::Drop,
                [&](const std::string& warning) { context.Say("Warning: " + warning); });
    context.host.out << Utf8FromPath(fs::absolute(file)) << '\n';
    return ExitCode::Done;
}

} // namespace vantrel
