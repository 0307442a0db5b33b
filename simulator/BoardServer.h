// Serves a simulated board at a pseudo-terminal, or to the network, paced like a line, so that any program can open it
// as a serial port.
#pragma once

#include "platform/Clock.h"
#include "platform/ServedLine.h"
#include "simulator/BoardLine.h"
#include "simulator/SimulatedBoard.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vantrel {

class BoardServer {
public:
    /// `bitsPerSecond`: 0 for no pacing, else each byte takes 10 bits each way, and a program that has set the device
    /// to another speed talks to the board as over a line with two speeds. Throws RuntimeError where the host has no
    /// pseudo-terminals, and 5 for a speed below 0.
    BoardServer(SimulatedBoard& board, Clock& clock, int bitsPerSecond);
    /// The same at any line.
    BoardServer(SimulatedBoard& board, Clock& clock, int bitsPerSecond, std::unique_ptr<ServedLine> served);

    /// What to open, for example "/dev/pts/3".
    [[nodiscard]] const std::string& Device() const;
    /// Serves whoever opens the device, one after the other, until `stop` becomes true (looked at 20 times a second at
    /// least) or the board hangs up. A board that hung up has taken the device with it.
    void Run(const std::atomic<bool>& stop);

private:
    void SendArrived();
    void CarryOver(const std::vector<std::uint8_t>& bytes);

    Clock& clock_;
    int bitsPerSecond_;
    std::unique_ptr<ServedLine> served_;
    BoardLine line_;
};

} // namespace vantrel
