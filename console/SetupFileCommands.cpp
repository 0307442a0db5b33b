// The commands that need no board: new, show, import and export.
#include "console/Commands.h"
#include "console/RecordText.h"
#include "console/SetupFiles.h"
#include "document/DocumentFiles.h"
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

ExitCode Export(CommandContext& context) {
    const std::string& out = context.arguments.textFile;
    const std::filesystem::path file = PathFromUtf8(out);
    const bool json = HasExtension(file, ".json");
    if (!json && !HasExtension(file, ".csv")) {
        throw UsageError("\"" + out + "\": the extension says what is written, .json or .csv.");
    }
    if (!OpenSetupFile(context, OtherVersion::Note)) return ExitCode::Refused;
    const Configuration& record = context.program.document.CurrentConfiguration;
    return WriteOut(context, out, "OUT", json ? RecordJson(record) : RecordCsv(record));
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

const Command ImportCommand{
    "import", "Make a set-up file from a text file: older format (.vtl), .json or .csv",
    [](CommandOptions& options) {
        options.Place(
            "TEXTFILE", options.to.textFile,
            "The text file to read: .vtl, JSON as show --json writes it,\nor a table as a spreadsheet saves it (.csv)");
        TakeFileToWrite(options);
    },
    "  vantrelctl import samples/bottling-line.vtl plant.sdt\n"
    "  vantrelctl import plant.csv plant.sdt\n",
    Import};

const Command ExportCommand{"export", "Write a set-up file as JSON or as a table for a spreadsheet",
                            [](CommandOptions& options) {
                                options.File("The set-up file to read");
                                options.Place("OUT", options.to.textFile,
                                              "The file to write: .json holds all of the set-up, .csv its table");
                                options.Yes();
                            },
                            "  vantrelctl export plant.sdt plant.json\n"
                            "  vantrelctl export plant.sdt plant.csv\n",
                            Export};

} // namespace vantrel
