// The options as the parser takes them.
#include "console/CommandOptions.h"

#include "platform/SerialDevices.h"
#include "text/Padding.h"

#include <CLI/CLI.hpp>

namespace vantrel {

namespace {

/// An option takes whatever stands behind it, also the next option when its own value was forgotten.
std::string Emptiness(const std::string& text) {
    if (text.starts_with("--")) return "a value is missing in front of " + text + ".";
    return text.empty() ? "it is empty" : "";
}

template <typename Word> constexpr bool MayBeMissing = false;
template <> constexpr bool MayBeMissing<std::optional<std::string>> = true;

} // namespace

template <typename Word> void CommandOptions::Place(const char* name, Word& word, const char* what) {
    CLI::Option& place = *command_.add_option(name, word, what)->type_name("");
    if (!MayBeMissing<Word>) place.required()->check(Emptiness);
}

template void CommandOptions::Place(const char*, std::string&, const char*);
template void CommandOptions::Place(const char*, std::optional<std::string>&, const char*);
template void CommandOptions::Place(const char*, std::vector<std::string>&, const char*);

template <typename Value>
CLI::Option& CommandOptions::Option(const char* name, const char* value, Value& target, const std::string& what) {
    return *command_.add_option(name, target, what)->type_name(value)->check(Emptiness);
}

template CLI::Option& CommandOptions::Option(const char*, const char*, std::string&, const std::string&);
template CLI::Option& CommandOptions::Option(const char*, const char*, std::optional<std::string>&, const std::string&);
template CLI::Option& CommandOptions::Option(const char*, const char*, std::vector<std::string>&, const std::string&);

void CommandOptions::Flag(const char* name, bool& flag, const char* what) { command_.add_flag(name, flag, what); }

void CommandOptions::Yes() {
    Flag("-y,--yes", to.yes,
         "Answer Yes to the confirmations: a transfer, a reset, replacing a\nfile, a file of another program version");
}

void CommandOptions::Trace() {
    Option("--trace", "FILE", to.trace, "Write every byte sent and received, with its time, to this file");
    Flag("--decode", to.decode, "Write into the trace what the bytes mean: \"read B8176 = 0\"");
    Yes();
}

void CommandOptions::Port(PortIs needed) {
    const std::string device = SerialDeviceExample();
    Option("--port", "PORT", to.port,
           "Where the board is:\n"
           "  3             a port number; its settings are kept in RSPort.cfg\n"
           "  " +
               PadRight(device, 14) +
               "a device; RSPort.cfg is left alone\n"
               "  rfc2217://HOST:PORT, socket://HOST:PORT\n"
               "                a board behind a network: with its speed set by\n"
               "                RFC 2217, or as raw bytes\n"
               "  simulated     a simulated board in this program, new each time")
        .required(needed == PortIs::Needed);
    Option("--speed", "BAUD", to.speed,
           "Line speed (else the stored one, else 9600); it must be the speed\nthat the board is set to")
        .check(CLI::IsMember({"9600", "19200"}));
    Trace();
}

void CommandOptions::ProgramFolder() {
    Option("--program-folder", "DIR", to.programFolder,
           "Where the program's folders Support and samples are\n(else VANTREL_FOLDER, else beside the program)");
}

void CommandOptions::SimulatedSpeed() {
    constexpr int fastest = 10'000'000;
    command_
        .add_option("--speed", to.lineSpeed,
                    "The board's speed (9600 if not given): a program at another one\nhears garbage or nothing; 0 for "
                    "any speed, and no time on the line")
        ->type_name("N")
        ->check(CLI::Range(0, fastest));
}

} // namespace vantrel
