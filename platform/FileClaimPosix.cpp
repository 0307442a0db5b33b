// The POSIX claim: a lock on the file, which ends with the process.
#include "platform/FileClaim.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace vantrel {

namespace {

constexpr std::intptr_t None = -1;

} // namespace

std::optional<FileClaim> FileClaim::Take(const std::filesystem::path& path) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (file < 0) return std::nullopt;
    struct stat status {};
    // Who held it until now may have removed it since it was opened here.
    if (flock(file, LOCK_EX | LOCK_NB) == 0 && fstat(file, &status) == 0 && status.st_nlink > 0)
        return FileClaim(path, file);
    close(file);
    return std::nullopt;
}

FileClaim::FileClaim(std::filesystem::path path, std::intptr_t handle) : path_(std::move(path)), handle_(handle) {}

FileClaim::FileClaim(FileClaim&& other) noexcept
    : path_(std::move(other.path_)), handle_(std::exchange(other.handle_, None)) {}

FileClaim& FileClaim::operator=(FileClaim&& other) noexcept {
    std::swap(path_, other.path_);
    std::swap(handle_, other.handle_);
    return *this;
}

FileClaim::~FileClaim() {
    if (handle_ == None) return;
    unlink(path_.c_str());
    close(static_cast<int>(handle_));
}

} // namespace vantrel
