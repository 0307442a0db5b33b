// Files of the document by their names: reading them, with errors that name them; quoting names, telling extensions.
// Knows files and the document; asks and shows nothing.
#pragma once

#include "document/Document.h"

#include <filesystem>
#include <iosfwd>
#include <string>
#include <string_view>

namespace vantrel {

/// A path in quotes, for messages.
[[nodiscard]] std::string QuotedPath(const std::filesystem::path& path);

/// Whether a file's extension is `extension`, given with its point, in either case.
[[nodiscard]] bool HasExtension(const std::filesystem::path& file, std::string_view extension);
/// Whether a file is meant as text of the older format (.vtl, in any case) rather than as a set-up file.
[[nodiscard]] bool MeansTextFile(const std::filesystem::path& file);

/// The name of a new set-up file beside `file`: its base name with `addition` behind it, and " 2", " 3", ... as long as
/// there is something of that name already. The folder is made if there is none.
[[nodiscard]] std::filesystem::path FreeNameBeside(const std::filesystem::path& file, const std::string& addition);

/// What to offer as the name of a file about the document: its base name with " " + `what` behind it; `what` alone
/// while it has no name. Without a folder.
[[nodiscard]] std::filesystem::path NameAbout(const Document& document, const std::string& what);

/// Whether a name on a command line means standard input where a file is read, standard output where one is written:
/// "-".
[[nodiscard]] bool IsStandardStream(const std::filesystem::path& name);
/// What it is called in messages and in the document's name.
inline constexpr const char* StandardInput = "standard input";

// `in`: what "-" is read from; without it that is a name like every other.

/// Makes a file's record LoadedConfiguration, as Document::TakeSetupFile does. Throws RuntimeError, with the file's
/// name in it. `advice`: the sentence that ends the error when the file is no set-up file, but some text.
void ReadSetupFileByName(Document& document, const std::filesystem::path& path, const std::string& advice,
                         std::istream* in = nullptr);

/// Makes a text file of the older format the document, as Document::TakeTextFile does. Throws RuntimeError, with the
/// file's name in it; 321 also for files from which the forgiving format would take over nonsense: a set-up file
/// (`advice` ends that error), bytes that are no text, an empty file, one that lacks the header. What stands behind a
/// Ctrl-Z is not looked at.
void ImportTextFileByName(Document& document, const std::filesystem::path& path, const std::string& advice,
                          std::istream* in = nullptr);

} // namespace vantrel
