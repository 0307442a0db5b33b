// Questions with the file's name in them.
#include "document/FileQuestions.h"

namespace vantrel {

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
