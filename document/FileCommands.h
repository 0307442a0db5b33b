// The File menu's New, Open, Save and Save As, and the status stack address: the order of questions and steps, without
// a window. Knows the document, the link's mode and whoever asks the user.
#pragma once

#include "document/Document.h"
#include "document/UnsavedCopy.h"
#include "link/RSComm.h"
#include "platform/DocumentDialogs.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace vantrel {

/// What a file command needs done by whoever owns the windows.
struct FileCommandHooks {
    /// Uploads the settings from the board into the working copy; false when it was cancelled or failed.
    std::function<bool()> uploadData;
    /// What was uploaded stays; the record held these values before.
    std::function<void(const Configuration& before)> uploaded;
    /// The document date to show has changed (`SavedDate`), or is none for a new document.
    std::function<void()> showDocumentDate;
    /// The bracket name has changed.
    std::function<void()> showCaption;
    /// The user's folder for documents; asked for when it is needed.
    std::function<std::filesystem::path()> documentsFolder;
    /// A date as the host shows it.
    std::function<std::string(OleDate)> dateText;
    /// A passing word for the user: what was done besides, and where it is.
    std::function<void(const std::string&)> notice;
};

class FileCommands {
public:
    FileCommands(Document& document, RSComm& link, DocumentDialogs& dialogs, const Clock& clock,
                 FileCommandHooks hooks);

    enum class SaveAnswer { Unchanged, Yes, No, Cancel };
    /// "Save Changes to File?", when there are any; Unchanged without asking when there are none.
    [[nodiscard]] SaveAnswer AskSaveChanges();

    /// How a command ended that may have saved on its way. Cancelled: the user stopped it at a question of its own.
    /// Failed: a file could not be read or written, or the upload before the first save did not come to its end; the
    /// user has been told why.
    enum class Outcome { Done, Cancelled, Failed };

    // New and Open save first when the user wants that. They go on when the save was cancelled, not when it failed.

    /// The status stack address is to be asked for afterwards, but not at start-up.
    Outcome New();
    /// The file dialog begins at the document's path. A file that cannot be read leaves everything as it was; one of
    /// another program version that the user declines leaves the document, but moves its path and title.
    Outcome Open();
    /// Opens `path` without the file dialog (dropped, or named on the command line): ".vtl" is imported, anything else
    /// read.
    Outcome OpenPath(const std::filesystem::path& path);
    /// Makes a copy of a board's values an unnamed document, so that no save reaches the copy. The questions are
    /// Open's.
    Outcome OpenCopy(Configuration record);
    /// While ONLINE, the first save after New and Open fetches the settings from the board; without them nothing is
    /// written, and the values and the date are as before. Where they differ from what the document held, that is kept
    /// in a set-up file of its own first, beside the target. Asks for a name when there is none, before the forced
    /// extension leads to another existing file, and before a file is replaced that somebody else has changed.
    Outcome Save();
    /// The new name stays only when the document was written under it.
    Outcome SaveAs();
    /// Offers the edits that programs had no time to save, one after the other until the user takes one. What the user
    /// does not take stays for the next time, unless the user gives it up for good.
    void OfferUnsaved(UnsavedCopy& copies);
    /// The save question before the program ends: true when it may end.
    [[nodiscard]] bool MayClose();

    /// The dialog "TI Status Stack Address", with the read from the board and the write to it when ONLINE.
    [[nodiscard]] Task AskStatusStackAddress();

private:
    enum class FileKind { Setup, TextImport };

    [[nodiscard]] Outcome SaveChangesFirst();
    Outcome OpenAs(FileKind kind, const std::filesystem::path& path, NamesFrom namedBy);
    [[nodiscard]] bool FetchFromBoard();
    /// Whether the fetched values may stay: what the document held before is kept, or the user does without it.
    [[nodiscard]] bool KeepBeforeFetch(const Configuration& before);
    void TellKept();
    Outcome SaveOver(const std::filesystem::path& confirmed);
    Outcome SaveUnderNewName();
    Outcome Write();
    /// An address as text, and a sentence on whose it is.
    struct ShownAddress {
        std::string text;
        std::string whose;
    };
    [[nodiscard]] TaskOf<ShownAddress> StackAddressToShow();
    [[nodiscard]] Task SendStackAddress(std::int32_t address);

    Document& document_;
    RSComm& link_;
    DocumentDialogs& dialogs_;
    const Clock& clock_;
    FileCommandHooks hooks_;
    std::size_t openFilter_ = 0; ///< Of the open dialog: the kind of the document's file.
    std::filesystem::path kept_; ///< The copy made before a fetch, of which the user has not heard yet.
};

/// The V memory address that an answer means: a whole number, or "V" (either case) and a number, of 1..34463; nothing
/// for any other text. Blanks around the number are fine.
[[nodiscard]] std::optional<std::int32_t> StackAddressIn(const std::string& answer);
/// What any other text is refused with.
[[nodiscard]] MessageBox StackAddressRefusal();

} // namespace vantrel
