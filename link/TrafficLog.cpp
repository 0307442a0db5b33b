// Traces as text, and telling them from other files.
#include "link/TrafficLog.h"

#include "text/NumberText.h"
#include "text/Padding.h"

#include <fstream>
#include <ostream>
#include <string>
#include <system_error>

namespace vantrel {

namespace {

constexpr const char* FirstLine = "# seconds  sent  received";
constexpr const char* DecodedFirstLine = "# seconds  sent  received  meaning";
constexpr std::size_t SecondsWidth = 2;
constexpr std::size_t MicrosecondsWidth = 6;

/// Digits of the program's own, so that no host's language puts commas or dots into a file for other programs.
std::string Hexadecimal(std::optional<std::uint8_t> byte) { return byte ? HexText(*byte, 2) : "--"; }

} // namespace

void TrafficLogs::Exchanged(MonotonicTime sentAt, std::uint8_t sent, std::optional<std::uint8_t> received) {
    if (set_) set_->Exchanged(sentAt, sent, received);
    for (TrafficLog* log : beside_)
        log->Exchanged(sentAt, sent, received);
}

void TrafficLogs::Surplus(MonotonicTime at, std::uint8_t byte) {
    if (set_) set_->Surplus(at, byte);
    for (TrafficLog* log : beside_)
        log->Surplus(at, byte);
}

void TextTrafficLog::Exchanged(MonotonicTime sentAt, std::uint8_t sent, std::optional<std::uint8_t> received) {
    Line(sentAt, sent, received, decoder_ ? decoder_->Exchanged(sent, received) : std::string());
}

void TextTrafficLog::Surplus(MonotonicTime at, std::uint8_t byte) {
    Line(at, {}, byte, decoder_ ? TraceDecoder::Surplus(byte) : std::string());
}

void TextTrafficLog::Line(MonotonicTime at, std::optional<std::uint8_t> sent, std::optional<std::uint8_t> received,
                          const std::string& meaning) {
    if (!first_) {
        first_ = at;
        out_ << (decoder_ ? DecodedFirstLine : FirstLine) << '\n';
    }
    constexpr long long microsecondsASecond = 1000000;
    const long long passed = std::chrono::duration_cast<std::chrono::microseconds>(at - *first_).count();
    out_ << PadLeft(std::to_string(passed / microsecondsASecond), SecondsWidth) << '.'
         << PadLeft(std::to_string(passed % microsecondsASecond), MicrosecondsWidth, '0') << "  " << Hexadecimal(sent)
         << "  " << Hexadecimal(received) << (meaning.empty() ? "" : "  ") << meaning << '\n'
         << std::flush; // A trace is wanted most of a program that hangs.
}

bool HoldsSomethingElse(const std::filesystem::path& trace) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(trace, error) || std::filesystem::file_size(trace, error) == 0) return false;
    std::ifstream file(trace);
    std::string line;
    std::getline(file, line);
    if (line.ends_with('\r')) line.pop_back();
    return line != FirstLine && line != DecodedFirstLine;
}

} // namespace vantrel
