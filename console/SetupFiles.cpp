// Opening and writing set-up files, with the questions that belong to it.
#include "console/SetupFiles.h"

#include "console/TransferReport.h"
#include "document/SetupFile.h"
#include "document/TextImport.h"
#include "platform/SafeFile.h"

#include <ostream>
#include <system_error>

namespace vantrel {

namespace {

bool Exists(const std::filesystem::path& file) {
    std::error_code error;
    return std::filesystem::exists(file, error);
}

std::string Quoted(const std::filesystem::path& file) { return "\"" + Utf8FromPath(file) + "\""; }

RuntimeError WithFile(const std::filesystem::path& file, const RuntimeError& error, const std::string& advice) {
    return {static_cast<ErrorNumber>(error.Number()), Quoted(file) + ": " + error.Description() + advice};
}

bool IsSetupFile(const std::filesystem::path& file) {
    const std::vector<std::uint8_t> bytes = ReadWholeFile(file);
    try {
        return !ParseSetupFile(bytes).Values.empty();
    } catch (const BadSetupFile&) {
        return false;
    }
}

void WarnOfUnholdableValues(CommandContext& context) {
    const Configuration& record = context.program.document.CurrentConfiguration;
    for (const std::size_t index : ValuesNoWordCanHold(record)) {
        context.Say("Warning: " + ValueName(index) + " is " + std::to_string(record.Value(index)) +
                    ", which the board cannot hold (0 to 65535).");
    }
}

} // namespace

std::filesystem::path SetupFileNamed(const std::string& name) {
    const std::filesystem::path file = PathFromUtf8(name);
    const std::filesystem::path extended = PathFromUtf8(name + ".sdt");
    return !Exists(file) && Exists(extended) ? extended : file;
}

bool OpenSetupFile(CommandContext& context, const std::filesystem::path& file, OtherVersion otherVersion) {
    Document& document = context.program.document;
    try {
        document.ReadSetupFile(file);
    } catch (const BadSetupFile& error) {
        throw WithFile(file, error, "\nIf it is a text file of the older format, import makes a set-up file of it.");
    }
    if (document.LoadedByOtherVersion()) {
        if (otherVersion == OtherVersion::Note) {
            context.Say("Note: " + Quoted(file) + " was saved by " + document.LoadedConfiguration.CreatorVersion +
                        ", this is " + document.ProgramVersion() + ".");
        } else if (context.dialogs.Show({.title = "ANCNF",
                                         .text = document.OtherVersionText(),
                                         .icon = MessageIcon::Information,
                                         .buttons = MessageButtons::YesNoCancel}) != MessageAnswer::Yes) {
            return false;
        }
    }
    document.ApplyLoadedFile();
    WarnOfUnholdableValues(context);
    return true;
}

void OpenTextFile(CommandContext& context, const std::string& name) {
    const std::filesystem::path file = PathFromUtf8(name);
    if (IsSetupFile(file)) {
        throw RuntimeError(ErrorNumber::BadFileFormat,
                           Quoted(file) + " is a set-up file already. Every other command takes it as it is.");
    }
    try {
        context.program.document.ImportTextFile(file);
    } catch (const BadImportFile& error) {
        throw WithFile(file, error, "");
    }
    WarnOfUnholdableValues(context);
}

bool NameSetupFile(CommandContext& context, const std::string& name) {
    Document& document = context.program.document;
    document.NameFile(PathFromUtf8(name));
    const std::filesystem::path target = document.SaveTarget();
    if (target.parent_path() != document.FilePath.parent_path()) {
        context.Say("Note: the extension .sdt takes the place of everything behind the last point, which is in a "
                    "folder's name here: the file is " +
                    Quoted(target) + ".");
    }
    if (!Exists(target)) return true;
    return context.dialogs.Show({.title = "Save",
                                 .text = Quoted(target) + " is there already.\nDo you want to replace what it holds?",
                                 .icon = MessageIcon::Question,
                                 .buttons = MessageButtons::YesNo}) == MessageAnswer::Yes;
}

std::string DocumentFile(const CommandContext& context) { return Quoted(context.program.document.FilePath); }

void SaveSetupFile(CommandContext& context) {
    Document& document = context.program.document;
    document.Save([&](const std::string& warning) { context.Say("Warning: " + warning); });
    context.host.out << Utf8FromPath(document.FilePath) << '\n';
}

} // namespace vantrel
