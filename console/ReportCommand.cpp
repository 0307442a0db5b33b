// The command report: the printed report as text, on standard output or in a file.
#include "app/ReportFile.h"
#include "console/Commands.h"
#include "console/RecordText.h"
#include "console/SetupFiles.h"
#include "console/TextPrinter.h"
#include "text/PathText.h"

namespace vantrel {

namespace {

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

ExitCode Report(CommandContext& context) {
    const Arguments& arguments = context.arguments;
    if (!Open(context, arguments.file)) return ExitCode::Refused;
    return WriteOut(context, arguments.output.value_or("-"), "--output", ReportText(context));
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
