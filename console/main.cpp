// The console twin's process: the real host put together, nothing else.
#include "console/Console.h"
#include "console/HostPorts.h"
#include "platform/SystemClock.h"
#include "platform/Terminal.h"

#include <iostream>

int main(int argc, char** argv) {
    vantrel::UseStandardStreamsForBytes();
    vantrel::SystemClock clock;
    std::vector<std::string> arguments = vantrel::CommandLineArguments(argc, argv);
    if (!arguments.empty()) arguments.erase(arguments.begin());
    vantrel::ConsoleHost host{
        .in = std::cin,
        .out = std::cout,
        .err = std::cerr,
        .clock = clock,
        .personPresent = vantrel::StandardInputIsTerminal(),
        .drawsProgress = vantrel::StandardErrorIsTerminal(),
        .catchInterrupts = vantrel::CatchInterrupts,
        .reachBoard =
            [&clock](const vantrel::PortChoice& choice, const std::filesystem::path& supportFolder) {
                return vantrel::ReachBoard(choice, clock, supportFolder);
            },
        .setLastWords = vantrel::SetLastWords,
        .outIsTerminal = vantrel::StandardOutputIsTerminal()};
    const int code = vantrel::RunConsole(arguments, host);
    const bool interrupted = code == static_cast<int>(vantrel::ExitCode::Interrupted);
    return interrupted ? vantrel::InterruptExitCode() : code;
}
