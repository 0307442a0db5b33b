// The POSIX answers to the small questions about folders and the terminal.
#include "platform/Folders.h"
#include "platform/Terminal.h"

#include <csignal>
#include <cstdlib>
#include <pwd.h>
#include <system_error>
#include <unistd.h>

namespace vantrel {

namespace {

// The only state that a signal handler can reach.
std::atomic<bool> interrupted{false};

extern "C" void OnInterrupt(int) { interrupted = true; }

std::filesystem::path HomeFolder() {
    if (std::filesystem::path home = FolderFromVariable("HOME"); !home.empty()) return home;
    const passwd* user = getpwuid(getuid()); // NOLINT(concurrency-mt-unsafe)
    return user ? std::filesystem::path(user->pw_dir) : std::filesystem::path("/");
}

} // namespace

std::filesystem::path FolderFromVariable(const std::string& name) {
    const char* value = std::getenv(name.c_str()); // NOLINT(concurrency-mt-unsafe): as declared
    return value ? std::filesystem::path(value) : std::filesystem::path();
}

std::filesystem::path ExecutableFolder() {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::current_path() : self.parent_path();
}

std::filesystem::path UserDataFolder() {
    std::filesystem::path data = FolderFromVariable("XDG_DATA_HOME");
    if (!data.is_absolute()) data = HomeFolder() / ".local" / "share";
    return data / "vantrel";
}

bool FolderIsWritable(const std::filesystem::path& folder) { return access(folder.c_str(), W_OK | X_OK) == 0; }

bool StandardInputIsTerminal() { return isatty(STDIN_FILENO) != 0; }
bool JoinTerminal() { return true; }
bool StandardErrorIsTerminal() { return isatty(STDERR_FILENO) != 0; }

const std::atomic<bool>& CatchInterrupts() {
    struct sigaction action {};
    action.sa_handler = OnInterrupt;
    // A question that waits for an answer ends at once; the second interrupt finds the default again.
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaction(signal, &action, nullptr);
    return interrupted;
}

std::vector<std::string> CommandLineArguments(int argc, char** argv) { return {argv, argv + argc}; }

} // namespace vantrel
