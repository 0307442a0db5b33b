// Reading and replacing whole files, with errors that a user can act on. What differs between hosts is in
// SafeFileHost.h.
#include "platform/SafeFile.h"

#include "platform/Folders.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFileHost.h"
#include "text/NumberText.h"
#include "text/PathText.h"

#include <algorithm>
#include <fstream>
#include <optional>
#include <random>
#include <system_error>

namespace vantrel {

namespace {

namespace fs = std::filesystem;
using host::OutputFile;

/// Far above every file that this program has to do with; whatever is longer was chosen by mistake.
constexpr std::uintmax_t LongestFile = std::uintmax_t{16} * 1024 * 1024;

constexpr int MostLinks = 40;
constexpr int MostTemporaryNames = 1000;
constexpr const char* TemporaryStart = ".vantrel-";
constexpr const char* TemporaryEnd = ".tmp";

std::string Quoted(const fs::path& path) { return "\"" + Utf8FromPath(path) + "\""; }

[[noreturn]] void ThrowAccessError(const fs::path& path, const std::string& reason) {
    throw RuntimeError(ErrorNumber::PathFileAccess, "Path/file access error: " + Quoted(path) + ": " + reason + ".");
}

/// `what` says what happened to the file, as the end of a sentence: "could not be read".
[[noreturn]] void ThrowFor(std::errc error, const fs::path& path, const std::string& what) {
    switch (error) {
    case std::errc::permission_denied:
    case std::errc::operation_not_permitted:
    case std::errc::read_only_file_system:
        throw RuntimeError(ErrorNumber::PermissionDenied, "Permission denied: " + Quoted(path) + " " + what + ".");
    case std::errc::text_file_busy:
        ThrowAccessError(path, "it is in use by another program; close it there and try again");
    case std::errc::invalid_argument:
        ThrowAccessError(path, "this is no name that a file can have here");
    case std::errc::no_space_on_device:
        throw RuntimeError(ErrorNumber::DiskFull, "The disk is full: " + Quoted(path) + " " + what + ".");
    default:
        ThrowAccessError(path, std::make_error_code(error).message());
    }
}

/// The host's own numbers, whatever category they come in, as the portable ones.
std::errc Portable(const std::error_code& error) {
    const std::error_condition condition = error.default_error_condition();
    const bool known = condition.category() == std::generic_category();
    return known ? static_cast<std::errc>(condition.value()) : std::errc::io_error;
}

void RequireFolder(const fs::path& file) {
    const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
    std::error_code error;
    if (fs::is_directory(folder, error)) return;
    if (Portable(error) == std::errc::permission_denied) ThrowFor(std::errc::permission_denied, folder, "is closed");
    throw RuntimeError(ErrorNumber::PathNotFound, "Path not found: there is no folder " + Quoted(folder) + ".");
}

/// Whether there is such a file. Throws for what is there but is no file, and for what cannot be looked at.
bool FileExists(const fs::path& path) {
    RequireFolder(path);
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::status_known(status)) ThrowFor(Portable(error), path, "cannot be looked at");
    if (fs::is_directory(status)) ThrowAccessError(path, "it is a folder");
    if (fs::exists(status) && !fs::is_regular_file(status)) ThrowAccessError(path, "it is not a file");
    return fs::exists(status);
}

/// Where the links lead, also to a file that does not exist yet.
fs::path FollowLinks(fs::path path) {
    const fs::path start = path;
    std::error_code error;
    for (int links = 0; fs::is_symlink(fs::symlink_status(path, error)); ++links) {
        if (links == MostLinks) ThrowAccessError(start, "its links go round in circles");
        const fs::path next = fs::read_symlink(path, error);
        if (error) ThrowFor(Portable(error), path, "cannot be followed");
        path = path.parent_path() / next;
    }
    return path;
}

/// Not the target's name itself, which may already be as long as the host allows. The same in every run of every
/// version (FNV-1a).
std::string TemporaryStartFor(const fs::path& target) {
    std::uint32_t hash = 2166136261U;
    for (const char byte : Utf8FromPath(target.filename()))
        hash = (hash ^ static_cast<unsigned char>(byte)) * 16777619U;
    return TemporaryStart + HexText(hash, 8) + "-";
}

/// What earlier replacements of this file have left behind when the computer stopped in the middle of them.
void ClearAbandoned(const fs::path& target) {
    const std::string start = TemporaryStartFor(target);
    std::vector<fs::path> found;
    std::error_code error;
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = Utf8FromPath(entry->path().filename());
        if (name.starts_with(start) && name.ends_with(TemporaryEnd)) found.push_back(entry->path());
    }
    std::ranges::for_each(found, host::RemoveAbandoned);
}

/// Throws away the temporary file again, unless it has taken the target's place.
class TemporaryFile {
public:
    TemporaryFile() = default;
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        std::error_code ignored;
        if (!path_.empty()) fs::remove(path_, ignored);
    }

    /// A new file in the target's folder, with the permissions of `model`.
    std::errc Create(OutputFile& file, const fs::path& target, const std::optional<fs::path>& model) {
        std::random_device random;
        std::errc error = std::errc::file_exists;
        for (int attempt = 0; error == std::errc::file_exists && attempt < MostTemporaryNames; ++attempt) {
            fs::path path = target.parent_path() / (TemporaryStartFor(target) + HexText(random(), 8) + TemporaryEnd);
            error = file.Create(path, model);
            if (error == std::errc{}) path_ = std::move(path);
        }
        return error;
    }

    std::errc MoveTo(const fs::path& target) {
        const std::errc error = host::RenameOver(path_, target);
        if (error == std::errc{}) path_.clear();
        return error;
    }

private:
    fs::path path_;
};

enum class Outcome { Replaced, FolderTakesNoFile };

/// Whether the file may still be written in place although its folder lets nothing be created or renamed in it:
/// protected folders, sticky ones with another user's file, a single file mounted from elsewhere.
bool IsFolderRefusal(std::errc error) {
    return error == std::errc::permission_denied || error == std::errc::device_or_resource_busy ||
           error == std::errc::cross_device_link;
}

void TellOfOtherNames(const fs::path& target, const SafeFileWarning& warn) {
    std::error_code error;
    if (!warn || fs::hard_link_count(target, error) <= 1 || error) return;
    warn("The file " + Quoted(target) +
         " has another name as well (a hard link). Only this one gets the new content; the other one keeps the old.");
}

Outcome ReplaceBesides(const fs::path& target, bool exists, std::span<const std::uint8_t> bytes,
                       std::span<const std::uint8_t> oldTail, const SafeFileWarning& warn) {
    const std::string untouched = exists ? "was not written; the old file is as it was" : "was not written";
    // Open until the temporary file has its final name or is gone: nobody may take it for an abandoned one meanwhile.
    OutputFile file;
    TemporaryFile temporary;
    const std::errc created = temporary.Create(file, target, exists ? std::optional(target) : std::nullopt);
    if (exists && IsFolderRefusal(created)) return Outcome::FolderTakesNoFile;
    if (created != std::errc{}) ThrowFor(created, target, untouched);

    std::errc error = file.Write(bytes);
    if (error == std::errc{}) error = file.Write(oldTail);
    const std::errc closed = file.FlushAndClose();
    if (error == std::errc{}) error = closed;
    if (error != std::errc{}) ThrowFor(error, target, untouched);

    if (exists) TellOfOtherNames(target, warn);
    const std::errc moved = temporary.MoveTo(target);
    if (exists && IsFolderRefusal(moved)) return Outcome::FolderTakesNoFile;
    if (moved != std::errc{}) ThrowFor(moved, target, untouched);
    return Outcome::Replaced;
}

void WriteInPlace(const fs::path& target, std::span<const std::uint8_t> bytes, OldTail tail) {
    OutputFile file;
    const std::errc opened = file.OpenExisting(target);
    if (opened != std::errc{}) ThrowFor(opened, target, "was not written; the old file is as it was");

    std::errc error = file.Write(bytes);
    const bool untouched = file.Written() == 0 && !bytes.empty();
    const bool whole = file.Written() == bytes.size();
    if (error == std::errc{} && tail == OldTail::Drop) error = file.CutOff();
    if (error == std::errc{}) error = file.FlushAndClose();
    if (error == std::errc{}) return;
    ThrowFor(error, target,
             untouched ? "was not written; the old file is as it was"
             : whole   ? "was written, but the disk did not confirm it"
                       : "was written only in part");
}

std::vector<std::uint8_t> TailBehind(const fs::path& path, std::size_t length) {
    std::vector<std::uint8_t> old = ReadWholeFile(path);
    old.erase(old.begin(), old.begin() + static_cast<std::ptrdiff_t>(std::min(length, old.size())));
    return old;
}

} // namespace

std::vector<std::uint8_t> ReadWholeFile(const fs::path& path) {
    if (!FileExists(path)) {
        throw RuntimeError(ErrorNumber::FileNotFound, "File not found: " + Quoted(path) + ".");
    }
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error) ThrowFor(Portable(error), path, "could not be read");
    if (size > LongestFile) ThrowAccessError(path, "it is too long for a file of this program");

    std::ifstream file(path, std::ios::binary);
    if (!file) ThrowFor(host::ReadProblem(path), path, "could not be read");
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (file.bad()) ThrowFor(std::errc::io_error, path, "could not be read");
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

void RequireReplaceable(const fs::path& path) {
    const fs::path target = FollowLinks(path);
    const bool exists = FileExists(target);
    if (const std::errc problem = host::WriteProblem(target); problem != std::errc{}) {
        ThrowFor(problem, target, "is write-protected");
    }
    if (!exists && !FolderIsWritable(target.has_parent_path() ? target.parent_path() : fs::path("."))) {
        ThrowFor(std::errc::permission_denied, target, "cannot be written: its folder is write-protected");
    }
}

void ReplaceFile(const fs::path& path, std::span<const std::uint8_t> bytes, OldTail tail, const SafeFileWarning& warn) {
    const fs::path target = FollowLinks(path);
    const bool exists = FileExists(target);
    // The folder's permissions would let a protected file be replaced; its own say that nobody meant that.
    if (const std::errc problem = host::WriteProblem(target); problem != std::errc{}) {
        ThrowFor(problem, target, "is write-protected");
    }
    const std::vector<std::uint8_t> oldTail =
        exists && tail == OldTail::Keep ? TailBehind(target, bytes.size()) : std::vector<std::uint8_t>();
    ClearAbandoned(target);
    if (ReplaceBesides(target, exists, bytes, oldTail, warn) == Outcome::Replaced) return;
    if (warn) {
        warn("The folder of " + Quoted(target) +
             " takes no new file, so the file is written in place: if the computer stops while it is written, the old "
             "content is lost.");
    }
    WriteInPlace(target, bytes, tail);
}

} // namespace vantrel
