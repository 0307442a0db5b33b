// Loaded in front of the host's library: lets the call number BREAK_AT to the file system fail with the error
// BREAK_ERROR, or ends the process in its place (BREAK_ERROR=kill), as a full disk or a flat battery would. A write
// that fails has written half. Leaves the name of the call in the file BREAK_TOLD, so that its caller knows when there
// are no more.
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

template <typename Call> Call* Real(const char* name) { return reinterpret_cast<Call*>(dlsym(RTLD_NEXT, name)); }

int Setting(const char* name) {
    const char* text = std::getenv(name);
    return text ? std::atoi(text) : 0;
}

/// Whether this call is the one; it has ended the process where it should.
bool Breaks(const char* name) {
    static int calls = 0;
    if (++calls != Setting("BREAK_AT")) return false;
    const int told = Real<int(const char*, int, ...)>("open")(std::getenv("BREAK_TOLD"), O_WRONLY | O_CREAT, 0666);
    const auto length = static_cast<ssize_t>(std::strlen(name));
    if (Real<ssize_t(int, const void*, std::size_t)>("write")(told, name, std::strlen(name)) != length) std::abort();
    if (std::strcmp(std::getenv("BREAK_ERROR"), "kill") == 0) std::raise(SIGKILL);
    errno = Setting("BREAK_ERROR");
    return true;
}

} // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const auto mode = va_arg(more, mode_t);
    va_end(more);
    return Breaks("open") ? -1 : Real<int(const char*, int, ...)>("open")(path, flags, mode);
}
int open64(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const auto mode = va_arg(more, mode_t);
    va_end(more);
    return Breaks("open64") ? -1 : Real<int(const char*, int, ...)>("open64")(path, flags, mode);
}
ssize_t write(int file, const void* bytes, std::size_t count) {
    const auto real = Real<ssize_t(int, const void*, std::size_t)>("write");
    if (file <= STDERR_FILENO) return real(file, bytes, count);
    if (!Breaks("write")) return real(file, bytes, count);
    const int error = errno;
    if (real(file, bytes, count / 2) < 0) return -1;
    errno = error;
    return -1;
}
int close(int file) {
    const int result = Real<int(int)>("close")(file);
    return Breaks("close") ? -1 : result;
}
int fsync(int file) { return Breaks("fsync") ? -1 : Real<int(int)>("fsync")(file); }
int ftruncate(int file, off_t length) noexcept {
    return Breaks("ftruncate") ? -1 : Real<int(int, off_t)>("ftruncate")(file, length);
}
int fchmod(int file, mode_t mode) noexcept {
    return Breaks("fchmod") ? -1 : Real<int(int, mode_t)>("fchmod")(file, mode);
}
int fchown(int file, uid_t user, gid_t group) noexcept {
    return Breaks("fchown") ? -1 : Real<int(int, uid_t, gid_t)>("fchown")(file, user, group);
}
int flock(int file, int how) noexcept { return Breaks("flock") ? -1 : Real<int(int, int)>("flock")(file, how); }
int rename(const char* from, const char* to) noexcept {
    return Breaks("rename") ? -1 : Real<int(const char*, const char*)>("rename")(from, to);
}
int unlink(const char* path) noexcept { return Breaks("unlink") ? -1 : Real<int(const char*)>("unlink")(path); }
int mkdir(const char* path, mode_t mode) noexcept {
    return Breaks("mkdir") ? -1 : Real<int(const char*, mode_t)>("mkdir")(path, mode);
}
}
