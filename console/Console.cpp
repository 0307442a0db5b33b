// From a command line to an exit code; the last place where errors are caught.
#include "console/Console.h"

#include "console/CommandLine.h"
#include "console/Transfers.h"
#include "text/PrintableText.h"

#include <atomic>
#include <exception>
#include <ostream>

namespace vantrel {

namespace {

/// A second interrupt leaves the board as it is in that moment.
std::string LastWordsOf(const Arguments& arguments) {
    return "\nvantrelctl: ended at once. " + PrintableText(FlagLeftText(arguments), Layout::Keep) + "\n";
}

ExitCode Run(const std::vector<std::string>& arguments, ConsoleHost& host) {
    const CommandLine line = ReadCommandLine(arguments, host);
    if (!line.command) return line.ended;
    if (line.command == &DownloadCommand && host.setLastWords) host.setLastWords(LastWordsOf(line.arguments));
    CommandContext context(line.arguments, host);
    try {
        return line.command->run(context);
    } catch (...) {
        context.progress.EndLine();
        throw;
    }
}

ExitCode Tell(ConsoleHost& host, const std::string& text, ExitCode code) {
    host.err << "vantrelctl: " << PrintableText(text, Layout::Keep) << '\n';
    return code;
}

} // namespace

int RunConsole(const std::vector<std::string>& arguments, ConsoleHost& realHost) {
    const std::atomic<bool>* interrupted = nullptr;
    ConsoleHost host = realHost;
    host.catchInterrupts = [&]() -> const std::atomic<bool>& {
        interrupted = &realHost.catchInterrupts();
        return *interrupted;
    };
    const auto run = [&] {
        try {
            const ExitCode code = Run(arguments, host);
            const bool cutOff = code == ExitCode::Refused || code == ExitCode::LinkFailed;
            return cutOff && interrupted && *interrupted ? ExitCode::Interrupted : code;
        } catch (const UsageError& error) {
            return Tell(host, error.what(), ExitCode::WrongUsage);
        } catch (const std::exception& error) {
            return Tell(host, error.what(), ExitCode::FileError);
        }
    };
    ExitCode code = run();
    if (!host.out.flush()) code = Tell(host, "The results could not be written.", ExitCode::FileError);
    host.err.flush();
    return static_cast<int>(code);
}

} // namespace vantrel
