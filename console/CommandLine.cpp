// From words to a command and its arguments, or to what is wrong with them.
#include "console/CommandLine.h"

#include "app/Program.h"
#include "console/CommandHelp.h"
#include "console/CommandTable.h"
#include "console/PrintableText.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <ostream>
#include <string_view>

namespace vantrel {

namespace {

constexpr const char* ProgramName = "vantrelctl";

/// How many characters have to be changed, put in or taken out to make one word of the other.
std::size_t EditDistance(std::string_view one, std::string_view other) {
    std::vector<std::size_t> row(other.size() + 1);
    for (std::size_t j = 0; j < row.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= one.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j < row.size(); ++j) {
            const std::size_t changed = diagonal + (one[i - 1] == other[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, changed});
        }
    }
    return row.back();
}

/// Nothing for a word that is none.
const Command* CommandNamed(const std::string& word) {
    const auto found = std::ranges::find_if(Commands(), [&](const Command& command) { return word == command.name; });
    return found == Commands().end() ? nullptr : &*found;
}

std::string UnknownCommandText(const std::string& word) {
    constexpr std::size_t farthest = 2;
    const auto distance = [&](const Command& command) {
        return std::string_view(command.name).starts_with(word) ? 0 : EditDistance(word, command.name);
    };
    const auto nearest = std::ranges::min_element(Commands(), {}, distance);
    const bool near = distance(*nearest) <= farthest;
    return "There is no command \"" + word + "\"." +
           (near ? " Did you mean \"" + std::string(nearest->name) + "\"?" : "");
}

CommandLine WrongUsage(ConsoleHost& host, const std::string& command, const std::string& text) {
    host.err << ProgramName << ": " << PrintableText(text, Layout::Keep) << "\nSee " << ProgramName << command
             << " --help.\n";
    return {.ended = ExitCode::WrongUsage};
}

/// What is left over before what is missing: a misspelt option takes its value's place.
std::string UsageText(const CLI::App& app, const CLI::ParseError& error) {
    std::vector<std::string> leftOver = app.remaining(true);
    std::reverse(leftOver.begin(), leftOver.end()); // The error turns them around.
    const bool wrongValue = dynamic_cast<const CLI::ValidationError*>(&error) != nullptr;
    return leftOver.empty() || wrongValue ? error.what() : CLI::ExtrasError(leftOver).what();
}

void AddCommonOptions(CLI::App& app, Arguments& arguments) {
    app.get_formatter()->column_width(26);
    app.add_option(
           "--program-folder", arguments.programFolder,
           "Where the program's folders Support and samples are\n(else VANTREL_FOLDER, else beside the program)")
        ->option_text("DIR");
}

void DescribeCommands(CLI::App& app, Arguments& arguments) {
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    AddCommonOptions(app, arguments);
    app.set_version_flag("--version", std::string(ProgramName) + " " + VersionNumber());
    app.footer(OverallHelp() + ExitCodesHelp());
    app.require_subcommand(1);
    for (const Command& command : Commands()) {
        CLI::App* sub = app.add_subcommand(command.name, command.summary)->group("Commands");
        command.addOptions(*sub, arguments);
        AddCommonOptions(*sub, arguments);
        sub->footer(command.furtherHelp() + "Examples:\n" + command.examples + "\n" + ExitCodesHelp());
    }
}

} // namespace

CommandLine ReadCommandLine(const std::vector<std::string>& arguments, ConsoleHost& host) {
    if (!arguments.empty() && arguments.front() == "help") {
        std::vector<std::string> asked(arguments.begin() + 1, arguments.end());
        asked.emplace_back("--help");
        return ReadCommandLine(asked, host);
    }
    CommandLine line;
    CLI::App app("Set-up files of the K5216-505 network communication board, and the board itself.", ProgramName);
    DescribeCommands(app, line.arguments);
    if (arguments.empty()) {
        host.err << app.help();
        return {.ended = ExitCode::WrongUsage};
    }
    if (!arguments.front().starts_with('-') && !CommandNamed(arguments.front())) {
        return WrongUsage(host, "", UnknownCommandText(arguments.front()));
    }
    const auto chosen = [&app] {
        const auto commands = app.get_subcommands();
        return commands.empty() ? std::string() : commands.front()->get_name();
    };
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForVersion& version) {
        host.out << version.what() << '\n';
        return {};
    } catch (const CLI::CallForHelp&) {
        host.out << app.help();
        return {};
    } catch (const CLI::ParseError& error) {
        return WrongUsage(host, chosen().empty() ? "" : " " + chosen(), UsageText(app, error));
    }
    line.run = CommandNamed(chosen())->run;
    return line;
}

} // namespace vantrel
