// What every command says and how it ends when something goes wrong on the line: one table.
#include "tests/console/ConsoleFixture.h"

#include <optional>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

/// What happens in the middle of a command.
struct Event {
    enum What { Nothing, Interrupt, InterruptAtQuestion, Reconnection } what = Nothing;
    MonotonicTime at{0};
};

Event Interrupted(MonotonicTime at) { return {Event::Interrupt, at}; }
/// The device goes and comes back; the user retries.
Event Reconnected(MonotonicTime at) { return {Event::Reconnection, at}; }

struct Case {
    const char* line; ///< Faults, and habits of the board.
    const char* command; ///< @defaults.sdt holds what a fresh board does, @plant.sdt something else.
    int code;
    std::vector<std::string> said; ///< On either stream.
    std::vector<const char*> unsaid;
    Event event{};
    std::optional<std::pair<std::uint16_t, int>> holds{}; ///< A byte of the board, afterwards.
};

// Bytes that the board receives: 1 for the probe, 2 for a mode, 2 for each byte read and 3 for each byte written, 1 for
// the goodbye.
// clang-format off
const std::vector<Case>& Cases() {
    static const std::vector<Case> cases = {
        // A board that never answers.
        {"no-answer", "download @plant.sdt --yes", 3, {"there is no link", "No value was sent"}, {"B105", "RTFCD7"}},
        {"no-answer", "upload @new.sdt --yes", 3, {"there is no link", "nothing was written."}, {"Uploaded"}},
        {"no-answer", "compare @defaults.sdt", 3, {"there is no link"}, {"differ", "are on"}},
        {"no-answer", "read W6400", 3, {"there is no link"}, {"W6400"}},
        {"no-answer", "write W6400 5", 3, {"Nothing was written to W6400."}, {"W6400 5"}},
        {"no-answer", "status", 3, {"there is no link"}, {"Seq #"}},
        {"no-answer", "board", 3, {"there is no link"}, {"Firmware"}},
        {"no-answer", "doctor", 3, {"Nothing answers, at either speed.", "Is the board powered?"}, {"without a flaw"}},
        {"shorted-lines", "doctor", 3, {"What is sent comes back itself", "Transmit and receive touch"}, {"Program"}},
        {"latency-timer", "doctor", 1, {"about 16 ms", "Board type K5216, by"}, {"without a flaw"}},

        // Doubtful values are never shown, and one single fault makes none doubtful.
        {"doubled-byte:once@5", "read W6400", 0, {"W6400 1\n"}, {"reliabl"}},
        {"doubled-byte", "read W6400", 1, {"W6400 was not read reliably"}, {"W6400 1"}},
        {"wrong-echo:once@8 wrong-echo:once@12", "read W6400 W16384 W16386", 1, {"W6400 1\nW16386 0\n",
         "W16384 was not read reliably"}, {"W16384 0"}},
        {"doubled-byte@7", "read W6400 B8176 --json", 1, {"\"value\": null", "not read reliably"}, {"\"value\": 0"}},
        {"no-answer@7", "read W6400-W6404", 3, {"W6402 could not be read: the link"}, {"W6402 0"}},
        {"doubled-byte@30", "compare @defaults.sdt", 1, {" values were not read reliably."}, {"differ",
         "are on the board"}},
        {"doubled-byte@30", "compare @defaults.sdt --json", 1, {"\"equal\": null"}, {"\"board\""}},
        {"doubled-byte@18", "status --sequence 0", 1, {"Node Number:      0\n", "To Node  -",
         "Run the command again."}, {}},
        {"doubled-byte@9", "status", 1, {"    1       -  -\n", "Run the command again."}, {}},
        {"wrong-echo", "status --watch --check --for 30s", 1, {"30  not read clearly\n", "Run the command again."}, {}},
        {"wrong-echo:once@3 wrong-echo:once@6", "status", 1, {"    0       -  00: Comm Disabled\n"}, {}},
        {"hang-up@25", "status", 3, {"before everything was read."}, {"Cancel"}},
        {"doubled-byte@3", "board", 1, {"Current Fault: Code = --", "Run the command again."}, {"1FH", "None"}},
        {"doubled-byte@35", "board", 1, {"Network address:                -\n", "Run the command again."}, {}},
        {"hang-up@40", "board --network-address 9 --yes", 3, {"before everything was read."}, {"Firmware"}},
        {"wrong-echo:once@50 wrong-echo:once@54", "upload @new.sdt --yes", 1,
         {": not read reliably\n1 of 218 values were not read reliably.", "No file was written."}, {"Uploaded"}},

        // What no answer can tell is not promised; reading twice tells more.
        {"", "upload @new.sdt --yes", 0, {"218 values, every answer in step."}, {"reliabl", "twice with"}},
        {"", "upload @new.sdt --yes --verify", 0, {"218 values, read twice with the same result."}, {}},
        {"wrong-data:once@9", "upload @new.sdt --yes --verify", 1, {"sequence 0, NodeNumber: first 65280, then 0",
         "No file was written."}, {"Uploaded"}},
        {"wrong-data:once", "download @plant.sdt --yes --verify", 1, {"1 of 218 values differ"}, {"are on the board"}},

        // Writes that were not confirmed, had to be repeated, or reached more than their own bytes.
        {"wrong-echo", "write W16384 7", 1, {"did not confirm 7 at W16384"}, {"W16384 7\n"}},
        {"no-answer:once@3 half-sent=forever", "write W16384 7", 0, {"W16384 7\n",
         "W16384 had to be sent twice; the first attempt, cut off, may have set B16639 to 255"}, {}, {}, {{16639,
         255}}},
        {"no-answer@4", "write W16384 7", 3, {"failed before it confirmed 7", "may have set B16639 to 255"}, {}},
        {"wrong-echo:once@12", "download @plant.sdt --yes", 0, {"218 values, all confirmed, 1 of them when sent again",
         "sequence 0, NodeNumber had to be sent twice"}, {}},
        {"no-answer:once@3 half-sent=forever", "download @plant.sdt --yes", 0, {"B105: what was sent for it", "B255"}, {}},
        {"wrong-echo:once@3 wrong-echo:once@6", "board --network-address 9 --yes", 1,
         {"9: the board did not confirm"}, {"done"}},
        {"wrong-echo:once@3", "board --network-address 9 --yes", 0, {"Network address 9: done.",
         "Network address 9 had to be sent twice"}, {}},
        {"no-answer@4", "board --network-address 9 --yes", 3, {"Network address 9: what was sent for it"}, {"done"}},
        {"spoiled-byte:once@1317 half-sent=forever", "download @plant.sdt --yes --verify", 0, {"are on the board",
         "what was sent for it may have set B255 and B65280 to 255"}, {}},
        {"refuse=B8180", "board --network-address 9 --yes", 1, {"or holds something else now",
         "address:                01"}, {"done"}},

        // Transfers that break off.
        // B105 takes 6 bytes with probe and mode, each value 6: 15 whole values, 1 + 2 x 7.
        {"hang-up@100", "download @plant.sdt --yes --verify", 3,
         {"RTFCD7: Error Processing Request\n\nProcess Not Complete",
         "Reached the board: the status stack address, sequences 0 to 1. 203 of 218 values did not.\n",
         "B105 may have been left at 1", "vantrelctl write B105 0 --port simulated\n"}, {"confirmed"}, {}, {{105,
         1}}},
        {"no-answer@96", "download @plant.sdt --yes", 3,
         {"sequence 2, NodeNumber: what was sent for it may have set B17663"}, {"confirmed"}},

        // An unanswered goodbye takes nothing back.
        {"no-answer@1317", "download @plant.sdt --yes", 0, {"all confirmed"}, {"WARNING"}},

        // Ctrl+C, in every kind of wait.
        {"no-answer", "read W6400", 130, {"Cancelled before the board had answered."}, {"WARNING", "no link"},
         Interrupted(1300ms)},
        {"no-answer@5", "read W6400", 130, {"Cancelled."}, {"WARNING", "W6400"}, Interrupted(1500ms)},
        {"spoiled-answer@1", "read W6400", 130, {"Cancelled."}, {"WARNING", "W6400"}, Interrupted(700ms)},
        {"no-answer@4", "write W6400 5", 130, {"Cancelled before the board had confirmed 5 at W6400."}, {"WARNING"},
         Interrupted(1500ms)},
        {"no-answer@200", "download @plant.sdt --yes", 130, {"Reached the board:", "B105 may have been left at 1"},
         {"WARNING", "RTFCD7", "link to the board failed"}, Interrupted(3s)},
        {"", "download @plant.sdt --yes --verify", 130,
         {"Cancelled.\nReached the board: the status stack address, sequence"}, {"RTFCD7", "confirmed",
         "are on the board"}, Interrupted(500ms), {{105, 0}}},
        {"", "upload @plant.sdt --yes", 130, {"of 218 values had been read", "No file was written."}, {"RTFCD7"},
         Interrupted(500ms)},
        {"no-answer@200", "compare @defaults.sdt", 130, {"Cancelled after "}, {"are on the board", "failed"},
         Interrupted(2s)},
        {"", "status", 130, {"Comm Disabled\n", "Cancelled."}, {}, Interrupted(200ms)},
        {"no-answer@30", "board --set-clock", 130, {"Cancelled."}, {"failed", "Firmware"}, Interrupted(1s)},
        {"no-answer@9", "write W6400 5", 0, {"W6400 5\n"}, {"Cancel"}, Interrupted(500ms)},

        {"no-answer@200", "download @plant.sdt --yes", 130, {"[r/c] cancel", "may have been left at 1"}, {"RTFCD7"},
         {Event::InterruptAtQuestion}},

        // The port was lost, and opened again: what had been read before may be another board's.
        {"", "compare @defaults.sdt", 1, {"The link was taken up again"}, {"are on the board"}, Reconnected(500ms)},
        {"", "upload @plant.sdt --yes", 1, {"The link was taken up again", "No file was written."}, {"Uploaded"},
         Reconnected(500ms)},
        {"", "upload @new.sdt --yes --verify", 1, {"The link was taken up again"}, {"Uploaded"}, Reconnected(2500ms)},
        {"", "download @plant.sdt --yes", 1, {"what the board lost meanwhile is not known"}, {"confirmed"},
         Reconnected(500ms)},
        {"", "download @plant.sdt --yes --verify", 0, {"All 218 values"}, {"confirmed"}, Reconnected(500ms)},
        {"", "status", 0, {"   30       0  00: Comm Disabled\n"}, {" -  "}, Reconnected(200ms)},
        {"", "read W16384-W16482", 0, {"W16384 0\n", "W16482 0\n"}, {}, Reconnected(100ms)},
        {"", "board", 0, {"Firmware revision:              23\n"}, {}, Reconnected(100ms)},

        // Values that their fields cannot have are shown whole.
        {"spoiled-answer:FEH:once@36", "board", 0,
         {"Network address:                255 (not a valid network address)"}, {}},
        {"spoiled-answer:D2H:once@50", "board", 0, {"03 - 14 - 200 (200 is not a valid year)"}, {}},
    };
    return cases;
}
// clang-format on

class FaultTest : public ConsoleTest {
protected:
    FaultTest() {
        WriteText(File("Program/K5216-505.TRV"), "6");
        WriteText(File("Program/K5216-505.REV"), "K52165050401\n");
        Imported("plant.sdt");
        Expect(0, "new @defaults.sdt");
    }

    void MakeBoard(const std::string& line) {
        BoardHabits habits;
        std::vector<SimulatedFault> faults;
        for (const std::string& word : Words(line)) {
            if (const auto fault = ParseFault(word)) {
                faults.push_back(*fault);
            } else {
                habits = WithHabit(habits, word).value();
            }
        }
        board = SimulatedBoard(clock.LocalNow() - std::chrono::floor<std::chrono::seconds>(clock.Now()), habits);
        for (const SimulatedFault& fault : faults)
            board.AddFault(fault);
    }

    /// Holds that it ends so and says all that.
    Ended Try(const Case& each) {
        MakeBoard(each.line);
        std::filesystem::remove(File("new.sdt"));
        clock.interrupted = false;
        clock.interruptAt.reset();
        if (each.event.at > 0s) clock.interruptAt = clock.Now() + each.event.at;
        clock.happens = [this] { clock.interrupted = true; };
        std::optional<std::string> typed;
        if (each.event.what == Event::InterruptAtQuestion) typed = ControlC;
        if (each.event.what == Event::Reconnection) {
            typed = "r\n";
            clock.happens = [this] {
                port->CutLine();
                port->MendLine();
            };
        }
        std::vector<std::string> command = Words(each.command);
        command.insert(command.end(), {"--port", "simulated"});
        return Expect(each.code, command, each.said, typed);
    }
};

TEST_F(FaultTest, EveryCommandSaysWhatTheLineHasSaidAndNoMore) {
    const std::string plant = FileText(File("plant.sdt"));
    for (const Case& each : Cases()) {
        SCOPED_TRACE(std::string(each.line) + " | " + each.command);
        const MonotonicTime began = clock.Now();
        const Ended ended = Try(each);
        const std::string all = ended.out + ended.err;
        for (const char* text : each.unsaid)
            EXPECT_EQ(all.find(text), std::string::npos) << "said: " << text << "\n" << all;
        EXPECT_LE(CountOf(all, "WARNING"), 1U) << all;
        EXPECT_TRUE(!each.holds || board.Peek(each.holds->first) == each.holds->second);
        EXPECT_EQ(FileText(File("plant.sdt")), plant);
        EXPECT_EQ(std::filesystem::exists(File("new.sdt")), all.find("Uploaded") != std::string::npos);
        if (each.event.what != Event::Interrupt) continue;
        EXPECT_LE(ended.cancelling.value_or(began) - began, each.event.at + 50ms);
        EXPECT_LE(clock.Now() - began, each.event.at + 200ms);
    }
}

TEST_F(FaultTest, ReadingManyAddressesTakesNoLongerThanComparingThem) {
    const auto timeOf = [this](const std::string& command) {
        const MonotonicTime began = clock.Now();
        Try({"", command.c_str(), 0, {}, {}});
        return clock.Now() - began;
    };
    std::string read = "read W6400";
    for (int sequence = 0; sequence < 31; ++sequence) {
        const int base = 16384 + 512 * sequence;
        read += " W" + std::to_string(base) + "-W" + std::to_string(base + 12);
    }
    EXPECT_LE(timeOf(read), timeOf("compare @defaults.sdt") * 11 / 10);
}

TEST_F(FaultTest, WhatWasNotConfirmedHasNotReachedTheBoard) {
    Configuration record = RecordOf(File("plant.sdt"));
    record.SetValue(StatusStackIndex, -5);
    WriteRecord(File("plant.sdt"), record);
    Try({"hang-up@100",
         "download @plant.sdt --yes",
         3,
         {", but for 1 value that the board did not confirm. 203 of 218"},
         {}});
}

} // namespace

} // namespace vantrel
