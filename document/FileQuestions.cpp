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
            .buttons = MessageButtons::YesNo,
            .destroys = true};
}

MessageBox ChangedOnDiskQuestion(const std::filesystem::path& file) {
    return {.title = "Save",
            .text = QuotedPath(file) +
                    " has been changed since it was opened or saved here.\nDo you want to replace what it holds now?",
            .icon = MessageIcon::Exclamation,
            .buttons = MessageButtons::YesNo,
            .destroys = true};
}

MessageBox FetchWithoutCopyQuestion(const std::string& problem) {
    return {.title = "Save",
            .text = "The board holds other values than this set-up. Saving puts them in the place of the set-up's, of "
                    "which no copy could be made:\n" +
                    problem + "\n\nDo you want to give up the values of the set-up?",
            .icon = MessageIcon::Exclamation,
            .buttons = MessageButtons::YesNo,
            .destroys = true};
}

MessageBox RecoverQuestion(const LeftBehind& left, const std::string& date) {
    const bool named = !left.path.empty();
    const std::string what = named ? QuotedPath(left.path) : "a set-up without a name";
    return {.title = "Unsaved Edits",
            .text = "The program ended before the edits of " + what + " were saved. What was kept of them is from " +
                    date + ".\n\nDo you want to go on with them?" +
                    (named ? "\nThe file itself stays as it is until you save." : ""),
            .icon = MessageIcon::Question,
            .buttons = MessageButtons::YesNo};
}

MessageBox GiveUpQuestion(const LeftBehind& left) {
    const std::string what = left.path.empty() ? "the set-up without a name" : QuotedPath(left.path);
    return {.title = "Unsaved Edits",
            .text = "Do you want to delete the unsaved edits of " + what +
                    " for good?\n\nWith No they are offered again at the next start.",
            .icon = MessageIcon::Exclamation,
            .buttons = MessageButtons::YesNo,
            .destroys = true};
}

std::optional<std::string> OtherFolderNote(const Document& document) {
    const std::filesystem::path target = document.SaveTarget();
    if (target.parent_path() == document.FilePath.parent_path()) return std::nullopt;
    return "The extension .sdt takes the place of everything behind the last point, which is in a folder's name here: "
           "the file is " +
           QuotedPath(target) + ".";
}

} // namespace vantrel
