// What each command takes: its options, its help, its examples.
#include "console/CommandTable.h"

#include "console/CommandHelp.h"
#include "console/Commands.h"
#include "platform/SerialDevices.h"
#include "text/AsciiCase.h"

#include <CLI/CLI.hpp>

#include <array>
#include <charconv>

namespace vantrel {

namespace {

std::string Emptiness(const std::string& text) { return text.empty() ? "the name is empty" : ""; }

/// An option takes whatever stands behind it, also the next option when its own value was forgotten.
std::string ForgottenValue(const std::string& text) {
    return text.starts_with("--") ? "a value is missing in front of " + text + "." : "";
}

void AddName(CLI::App& command, const std::string& option, std::string& name, const std::string& what) {
    command.add_option(option, name, what)->required()->type_name("")->check(Emptiness);
}

void AddFile(CLI::App& command, Arguments& arguments, const std::string& what) {
    AddName(command, "FILE", arguments.file, what);
}

constexpr const char* YesToTransfers = "Answer Yes to the confirmations: a transfer, replacing a file, a\n"
                                       "file of another program version";
constexpr const char* YesToFile = "Answer Yes when a file is about to be replaced";
constexpr const char* YesToBoard = "Answer Yes to the confirmations: the reset, replacing a file by the trace";
constexpr const char* YesToReport = "Answer Yes when the report is about to replace a file";
constexpr const char* YesToSet = "Answer Yes to the confirmations: a file of another program version,\n"
                                 "replacing another file";
constexpr const char* YesToTrace = "Answer Yes when the trace is about to replace a file";

void AddYes(CLI::App& command, Arguments& arguments, const char* what) {
    command.add_flag("-y,--yes", arguments.yes, what);
}

/// What is wrong with the number of bits per second of a simulated line; empty for nothing.
std::string SimulatedSpeedProblem(const std::string& text) {
    constexpr int fastest = 10'000'000;
    int speed = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), speed);
    const bool fits = error == std::errc{} && end == text.data() + text.size() && speed >= 0 && speed <= fastest;
    return fits ? "" : "\"" + text + "\" is no speed. Write bits per second, or 0 for no time at all.";
}

std::string BoardSpeedProblem(const std::string& text) {
    return text == "9600" || text == "19200" ? "" : "the board has no speed \"" + text + "\", only 9600 and 19200.";
}

void AddTrace(CLI::App& command, Arguments& arguments) {
    command.add_option("--trace", arguments.trace, "Write every byte sent and received, with its time, to this file")
        ->check(ForgottenValue)
        ->option_text("FILE");
}

void AddPort(CLI::App& command, Arguments& arguments) {
    command
        .add_option("--port", arguments.port,
                    "Where the board is (required):\n"
                    "  3             a port number; its settings are kept in RSPort.cfg\n"
                    "  " +
                        SerialDeviceExample() + std::string(14 - SerialDeviceExample().size(), ' ') +
                        "a device; RSPort.cfg is left alone\n"
                        "  simulated     a simulated board in this program, new each time")
        ->required()
        ->type_name("P")
        ->check(ForgottenValue)
        ->option_text("P");
    command
        .add_option("--speed", arguments.speed,
                    "Line speed, 9600 or 19200 (else the stored one, else 9600); it must\n"
                    "be the speed that the board is set to")
        ->check(BoardSpeedProblem)
        ->option_text("BAUD");
    AddTrace(command, arguments);
}

void AddJson(CLI::App& command, Arguments& arguments, const char* what) {
    command.add_flag("--json", arguments.json, what);
}

void AddNew(CLI::App& command, Arguments& arguments) {
    AddFile(command, arguments, "The set-up file to write");
    AddYes(command, arguments, YesToFile);
}

void AddShow(CLI::App& command, Arguments& arguments) {
    AddFile(command, arguments, "The set-up file to show");
    command.add_flag("--all", arguments.all, "Show the unused sequences, too");
    AddJson(command, arguments, "The whole record as JSON, for other programs");
}

void AddReport(CLI::App& command, Arguments& arguments) {
    AddFile(command, arguments, "The set-up file, or the text file (.vtl), to report on");
    command.add_option("--output", arguments.output, "Write the report to this file instead of standard output")
        ->check(ForgottenValue)
        ->check(Emptiness)
        ->option_text("OUT");
    AddYes(command, arguments, YesToReport);
}

void AddImport(CLI::App& command, Arguments& arguments) {
    AddName(command, "TEXTFILE", arguments.textFile, "The text file (.vtl) to read");
    AddFile(command, arguments, "The set-up file to write");
    AddYes(command, arguments, YesToFile);
}

void AddSet(CLI::App& command, Arguments& arguments) {
    AddFile(command, arguments, "The set-up file to change");
    const auto add = [&](const char* option, auto& word, const char* what) {
        return command.add_option(option, word, what)->type_name("");
    };
    add("SEQUENCE", arguments.sequence, "The number of the sequence, 0 to 30; none for StatusStackAddress")->required();
    add("FIELD", arguments.field, "The name of the field, in any case, see below")->required();
    const CLI::Option* value = add("VALUE", arguments.value, "What to store, as it is entered in the editor");
    AddYes(command, arguments, YesToSet);
    command.final_callback([&arguments, value] {
        if (value->count() > 0) return;
        if (!SameIgnoringCase(arguments.sequence.value_or(""), StatusStackField)) throw CLI::RequiredError("VALUE");
        arguments.value = arguments.field;
        arguments.sequence.reset();
    });
}

void AddDownload(CLI::App& command, Arguments& arguments) {
    AddFile(command, arguments, "The set-up file to send");
    AddPort(command, arguments);
    command.add_flag("--verify", arguments.verify, "Read everything back afterwards and name what differs");
    AddYes(command, arguments, YesToTransfers);
}

void AddUpload(CLI::App& command, Arguments& arguments) {
    AddFile(command, arguments, "The set-up file to write; the descriptions of one that exists stay");
    AddPort(command, arguments);
    command.add_flag("--verify", arguments.verify, "Read everything twice and name what differs");
    AddYes(command, arguments, YesToTransfers);
}

void AddCompare(CLI::App& command, Arguments& arguments) {
    AddFile(command, arguments, "The set-up file to compare with the board");
    AddJson(command, arguments, "What differs as JSON, for other programs");
    AddPort(command, arguments);
    AddYes(command, arguments, YesToTrace);
}

void AddRead(CLI::App& command, Arguments& arguments) {
    command.add_option("ADDRESS", arguments.addresses, "Addresses in the board's memory, or ranges of them")
        ->required()
        ->type_name("");
    AddJson(command, arguments, "The values as JSON, for other programs");
    AddPort(command, arguments);
    AddYes(command, arguments, YesToTrace);
}

void AddStatus(CLI::App& command, Arguments& arguments) {
    command.add_option("--sequence", arguments.sequence, "One sequence: its settings, status and data words")
        ->check(ForgottenValue)
        ->option_text("N");
    command
        .add_option("--file", arguments.file,
                    "Take the sequence's description, and whether its addresses are shown\n"
                    "in hexadecimal, from this set-up file")
        ->check(ForgottenValue)
        ->option_text("FILE");
    AddJson(command, arguments, "The same as JSON, for other programs");
    AddPort(command, arguments);
    AddYes(command, arguments, YesToTrace);
}

void AddWrite(CLI::App& command, Arguments& arguments) {
    command.add_option("ADDRESS", arguments.address, "An address in the board's memory")->required()->type_name("");
    command.add_option("VALUE", arguments.value, "The number to write, in decimal")->required()->type_name("");
    AddPort(command, arguments);
    AddYes(command, arguments, YesToTrace);
}

void AddBoard(CLI::App& command, Arguments& arguments) {
    AddJson(command, arguments, "The same as JSON, for other programs");
    AddPort(command, arguments);
    command.add_flag("--reset-faults", arguments.resetFaults, "Set the fault and error codes back to 0 first");
    command.add_flag("--set-clock", arguments.setClock, "Set the board's time and date to the computer's first");
    command
        .add_option("--network-address", arguments.networkAddress,
                    "Give the board this address in the network first (1 to 32)")
        ->check(ForgottenValue)
        ->option_text("N");
    AddYes(command, arguments, YesToBoard);
}

void AddPorts(CLI::App& command, Arguments& arguments) { AddJson(command, arguments, "As JSON, for other programs"); }

void AddSimulate(CLI::App& command, Arguments& arguments) {
    command.add_option("--link", arguments.link, "Make a symbolic link to the device at this path")
        ->check(ForgottenValue)
        ->option_text("PATH");
    command
        .add_option("--speed", arguments.lineSpeed,
                    "The board's speed (9600 if not given): a program at another one hears\n"
                    "garbage or nothing; 0 for any speed, and no time on the line")
        ->check(SimulatedSpeedProblem)
        ->option_text("N");
    command.add_option("--fault", arguments.faults, "What the board does wrong, see below")->option_text("NAME...");
    command.add_option("--habit", arguments.habits, "What kind of board it is, see below")
        ->option_text("NAME=VALUE...");
}

void AddDemo(CLI::App& command, Arguments& arguments) {
    AddTrace(command, arguments);
    AddYes(command, arguments, YesToTrace);
}

constexpr std::array<Command, 15> Table = {{
    {"new", "Write a set-up file with the defaults: status stack at V1, no sequence used", AddNew, NoFurtherHelp,
     "  vantrelctl new plant.sdt\n", NewCommand},
    {"show", "Show what is in a set-up file", AddShow, NoFurtherHelp,
     "  vantrelctl show plant.sdt\n"
     "  vantrelctl show plant.sdt --json\n",
     ShowCommand},
    {"report", "Write the configuration report as text: 66 lines by 80 columns a page", AddReport, NoFurtherHelp,
     "  vantrelctl report plant.sdt --output plant.txt\n"
     "  vantrelctl report plant.sdt | lp\n",
     ReportCommand},
    {"import", "Make a set-up file from a text file of the older format (.vtl)", AddImport, NoFurtherHelp,
     "  vantrelctl import samples/bottling-line.vtl plant.sdt\n", ImportCommand},
    {"set", "Change one value in a set-up file", AddSet, FieldHelp,
     "  vantrelctl set plant.sdt StatusStackAddress V500\n"
     "  vantrelctl set plant.sdt 3 NodeNumber 5\n"
     "  vantrelctl set plant.sdt 3 SendToNode 1A0H\n"
     "  vantrelctl set plant.sdt 3 NodeDescription \"Filler, left\"\n",
     SetCommand},
    {"download", "Write the settings of a set-up file to the board", AddDownload, NoFurtherHelp,
     "  vantrelctl download plant.sdt --port 1 --verify\n"
     "  vantrelctl download plant.sdt --port /dev/ttyUSB0 --speed 19200 --yes\n",
     DownloadCommand},
    {"upload", "Read the settings of the board into a set-up file", AddUpload, NoFurtherHelp,
     "  vantrelctl upload plant.sdt --port 1 --verify\n", UploadCommand},
    {"compare", "Name what differs between a set-up file and the board; writes nothing to either", AddCompare,
     NoFurtherHelp, "  vantrelctl compare plant.sdt --port 1\n", CompareCommand},
    {"read", "Read values from the board's memory", AddRead, ReadHelp,
     "  vantrelctl read W6400 B8176 --port 1\n"
     "  vantrelctl read W16384-W16396 --port 1 --json\n",
     ReadCommand},
    {"write", "Write one value to the board's memory", AddWrite, AddressHelp, "  vantrelctl write W6400 100 --port 1\n",
     WriteCommand},
    {"status", "Show whether the sequences communicate, or one of them with its data words", AddStatus, NoFurtherHelp,
     "  vantrelctl status --port 1\n"
     "  vantrelctl status --port 1 --sequence 3 --file plant.sdt\n",
     StatusCommand},
    {"board", "Show the state of the board: faults, addresses, clock, revision", AddBoard, NoFurtherHelp,
     "  vantrelctl board --port 1\n"
     "  vantrelctl board --port 1 --reset-faults --set-clock\n",
     BoardCommand},
    {"ports", "List the serial ports of this computer, and what they are", AddPorts, NoFurtherHelp,
     "  vantrelctl ports\n", PortsCommand},
    {"simulate", "Be a board: a simulated one at a serial device of its own, until interrupted", AddSimulate,
     SimulateHelp,
     "  vantrelctl simulate --link /tmp/board\n"
     "  vantrelctl download plant.sdt --port /tmp/board     (at another terminal)\n"
     "  vantrelctl simulate --fault wrong-echo:once hang-up@500 --habit half-sent=forever\n",
     SimulateCommand},
    {"demo", "Send a sample plant to a simulated board, fetch it back and compare", AddDemo, NoFurtherHelp,
     "  vantrelctl demo\n", DemoCommand},
}};

} // namespace

std::span<const Command> Commands() { return Table; }

} // namespace vantrel
