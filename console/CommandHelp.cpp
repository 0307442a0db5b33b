// The texts as they stand on the terminal.
#include "console/CommandHelp.h"

#include "document/ValueDisplay.h"
#include "platform/SerialDevices.h"
#include "simulator/BoardHabits.h"
#include "simulator/SimulatedFaults.h"

#include <algorithm>
#include <string_view>

namespace vantrel {

namespace {

constexpr std::size_t ListColumn = 18;

/// A line of its own for what leaves its sentence no room beside it.
std::string Entry(std::string entry, std::string_view sentence) {
    entry.insert(0, "\n  ");
    entry += entry.size() <= ListColumn ? std::string(ListColumn + 1 - entry.size(), ' ') : "\n      ";
    return entry + std::string(sentence);
}

} // namespace

std::string OverallHelp() {
    return "vantrelctl COMMAND --help tells more about a command.\n"
           "\n"
           "To see it work, without any board:\n"
           "  vantrelctl demo\n"
           "\n"
           "From a text file to a running board at the first serial port:\n"
           "  vantrelctl import samples/bottling-line.vtl plant.sdt\n"
           "  vantrelctl show plant.sdt\n"
           "  vantrelctl download plant.sdt --port 1 --verify\n"
           "\n"
           "What a board holds, kept in a file and compared later:\n"
           "  vantrelctl upload plant.sdt --port " +
           SerialDeviceExample() +
           "\n"
           "  vantrelctl compare plant.sdt --port " +
           SerialDeviceExample() +
           "\n"
           "\n"
           "Results go to standard output; questions, warnings and progress to standard error.\n"
           "Questions are asked at a terminal; without one they count as refused, unless --yes\n"
           "answers them. Set-up files (.sdt) always get their extension when they are written.\n"
           "The file - is standard input where one is read, standard output where one is written.\n"
           "\n";
}

std::string ExitCodesHelp() {
    return "Exit codes:\n"
           "  0  done\n"
           "  1  refused, cancelled, or something differs\n"
           "  2  wrong usage\n"
           "  3  the link to the board failed\n"
           "  4  a file could not be read or written\n"
           "  130  interrupted (Ctrl+C)\n";
}

std::string NoFurtherHelp() { return {}; }

std::string AddressHelp() {
    return "Addresses: B8176 a byte, B8176.3 one of its bits (0 to 7), W16384 a word, D100 a double\n"
           "word, F13 a flag, 1F40H a byte by its hexadecimal address. The status stack address of\n"
           "the board is W6400; field k (0 to 6) of sequence s is W followed by 16384 + 512 s + 2 k.\n"
           "\n";
}

std::string ReadHelp() {
    return AddressHelp() + "A range, W16384-W16396, is all words from the first to the second; likewise bytes, double\n"
                           "words, flags, and bits of a byte. A value that the board did not give clearly, twice, is\n"
                           "not printed, but named as not read reliably.\n"
                           "\n";
}

std::string FieldHelp() {
    const auto limits = [](const FieldDescription& field, char notation, std::int32_t maximum) {
        const std::string_view type(&notation, 1);
        return DisplayValue(field.minimum, type) + " to " + DisplayValue(maximum, type);
    };
    std::string help = "Fields, and what is stored in them:\n"
                       "  StatusStackAddress  V1 to V34463; of the whole set-up, without a sequence\n";
    for (const FieldDescription& field : FieldTable()) {
        const bool switchable = field.notation == 'W';
        const bool maybeUnused = field.field == SequenceField::NodeNumber;
        help += "  " + std::string(field.name) + std::string(20 - field.name.size(), ' ') +
                limits(field, field.notation, field.maximum) +
                (switchable ? ", or " + limits(field, 'H', field.hexadecimalMaximum) + "; even" : "") +
                (maybeUnused ? ", or 0: not used" : "") + "\n";
    }
    return help + "  NodeDescription     any text\n\n";
}

std::string FaultList() {
    std::string list = "Faults, each as NAME, NAME:once, NAME@BYTES (sleeps until the board has received so\n"
                       "many bytes) or with both:";
    for (const FaultName& fault : FaultNames())
        list += Entry(std::string(fault.name), fault.sentence);
    return list;
}

std::string HabitList() {
    std::string list = "Habits, in which good boards differ; the value named first is the usual one:";
    for (const HabitName& habit : HabitNames())
        list += Entry(std::string(habit.name) + "=" + std::string(habit.value), habit.sentence);
    return list;
}

std::string SimulateHelp() { return FaultList() + "\n\n" + HabitList() + "\n\n"; }

} // namespace vantrel
