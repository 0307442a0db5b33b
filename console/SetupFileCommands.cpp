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
    if (!NameSetupFile(context, context.arguments.file)) return Refuse(context, "Nothing was written.");
    SaveSetupFile(context);
    return ExitCode::Done;
}

std::string ImportSummary(const Configuration& record) {
    return "Imported: status stack " + DisplayValue(record, StatusStackIndex) + ", " +
           std::to_string(UsedSequences(record)) + " of " + std::to_string(SequenceCount) + " sequences.";
}

ExitCode New(CommandContext& context) {
    context.program.document.New();
    return SaveUnlessKept(context);
}

ExitCode Show(CommandContext& context) {
    const Arguments& arguments = context.arguments;
    if (!OpenSetupFile(context, OtherVersion::Note)) return ExitCode::Refused;
    const Document& document = context.program.document;
    const Configuration& record = document.CurrentConfiguration;
    context.host.out << (arguments.json
                             ? RecordJson(record)
                             : RecordTable(IsStandardStream(arguments.file) ? DocumentFile(context)
                                                                            : Utf8FromPath(document.FilePath),
                                           record, arguments.all ? Sequences::All : Sequences::Used));
    return ExitCode::Done;
}

ExitCode Import(CommandContext& context) {
    OpenTextFile(context, context.arguments.textFile);
    const ExitCode end = SaveUnlessKept(context);
    if (end == ExitCode::Done) context.Say(ImportSummary(context.program.document.CurrentConfiguration));
    return end;
}

void TakeFileToWrite(CommandOptions& options) {
    options.File("The set-up file to write");
    options.Yes();
}

} // namespace

const Command NewCommand{"new", "Write a set-up file with the defaults: status stack at V1, no sequence used",
                         TakeFileToWrite, "  vantrelctl new plant.sdt\n", New};

const Command ShowCommand{"show", "Show what is in a set-up file",
                          [](CommandOptions& options) {
                              options.File("The set-up file to show");
                              options.Flag("--all", options.to.all, "Show the unused sequences, too");
                              options.Json();
                          },
                          "  vantrelctl show plant.sdt\n"
                          "  vantrelctl show plant.sdt --json\n",
                          Show};

const Command ImportCommand{"import", "Make a set-up file from a text file of the older format (.vtl)",
                            [](CommandOptions& options) {
                                options.Place("TEXTFILE", options.to.textFile, "The text file (.vtl) to read");
                                TakeFileToWrite(options);
                            },
                            "  vantrelctl import samples/bottling-line.vtl plant.sdt\n", Import};

} // namespace vantrel
