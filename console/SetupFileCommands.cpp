// The commands that need no board: new, show and import.
#include "console/Commands.h"
#include "console/RecordText.h"
#include "console/SetupFiles.h"
#include "document/RecordTables.h"
#include "document/ValueDisplay.h"
#include "text/PathText.h"

#include <ostream>

namespace vantrel {

namespace {

ExitCode SaveUnlessKept(CommandContext& context) {
    if (!NameSetupFile(context, context.arguments.file)) {
        context.Say("Nothing was written.");
        return ExitCode::Refused;
    }
    SaveSetupFile(context);
    return ExitCode::Done;
}

std::string ImportSummary(const Configuration& record) {
    return "Imported: status stack " + DisplayValue(record, StatusStackIndex) + ", " +
           std::to_string(UsedSequences(record)) + " of " + std::to_string(SequenceCount) + " sequences.";
}

} // namespace

ExitCode NewCommand(CommandContext& context) {
    context.program.document.New();
    return SaveUnlessKept(context);
}

ExitCode ShowCommand(CommandContext& context) {
    const Arguments& arguments = context.arguments;
    if (!OpenSetupFile(context, SetupFileNamed(arguments.file), OtherVersion::Note)) return ExitCode::Refused;
    const Document& document = context.program.document;
    const Configuration& record = document.CurrentConfiguration;
    context.host.out << (arguments.json
                             ? RecordJson(record)
                             : RecordTable(IsStandardStream(arguments.file) ? DocumentFile(context)
                                                                            : Utf8FromPath(document.FilePath),
                                           record, arguments.all ? Sequences::All : Sequences::Used));
    return ExitCode::Done;
}

ExitCode ImportCommand(CommandContext& context) {
    OpenTextFile(context, context.arguments.textFile);
    const ExitCode end = SaveUnlessKept(context);
    if (end == ExitCode::Done) context.Say(ImportSummary(context.program.document.CurrentConfiguration));
    return end;
}

} // namespace vantrel
