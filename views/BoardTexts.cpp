// The texts as the view shows them, letter for letter.
#include "views/BoardTexts.h"

#include "link/Reading.h"
#include "text/NumberText.h"
#include "text/Padding.h"

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

constexpr const char* ReplaceCoCpu =
    "Replace CO-CPU board at \"CO-CPU Slot\" and try again.  If fault persists, peplace K5212 processor board and try "
    "again.  If fault persists, verify proper use of \"xcall05/06/12\" in user program.";
constexpr const char* CheckCable =
    "Verify connection of cable between computer \"COM\" port and target board \"PROG PORT\".  Verify cable wiring and "
    "connectors.  If fault persists, replace target board and/or try a different computer.";
constexpr const char* SeeUserProgram =
    "User program executed an xcall09() system fault function call.  See User program for details on source of fault "
    "and corrective action.";
constexpr const char* DumpAgain =
    "Program is invalid.  Re-dump program to target board.  If fault persists, verify cable connections between "
    "computer and target board.  If fault persists, replace target board.";
constexpr const char* ResetAndRetry = "Reset fault and try again.  If fault persists, replace target board and try "
                                      "again.  See Torvik Manual for more details.";

constexpr int HighestCoCpuFault = 0x3F;
constexpr int CableFault = 0x42;
constexpr int UserProgramFault = 0x45;
constexpr int InvalidProgram = 0x5C;
constexpr int InvalidProgramToo = 0x5D;
constexpr int HighestFault = 0x7A;

/// As a 16-bit number, so that the codes from 8000 on are below 0; 0 for what is none.
int HexNumber(std::string_view code) { return static_cast<std::int16_t>(LeadingHexNumber(code).value_or(0) & 0xFFFFU); }

std::string Joined(const char* separator, int first, int second, int third, std::size_t thirdWidth) {
    const auto digits = [](int number, std::size_t width) { return PadLeft(std::to_string(number), width, '0'); };
    return digits(first, 2) + separator + digits(second, 2) + separator + digits(third, thirdWidth);
}

MessageBox NotConfirmed(std::string title, std::string text) {
    return {.title = std::move(title),
            .text = std::move(text),
            .icon = MessageIcon::Exclamation,
            .buttons = MessageButtons::Ok};
}

} // namespace

std::string CodeText(int value) { return HexText(static_cast<std::uint32_t>(value), 2); }

std::string SlotCaption(std::string_view slot) { return "CO-CPU Slot: " + std::string(slot); }

std::string CodeCaption(BoardCode which, std::string_view code) {
    const auto caption = [&](const char* name) { return std::string(name) + ": Code = " + std::string(code) + "H"; };
    switch (which) {
    case BoardCode::CurrentFault:
        return caption("Current Fault");
    case BoardCode::LastFault:
        return caption("Last Fault");
    case BoardCode::CoCpuSlot:
        return SlotCaption(code == UnreadCode ? std::string(code) : std::to_string(HexNumber(code)));
    case BoardCode::Advice:
        return {};
    case BoardCode::CurrentCommError:
        return caption("Current Comm Error");
    case BoardCode::LastCommError:
        return caption("Last Comm Error");
    }
    return {};
}

std::string AdviceText(std::string_view code) {
    if (code == UnreadCode) return {};
    const int fault = HexNumber(code);
    if (fault <= 0 || fault > HighestFault) return "None";
    if (fault <= HighestCoCpuFault) return ReplaceCoCpu;
    switch (fault) {
    case CableFault:
        return CheckCable;
    case UserProgramFault:
        return SeeUserProgram;
    case InvalidProgram:
    case InvalidProgramToo:
        return DumpAgain;
    default:
        return ResetAndRetry;
    }
}

std::string NetworkAddressComment() {
    return "Each K5200 board connected to the K5200 Network must be assigned a unique network address between 1 and "
           "32.\nSystem function xcall19(); configures the K6716 serial communication for the Q6700 processor.";
}

std::string ByteAddress(int byte) { return "B" + std::to_string(byte); }

std::string TwoDigits(std::string_view value) {
    const std::string padded = "00" + std::string(value);
    return padded.substr(padded.size() - 2);
}

std::string SetupBoxText(std::string_view value) { return value == UnreadText ? std::string(value) : TwoDigits(value); }

std::string SetupMark(std::size_t field, std::string_view value) {
    if (value.empty() || value == UnreadText) return {};
    if (!SetupEntry(field, value)) return "! " + std::string(value) + " is not possible";
    return value.size() > 2 ? "= " + std::string(value) : std::string();
}

std::optional<std::string> SetupEntry(std::size_t field, std::string_view entry) {
    const SetupField& limits = SetupFields.at(field);
    const auto number = WholeNumber(entry);
    if (!number || *number < limits.lowest || *number > limits.highest) return std::nullopt;
    return std::to_string(*number);
}

MessageBox SetupRefusal(std::size_t field) {
    const SetupField& limits = SetupFields.at(field);
    return {.title = std::string(limits.description) + " Set-up",
            .text = "Only a Number Between " + std::to_string(limits.lowest) + " and " +
                    std::to_string(limits.highest) + " can be Entered",
            .icon = MessageIcon::Information,
            .buttons = MessageButtons::Ok};
}

std::string SteppedSetup(std::size_t field, std::string_view entry, int step) {
    const SetupField& limits = SetupFields.at(field);
    const int from = std::clamp(WholeNumber(entry).value_or(limits.lowest), limits.lowest, limits.highest);
    const std::string stepped = std::to_string(std::clamp(from + step, limits.lowest, limits.highest));
    return stepped.size() < 2 ? TwoDigits(stepped) : stepped;
}

MessageBox ResetQuestion() {
    return {.title = "WARNING - Fault Code Reset!",
            .text = "Target Board will be reinitialized.\n\nDo you wish to continue?",
            .icon = MessageIcon::Critical,
            .buttons = MessageButtons::YesNoCancel,
            .destroys = true};
}

MessageBox SetupNotConfirmed(std::size_t field, std::string_view value, std::string_view onBoard) {
    const std::string name(SetupFields.at(field).description);
    const std::string now =
        onBoard == UnreadText ? "What it holds now could not be read." : "It holds " + std::string(onBoard) + " now.";
    return NotConfirmed(name + " Set-up",
                        "The board did not confirm the value " + std::string(value) + " (" + name + ").\n" + now);
}

MessageBox SetupSentTwice(std::size_t field, std::string_view value) {
    const std::string name(SetupFields.at(field).description);
    return NotConfirmed(name + " Set-up", "The board holds the value " + std::string(value) + " (" + name +
                                              "), but it had to be sent twice.");
}

MessageBox WriteCutOff(const std::string& title, const std::string& what) {
    return NotConfirmed(title, "The link failed before the board had confirmed " + what +
                                   ".\nWhat the board holds now is not known.");
}

MessageBox SetupCutOff(std::size_t field, std::string_view value) {
    const std::string name(SetupFields.at(field).description);
    return WriteCutOff(name + " Set-up", "the value " + std::string(value) + " (" + name + ")");
}

MessageBox ClockNotConfirmed(std::string_view what) {
    return NotConfirmed("Set to Current " + std::string(what),
                        "The board did not confirm all of it.\nThe boxes show what it holds now.");
}

MessageBox ResetNotConfirmed() {
    return NotConfirmed("Reset Fault Codes", "The board did not confirm the reset of all fault and error codes.\n"
                                             "The view shows the codes that it holds.");
}

MessageBox CodesAfterReset() {
    return NotConfirmed("Reset Fault Codes",
                        "The board confirmed the reset, but it holds a fault or error code again.");
}

std::string ComputerTimeText(std::chrono::local_seconds now) {
    const std::chrono::hh_mm_ss time(now - std::chrono::floor<std::chrono::days>(now));
    return Joined(" : ", static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()), 2);
}

std::string ComputerDateText(std::chrono::local_seconds now) {
    const std::chrono::year_month_day date(std::chrono::floor<std::chrono::days>(now));
    return Joined(" - ", static_cast<int>(static_cast<unsigned>(date.month())),
                  static_cast<int>(static_cast<unsigned>(date.day())), static_cast<int>(date.year()), 4);
}

} // namespace vantrel
