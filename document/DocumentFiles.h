// Files of the document by their names: reading them, with errors that name them; quoting names, telling extensions.
// Knows files and the document; asks and shows nothing.
#pragma once

#include "document/Document.h"

#include <filesystem>
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

} // namespace vantrel
