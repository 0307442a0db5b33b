// The command report: the printed report as text, on standard output or in a file.
#include "app/ReportFile.h"
#include "console/Commands.h"
#include "console/RecordText.h"
#include "console/SetupFiles.h"
#include "console/TextPrinter.h"
#include "document/FileQuestions.h"
#include "platform/SafeFile.h"
#include "text/PathText.h"

#include <ostream>

namespace vantrel {

namespace {

namespace fs = std::filesystem;

bool Open(CommandContext& context, const std::string& name) {
    if (!MeansTextFile(PathFromUtf8(name))) return OpenSetupFile(context, OtherVersion::Note);
    OpenTextFile(context, name);
    return true;
}

std::string ReportText(const CommandContext& context) {
    TextPrinter printer;
    PrintWholeReport(context.program.document, printer, context.host.clock,
                     [](std::chrono::local_seconds now) { return DateText(OleDate::FromLocal(now)); });
    return printer.Document();
}

bool MayWrite(CommandContext& context, const fs::path& file) {
    // Under any name by which the set-up file is found the report would be taken for it from then on.
    for (const fs::path& meant : SetupFilesMeant(context.arguments.file)) {
        if (IsSameFile(file, meant)) {
            throw UsageError("--output: the report must not take the place of the file that it is about.");
        }
    }
    return MayReplace(file, context.dialogs);
}

ExitCode Report(CommandContext& context) {
    const Arguments& arguments = context.arguments;
    if (!Open(context, arguments.file)) return ExitCode::Refused;
    const std::string text = ReportText(context);
    if (!arguments.output || IsStandardStream(*arguments.output)) {
        context.host.out << text;
        return ExitCode::Done;
    }
    const fs::path file = PathFromUtf8(*arguments.output);
    if (!MayWrite(context, file)) return Refuse(context, "Nothing was written.");
    ReplaceFile(file, std::vector<std::uint8_t>(text.begin(), text.end()), OldTail::Drop, WarningsTo(context.dialogs));
    context.host.out << Utf8FromPath(fs::absolute(file)) << '\n';
    return ExitCode::Done;
}

} // namespace

const Command ReportCommand{"report", "Write the configuration report as text: 66 lines by 80 columns a page",
                            [](CommandOptions& options) {
                                options.File("The set-up file, or the text file (.vtl), to report on");
                                options.Option("--output", "OUT", options.to.output,
                                               "Write the report to this file instead of standard output");
                                options.Yes();
                            },
                            "  vantrelctl report plant.sdt --output plant.txt\n"
                            "  vantrelctl report plant.sdt | lp\n",
                            Report};

} // namespace vantrel
