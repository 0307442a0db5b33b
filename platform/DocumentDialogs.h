// What the program asks of the person beyond message boxes: a line of text, a file to open, a name to save under.
#pragma once

#include "platform/Dialogs.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vantrel {

/// One line of a file dialog's filter list.
struct FileFilter {
    std::string name; ///< As shown, "Setup Files(*.sdt)".
    std::string pattern; ///< "*.sdt"
};

struct FileQuestion {
    std::vector<FileFilter> filters;
    /// Initial file name, with its folder or without; a pattern as name ("*.sdt") only says the folder. The host
    /// decides what is not said.
    std::filesystem::path initial;
    std::size_t filter = 0; ///< Which filter is chosen at first.
    std::string title{}; ///< Of the dialog; empty: "Open" or "Save As".
};

struct FileChoice {
    std::filesystem::path path;
    std::size_t filter = 0; ///< Which of the question's filters was chosen, from 0.
};

class DocumentDialogs : public Dialogs {
public:
    /// Asks for a line of text, with a note below it; nothing when the user cancelled.
    virtual std::optional<std::string> AskText(const std::string& title, const std::string& prompt,
                                               const std::string& initial, const std::string& note) = 0;
    /// Asks for an existing file; nothing when the user cancelled.
    virtual std::optional<FileChoice> OpenFile(const FileQuestion& question) = 0;
    /// Asks for a name to save under, and before an existing file is overwritten; nothing when the user cancelled.
    virtual std::optional<FileChoice> SaveFile(const FileQuestion& question) = 0;
};

} // namespace vantrel
