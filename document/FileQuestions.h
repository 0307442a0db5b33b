// What a person is asked and told about set-up files, and what follows from the answer: the same in the windows and on
// the terminal. Knows the document and whoever asks the user.
#pragma once

#include "document/Document.h"
#include "document/DocumentFiles.h"
#include "document/UnsavedCopy.h"
#include "platform/Dialogs.h"
#include "platform/SafeFile.h"

#include <filesystem>
#include <string>

namespace vantrel {

/// The title of what the program says of itself.
inline constexpr const char* ProgramTitle = "VANTREL";
/// A word that wants no answer.
[[nodiscard]] MessageBox Notice(const std::string& text, MessageIcon icon);
/// Hears what Document::Save has to warn of, and shows it.
[[nodiscard]] SafeFileWarning WarningsTo(Dialogs& dialogs);

/// Whether the loaded record may become the document: one of another program version does when the user says Yes.
[[nodiscard]] bool AcceptsLoadedVersion(const Document& document, Dialogs& dialogs);
/// The sentence about such a record for somebody who only looks at it; empty for one of this version. `file` names it.
[[nodiscard]] std::string OtherVersionNote(const Document& document, const std::string& file);
/// Names the values of the document that no board can hold, if there are any.
void NameUnholdableValues(const Document& document, Dialogs& dialogs);
/// Whether the file that Save will write may be written: it is new, the file `confirmed`, or the user says so, also
/// when somebody else has changed the document's own file meanwhile. The user is told first when the forced extension
/// leads to another name than the one that was given.
[[nodiscard]] bool AcceptsTarget(const Document& document, const std::filesystem::path& confirmed, Dialogs& dialogs);
/// Whether a file is not there yet, or the user has it overwritten.
[[nodiscard]] bool MayReplace(const std::filesystem::path& file, Dialogs& dialogs);

/// Whether a file that is there already is to be overwritten.
[[nodiscard]] MessageBox ReplaceQuestion(const std::filesystem::path& file);
/// Whether the board's values are to take the place of others of which no copy could be made; `problem` says why not.
[[nodiscard]] MessageBox FetchWithoutCopyQuestion(const std::string& problem);
/// Whether edits that were not saved are to become the document; `date` says when they were kept.
[[nodiscard]] MessageBox RecoverQuestion(const LeftBehind& left, const std::string& date);
/// Whether they are to be deleted instead.
[[nodiscard]] MessageBox GiveUpQuestion(const LeftBehind& left);

} // namespace vantrel
