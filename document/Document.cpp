// Which record is the document, and which file it stands in. Knows files and records; asks nobody anything.
#include "document/Document.h"

#include "document/SetupFile.h"
#include "document/TextImport.h"
#include "text/AsciiCase.h"
#include "text/PathText.h"
#include "text/PrintableText.h"

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
    FromBoard = false;
    OwnFile.clear();
    BracketName = UnnamedBracketName;
}

bool Document::Changed() const { return DocumentChanged(CurrentConfiguration, SavedConfiguration, programVersion_); }

void Document::TakeSetupFile(std::span<const std::uint8_t> bytes, const std::filesystem::path& path) {
    LoadedConfiguration = ParseSetupFile(bytes);
    TakeName(path);
    StartOver();
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
    OwnFile = FilePath;
    BracketName = Bracketed(FileTitle);
    // A display may have been rebuilt while the user was asked about the version.
    StartOver();
}

void Document::TakeTextFile(std::span<const std::uint8_t> bytes, const std::filesystem::path& path) {
    Configuration record = ImportText(std::string(bytes.begin(), bytes.end()), DefaultConfiguration);
    record.SavedDate = OleDate::FromLocal(clock_.LocalNow());
    SavedConfiguration = DefaultConfiguration;
    CurrentConfiguration = std::move(record);
    TakeName(path);
    OwnFile.clear();
    IsUnnamed = false;
    BracketName = Bracketed(FileTitle);
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

void Document::Save(const SafeFileWarning& warn) {
    // Stamped in a copy: the stamp alone would make a document that could not be written count as unchanged.
    Configuration record = CurrentConfiguration;
    record.CreatorVersion = programVersion_;
    record.SavedDate = OleDate::FromLocal(clock_.LocalNow());
    const std::filesystem::path target = SaveTarget();
    ReplaceFile(target, SetupFileBytes(record), OldTail::Keep, warn);

    FilePath = target;
    OwnFile = target;
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
    ReloadDisplay = true;
    UploadedBeforeSave = false;
}

std::string ForceSetupExtension(const std::string& text) {
    return text.substr(0, text.rfind('.')).append(SetupExtension);
}

} // namespace vantrel
