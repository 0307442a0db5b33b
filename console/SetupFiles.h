// How commands open and write set-up files: found with or without their extension, replaced only when the user agrees.
#pragma once

#include "console/CommandContext.h"
#include "document/DocumentFiles.h"

#include <filesystem>
#include <string>
#include <vector>

namespace vantrel {

/// What to do about a file that another program version has saved.
enum class OtherVersion {
    Ask, ///< The user has to accept it.
    Note, ///< It is only looked at, so a line about it is enough.
};

/// The files that a user can mean by `name`, most likely first: of exactly that name, with ".sdt" behind it, and with
/// ".sdt" in place of its extension. None for no name, and for a standard stream.
[[nodiscard]] std::vector<std::filesystem::path> SetupFilesMeant(const std::string& name);
/// The first of them that exists; the name itself when none does, and for a standard stream.
[[nodiscard]] std::filesystem::path SetupFileNamed(const std::string& name);
/// Throws UsageError for a name that leaves nothing in front of a set-up file's extension: "..", "folder/", ".x".
void RequireFilePart(const std::string& name);

/// Whether two names are those of one file, which need not be there.
[[nodiscard]] bool IsSameFile(const std::filesystem::path& one, const std::filesystem::path& other);

/// Makes a file, or what is on standard input, the document, and names the values that no board can hold. False when
/// the user does not want it. Throws RuntimeError, with the file's name, when it cannot be read.
[[nodiscard]] bool OpenSetupFile(CommandContext& context, const std::filesystem::path& file, OtherVersion otherVersion);
/// The same with the file of the command line.
[[nodiscard]] bool OpenSetupFile(CommandContext& context, OtherVersion otherVersion);

/// Makes a text file of the older format, or what is on standard input, the document. Throws RuntimeError, with the
/// file's name; also for a file that is a set-up file already, from which the forgiving text format would take over
/// nonsense.
void OpenTextFile(CommandContext& context, const std::string& name);

/// Gives the document the name under which it will be saved, in the folder that was named, with a note when that is
/// another one; does nothing for a standard stream. False when a file of that name is there and the user wants to keep
/// it. Throws UsageError as RequireFilePart does, and for a standard stream that is a terminal, which gets no bytes.
[[nodiscard]] bool NameSetupFile(CommandContext& context, const std::string& name);

/// The document's file in quotes, or the standard stream that stands for it, for messages.
[[nodiscard]] std::string DocumentFile(const CommandContext& context);

/// Writes the document and prints the full path of the file that was written; for a standard stream it prints the bytes
/// instead. Throws RuntimeError.
void SaveSetupFile(CommandContext& context);

/// Writes a text that was made of the set-up file to `name` and prints the full path; a standard stream takes the text
/// itself. Refused when the user wants to keep the file that is there. `option` is what named it. Throws UsageError for
/// a name under which the set-up file itself is found, and RuntimeError.
[[nodiscard]] ExitCode WriteOut(CommandContext& context, const std::string& name, const std::string& option,
                                const std::string& text);

} // namespace vantrel
