// A copy is a set-up file, which the program opens like any other. Behind the record stands the board's name.
#include "document/Backups.h"

#include "document/DocumentFiles.h"
#include "document/SetupFile.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "text/PathText.h"
#include "text/PrintableText.h"
#include "text/Utf8.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <string_view>
#include <system_error>

namespace vantrel {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view BackupMark = "\nVANTREL backup\n";
constexpr std::size_t LongestBoard = 120; ///< In characters.
constexpr std::size_t LongestName = 80; ///< In bytes; hosts allow 255 for the whole.
/// What a set-up with very long descriptions needs, and far below what would hold up the window.
constexpr std::uintmax_t LargestFile = 1'048'576;

/// `name` as a part of a file's name on every host.
std::string SafeName(const std::string& name) {
    std::string safe;
    for (std::string_view left = name; !left.empty();) {
        const Utf8Character character = TakeCharacter(left);
        if (safe.size() + character.bytes.size() > LongestName) break;
        constexpr std::string_view refused = "\\/:*?\"<>|";
        const bool bad = character.code < ' ' || character.code == MalformedCharacter ||
                         (character.bytes.size() == 1 && refused.find(character.bytes[0]) != std::string_view::npos);
        safe += bad ? "_" : std::string(character.bytes);
    }
    return safe;
}

/// "2026-03-14 09.05.07", which sorts by time and is a name on every host.
std::string TimeName(OleDate date) {
    std::string text = IsoText(date);
    std::ranges::replace(text, 'T', ' ');
    std::ranges::replace(text, ':', '.');
    return text;
}

std::string BoardBehind(const std::vector<std::uint8_t>& bytes) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), // NOLINT(*-reinterpret-cast)
                                bytes.size());
    const std::size_t mark = text.rfind(BackupMark);
    if (mark == std::string_view::npos) return {};
    std::string_view board = text.substr(mark + BackupMark.size());
    board = board.substr(0, board.find('\n'));
    return Excerpt(board, LongestBoard);
}

/// Throws RuntimeError.
Backup ReadBackup(const fs::path& file) {
    std::error_code error;
    // A pipe or a device would be waited for.
    if (!fs::is_regular_file(file, error)) throw RuntimeError(ErrorNumber::PathFileAccess, "It is no file.");
    if (fs::file_size(file, error) > LargestFile || error)
        throw RuntimeError(ErrorNumber::BadFileFormat, "It is too large for a set-up file.");
    const std::vector<std::uint8_t> bytes = ReadWholeFile(file);
    Backup backup{file, ParseSetupFile(bytes), BoardBehind(bytes)};
    if (backup.record.Values.size() < ValueCount || backup.record.TargetAddresses.size() < ValueCount)
        throw RuntimeError(ErrorNumber::BadFileFormat, "It does not hold all values.");
    return backup;
}

/// What is no date is older than every date.
std::chrono::local_seconds TimeOf(const Backup& backup) {
    return backup.record.SavedDate.ToLocal().value_or(std::chrono::local_seconds::min());
}

} // namespace

std::size_t Backup::DifferencesTo(const Configuration& other) const {
    std::size_t count = 0;
    for (std::size_t index = 0; index < ValueCount; ++index)
        count += record.Value(index) != other.Value(index) ? 1 : 0;
    return count;
}

fs::path Backups::Keep(const Configuration& record, const std::string& name, const std::string& board) const {
    std::vector<std::uint8_t> bytes = SetupFileBytes(record);
    const std::string behind = std::string(BackupMark) + Excerpt(board, LongestBoard) + "\n";
    bytes.insert(bytes.end(), behind.begin(), behind.end());
    const std::string wanted = TimeName(record.SavedDate) + " " + SafeName(name) + ".sdt";
    fs::path file = FreeNameBeside(folder_ / PathFromUtf8(wanted), "");
    ReplaceFile(file, bytes, OldTail::Drop, {});
    return file;
}

Backups::List Backups::Find() const {
    List list;
    std::error_code error;
    for (fs::directory_iterator entry(folder_, error), end; !error && entry != end; entry.increment(error)) {
        const fs::path& file = entry->path();
        if (!HasExtension(file, ".sdt")) continue;
        try {
            list.found.push_back(ReadBackup(file));
        } catch (const RuntimeError& problem) {
            constexpr std::size_t longest = 80;
            list.skipped.push_back(Excerpt(Utf8FromPath(file.filename()), longest) + ": " +
                                   Excerpt(problem.Description(), 2 * longest));
        }
    }
    std::ranges::sort(list.found, [](const Backup& one, const Backup& other) {
        return std::pair(TimeOf(one), one.file.stem()) > std::pair(TimeOf(other), other.file.stem());
    });
    std::ranges::sort(list.skipped);
    return list;
}

} // namespace vantrel
