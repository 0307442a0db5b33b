// The far end of a line that another program opens: what serving a made-up board there needs of its host.
#pragma once

#include "platform/Clock.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vantrel {

class ServedLine {
public:
    ServedLine() = default;
    ServedLine(const ServedLine&) = delete;
    ServedLine& operator=(const ServedLine&) = delete;
    virtual ~ServedLine() = default;

    /// What the other program opens: a device, or an address.
    [[nodiscard]] virtual const std::string& Device() const = 0;
    /// The speed in bits per second that the other program has set; nothing while it has set none, for one without a
    /// name in the host, and where the host cannot tell.
    [[nodiscard]] virtual std::optional<int> Speed() const = 0;
    /// Waits at most `timeout` for bytes from the other side and takes them; empty when none came. Nobody being at the
    /// other side is the same as no bytes, and costs no processor time.
    [[nodiscard]] virtual std::vector<std::uint8_t> Read(MonotonicTime timeout) = 0;
    /// Sends to whoever is there; what nobody takes, or has no room for, is lost as on a line.
    virtual void Write(std::span<const std::uint8_t> bytes) = 0;
    /// Hangs up: the other side sees the line die. Nothing is read or written any more.
    virtual void Close() noexcept = 0;
};

} // namespace vantrel
