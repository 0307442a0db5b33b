// What a person is asked and told about set-up files, the same in the windows and on the terminal. Knows files and the
// document; shows nothing itself.
#pragma once

#include "document/Document.h"
#include "platform/Dialogs.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace vantrel {

/// A path in quotes, for messages.
[[nodiscard]] std::string QuotedPath(const std::filesystem::path& path);

/// Whether a file's extension is `extension`, given with its point, in either case.
[[nodiscard]] bool HasExtension(const std::filesystem::path& file, std::string_view extension);
/// Whether a file is meant as text of the older format (.vtl, in any case) rather than as a set-up file.
[[nodiscard]] bool MeansTextFile(const std::filesystem::path& file);

/// Document::ReadSetupFile, whose errors then name the file. `advice`: the sentence that ends them when the file is no
/// set-up file, but some text.
void ReadSetupFileByName(Document& document, const std::filesystem::path& path, const std::string& advice);
/// Document::ImportTextFile likewise. Throws RuntimeError 321 also for files from which the forgiving text format would
/// take over nonsense: a set-up file (`advice` ends that error), bytes that are no text, an empty file, one without the
/// header or without a single sequence.
void ImportTextFileByName(Document& document, const std::filesystem::path& path, const std::string& advice);

/// Whether a record that another program version has saved is to become the document: only Yes does it.
[[nodiscard]] MessageBox OtherVersionQuestion(const Document& document);

/// Whether a file that is there already is to be overwritten.
[[nodiscard]] MessageBox ReplaceQuestion(const std::filesystem::path& file);
/// What to tell when the forced extension leads out of the folder that was named; nothing when it does not.
[[nodiscard]] std::optional<std::string> OtherFolderNote(const Document& document);

} // namespace vantrel
