// The open document: the four records, its name on disk, and the steps by which files become documents and back.
// Knows files and records; asks nobody anything and shows nothing.
#pragma once

#include "document/Configuration.h"
#include "platform/Clock.h"
#include "platform/SafeFile.h"

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace vantrel {

/// Where names of files come from, and so where the forced extension looks for the point that it begins at.
enum class NamesFrom {
    Dialog, ///< A file dialog gives full paths: the last point of the whole path.
    User, ///< Typed, folder and all: the last point of the name's own last part. The folder is never left.
};

class Document {
public:
    /// `programVersion`: "VANTREL_R" + major.minor.revision, the stamp of what this program saves.
    Document(std::string programVersion, const Clock& clock);

    Configuration DefaultConfiguration; ///< Built once by InitDefaults; never edited.
    Configuration CurrentConfiguration; ///< The working copy.
    Configuration SavedConfiguration; ///< The working copy as last created, opened or saved.
    Configuration LoadedConfiguration; ///< A file's record before it is accepted.
    bool IsUnnamed = true; ///< The document has no file name yet.
    int Generation = 0; ///< Counts the documents that New and Open have begun.
    bool ReloadDisplay = false; ///< Tells the editor to rebuild its display.
    bool Recovered = false; ///< From an unsaved copy: changed, whatever it holds.
    bool FromBoard = false; ///< Values have been uploaded into the document since it was new.
    bool UploadedBeforeSave = false; ///< Save has fetched the settings from the board since New or Open.

    NamesFrom FileNamedBy = NamesFrom::Dialog; ///< Of FilePath; whoever gives the name says so.
    std::filesystem::path FilePath; ///< Full path of the current file.
    /// The file that the document was opened from or saved to; empty for a new or imported one. Not always FilePath,
    /// which a declined file moves as well.
    std::filesystem::path OwnFile;
    std::string FileTitle; ///< File name without folder, UTF-8.
    std::string BracketName; ///< "[unnamed]" or "[" + file title + "]".

    [[nodiscard]] const std::string& ProgramVersion() const { return programVersion_; }

    /// Somebody else has changed the own file since it was opened or saved. One that has gone has not changed.
    [[nodiscard]] bool ChangedOnDisk() const;

    /// Builds the defaults, stamped now, and makes them the document.
    void InitDefaults();
    /// The document becomes the unnamed default one.
    void New();
    /// True when a closing of the document would have to ask "Save Changes to File?".
    [[nodiscard]] bool Changed() const;
    /// Something would be lost with the program: also a mere type letter, but no other version's stamp.
    [[nodiscard]] bool Edited() const;
    /// What stands at the document date: `date` is the record's own as the host shows it, empty for none. Empty for a
    /// new document.
    [[nodiscard]] std::string DateText(const std::string& date) const;

    /// Takes the bytes of the set-up file `path` into LoadedConfiguration; only then are path and title moved, the
    /// display asked to rebuild itself and UploadedBeforeSave cleared, even if the user then declines the record.
    /// Throws BadSetupFile and leaves everything as it was when they are none.
    void TakeSetupFile(std::span<const std::uint8_t> bytes, const std::filesystem::path& path);
    /// True when LoadedConfiguration was saved by another program version, which the user has to accept first.
    [[nodiscard]] bool LoadedByOtherVersion() const;
    /// That version, for a message: printable, and shortened when it is far too long for one.
    [[nodiscard]] std::string LoadedVersion() const;
    /// The question for that case.
    [[nodiscard]] std::string OtherVersionText() const;
    /// LoadedConfiguration, its addresses and values brought to 0..LastValueIndex, becomes the document.
    void ApplyLoadedFile();
    /// LoadedConfiguration likewise, as values that a board has held: without a file, unchanged, and without a fetch
    /// from the board before it is saved.
    void ApplyLoadedCopy();
    /// Takes the bytes of the text import file `path` over the defaults: of the older format, or JSON or a table by the
    /// name (.json, .csv). The document then counts as changed against the defaults. Throws RuntimeError and leaves
    /// everything as it was when they cannot be taken over.
    void TakeTextFile(std::span<const std::uint8_t> bytes, const std::filesystem::path& path);

    /// Edits that could not be saved become the document, under their old name but not yet in that file. Without a path
    /// it is unnamed.
    void TakeUnsaved(Configuration record, const std::filesystem::path& path);

    /// The document gets a file name (as Save As does): path made absolute, title taken from it, no longer unnamed.
    void NameFile(const std::filesystem::path& path);
    /// The working copy with the stamp of this program and the present time, as Save writes it.
    [[nodiscard]] Configuration RecordToSave() const;
    /// The file that Save will write: FilePath with the extension ".sdt" forced, unless it has that extension in
    /// another case.
    [[nodiscard]] std::filesystem::path SaveTarget() const;
    /// Stamps the working copy with version and time, forces the extension on path and title, writes the record over
    /// the file without truncating an older, longer one, and makes the working copy the saved one. `warn` hears when
    /// the file has to be written in place. Throws RuntimeError when it cannot be written: the records in memory are
    /// not rolled back, and the document still counts as it did before.
    void Save(const SafeFileWarning& warn);

private:
    void BecomeDefault();
    void TakeName(const std::filesystem::path& path);
    void StartOver();

    std::vector<std::uint8_t> loadedBytes_; ///< Of LoadedConfiguration.
    std::vector<std::uint8_t> ownBytes_; ///< Of the own file as it was opened or saved.
    std::string programVersion_;
    const Clock& clock_;
};

/// Forces the extension: without any "." in the text ".sdt" is appended, otherwise everything from the last "." onward
/// is replaced. The last "." is searched in the whole text, folders included: "C:\my.dir\plant" gives "C:\my.sdt".
[[nodiscard]] std::string ForceSetupExtension(const std::string& text);

} // namespace vantrel
