// What a person is asked and told about set-up files, the same in the windows and on the terminal. Knows the document;
// shows nothing itself.
#pragma once

#include "document/Document.h"
#include "document/DocumentFiles.h"
#include "platform/Dialogs.h"

#include <filesystem>
#include <optional>
#include <string>

namespace vantrel {

/// Whether a record that another program version has saved is to become the document: only Yes does it.
[[nodiscard]] MessageBox OtherVersionQuestion(const Document& document);

/// Whether a file that is there already is to be overwritten.
[[nodiscard]] MessageBox ReplaceQuestion(const std::filesystem::path& file);
/// What to tell when the forced extension leads out of the folder that was named; nothing when it does not.
[[nodiscard]] std::optional<std::string> OtherFolderNote(const Document& document);

} // namespace vantrel
