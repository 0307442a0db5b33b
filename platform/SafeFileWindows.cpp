// The Windows side of replacing a file.
#include "platform/SafeFileHost.h"

#include <algorithm>
#include <limits>
#include <vector>

#include <windows.h>

namespace vantrel::host {

namespace {

std::errc LastError() {
    switch (GetLastError()) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return std::errc::no_space_on_device;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return std::errc::text_file_busy;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
        return std::errc::permission_denied;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return std::errc::file_exists;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return std::errc::no_such_file_or_directory;
    case ERROR_INVALID_NAME:
        return std::errc::invalid_argument;
    default:
        return std::errc::io_error;
    }
}

std::errc Answer(bool success) { return success ? std::errc{} : LastError(); }

HANDLE Handle(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

std::intptr_t OpenForWriting(const std::filesystem::path& path, DWORD disposition) {
    return reinterpret_cast<std::intptr_t>(
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

/// Who may do what with the file. A file system without access lists refuses; then there is nothing to keep.
void TakeOverAccess(const std::filesystem::path& path, const std::filesystem::path& model) {
    DWORD size = 0;
    GetFileSecurityW(model.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<BYTE> descriptor(size);
    if (size == 0 || !GetFileSecurityW(model.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), size, &size))
        return;
    SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, descriptor.data());
}

/// How opening an existing file with this access ends, when others may do with it what `share` says.
std::errc TryToOpen(const std::filesystem::path& path, DWORD access, DWORD share) {
    const HANDLE file =
        CreateFileW(path.c_str(), access, share, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return LastError();
    CloseHandle(file);
    return {};
}

constexpr DWORD WithEverybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

bool IsOpenSomewhere(const std::filesystem::path& path) {
    return TryToOpen(path, GENERIC_READ, 0) == std::errc::text_file_busy;
}

/// Who only looks at a file has let go of it after a moment. A file that is open elsewhere is not always told from a
/// protected one.
template <typename Action> std::errc WithPatience(const Action& action) {
    constexpr int attempts = 5;
    constexpr DWORD pause = 30;
    std::errc error = action();
    for (int attempt = 1; attempt < attempts; ++attempt) {
        if (error != std::errc::text_file_busy && error != std::errc::permission_denied) break;
        Sleep(pause);
        error = action();
    }
    return error;
}

} // namespace

OutputFile::~OutputFile() {
    if (handle_ != -1) CloseHandle(Handle(handle_));
}

std::errc OutputFile::Create(const std::filesystem::path& path, const std::optional<std::filesystem::path>& model) {
    handle_ = OpenForWriting(path, CREATE_NEW);
    if (handle_ == -1) return LastError();
    if (model) TakeOverAccess(path, *model);
    return {};
}

std::errc OutputFile::OpenExisting(const std::filesystem::path& path) {
    handle_ = OpenForWriting(path, OPEN_EXISTING);
    return Answer(handle_ != -1);
}

std::errc OutputFile::Write(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        constexpr std::size_t most = std::numeric_limits<DWORD>::max();
        DWORD written = 0;
        if (!WriteFile(Handle(handle_), bytes.data(), static_cast<DWORD>((std::min)(bytes.size(), most)), &written,
                       nullptr)) {
            return LastError();
        }
        bytes = bytes.subspan(written);
        written_ += written;
    }
    return {};
}

std::errc OutputFile::CutOff() { return Answer(SetEndOfFile(Handle(handle_)) != 0); }

std::errc OutputFile::FlushAndClose() {
    const std::errc flushed = Answer(FlushFileBuffers(Handle(handle_)) != 0);
    const bool closed = CloseHandle(Handle(handle_)) != 0;
    handle_ = -1;
    return flushed == std::errc{} ? Answer(closed) : flushed;
}

// A file that is still open for writing is shared with nobody, so that the host refuses.
void RemoveAbandoned(const std::filesystem::path& path) { DeleteFileW(path.c_str()); }

std::errc ReadProblem(const std::filesystem::path& path) {
    const std::errc error = TryToOpen(path, GENERIC_READ, WithEverybody);
    return error == std::errc{} ? std::errc::io_error : error;
}

std::errc WriteProblem(const std::filesystem::path& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        return std::errc::permission_denied;
    }
    // Replacing a file needs what deleting it needs.
    const std::errc error = WithPatience([&] { return TryToOpen(path, DELETE, WithEverybody); });
    const bool inTheWay = error == std::errc::text_file_busy || error == std::errc::invalid_argument;
    return inTheWay ? error : std::errc{};
}

std::errc RenameOver(const std::filesystem::path& from, const std::filesystem::path& to) {
    // Hidden and the like belong to the file's place, not to its content. What is not there yet has none.
    if (const DWORD attributes = GetFileAttributesW(to.c_str()); attributes != INVALID_FILE_ATTRIBUTES) {
        SetFileAttributesW(from.c_str(), attributes);
    }
    constexpr DWORD how = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    const std::errc moved = WithPatience([&] { return Answer(MoveFileExW(from.c_str(), to.c_str(), how) != 0); });
    const bool refused = moved == std::errc::permission_denied;
    return refused && (IsOpenSomewhere(to) || IsOpenSomewhere(from)) ? std::errc::text_file_busy : moved;
}

} // namespace vantrel::host
