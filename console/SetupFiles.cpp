// Opening and writing set-up files, with the questions that belong to it.
#include "console/SetupFiles.h"

#include "document/FileQuestions.h"
#include "document/SetupFile.h"
#include "platform/SafeFile.h"
#include "text/PathText.h"

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <system_error>

namespace vantrel {

namespace {

constexpr const char* SetupExtension = ".sdt";
constexpr const char* StandardOutput = "standard output";
constexpr const char* TextAdvice = "If it is a text file of the older format, import makes a set-up file of it.";
constexpr const char* SetupAdvice = "Every other command takes it as it is.";

bool Exists(const std::filesystem::path& file) {
    std::error_code error;
    return std::filesystem::exists(file, error);
}

/// Only the file's own name counts here, whatever points its folders have.
std::string ForcedFileName(const std::filesystem::path& file) {
    return ForceSetupExtension(Utf8FromPath(file.filename()));
}

} // namespace

std::vector<std::filesystem::path> SetupFilesMeant(const std::string& name) {
    if (name.empty() || IsStandardStream(name)) return {};
    const std::filesystem::path file = PathFromUtf8(name);
    return {file, PathFromUtf8(name + SetupExtension), file.parent_path() / ForcedFileName(file)};
}

std::filesystem::path SetupFileNamed(const std::string& name) {
    const std::vector<std::filesystem::path> meant = SetupFilesMeant(name);
    const auto found = std::find_if(meant.begin(), meant.end(), Exists);
    return found == meant.end() ? PathFromUtf8(name) : *found;
}

bool IsSameFile(const std::filesystem::path& one, const std::filesystem::path& other) {
    std::error_code error;
    if (std::filesystem::equivalent(one, other, error)) return true;
    const auto full = [&](const std::filesystem::path& path) {
        return std::filesystem::weakly_canonical(std::filesystem::absolute(path, error), error);
    };
    return full(one) == full(other);
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
    ReadSetupFileByName(document, file, TextAdvice, &context.host.in);
    if (otherVersion == OtherVersion::Note) {
        context.SayIf(OtherVersionNote(document, DocumentFile(context)));
    } else if (!AcceptsLoadedVersion(document, context.dialogs)) {
        return false;
    }
    document.ApplyLoadedFile();
    NameUnholdableValues(document, context.dialogs);
    return true;
}

bool OpenSetupFile(CommandContext& context, OtherVersion otherVersion) {
    return OpenSetupFile(context, SetupFileNamed(context.arguments.file), otherVersion);
}

void OpenTextFile(CommandContext& context, const std::string& name) {
    Document& document = context.program.document;
    ImportTextFileByName(document, PathFromUtf8(name), SetupAdvice, &context.host.in);
    NameUnholdableValues(document, context.dialogs);
}

bool NameSetupFile(CommandContext& context, const std::string& name) {
    if (IsStandardStream(name) && context.host.outIsTerminal) {
        throw UsageError("A set-up file is no text for a terminal. Lead standard output into a file, or name one.");
    }
    if (IsStandardStream(name)) return true;
    Document& document = context.program.document;
    RequireFilePart(name);
    document.NameFile(PathFromUtf8(name));
    return AcceptsTarget(document, {}, context.dialogs);
}

std::string DocumentFile(const CommandContext& context) {
    const std::filesystem::path& file = context.program.document.FilePath;
    if (!IsStandardStream(context.arguments.file)) return QuotedPath(file);
    return file.filename() == StandardInput ? StandardInput : StandardOutput;
}

void SaveSetupFile(CommandContext& context) {
    Document& document = context.program.document;
    if (!IsStandardStream(context.arguments.file)) {
        document.Save(WarningsTo(context.dialogs));
        context.host.out << Utf8FromPath(document.FilePath) << '\n';
        return;
    }
    const std::vector<std::uint8_t> bytes = SetupFileBytes(document.RecordToSave());
    context.host.out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

ExitCode WriteOut(CommandContext& context, const std::string& name, const std::string& option,
                  const std::string& text) {
    if (IsStandardStream(name)) {
        context.host.out << text;
        return ExitCode::Done;
    }
    const std::filesystem::path file = PathFromUtf8(name);
    // Under any name by which the set-up file is found the result would be taken for it from then on.
    for (const std::filesystem::path& meant : SetupFilesMeant(context.arguments.file)) {
        if (IsSameFile(file, meant)) {
            throw UsageError(option + ": the result must not take the place of the file that it is made of.");
        }
    }
    if (Exists(file) && context.dialogs.Show(ReplaceQuestion(file)) != MessageAnswer::Yes) {
        return Refuse(context, "Nothing was written.");
    }
    ReplaceFile(file, std::vector<std::uint8_t>(text.begin(), text.end()), OldTail::Drop,
                [&](const std::string& warning) { context.Say("Warning: " + warning); });
    context.host.out << Utf8FromPath(std::filesystem::absolute(file)) << '\n';
    return ExitCode::Done;
}

} // namespace vantrel
