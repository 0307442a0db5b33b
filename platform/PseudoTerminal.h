// The master side of a pseudo-terminal: what a program behind a made-up serial device needs of its host.
#pragma once

#include "platform/Clock.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vantrel {

class PseudoTerminal {
public:
    PseudoTerminal() = default;
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;
    virtual ~PseudoTerminal() = default;

    /// A new pair in raw mode. A program that leaves the device takes along what it had not read, its line settings and
    /// its claim to exclusive use, so that the next one finds it fresh. Throws RuntimeError 5 where the host has none.
    [[nodiscard]] static std::unique_ptr<PseudoTerminal> Create();

    /// The device that the other program opens.
    [[nodiscard]] virtual const std::string& Device() const = 0;
    /// The speed in bits per second that the other program has set; nothing while it has set none, for one without a
    /// name in the host, and where the host cannot tell.
    [[nodiscard]] virtual std::optional<int> Speed() const = 0;
    /// Waits at most `timeout` for bytes from the other side and takes them; empty when none came. Nobody having the
    /// device open is the same as no bytes, and costs no processor time.
    [[nodiscard]] virtual std::vector<std::uint8_t> Read(MonotonicTime timeout) = 0;
    /// Sends to whoever has the device open; what nobody takes, or has no room for, is lost as on a line.
    virtual void Write(std::span<const std::uint8_t> bytes) = 0;
    /// Hangs up: the other side sees the line die. Nothing is read or written any more.
    virtual void Close() noexcept = 0;
};

} // namespace vantrel
