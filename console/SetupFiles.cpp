// Opening and writing set-up files, with the questions that belong to it.
#include "console/SetupFiles.h"

#include "console/TransferReport.h"
#include "document/FileQuestions.h"
#include "platform/SafeFile.h"

#include <ostream>
#include <system_error>

namespace vantrel {

namespace {

bool Exists(const std::filesystem::path& file) {
    std::error_code error;
    return std::filesystem::exists(file, error);
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
    ReadSetupFileByName(document, file, "If it is a text file of the older format, import makes a set-up file of it.");
    if (document.LoadedByOtherVersion()) {
        if (otherVersion == OtherVersion::Note) {
            context.Say("Note: " + QuotedPath(file) + " was saved by " + document.LoadedConfiguration.CreatorVersion +
                        ", this is " + document.ProgramVersion() + ".");
        } else if (context.dialogs.Show(OtherVersionQuestion(document)) != MessageAnswer::Yes) {
            return false;
        }
    }
    document.ApplyLoadedFile();
    WarnOfUnholdableValues(context);
    return true;
}

void OpenTextFile(CommandContext& context, const std::string& name) {
    ImportTextFileByName(context.program.document, PathFromUtf8(name), "Every other command takes it as it is.");
    WarnOfUnholdableValues(context);
}

bool NameSetupFile(CommandContext& context, const std::string& name) {
    Document& document = context.program.document;
    document.NameFile(PathFromUtf8(name));
    if (const auto note = OtherFolderNote(document)) context.Say("Note: " + *note);
    const std::filesystem::path target = document.SaveTarget();
    return !Exists(target) || context.dialogs.Show(ReplaceQuestion(target)) == MessageAnswer::Yes;
}

std::string DocumentFile(const CommandContext& context) { return QuotedPath(context.program.document.FilePath); }

void SaveSetupFile(CommandContext& context) {
    Document& document = context.program.document;
    document.Save([&](const std::string& warning) { context.Say("Warning: " + warning); });
    context.host.out << Utf8FromPath(document.FilePath) << '\n';
}

} // namespace vantrel
