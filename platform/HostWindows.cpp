// The Windows answers to the small questions about folders and the terminal.
#include "platform/Folders.h"
#include "platform/Terminal.h"
#include "text/PathText.h"

#include <windows.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>
#include <shlobj.h>
#include <system_error>

namespace vantrel {

namespace {

std::atomic<bool> interrupted{false};
std::array<char, 1024> lastWords{};
std::atomic<std::size_t> lastWordsLength{0};

BOOL WINAPI OnInterrupt(DWORD event) {
    const bool again = interrupted.exchange(true);
    if (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT) {
        if (!again) return TRUE;
        DWORD written = 0;
        WriteFile(GetStdHandle(STD_ERROR_HANDLE), lastWords.data(), static_cast<DWORD>(lastWordsLength.load()),
                  &written, nullptr);
        ExitProcess(static_cast<UINT>(InterruptExitCode()));
    }
    // The window or the session is being closed: the process ends when this returns, or five seconds from now. Until
    // then the program can leave the board in order.
    constexpr DWORD almostFiveSeconds = 4800;
    Sleep(almostFiveSeconds);
    return TRUE;
}

} // namespace

std::filesystem::path ExecutableFolder() {
    std::wstring name(MAX_PATH, L'\0');
    DWORD length = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    while (length == name.size()) {
        name.resize(2 * name.size());
        length = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    }
    name.resize(length);
    return std::filesystem::path(name).parent_path();
}

std::filesystem::path UserDataFolder() {
    PWSTR folder = nullptr;
    std::filesystem::path data;
    if (SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &folder) == S_OK) data = folder;
    CoTaskMemFree(folder);
    return data.empty() ? ExecutableFolder() : data / "VANTREL";
}

std::filesystem::path FolderFromVariable(const std::string& name) {
    // What the narrow function answers is in the code page, which need not hold the name.
    const wchar_t* value = _wgetenv(PathFromUtf8(name).c_str());
    return value ? std::filesystem::path(value) : std::filesystem::path();
}

bool FolderIsWritable(const std::filesystem::path& folder) {
    // Access lists cannot be judged by attributes: only trying tells.
    const std::filesystem::path probe = folder / (L"~vantrel" + std::to_wstring(GetCurrentProcessId()) + L".tmp");
    const HANDLE file = CreateFileW(probe.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    CloseHandle(file);
    return true;
}

bool JoinTerminal() {
    const auto leadsSomewhere = [](DWORD stream) {
        const HANDLE handle = GetStdHandle(stream);
        return handle != nullptr && handle != INVALID_HANDLE_VALUE;
    };
    const bool output = leadsSomewhere(STD_OUTPUT_HANDLE);
    const bool errors = leadsSomewhere(STD_ERROR_HANDLE);
    if (output && errors) return true;
    if (!AttachConsole(ATTACH_PARENT_PROCESS)) return errors;
    FILE* stream = nullptr;
    if (!output) freopen_s(&stream, "CONOUT$", "w", stdout);
    if (!errors) freopen_s(&stream, "CONOUT$", "w", stderr);
    return true;
}

bool StandardInputIsTerminal() { return _isatty(_fileno(stdin)) != 0; }
bool StandardOutputIsTerminal() { return _isatty(_fileno(stdout)) != 0; }
bool StandardErrorIsTerminal() { return _isatty(_fileno(stderr)) != 0; }

void UseStandardStreamsForBytes() {
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
}

const std::atomic<bool>& CatchInterrupts() {
    SetConsoleCtrlHandler(OnInterrupt, TRUE);
    return interrupted;
}

void SetLastWords(const std::string& text) {
    lastWordsLength = 0;
    lastWordsLength = text.copy(lastWords.data(), lastWords.size());
}

int InterruptExitCode() {
    constexpr int ctrlC = 130; // As elsewhere: scripts need one code only.
    return ctrlC;
}

std::vector<std::string> CommandLineArguments(int, char**) {
    SetConsoleOutputCP(CP_UTF8);
    int count = 0;
    LPWSTR* wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 0; i < count; ++i)
        arguments.push_back(Utf8FromPath(std::filesystem::path(wide[i])));
    LocalFree(wide);
    return arguments;
}

} // namespace vantrel
