// Which record is the document, and which file it stands in. Knows files and records; asks nobody anything.
#include "document/Document.h"

#include "document/RecordTables.h"
#include "document/SetupFile.h"
#include "document/TextImport.h"
#include "platform/RuntimeError.h"
#include "text/AsciiCase.h"
#include "text/PathText.h"
#include "text/PrintableText.h"

#include <algorithm>
#include <string_view>
#include <system_error>
#include <utility>

namespace vantrel {

namespace {

constexpr std::string_view SetupExtension = ".sdt";
constexpr const char* UnnamedBracketName = "[unnamed]";

/// The forced extension searches the last point of the whole path: "." and ".." in it are no points of names.
std::filesystem::path AbsolutePath(const std::filesystem::path& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    if (error) return path;
    const std::filesystem::path folder = std::filesystem::weakly_canonical(absolute.parent_path(), error);
    return error ? absolute.lexically_normal() : folder / absolute.filename();
}

bool HasSetupExtension(std::string_view text) {
    if (text.size() < SetupExtension.size()) return false;
    text.remove_prefix(text.size() - SetupExtension.size());
    return SameIgnoringCase(text, SetupExtension);
}

/// A file named "PLANT.SDT" would otherwise get a second one beside it on hosts whose names have case.
std::string SetupName(const std::string& text) { return HasSetupExtension(text) ? text : ForceSetupExtension(text); }

/// A text's format goes by its name.
Configuration RecordOf(const std::string& bytes, const std::filesystem::path& path, const Configuration& defaults) {
    const std::string extension = Utf8FromPath(path.extension());
    if (SameIgnoringCase(extension, ".json")) return RecordFromJson(bytes, defaults);
    if (SameIgnoringCase(extension, ".csv")) return RecordFromCsv(bytes, defaults);
    return ImportText(bytes, defaults);
}

std::string Bracketed(const std::string& title) { return "[" + title + "]"; }

} // namespace

Document::Document(std::string programVersion, const Clock& clock)
    : programVersion_(std::move(programVersion)), clock_(clock) {}

void Document::InitDefaults() {
    DefaultConfiguration = DefaultRecord(programVersion_, OleDate::FromLocal(clock_.LocalNow()));
    BecomeDefault();
}

void Document::New() {
    BecomeDefault();
    StartOver();
}

void Document::BecomeDefault() {
    CurrentConfiguration = DefaultConfiguration;
    SavedConfiguration = DefaultConfiguration;
    IsUnnamed = true;
    Recovered = false;
    FromBoard = false;
    OwnFile.clear();
    BracketName = UnnamedBracketName;
}

bool Document::Changed() const {
    return Recovered || DocumentChanged(CurrentConfiguration, SavedConfiguration, programVersion_);
}

bool Document::Edited() const {
    return Recovered ||
           DocumentChanged(CurrentConfiguration, SavedConfiguration, CurrentConfiguration.CreatorVersion) ||
           CurrentConfiguration.AddressTypes != SavedConfiguration.AddressTypes;
}

std::string Document::DateText(const std::string& date) const {
    if (Recovered) return "Recovered, not saved";
    // A new document has no date until its values came from a board.
    if (date.empty() || (IsUnnamed && !FromBoard)) return Edited() ? "Not saved" : "";
    const bool savedThen = !OwnFile.empty() && CurrentConfiguration.SavedDate.days == SavedConfiguration.SavedDate.days;
    if (savedThen) return "Saved " + date + (Edited() ? ", changed since" : "");
    return (FromBoard ? "Upload of " : "Import of ") + date + ", not saved";
}

void Document::TakeSetupFile(std::span<const std::uint8_t> bytes, const std::filesystem::path& path) {
    LoadedConfiguration = ParseSetupFile(bytes);
    loadedBytes_.assign(bytes.begin(), bytes.end());
    TakeName(path);
    StartOver();
}

bool Document::ChangedOnDisk() const {
    std::error_code error;
    if (!std::filesystem::exists(OwnFile, error)) return false;
    try {
        // What stands behind a record does not count: it is an older, longer file's.
        const std::vector<std::uint8_t> now = ReadWholeFile(OwnFile);
        return now.size() < ownBytes_.size() || !std::equal(ownBytes_.begin(), ownBytes_.end(), now.begin());
    } catch (const RuntimeError&) {
        return true;
    }
}

bool Document::LoadedByOtherVersion() const { return LoadedConfiguration.CreatorVersion != programVersion_; }

std::string Document::LoadedVersion() const {
    constexpr std::size_t longest = 60;
    return Excerpt(LoadedConfiguration.CreatorVersion, longest);
}

std::string Document::OtherVersionText() const {
    return "File created by set-up program version: " + LoadedVersion() +
           "\nData tables may not be properly aligned.\n\nDo you wish to continue?";
}

void Document::ApplyLoadedFile() {
    LoadedConfiguration.TargetAddresses.resize(ValueCount);
    LoadedConfiguration.Values.resize(ValueCount);
    CurrentConfiguration = LoadedConfiguration;
    SavedConfiguration = CurrentConfiguration;
    IsUnnamed = false;
    Recovered = false;
    FromBoard = false;
    OwnFile = FilePath;
    ownBytes_ = loadedBytes_;
    BracketName = Bracketed(FileTitle);
    // A display may have been rebuilt while the user was asked about the version.
    StartOver();
}

void Document::ApplyLoadedCopy() {
    LoadedConfiguration.TargetAddresses.resize(ValueCount);
    LoadedConfiguration.Values.resize(ValueCount);
    BecomeDefault();
    CurrentConfiguration = LoadedConfiguration;
    SavedConfiguration = CurrentConfiguration;
    FromBoard = true;
    StartOver();
    // Saving must not put what a board holds now in the place of what it held then.
    UploadedBeforeSave = true;
}

void Document::TakeTextFile(std::span<const std::uint8_t> bytes, const std::filesystem::path& path) {
    Configuration record = RecordOf(std::string(bytes.begin(), bytes.end()), path, DefaultConfiguration);
    record.SavedDate = OleDate::FromLocal(clock_.LocalNow());
    SavedConfiguration = DefaultConfiguration;
    CurrentConfiguration = std::move(record);
    TakeName(path);
    OwnFile.clear();
    IsUnnamed = false;
    Recovered = false;
    FromBoard = false;
    BracketName = Bracketed(FileTitle);
    StartOver();
}

void Document::TakeUnsaved(Configuration record, const std::filesystem::path& path) {
    BecomeDefault();
    CurrentConfiguration = std::move(record);
    Recovered = true;
    if (!path.empty()) {
        NameFile(path);
        // No dialog has just given it: no point in a folder's name may lead to another file.
        FileNamedBy = NamesFrom::User;
        BracketName = Bracketed(FileTitle);
    }
    StartOver();
}

void Document::NameFile(const std::filesystem::path& path) {
    TakeName(path);
    IsUnnamed = false;
}

std::filesystem::path Document::SaveTarget() const {
    if (FileNamedBy == NamesFrom::Dialog) return PathFromUtf8(SetupName(Utf8FromPath(FilePath)));
    return FilePath.parent_path() / PathFromUtf8(SetupName(Utf8FromPath(FilePath.filename())));
}

Configuration Document::RecordToSave() const {
    Configuration record = CurrentConfiguration;
    record.CreatorVersion = programVersion_;
    record.SavedDate = OleDate::FromLocal(clock_.LocalNow());
    return record;
}

void Document::Save(const SafeFileWarning& warn) {
    // Stamped in a copy: the stamp alone would make a document that could not be written count as unchanged.
    Configuration record = RecordToSave();
    const std::filesystem::path target = SaveTarget();
    std::vector<std::uint8_t> bytes = SetupFileBytes(record);
    ReplaceFile(target, bytes, OldTail::Keep, warn);
    ownBytes_ = std::move(bytes);

    FilePath = target;
    OwnFile = target;
    Recovered = false;
    FromBoard = false;
    FileTitle = SetupName(FileTitle);
    BracketName = Bracketed(FileTitle);
    CurrentConfiguration = record;
    SavedConfiguration = std::move(record);
}

void Document::TakeName(const std::filesystem::path& path) {
    FilePath = AbsolutePath(path);
    FileTitle = Utf8FromPath(path.filename());
}

void Document::StartOver() {
    ++Generation;
    ReloadDisplay = true;
    UploadedBeforeSave = false;
}

std::string ForceSetupExtension(const std::string& text) {
    return text.substr(0, text.rfind('.')).append(SetupExtension);
}

} // namespace vantrel
