// The line without the protocol: one byte out, whatever comes back, and how long it took. For the connection check;
// every byte is told to the link's log. Knows the link and its port.
#pragma once

#include "link/RSComm.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vantrel {

/// Holds the link for as long as it lives; while the link is ONLINE it is in need of a fresh sync afterwards. Repeats
/// nothing, asks nothing, shows no box.
class BareLine {
public:
    /// `line` is the link's own. `port` is the one that the link has open, or would open.
    BareLine(RSComm& link, RSComm::Line line, SerialPort& port);
    BareLine(const BareLine&) = delete;
    BareLine& operator=(const BareLine&) = delete;
    ~BareLine();

    /// Opens the port at that speed; false when the wait was given up. Throws RuntimeError.
    [[nodiscard]] TaskOf<bool> Open(PortSettings settings);
    void Close();

    struct Heard {
        std::vector<std::uint8_t> bytes; ///< In order; empty for silence.
        MonotonicTime time{0}; ///< From sending to the first of them.
        bool lost = false; ///< The device has gone.
    };
    /// Sends `byte`, waits for an answer at most so long, and then until nothing more has come for `quiet`.
    [[nodiscard]] TaskOf<Heard> Exchange(std::uint8_t byte, MonotonicTime longest, MonotonicTime quiet);
    /// What comes unasked until nothing has for `quiet`, or 64 bytes have.
    [[nodiscard]] TaskOf<Heard> Listen(MonotonicTime quiet);

private:
    [[nodiscard]] TaskOf<Heard> HearTheRest(Heard heard, MonotonicTime quiet);

    RSComm& link_;
    RSComm::Line line_;
    SerialPort& port_;
    bool opened_ = false; ///< By this, not by the link.
};

} // namespace vantrel
