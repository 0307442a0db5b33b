// What the console asks of its host: is a person there, how wide is the line, has the person pressed Ctrl+C.
#pragma once

#include <atomic>
#include <string>
#include <vector>

namespace vantrel {

[[nodiscard]] bool StandardInputIsTerminal();
[[nodiscard]] bool StandardOutputIsTerminal();
[[nodiscard]] bool StandardErrorIsTerminal();

/// Some hosts give a program with windows no terminal. From now on what it writes to its standard streams goes to the
/// terminal of the program that started it, unless they lead somewhere already. False when there is none: whoever
/// started it from the desktop sees only windows.
[[nodiscard]] bool JoinTerminal();
/// From now on what is read from standard input and written to standard output are bytes, line ends included.
void UseStandardStreamsForBytes();

/// From now on an interrupt (Ctrl+C, a request to terminate, a closed terminal) sets this flag instead of ending the
/// process; a second one ends it at once. What whoever started the process has told it to ignore (nohup) stays ignored.
[[nodiscard]] const std::atomic<bool>& CatchInterrupts();
/// What a second interrupt says on standard error before it ends the process; cut off after a thousand bytes or so.
void SetLastWords(const std::string& text);
/// The exit code of a process that an interrupt has ended: 128 and the number of the signal, 130 for Ctrl+C.
[[nodiscard]] int InterruptExitCode();

/// The arguments of the command line in UTF-8, program name first.
[[nodiscard]] std::vector<std::string> CommandLineArguments(int argc, char** argv);

} // namespace vantrel
