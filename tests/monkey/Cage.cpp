#include "tests/monkey/Cage.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include <csignal>
#include <execinfo.h>
#include <fcntl.h>
#include <grp.h>
#include <linux/landlock.h>
#include <malloc.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vantrel::monkey {

namespace {

namespace fs = std::filesystem;

std::function<std::string()> tellOfHang;

void Require(bool done, const char* what) {
    if (done) return;
    std::perror(what);
    std::_Exit(2);
}

/// False when there was nothing to give up.
bool DropRights(const fs::path& folder) {
    if (::geteuid() != 0) return false;
    const passwd* nobody = ::getpwnam("nobody");
    Require(nobody != nullptr, "nobody");
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        Require(::lchown(entry.path().c_str(), nobody->pw_uid, nobody->pw_gid) == 0, "chown");
    Require(::chown(folder.c_str(), nobody->pw_uid, nobody->pw_gid) == 0, "chown");
    Require(::setgroups(0, nullptr) == 0 && ::setgid(nobody->pw_gid) == 0 && ::setuid(nobody->pw_uid) == 0, "setuid");
    Require(::setuid(0) != 0 && ::geteuid() != 0, "still root");
    return true;
}

bool Allow(long rules, const fs::path& folder, std::uint64_t access) {
    landlock_path_beneath_attr rule{};
    rule.allowed_access = access;
    rule.parent_fd = ::open(folder.c_str(), O_PATH | O_CLOEXEC);
    const bool added = ::syscall(SYS_landlock_add_rule, rules, LANDLOCK_RULE_PATH_BENEATH, &rule, 0) == 0;
    ::close(rule.parent_fd);
    return added;
}

/// False where the kernel has no sandbox. What is read is not restricted.
bool Sandbox(const fs::path& folder) {
    constexpr std::uint64_t files = LANDLOCK_ACCESS_FS_WRITE_FILE;
    constexpr std::uint64_t changes = files | LANDLOCK_ACCESS_FS_REMOVE_DIR | LANDLOCK_ACCESS_FS_REMOVE_FILE |
                                      LANDLOCK_ACCESS_FS_MAKE_DIR | LANDLOCK_ACCESS_FS_MAKE_REG |
                                      LANDLOCK_ACCESS_FS_MAKE_SYM | LANDLOCK_ACCESS_FS_MAKE_FIFO |
                                      LANDLOCK_ACCESS_FS_MAKE_SOCK;
    // No program is started either, but for a sanitizer's.
    landlock_ruleset_attr handled{};
    handled.handled_access_fs = changes | LANDLOCK_ACCESS_FS_EXECUTE;
    const long rules = ::syscall(SYS_landlock_create_ruleset, &handled, sizeof handled, 0);
    if (rules < 0) return false;
    const bool restricted = Allow(rules, folder, changes) && Allow(rules, "/dev/null", files) &&
                            Allow(rules, "/usr/lib", LANDLOCK_ACCESS_FS_EXECUTE) &&
                            ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
                            ::syscall(SYS_landlock_restrict_self, rules, 0) == 0;
    ::close(static_cast<int>(rules));
    return restricted;
}

extern "C" void OnAlarm(int /*signal*/) {
    const std::string text = "HANG: an action did not come back. " + (tellOfHang ? tellOfHang() : "") + "\n";
    (void)!::write(STDERR_FILENO, text.data(), text.size());
    std::array<void*, 100> stack{};
    ::backtrace_symbols_fd(stack.data(), ::backtrace(stack.data(), static_cast<int>(stack.size())), STDERR_FILENO);
    std::abort();
}

/// The folder stands where nobody in the sandbox can remove it: whoever started the program waits for it, and cleans
/// up.
void LeaveToChild(const fs::path& folder) {
    const pid_t child = ::fork();
    Require(child >= 0, "fork");
    if (child == 0) return;
    int status = 0;
    Require(::waitpid(child, &status, 0) == child, "waitpid");
    std::error_code error;
    fs::remove_all(folder, error);
    if (WIFSIGNALED(status)) std::fprintf(stderr, "ended by signal %d\n", WTERMSIG(status));
    std::_Exit(WIFEXITED(status) ? WEXITSTATUS(status) : 1);
}

} // namespace

Cage::Cage(const fs::path& data) {
    std::random_device random;
    folder_ = fs::temp_directory_path() / ("vantrel-monkey-" + std::to_string(random()));
    fs::create_directories(folder_ / "data");
    for (const char* name : {"help", "support", "program", "samples"})
        fs::copy(data / name, folder_ / "data" / name, fs::copy_options::recursive);
    // What a sanitizer reports with.
    fs::create_directory(folder_ / "bin");
    if (const fs::path tool = "/usr/bin/llvm-symbolizer-16"; fs::exists(tool))
        fs::create_symlink(tool, folder_ / "bin" / "llvm-symbolizer");
    LeaveToChild(folder_);
    droppedRights_ = DropRights(folder_);
    // Who started it takes it along; and a leak sanitizer may still look into it.
    Require(::prctl(PR_SET_PDEATHSIG, SIGKILL) == 0 && ::prctl(PR_SET_DUMPABLE, 1) == 0, "prctl");
    sandboxed_ = Sandbox(folder_);
    fs::current_path(folder_);
    // No program of the host is found, no printer, no desktop; what names one is forgotten.
    ::clearenv();
    for (const char* name : {"HOME", "TMPDIR", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
        ::setenv(name, folder_.c_str(), 1);
    ::setenv("PATH", (folder_ / "bin").c_str(), 1);
    ::setenv("CUPS_SERVER", (folder_ / "no-printer").c_str(), 1);
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ::setenv("LANG", "C.UTF-8", 1);
}

std::string Cage::Text() const {
    return std::string(droppedRights_ ? "as nobody" : "with the rights of its user") +
           (sandboxed_ ? ", in the kernel's sandbox" : ", without a sandbox");
}

std::string Cage::WrittenOutside() {
    for (const char* folder : {"/tmp", "/var/tmp", "/dev/shm"}) {
        const std::string path = std::string(folder) + "/vantrel-monkey-escaped";
        if (std::ofstream(path).is_open()) return ::unlink(path.c_str()), path;
    }
    return {};
}

Watchdog::Watchdog(unsigned seconds, std::function<std::string()> tell) : seconds_(seconds) {
    tellOfHang = std::move(tell);
    std::signal(SIGALRM, OnAlarm);
    Alive();
}

Watchdog::~Watchdog() {
    ::alarm(0);
    tellOfHang = nullptr;
}

void Watchdog::Alive() { ::alarm(seconds_); }

Usage UsageNow() {
    long pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    const auto descriptors = std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    constexpr double mega = 1024 * 1024;
    const struct mallinfo2 heap = ::mallinfo2();
    return {static_cast<double>(heap.uordblks + heap.hblkhd) / mega,
            static_cast<double>(pages * ::sysconf(_SC_PAGESIZE)) / mega, static_cast<int>(descriptors)};
}

} // namespace vantrel::monkey
