// What a command takes, each way of taking it told once. Knows the parser of the command line.
#pragma once

#include "console/CommandContext.h"

#include <string>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace vantrel {

class CommandOptions {
public:
    CommandOptions(CLI::App& command, Arguments& arguments) : to(arguments), command_(command) {}

    /// A word that has to be there, with something in it, in its place behind the command; a list takes all that stand
    /// there. An optional one may be left out, or be empty.
    template <typename Word> void Place(const char* name, Word& word, const char* what);
    /// The set-up file.
    void File(const char* what) { Place("FILE", to.file, what); }
    /// An option with a value, which is called `value` in the help.
    template <typename Value>
    CLI::Option& Option(const char* name, const char* value, Value& to, const std::string& what);
    void Flag(const char* name, bool& flag, const char* what);

    void Json() { Flag("--json", to.json, "The result as JSON, for other programs"); }
    void Yes();
    /// With the question that it may bring.
    void Trace();
    /// Where the board is, and the trace of what passes on the way there.
    enum class PortIs { Needed, MayBeMissing };
    void Port(PortIs needed = PortIs::Needed);
    void ProgramFolder();
    /// Bits per second of a simulated board.
    void SimulatedSpeed();

    Arguments& to;

private:
    CLI::App& command_;
};

} // namespace vantrel
