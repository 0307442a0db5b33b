// Where every byte that passes the link is told of. Uses the clock's time only.
#pragma once

#include "platform/Clock.h"

#include <cstdint>
#include <iosfwd>
#include <optional>

namespace vantrel {

/// Hears every byte on the line, in order.
class TrafficLog {
public:
    TrafficLog() = default;
    TrafficLog(const TrafficLog&) = delete;
    TrafficLog& operator=(const TrafficLog&) = delete;
    virtual ~TrafficLog() = default;

    /// One exchange: when the byte was sent, the byte, and the answer (none: no answer came, or none was awaited).
    virtual void Exchanged(MonotonicTime sentAt, std::uint8_t sent, std::optional<std::uint8_t> received) = 0;
};

/// Writes a line an exchange: seconds since the first one, byte sent, byte received or "--", hexadecimal.
class TextTrafficLog final : public TrafficLog {
public:
    explicit TextTrafficLog(std::ostream& out) : out_(out) {}
    void Exchanged(MonotonicTime sentAt, std::uint8_t sent, std::optional<std::uint8_t> received) override;

private:
    std::ostream& out_;
    std::optional<MonotonicTime> first_;
};

} // namespace vantrel
