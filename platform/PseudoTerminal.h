// The master side of a pseudo-terminal: what a program behind a made-up serial device needs of its host.
#pragma once

#include "platform/ServedLine.h"

#include <memory>

namespace vantrel {

class PseudoTerminal : public ServedLine {
public:
    /// A new pair in raw mode. A program that leaves the device takes along what it had not read, its line settings and
    /// its claim to exclusive use, so that the next one finds it fresh. Throws RuntimeError 5 where the host has none.
    [[nodiscard]] static std::unique_ptr<PseudoTerminal> Create();
};

} // namespace vantrel
