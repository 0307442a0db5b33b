// The POSIX answers to the small questions about folders and the terminal.
#include "platform/Folders.h"
#include "platform/Terminal.h"

#include <array>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <pwd.h>
#include <system_error>
#include <unistd.h>

namespace vantrel {

namespace {

// The only state that a signal handler can reach.
std::atomic<bool> interrupted{false};
std::atomic<int> interruptedBy{SIGINT};
std::array<char, 1024> lastWords{};
std::atomic<std::size_t> lastWordsLength{0};

extern "C" void OnInterrupt(int signal) {
    if (!interrupted.exchange(true)) {
        interruptedBy = signal;
        return;
    }
    const ssize_t ignored = write(STDERR_FILENO, lastWords.data(), lastWordsLength);
    (void)ignored;
    _exit(InterruptExitCode());
}

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
bool StandardOutputIsTerminal() { return isatty(STDOUT_FILENO) != 0; }
bool StandardErrorIsTerminal() { return isatty(STDERR_FILENO) != 0; }

void UseStandardStreamsForBytes() {}

const std::atomic<bool>& CatchInterrupts() {
    struct sigaction action {};
    action.sa_handler = OnInterrupt;
    // Without SA_RESTART: a question that waits for an answer ends at once.
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before {};
        const bool ignored = sigaction(signal, nullptr, &before) == 0 && before.sa_handler == SIG_IGN;
        if (!ignored) sigaction(signal, &action, nullptr);
    }
    return interrupted;
}

void SetLastWords(const std::string& text) {
    lastWordsLength = 0;
    lastWordsLength = text.copy(lastWords.data(), lastWords.size());
}

int InterruptExitCode() {
    constexpr int endedBySignal = 128;
    return endedBySignal + interruptedBy;
}

std::vector<std::string> CommandLineArguments(int argc, char** argv) { return {argv, argv + argc}; }

} // namespace vantrel
