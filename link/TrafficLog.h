// Where every byte that passes the link is told of. Uses the clock's time only.
#pragma once

#include "link/TraceDecoder.h"
#include "platform/Clock.h"

#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace vantrel {

/// Hears every byte that the link sends or takes from the line, in order.
class TrafficLog {
public:
    TrafficLog() = default;
    TrafficLog(const TrafficLog&) = delete;
    TrafficLog& operator=(const TrafficLog&) = delete;
    virtual ~TrafficLog() = default;

    /// One exchange: when the byte was sent, the byte, and the answer (none: no answer came, or none was awaited).
    virtual void Exchanged(MonotonicTime sentAt, std::uint8_t sent, std::optional<std::uint8_t> received) = 0;
    /// A byte that nothing had asked for (any more) was thrown away.
    virtual void Surplus(MonotonicTime at, std::uint8_t byte) = 0;
};

/// Tells several: one that is set, and those that listen beside it. All must outlive their use.
class TrafficLogs final : public TrafficLog {
public:
    void Set(TrafficLog* log) { set_ = log; }
    void Add(TrafficLog& log) { beside_.push_back(&log); }
    void Remove(const TrafficLog& log) { std::erase(beside_, &log); }
    void Exchanged(MonotonicTime sentAt, std::uint8_t sent, std::optional<std::uint8_t> received) override;
    void Surplus(MonotonicTime at, std::uint8_t byte) override;

private:
    TrafficLog* set_ = nullptr;
    std::vector<TrafficLog*> beside_;
};

/// Writes a line an exchange: seconds since the first one, byte sent, byte received, hexadecimal; "--" for none.
class TextTrafficLog final : public TrafficLog {
public:
    explicit TextTrafficLog(std::ostream& out) : out_(out) {}
    /// With what the bytes mean behind them; before the first line.
    void Decode() { decoder_.emplace(); }
    void Exchanged(MonotonicTime sentAt, std::uint8_t sent, std::optional<std::uint8_t> received) override;
    void Surplus(MonotonicTime at, std::uint8_t byte) override;

private:
    void Line(MonotonicTime at, std::optional<std::uint8_t> sent, std::optional<std::uint8_t> received,
              const std::string& meaning);

    std::optional<TraceDecoder> decoder_;
    std::ostream& out_;
    std::optional<MonotonicTime> first_;
};

/// Whether there is a file with content that a trace would wipe out and that is no trace itself. Devices and pipes
/// hold nothing that could be wiped out.
[[nodiscard]] bool HoldsSomethingElse(const std::filesystem::path& trace);

} // namespace vantrel
