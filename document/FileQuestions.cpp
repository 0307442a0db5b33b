// Questions with the file's name in them, and who is asked which.
#include "document/FileQuestions.h"

#include <cstddef>
#include <system_error>
#include <vector>

namespace vantrel {

namespace {

MessageBox OtherVersionQuestion(const Document& document) {
    return {.title = "ANCNF",
            .text = document.OtherVersionText(),
            .icon = MessageIcon::Information,
            .buttons = MessageButtons::YesNoCancel};
}

/// Whether the document's own file is to be overwritten although somebody else has changed it meanwhile.
MessageBox ChangedOnDiskQuestion(const std::filesystem::path& file) {
    return {.title = "Save",
            .text = QuotedPath(file) +
                    " has been changed since it was opened or saved here.\nDo you want to replace what it holds now?",
            .icon = MessageIcon::Exclamation,
            .buttons = MessageButtons::YesNo,
            .destroys = true};
}

/// That the forced extension leads to another name than the one that was given; empty when it does not. A dialog has
/// shown the extension, and a text file is expected to become a set-up file.
std::string ForcedExtensionNote(const Document& document) {
    const std::filesystem::path& given = document.FilePath;
    const std::filesystem::path target = document.SaveTarget();
    if (target.parent_path() != given.parent_path()) {
        return "The extension .sdt takes the place of everything behind the last point, which is in a folder's name "
               "here: the file is " +
               QuotedPath(target) + ".";
    }
    const bool replaced = given.has_extension() && given != target;
    if (!replaced || document.FileNamedBy == NamesFrom::Dialog || MeansTextFile(given)) return {};
    return "The extension is .sdt always, so the file is " + QuotedPath(target) + ".";
}

} // namespace

MessageBox Notice(const std::string& text, MessageIcon icon) {
    return {.title = ProgramTitle, .text = text, .icon = icon, .buttons = MessageButtons::Ok};
}

SafeFileWarning WarningsTo(Dialogs& dialogs) {
    return [&dialogs](const std::string& warning) { dialogs.Show(Notice(warning, MessageIcon::Exclamation)); };
}

bool AcceptsLoadedVersion(const Document& document, Dialogs& dialogs) {
    return !document.LoadedByOtherVersion() || dialogs.Show(OtherVersionQuestion(document)) == MessageAnswer::Yes;
}

std::string OtherVersionNote(const Document& document, const std::string& file) {
    if (!document.LoadedByOtherVersion()) return {};
    return "Note: " + file + " was saved by " + document.LoadedVersion() + ", this is " + document.ProgramVersion() +
           ".";
}

void NameUnholdableValues(const Document& document, Dialogs& dialogs) {
    const Configuration& record = document.CurrentConfiguration;
    const std::vector<std::size_t> indices = ValuesNoWordCanHold(record);
    if (indices.empty()) return;
    const std::string list =
        ValueList(indices, [&](std::size_t index) { return ": " + std::to_string(record.Value(index)); });
    dialogs.Show(Notice("The board holds 0 to 65535 only. These values of the file cannot be downloaded:\n" + list,
                        MessageIcon::Exclamation));
}

bool AcceptsTarget(const Document& document, const std::filesystem::path& confirmed, Dialogs& dialogs) {
    const std::filesystem::path target = document.SaveTarget();
    if (target == document.OwnFile && document.ChangedOnDisk())
        return dialogs.Show(ChangedOnDiskQuestion(target)) == MessageAnswer::Yes;
    if (target == confirmed) return true;
    const std::string note = ForcedExtensionNote(document);
    if (!note.empty()) dialogs.Show(Notice(note, MessageIcon::Information));
    std::error_code error;
    // One file can have several names: by a link, or in another case.
    if (!confirmed.empty() && std::filesystem::equivalent(target, confirmed, error)) return true;
    return MayReplace(target, dialogs);
}

bool MayReplace(const std::filesystem::path& file, Dialogs& dialogs) {
    std::error_code error;
    return !std::filesystem::exists(file, error) || dialogs.Show(ReplaceQuestion(file)) == MessageAnswer::Yes;
}

MessageBox ReplaceQuestion(const std::filesystem::path& file) {
    return {.title = "Save",
            .text = QuotedPath(file) + " is there already.\nDo you want to replace what it holds?",
            .icon = MessageIcon::Question,
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

} // namespace vantrel
