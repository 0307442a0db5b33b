// What a person is asked and told about set-up files, the same in the windows and on the terminal. Knows the document;
// shows nothing itself.
#pragma once

#include "document/Document.h"
#include "document/DocumentFiles.h"
#include "document/UnsavedCopy.h"
#include "platform/Dialogs.h"

#include <filesystem>
#include <optional>
#include <string>

namespace vantrel {

/// Whether a record that another program version has saved is to become the document: only Yes does it.
[[nodiscard]] MessageBox OtherVersionQuestion(const Document& document);

/// Whether a file that is there already is to be overwritten.
[[nodiscard]] MessageBox ReplaceQuestion(const std::filesystem::path& file);
/// Whether the document's own file is to be overwritten although somebody else has changed it meanwhile.
[[nodiscard]] MessageBox ChangedOnDiskQuestion(const std::filesystem::path& file);
/// Whether the board's values are to take the place of others of which no copy could be made; `problem` says why not.
[[nodiscard]] MessageBox FetchWithoutCopyQuestion(const std::string& problem);
/// Whether edits that were not saved are to become the document; `date` says when they were kept.
[[nodiscard]] MessageBox RecoverQuestion(const LeftBehind& left, const std::string& date);
/// Whether they are to be deleted instead.
[[nodiscard]] MessageBox GiveUpQuestion(const LeftBehind& left);
/// What to tell when the forced extension leads out of the folder that was named; nothing when it does not.
[[nodiscard]] std::optional<std::string> OtherFolderNote(const Document& document);

} // namespace vantrel
