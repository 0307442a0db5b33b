// Any bytes to the readers of the small files beside the program, of what is typed, and of command lines.
#include "app/HelpFile.h"
#include "app/KnownBoards.h"
#include "console/CommandLine.h"
#include "document/EntryRules.h"
#include "fuzz/FuzzTargets.h"
#include "link/FaultFiles.h"
#include "link/PortSettings.h"
#include "link/TargetAddress.h"
#include "platform/RuntimeError.h"
#include "simulator/SimulatedFaults.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/VirtualClock.h"
#include "text/NumberText.h"
#include "text/Utf8.h"
#include "text/Windows1252.h"
#include "views/UserProgram.h"

#include <sstream>
#include <string>
#include <variant>
#include <vector>

namespace vantrel::fuzz {

namespace {

/// A file of these bytes, in a folder that goes with the process.
std::filesystem::path FileOf(const char* name, Input input) {
    static const TemporaryFolder folder;
    WriteText(folder / name, TextOf(input));
    return folder / name;
}

template <typename Reads> void MayThrow(Reads reads) {
    try {
        reads();
    } catch (const RuntimeError& error) {
        Require(*error.what() != 0);
    }
}

} // namespace

void TakeSettings(Input input) {
    MayThrow([&] {
        const PortSettings read = ReadPortSettings(FileOf("RSPort.cfg", input), {1, 4}).settings;
        Require(read.number >= 1 && read.number <= 4 && (read.speed == "9600" || read.speed == "19200"));
    });
    MayThrow([&] {
        const auto file = FileOf("boards", input);
        const auto known = KnownBoards(file).Of("/plant/line 3.sdt");
        if (known) Require(known->networkAddress >= 0 && known->networkAddress <= 255);
        const BoardIdentity board{7, "K5216505"};
        KnownBoards(file).Note("/plant/line 4.sdt", board);
        Require(KnownBoards(file).Of("/plant/line 4.sdt") == board);
    });
}

void TakeDescriptions(Input input) {
    MayThrow([&] {
        const auto records = ReadFaultFile(FileOf("FaultErrCodes.txt", input));
        Require(records.has_value());
        for (const FaultRecord& record : *records)
            Require(Utf8FromWindows1252(Windows1252FromUtf8(record.description)).size() <= 4 * input.size());
    });
    MayThrow([&] {
        const auto half = input.size() / 2;
        static_cast<void>(FileOf("PLANT.REV", input.subspan(half)));
        for (const int number : ReadUserProgram(FileOf("PLANT.TRV", input.first(half))).revisionNumbers)
            Require(number >= 0 && number <= 255);
    });
}

void TakeHelp(Input input) {
    const std::string text = TextOf(input);
    const HelpFile help(text);
    const std::string words = text.substr(0, 20);
    for (const std::size_t topic : help.Search(words))
        Require(topic < help.Topics().size());
    for (std::size_t topic = 0; topic < help.Topics().size(); ++topic) {
        Require(help.Find(help.Topics()[topic].name).has_value());
        if (const auto row = help.FindRow(topic, words)) Require(*row < help.Topics()[topic].rows.size());
    }
    if (const auto place = help.FindMessage(words)) Require(place->row < help.Topics()[place->topic].rows.size());
}

void TakeEntries(Input input) {
    const std::string text = TextOf(input);
    const TargetAddress address = ParseAddress(text);
    Require(address.type == 0 || (address.byteAddress >= 0 && address.byteAddress <= 65535));
    if (AddressProblem(text).empty()) {
        Require(address.type != 0 && address.byteAddress + ByteCount(address.type) <= 65536);
    }
    for (int field = 0; field < static_cast<int>(FieldCount); ++field) {
        MayThrow([&] {
            const EntryAnswer answer = CheckEntry(static_cast<SequenceField>(field), text);
            if (const auto* taken = std::get_if<AcceptedEntry>(&answer))
                Require(taken->value >= 0 && taken->value <= 65535);
            else
                Require(!std::get<RefusedEntry>(answer).text.empty());
        });
    }
    const std::string stored = DescriptionToStore(text);
    Require(DescriptionToStore(stored) == stored);
    Require(Windows1252FromUtf8(Utf8FromWindows1252(text)) == text && Windows1252FromUtf8(text).size() <= text.size());
    const auto number = LeadingInteger(text);
    Require(!number || LeadingInteger(std::to_string(*number)) == number);
    static_cast<void>(ParseFault(text));
}

void TakeCommandLine(Input input) {
    std::vector<std::string> arguments;
    std::istringstream lines(TextOf(input));
    for (std::string line; std::getline(lines, line) && arguments.size() < 30;)
        arguments.push_back(line);
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    VirtualClock clock;
    ConsoleHost host{.in = in, .out = out, .err = err, .clock = clock, .catchInterrupts = {}, .reachBoard = {}};
    const CommandLine line = ReadCommandLine(arguments, host);
    Require(line.command != nullptr || !out.str().empty() || !err.str().empty());
    Require(line.command != nullptr || line.ended == ExitCode::Done || line.ended == ExitCode::WrongUsage);
}

} // namespace vantrel::fuzz
