// What the check of the connection says: steps, figures, advice. Private to it and to whoever shows it. Pure.
#pragma once

#include "link/ConnectionCheck.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace vantrel::check {

inline constexpr std::array<const char*, 2> Speeds{"9600", "19200"};
inline constexpr const char* PortStep = "Port";
inline constexpr const char* ExchangeStep = "Exchanges";
inline constexpr const char* BoardStep = "Board";
/// Without a speed where none can be set.
[[nodiscard]] inline std::string AnswerStep(const std::string& speed) {
    return speed.empty() ? "Answer" : "Answer at " + speed;
}

extern const char* const CableAdvice;
extern const char* const EchoAdvice;
extern const char* const GarbageAdvice;
extern const char* const LatencyAdvice;
extern const char* const SlowAdvice;
/// Goes before the other advice where a server has been given its speed.
extern const char* const ServerSpeedAdvice;
[[nodiscard]] std::string TalkAdvice(bool local);
/// By the number of the error that kept the port closed. `local`: a device of this computer, no network in between.
[[nodiscard]] std::string PortAdvice(int errorNumber, bool local);
/// Of an error's description: what is wrong, without what to do.
[[nodiscard]] std::string FirstSentence(const std::string& text);
[[nodiscard]] std::string SpeedAdvice(const std::string& speed);

/// "55", "F8 00"; of many the first sixteen, and "...".
[[nodiscard]] std::string Hex(const std::vector<std::uint8_t>& bytes);
/// "2.1 ms".
[[nodiscard]] std::string Milliseconds(MonotonicTime time);
[[nodiscard]] std::string FiguresText(const ExchangeFigures& figures);
[[nodiscard]] std::string FlawVerdict(const ExchangeFigures& figures);
/// `speed`: the one that is set; empty where none can be.
[[nodiscard]] std::string FlawAdvice(const ExchangeFigures& figures, bool local, const std::string& speed);
[[nodiscard]] std::string BoardText(const CheckedBoard& board);
/// The board's type, and how that is known, or why it is not.
[[nodiscard]] std::string ModelText(const CheckedBoard& board, const CheckSubject& subject);
/// Four in five answers within 4 ms of 16.
[[nodiscard]] bool LooksLikeLatencyTimer(const ExchangeFigures& figures);
/// On a line of this computer's own: half of the answers took more than 30 ms.
[[nodiscard]] bool IsSlow(const ExchangeFigures& figures);
/// "each answer takes about 62 ms; ...".
[[nodiscard]] std::string SlowText(const ExchangeFigures& figures);

} // namespace vantrel::check
