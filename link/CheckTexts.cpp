#include "link/CheckTexts.h"

#include "platform/RuntimeError.h"
#include "text/NumberText.h"
#include "text/Padding.h"

#include <algorithm>
#include <span>

namespace vantrel::check {

namespace {

using namespace std::chrono_literals;

constexpr MonotonicTime LatencyTimer = 16ms;
constexpr MonotonicTime LatencyPlay = 4ms;
/// Far above what the line, a timer and a busy computer make of the usual 2 ms.
constexpr MonotonicTime SlowFrom = 30ms;

std::string Counted(std::size_t count, const std::string& what) {
    return count == 0 ? std::string() : ", " + std::to_string(count) + " " + what;
}

} // namespace

const char* const CableAdvice = "Is the board powered? Does the cable lead from this port to the board's PROG port? Is "
                                "it the board's cable (transmit "
                                "and receive crossed as the board wants them), and is it plugged in at both ends?";
const char* const EchoAdvice =
    "Transmit and receive touch each other somewhere: a test plug, a wrong or damaged cable, or an adapter or server "
    "set "
    "to echo. Take the cable off at the board: if the bytes still come back, it is on this side.";
const char* const GarbageAdvice =
    "Another device, or a board set to another speed, is at the end of this cable; or the cable is damaged or has no "
    "common ground. Is it the board's PROG port?";
const char* const LatencyAdvice =
    "Set the timer to 1 ms. Windows: Device Manager, Ports, the adapter, Port Settings, Advanced, Latency Timer. "
    "Linux: the "
    "program asks for it, and this adapter's driver did not follow; write 1 to latency_timer of the device under "
    "/sys/bus/usb-serial/devices.";
const char* const SlowAdvice =
    "Something between this program and the board holds every byte up: an adapter, a hub, a virtual machine, a busy "
    "computer. Try another USB port or adapter. Transfers take as much longer.";
const char* const ServerSpeedAdvice = "Is the speed that is set at the server the board's?";

std::string TalkAdvice(bool local) {
    return local
               ? "Is it another program that uses this port, or another device? Is it the board's PROG port? End what "
                 "is talking, then check again."
               : "Is it another connection to the server, or another program? End it, then check again.";
}

std::string PortAdvice(int errorNumber, bool local) {
    switch (static_cast<ErrorNumber>(errorNumber)) {
    case ErrorNumber::FileNotFound:
        return local ? "Name a port that is there (Edit, Comm Port; vantrelctl ports lists them)."
                     : "Look at the address once more (Edit, Comm Port).";
    case ErrorNumber::PermissionDenied:
        return "Check again when you have the permission.";
    case ErrorNumber::InvalidProcedureCall:
        return "Choose another port or adapter; the board knows 9600 and 19200 baud.";
    default:
        return local ? "Close the program that uses it, or choose another port (Edit, Comm Port), then check again."
                     : "Mend what is named there (start the server, end the other connection), then check again.";
    }
}

std::string FirstSentence(const std::string& text) {
    const std::size_t end = text.find(". ");
    return end == std::string::npos ? text : text.substr(0, end + 1);
}

std::string SpeedAdvice(const std::string& speed) {
    return "Set the program to " + speed + " (Edit, Comm Port; vantrelctl --speed " + speed +
           "), or the board to the program's speed.";
}

std::string Hex(const std::vector<std::uint8_t>& bytes) {
    std::string text;
    constexpr std::size_t most = 16;
    for (const std::uint8_t byte : std::span(bytes).first(std::min(most, bytes.size())))
        text += (text.empty() ? "" : " ") + HexText(byte, 2);
    return bytes.size() > most ? text + " ..." : text;
}

std::string Milliseconds(MonotonicTime time) {
    const long long tenths = (time + 50us) / 100us;
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " ms";
}

std::string FiguresText(const ExchangeFigures& figures) {
    std::string text = std::to_string(figures.tried) + " exchanges";
    const std::string flaws = Counted(figures.lost, "lost") + Counted(figures.late, "late") +
                              Counted(figures.wrong, "answered wrongly") + Counted(figures.doubled, "answered twice");
    text += flaws.empty() ? ", none lost" : flaws;
    if (figures.times.empty()) return text + ".";
    constexpr double ninetyNine = 0.99;
    return text + ". Answer time: least " + Milliseconds(figures.times.front()) + ", median " +
           Milliseconds(figures.Share(0.5)) + ", 99 in 100 within " + Milliseconds(figures.Share(ninetyNine)) +
           ", most " + Milliseconds(figures.times.back()) + ".";
}

std::string FlawVerdict(const ExchangeFigures& figures) {
    if (figures.times.empty()) return "The board took read mode and then answered nothing more.";
    const std::string flaws = Counted(figures.lost, "lost") + Counted(figures.late, "late") +
                              Counted(figures.wrong, "answered wrongly") + Counted(figures.doubled, "answered twice");
    const bool onlyLost = figures.late + figures.wrong + figures.doubled == 0;
    return std::string("The board answers, but not ") + (onlyLost ? "each time" : "without flaws") + ": of " +
           std::to_string(figures.tried) + " exchanges " + flaws.substr(2) + ".";
}

std::string FlawAdvice(const ExchangeFigures& figures, bool local, const std::string& speed) {
    if (figures.lost + figures.wrong + figures.doubled == 0) {
        return local ? "The computer or the adapter is held up now and then. Try another USB port, without a hub."
                     : "The network is slow now and then. Transfers will be slow, too, and may need a repeat.";
    }
    const std::string slower = speed == Speeds[1] ? std::string("try ") + Speeds[0] + " baud; " : "";
    return "Try a shorter or screened cable, away from drives; fasten both plugs; " + slower + "try another adapter.";
}

std::string BoardText(const CheckedBoard& board) {
    return "Program \"" + board.ident + "\", revision numbers " + std::to_string(board.revisions[0]) + " and " +
           std::to_string(board.revisions[1]) + "; firmware " + std::to_string(board.firmware) + "; network address " +
           std::to_string(board.networkAddress) + ".";
}

std::string ModelText(const CheckedBoard& board, const CheckSubject& subject) {
    if (subject.boardType == 0)
        return "The board type is not known, for want of a user program on disk that can be read.";
    if (!board.model.empty())
        return "Board type " + board.model + ", by the user program on disk, whose ident is the same.";
    const std::string onDisk = "the user program on disk is for a " + RSComm::TargetboardName(subject.boardType);
    if (subject.identOnDisk.empty()) return "The board type is not known: " + onDisk + ", but has no ident to compare.";
    return "The board type is not known: " + onDisk + ", but its ident is \"" + subject.identOnDisk + "\".";
}

bool LooksLikeLatencyTimer(const ExchangeFigures& figures) {
    const auto near = [](MonotonicTime time) {
        return time > LatencyTimer - LatencyPlay && time < LatencyTimer + LatencyPlay;
    };
    const auto count = static_cast<std::size_t>(std::count_if(figures.times.begin(), figures.times.end(), near));
    return !figures.times.empty() && 5 * count >= 4 * figures.times.size();
}

bool IsSlow(const ExchangeFigures& figures) { return figures.Share(0.5) > SlowFrom; }

std::string SlowText(const ExchangeFigures& figures) {
    return "each answer takes about " + std::to_string((figures.Share(0.5) + 500us) / 1ms) +
           " ms; a board on this computer's own line usually needs about 2 ms.";
}

} // namespace vantrel::check
