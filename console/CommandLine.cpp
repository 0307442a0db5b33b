// From words to a command and its arguments, or to what is wrong with them.
#include "console/CommandLine.h"

#include "app/Program.h"
#include "platform/SerialDevices.h"
#include "text/PrintableText.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <ostream>

namespace vantrel {

namespace {

constexpr const char* ProgramName = "vantrelctl";

/// In the order of the help.
constexpr std::array AllCommands{&NewCommand,     &ShowCommand,  &ReportCommand,   &CheckCommand,    &ImportCommand,
                                 &ExportCommand,  &SetCommand,   &DownloadCommand, &UploadCommand,   &BackupCommand,
                                 &CompareCommand, &ReadCommand,  &WriteCommand,    &StatusCommand,   &BoardCommand,
                                 &DoctorCommand,  &PortsCommand, &SupportCommand,  &SimulateCommand, &DemoCommand};

std::string OverallHelp() {
    return "vantrelctl COMMAND --help tells more about a command.\n"
           "\n"
           "To see it work, without any board:\n"
           "  vantrelctl demo\n"
           "\n"
           "From a text file to a running board at the first serial port:\n"
           "  vantrelctl import samples/bottling-line.vtl plant.sdt\n"
           "  vantrelctl show plant.sdt\n"
           "  vantrelctl download plant.sdt --port 1 --verify\n"
           "\n"
           "What a board holds, kept in a file and compared later:\n"
           "  vantrelctl upload plant.sdt --port " +
           SerialDeviceExample() +
           "\n"
           "  vantrelctl compare plant.sdt --port " +
           SerialDeviceExample() +
           "\n"
           "\n"
           "Results go to standard output; questions, warnings and progress to standard error.\n"
           "Questions are asked at a terminal; without one they count as refused, unless --yes\n"
           "answers them. Set-up files (.sdt) always get their extension when they are written.\n"
           "The file - is standard input where one is read, standard output where one is written.\n"
           "\n";
}

constexpr const char* ExitCodesHelp = "Exit codes:\n"
                                      "  0  done\n"
                                      "  1  refused, cancelled, or something differs\n"
                                      "  2  wrong usage\n"
                                      "  3  the link to the board failed\n"
                                      "  4  a file could not be read or written\n"
                                      "  130  interrupted (Ctrl+C)\n";

/// What is left over before what is missing: a misspelt option takes its value's place.
std::string UsageText(const CLI::App& app, const CLI::Error& error) {
    std::vector<std::string> leftOver = app.remaining(true);
    if (leftOver.empty() || error.get_name() == "ValidationError") return error.what();
    if (app.get_subcommands().empty()) return "There is no command \"" + leftOver.front() + "\".";
    std::reverse(leftOver.begin(), leftOver.end()); // The error turns them around.
    return CLI::ExtrasError(leftOver).what();
}

std::string WrongUsageText(const CLI::App* app, const CLI::Error& error) {
    const auto chosen = app->get_subcommands();
    return std::string(ProgramName) + ": " + PrintableText(UsageText(*app, error), Layout::Keep) + "\nSee " +
           ProgramName + (chosen.empty() ? "" : " " + chosen.front()->get_name()) + " --help.\n";
}

void DescribeCommands(CLI::App& app, Arguments& arguments) {
    constexpr std::size_t descriptionsAt = 26;
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.get_formatter()->column_width(descriptionsAt);
    CommandOptions(app, arguments).ProgramFolder();
    app.set_version_flag("--version", std::string(ProgramName) + " " + VersionNumber());
    app.footer(OverallHelp() + ExitCodesHelp);
    app.failure_message(WrongUsageText);
    app.require_subcommand(1);
    for (const Command* command : AllCommands) {
        CLI::App* sub = app.add_subcommand(command->name, command->summary)->group("Commands");
        CommandOptions options(*sub, arguments);
        command->takes(options);
        options.ProgramFolder();
        sub->footer((command->furtherHelp ? command->furtherHelp() : "") + "Examples:\n" + command->examples + "\n" +
                    ExitCodesHelp);
    }
}

} // namespace

CommandLine ReadCommandLine(const std::vector<std::string>& arguments, ConsoleHost& host) {
    CommandLine line;
    CLI::App app("Set-up files of the K5216-505 network communication board, and the board itself.", ProgramName);
    DescribeCommands(app, line.arguments);
    if (arguments.empty()) {
        host.err << app.help();
        return {.ended = ExitCode::WrongUsage};
    }
    std::vector<std::string> words(arguments.rbegin(), arguments.rend()); // As the parser wants them.
    if (words.back() == "help") {
        words.pop_back();
        words.insert(words.begin(), "--help");
    }
    try {
        app.parse(words);
    } catch (const CLI::ParseError& error) {
        const bool asked = app.exit(error, host.out, host.err) == 0;
        return {.ended = asked ? ExitCode::Done : ExitCode::WrongUsage};
    }
    const std::string chosen = app.get_subcommands().front()->get_name();
    line.command = *std::ranges::find_if(AllCommands, [&](const Command* command) { return chosen == command->name; });
    return line;
}

} // namespace vantrel
