// The POSIX side of replacing a file.
#include "platform/SafeFileHost.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace vantrel::host {

namespace {

std::errc LastError() {
    switch (errno) {
    case EDQUOT:
    case EFBIG:
        return std::errc::no_space_on_device;
    case EPERM:
    case EROFS:
        return std::errc::permission_denied;
    default:
        return static_cast<std::errc>(errno);
    }
}

std::errc Answer(bool success) { return success ? std::errc{} : LastError(); }

int Descriptor(std::intptr_t handle) { return static_cast<int>(handle); }

/// A file system without owners or modes refuses; then there is nothing to keep.
void TakeOver(int file, const struct stat& model) {
    constexpr auto sameOwner = static_cast<uid_t>(-1);
    const bool inGroup = fchown(file, model.st_uid, model.st_gid) == 0 || fchown(file, sameOwner, model.st_gid) == 0;
    // What the old group might do must not become what our own group may.
    fchmod(file, model.st_mode & (inGroup ? 0777U : 0707U));
}

bool IsLocked(int file) { return flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK; }

/// Somebody who took the new file for an abandoned one has removed it, or is about to.
bool WasTakenAway(int file) {
    struct stat status {};
    return IsLocked(file) || fstat(file, &status) != 0 || status.st_nlink == 0;
}

/// Without this a power failure could undo the rename. Not every file system knows it, and the file is safe anyhow.
void FlushFolder(const std::filesystem::path& folder) {
    const int descriptor = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    fsync(descriptor);
    close(descriptor);
}

} // namespace

OutputFile::~OutputFile() {
    if (handle_ >= 0) close(Descriptor(handle_));
    if (claim_ >= 0) close(Descriptor(claim_));
}

std::errc OutputFile::Create(const std::filesystem::path& path, const std::optional<std::filesystem::path>& model) {
    struct stat status {};
    const bool hasModel = model && stat(model->c_str(), &status) == 0;
    // Nobody may look into the file before it has the permissions of the one that it replaces.
    handle_ = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, hasModel ? 0600 : 0666);
    if (handle_ < 0) return LastError();
    if (WasTakenAway(Descriptor(handle_))) {
        close(Descriptor(std::exchange(handle_, -1)));
        return std::errc::file_exists;
    }
    // The lock lasts until both descriptors are closed, so until the file has its final name.
    claim_ = fcntl(Descriptor(handle_), F_DUPFD_CLOEXEC, 0);
    if (hasModel) TakeOver(Descriptor(handle_), status);
    return {};
}

std::errc OutputFile::OpenExisting(const std::filesystem::path& path) {
    handle_ = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    return Answer(handle_ >= 0);
}

std::errc OutputFile::Write(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(Descriptor(handle_), bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) return LastError();
        if (written <= 0) continue;
        bytes = bytes.subspan(static_cast<std::size_t>(written));
        written_ += static_cast<std::uintmax_t>(written);
    }
    return {};
}

std::errc OutputFile::CutOff() {
    return Answer(ftruncate(Descriptor(handle_), lseek(Descriptor(handle_), 0, SEEK_CUR)) == 0);
}

std::errc OutputFile::FlushAndClose() {
    const bool cannotFlush = fsync(Descriptor(handle_)) != 0 && errno != EINVAL && errno != ENOTSUP;
    const std::errc flushed = Answer(!cannotFlush);
    const bool closed = close(Descriptor(handle_)) == 0 || errno == EINTR;
    handle_ = -1;
    return flushed == std::errc{} ? Answer(closed) : flushed;
}

void RemoveAbandoned(const std::filesystem::path& path) {
    const int file = open(path.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) return;
    // Where the host knows no locks nobody can tell whether somebody is still writing.
    if (flock(file, LOCK_EX | LOCK_NB) == 0) unlink(path.c_str());
    close(file);
}

std::errc ReadProblem(const std::filesystem::path& path) {
    return faccessat(AT_FDCWD, path.c_str(), R_OK, AT_EACCESS) == 0 ? std::errc::io_error : LastError();
}

std::errc WriteProblem(const std::filesystem::path& path) {
    const bool writable = faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
    return writable || errno == ENOENT ? std::errc{} : LastError();
}

std::errc RenameOver(const std::filesystem::path& from, const std::filesystem::path& to) {
    if (std::rename(from.c_str(), to.c_str()) != 0) return LastError();
    FlushFolder(to.parent_path());
    return {};
}

} // namespace vantrel::host
