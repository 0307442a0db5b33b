// Questions and errors with the file's name in them. Shows nothing itself.
#include "document/FileQuestions.h"

#include "document/SetupFile.h"
#include "document/TextImport.h"
#include "platform/SafeFile.h"

#include <cstdint>
#include <vector>

namespace vantrel {

namespace {

RuntimeError Named(const std::filesystem::path& path, const RuntimeError& error, const std::string& advice) {
    return {static_cast<ErrorNumber>(error.Number()), QuotedPath(path) + ": " + error.Description() + advice};
}

bool IsSetupFile(const std::filesystem::path& path) {
    const std::vector<std::uint8_t> bytes = ReadWholeFile(path);
    try {
        return !ParseSetupFile(bytes).Values.empty();
    } catch (const BadSetupFile&) {
        return false;
    }
}

} // namespace

std::string QuotedPath(const std::filesystem::path& path) { return "\"" + Utf8FromPath(path) + "\""; }

void ReadSetupFileByName(Document& document, const std::filesystem::path& path, const std::string& advice) {
    try {
        document.ReadSetupFile(path);
    } catch (const BadSetupFile& error) {
        throw Named(path, error, "\n" + advice);
    }
}

void ImportTextFileByName(Document& document, const std::filesystem::path& path, const std::string& advice) {
    if (IsSetupFile(path)) {
        throw RuntimeError(ErrorNumber::BadFileFormat, QuotedPath(path) + " is a set-up file already. " + advice);
    }
    try {
        document.ImportTextFile(path);
    } catch (const BadImportFile& error) {
        throw Named(path, error, "");
    }
}

MessageBox OtherVersionQuestion(const Document& document) {
    return {.title = "ANCNF",
            .text = document.OtherVersionText(),
            .icon = MessageIcon::Information,
            .buttons = MessageButtons::YesNoCancel};
}

MessageBox ReplaceQuestion(const std::filesystem::path& file) {
    return {.title = "Save",
            .text = QuotedPath(file) + " is there already.\nDo you want to replace what it holds?",
            .icon = MessageIcon::Question,
            .buttons = MessageButtons::YesNo};
}

std::optional<std::string> OtherFolderNote(const Document& document) {
    const std::filesystem::path target = document.SaveTarget();
    if (target.parent_path() == document.FilePath.parent_path()) return std::nullopt;
    return "The extension .sdt takes the place of everything behind the last point, which is in a folder's name here: "
           "the file is " +
           QuotedPath(target) + ".";
}

} // namespace vantrel
