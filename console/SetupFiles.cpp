// Opening and writing set-up files, with the questions that belong to it.
#include "console/SetupFiles.h"

#include "console/TransferReport.h"
#include "document/DocumentFiles.h"
#include "document/FileQuestions.h"
#include "text/PathText.h"

#include <algorithm>
#include <ostream>
#include <system_error>

namespace vantrel {

namespace {

constexpr const char* SetupExtension = ".sdt";

bool Exists(const std::filesystem::path& file) {
    std::error_code error;
    return std::filesystem::exists(file, error);
}

/// Only the file's own name counts here, whatever points its folders have.
std::string ForcedFileName(const std::filesystem::path& file) {
    return ForceSetupExtension(Utf8FromPath(file.filename()));
}

void WarnOfUnholdableValues(CommandContext& context) {
    const Configuration& record = context.program.document.CurrentConfiguration;
    for (const std::size_t index : ValuesNoWordCanHold(record)) {
        context.Say("Warning: " + ValueName(index) + " is " + std::to_string(record.Value(index)) +
                    ", which the board cannot hold (0 to 65535).");
    }
}

} // namespace

std::vector<std::filesystem::path> SetupFilesMeant(const std::string& name) {
    if (name.empty()) return {};
    const std::filesystem::path file = PathFromUtf8(name);
    return {file, PathFromUtf8(name + SetupExtension), file.parent_path() / ForcedFileName(file)};
}

std::filesystem::path SetupFileNamed(const std::string& name) {
    const std::vector<std::filesystem::path> meant = SetupFilesMeant(name);
    const auto found = std::find_if(meant.begin(), meant.end(), Exists);
    return found == meant.end() ? PathFromUtf8(name) : *found;
}

void RequireFilePart(const std::string& name) {
    const std::filesystem::path file = PathFromUtf8(name);
    const std::string forced = ForcedFileName(file);
    if (forced == SetupExtension || file.filename() == "..") {
        throw UsageError("\"" + name + "\" has no file name in it.");
    }
}

bool OpenSetupFile(CommandContext& context, const std::filesystem::path& file, OtherVersion otherVersion) {
    Document& document = context.program.document;
    ReadSetupFileByName(document, file, "If it is a text file of the older format, import makes a set-up file of it.");
    if (document.LoadedByOtherVersion()) {
        if (otherVersion == OtherVersion::Note) {
            context.Say("Note: " + QuotedPath(file) + " was saved by " + document.LoadedVersion() + ", this is " +
                        document.ProgramVersion() + ".");
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
    RequireFilePart(name);
    document.NameFile(PathFromUtf8(name));
    const std::filesystem::path target = document.SaveTarget();
    if (document.FilePath.has_extension() && document.FilePath != target) {
        context.Say("Note: the extension is .sdt always, so the file is " + QuotedPath(target) + ".");
    }
    return !Exists(target) || context.dialogs.Show(ReplaceQuestion(target)) == MessageAnswer::Yes;
}

std::string DocumentFile(const CommandContext& context) { return QuotedPath(context.program.document.FilePath); }

void SaveSetupFile(CommandContext& context) {
    Document& document = context.program.document;
    document.Save([&](const std::string& warning) { context.Say("Warning: " + warning); });
    context.host.out << Utf8FromPath(document.FilePath) << '\n';
}

} // namespace vantrel
