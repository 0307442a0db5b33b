// What the console twin asks of whoever runs it: streams, a person, time, interrupts and a way to the board. The real
// one is put together in main.cpp; the tests put theirs together from streams in memory and a virtual clock.
#pragma once

#include "link/PortChoice.h"
#include "platform/Clock.h"
#include "platform/SerialPort.h"

#include <atomic>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>

namespace vantrel {

/// How a command ended, for the shell.
enum class ExitCode : int {
    Done = 0,
    Refused = 1, ///< Refused by somebody, cancelled, or something differs.
    WrongUsage = 2,
    LinkFailed = 3,
    FileError = 4,
    Interrupted = 130, ///< Ended before its time by Ctrl+C, as shells know it.
};

/// A port at whose far end a board is, not yet opened, and what to call it in messages.
struct BoardPort {
    std::shared_ptr<SerialPort> port;
    std::string name;
};

struct ConsoleHost {
    std::istream& in;
    std::ostream& out; ///< Results.
    std::ostream& err; ///< Everything else: questions, warnings, progress.
    Clock& clock;
    bool personPresent = false; ///< Somebody can answer questions on `in`.
    bool drawsProgress = false; ///< `err` is a terminal whose last line can be drawn over.
    /// From the first call on, an interrupt raises this flag instead of ending the process.
    std::function<const std::atomic<bool>&()> catchInterrupts;
    /// `supportFolder`: where links that stand for port numbers are looked for.
    std::function<BoardPort(const PortChoice& choice, const std::filesystem::path& supportFolder)> reachBoard;
    /// Hears what is to be said when a second interrupt ends the process at once. May be left out.
    std::function<void(const std::string& text)> setLastWords{};
    bool outIsTerminal = false; ///< `out` is a terminal, where bytes of a file have no place.
};

} // namespace vantrel
