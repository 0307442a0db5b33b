// From a command line to an exit code; the last place where errors are caught.
#include "console/Console.h"

#include "console/CommandContext.h"
#include "console/CommandLine.h"
#include "console/PrintableText.h"
#include "platform/RuntimeError.h"

#include <exception>
#include <ostream>

namespace vantrel {

namespace {

ExitCode Run(const std::vector<std::string>& arguments, ConsoleHost& host) {
    const CommandLine line = ReadCommandLine(arguments, host);
    if (!line.run) return line.ended;
    CommandContext context(line.arguments, host);
    try {
        return line.run(context);
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

int RunConsole(const std::vector<std::string>& arguments, ConsoleHost& host) {
    const auto run = [&] {
        try {
            return Run(arguments, host);
        } catch (const UsageError& error) {
            return Tell(host, error.what(), ExitCode::WrongUsage);
        } catch (const RuntimeError& error) {
            return Tell(host, error.Description(), ExitCode::FileError);
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
