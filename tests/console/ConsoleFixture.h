// The tests' console: streams in memory, virtual time, and a simulated board that outlives the commands.
#pragma once

#include "console/Console.h"
#include "document/Configuration.h"
#include "document/SetupFile.h"
#include "platform/SafeFile.h"
#include "simulator/SimulatedBoard.h"
#include "simulator/SimulatedPort.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/VirtualClock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace vantrel {

/// Virtual time at one moment of which something happens: Ctrl+C is pressed, if it is not something else.
class InterruptingClock final : public VirtualClock {
public:
    void SleepUntil(MonotonicTime time) override {
        VirtualClock::SleepUntil(time);
        if (!interruptAt || Now() < *interruptAt) return;
        interruptAt.reset();
        happens();
    }

    std::optional<MonotonicTime> interruptAt;
    std::atomic<bool> interrupted{false};
    std::function<void()> happens = [this] { interrupted = true; };
};

/// A stream whose flush somebody waits for.
class WatchedOutput final : public std::stringbuf {
public:
    std::function<void()> flushed;

protected:
    int sync() override {
        if (flushed) flushed();
        return 0;
    }
};

/// A person who presses Ctrl+C when asked.
class InterruptingInput final : public std::streambuf {
public:
    explicit InterruptingInput(std::atomic<bool>& interrupted) : interrupted_(interrupted) {}

protected:
    int_type underflow() override {
        interrupted_ = true;
        return traits_type::eof();
    }

private:
    std::atomic<bool>& interrupted_;
};

/// Typed as an answer.
inline constexpr const char* ControlC = "\x03";

struct Ended {
    int code;
    std::string out;
    std::string err;
    std::optional<MonotonicTime> cancelling; ///< When the user was told so.
};

inline std::size_t CountOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

/// Status stack at V100, sequence 0 to node 2, sequence 1 to node 3 with hexadecimal addresses.
inline constexpr const char* TwoSequences = "a,b,c,100,e,f,g,h,i\n"
                                            "N2,\"DFirst, and foremost\",10,200,32,20,64,300,WW\n"
                                            "N3,DSecond,1,400,&H2000,2,&HFFFE,500,HH\n";

class ConsoleTest : public testing::Test {
protected:
    /// A file in the test's own folder, which is the program folder as well.
    [[nodiscard]] std::string File(const std::string& name) const { return (folder / name).make_preferred().string(); }

    void WriteRecord(const std::string& file, const Configuration& record) const {
        ReplaceFile(file, SetupFileBytes(record), OldTail::Drop, {});
    }

    [[nodiscard]] static Configuration RecordOf(const std::string& file) { return ParseSetupFile(ReadWholeFile(file)); }

    /// A set-up file made from the text format as a user would make it.
    std::string Imported(const std::string& name, const std::string& text = TwoSequences) {
        WriteText(File("import.vtl"), text);
        Expect(0, "import @import.vtl @" + name + " --yes");
        return File(name);
    }

    /// "@name" is a file of the test's folder.
    [[nodiscard]] std::vector<std::string> Words(const std::string& line) const {
        std::istringstream in(line);
        std::vector<std::string> words{std::istream_iterator<std::string>(in), {}};
        for (std::string& word : words) {
            if (word.starts_with('@')) word = File(word.substr(1));
        }
        return words;
    }

    /// Runs a command, which has to end so and to say all that, on either stream.
    Ended Expect(int code, const std::string& line, const std::vector<std::string>& said = {},
                 const std::optional<std::string>& typed = {}) {
        return Expect(code, Words(line), said, typed);
    }
    Ended Expect(int code, const std::vector<std::string>& words, const std::vector<std::string>& said,
                 const std::optional<std::string>& typed = {}) {
        const Ended ended = Run(words, typed);
        const std::string all = testing::PrintToString(words) + "\n" + ended.out + ended.err;
        EXPECT_EQ(ended.code, code) << all;
        for (const std::string& text : said)
            EXPECT_NE((ended.out + ended.err).find(text), std::string::npos) << "not said: " << text << "\n" << all;
        return ended;
    }

    /// Runs a command; `typed` is what the person at the terminal types, if there is one.
    Ended Run(std::vector<std::string> arguments, const std::optional<std::string>& typed = {}) {
        arguments.insert(arguments.end(), {"--program-folder", folder.string()});
        std::stringbuf answers(typed.value_or(""), std::ios::in);
        InterruptingInput controlC(clock.interrupted);
        std::istream in(typed == ControlC ? static_cast<std::streambuf*>(&controlC) : &answers);
        WatchedOutput output, errors;
        std::ostream out(&output), err(&errors);
        output.flushed = whenFlushed;
        std::optional<MonotonicTime> cancelling;
        errors.flushed = [&] {
            if (!cancelling && errors.str().ends_with("Cancelling...\n")) cancelling = clock.Now();
        };
        ConsoleHost host{.in = in,
                         .out = out,
                         .err = err,
                         .clock = clock,
                         .personPresent = typed.has_value(),
                         .drawsProgress = drawsProgress,
                         .catchInterrupts = [this]() -> const std::atomic<bool>& { return clock.interrupted; },
                         .reachBoard =
                             [this](const PortChoice&, const std::filesystem::path&) {
                                 port = std::make_shared<SimulatedPort>(board, clock, LinePacing::LineSpeed);
                                 port->SetBoardSpeed(boardSpeed);
                                 return BoardPort{port, "the test's board"};
                             },
                         .setLastWords = [this](const std::string& text) { lastWords = text; },
                         .outIsTerminal = outIsTerminal};
        return {RunConsole(arguments, host), output.str(), errors.str(), cancelling};
    }

    /// A byte on the line takes its time, so that none can pass while the clock stands.
    [[nodiscard]] bool NothingWasSent() const { return clock.Now() == VirtualClock().Now(); }

    TemporaryFolder itsFolder;
    const std::filesystem::path& folder = itsFolder.Path();
    InterruptingClock clock;
    SimulatedBoard board;
    std::shared_ptr<SimulatedPort> port; ///< Of the command that ran last.
    int boardSpeed = 0; ///< See SimulatedPort.
    bool drawsProgress = false;
    bool outIsTerminal = false;
    std::function<void()> whenFlushed; ///< What has been put out is sent off.
    std::string lastWords; ///< What a second interrupt would say.
};

} // namespace vantrel
