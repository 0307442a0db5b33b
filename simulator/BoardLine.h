// The wire between a program and the simulated board: when each byte has left, has reached the board, and its answer
// has come back. Pure: time is passed in.
#pragma once

#include "platform/Clock.h"
#include "simulator/SimulatedBoard.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>

namespace vantrel {

/// Full duplex, on an absolute schedule: a byte begins when it is sent or when the byte before it has ended, whichever
/// is later, so that lateness of the host never adds up.
class BoardLine {
public:
    /// `byteTime`: how long one byte takes, each way.
    BoardLine(SimulatedBoard& board, MonotonicTime byteTime) : board_(board), byteTime_(byteTime) {}

    /// Applies to the bytes sent from now on.
    void SetByteTime(MonotonicTime byteTime) { byteTime_ = byteTime; }

    /// The two ends' speeds in bits per second; 0 for the same as the other's. At different speeds each end hears what
    /// HeardAtSpeed says. Applies to the bytes sent from now on, and is no matter of how long they take.
    void SetSpeeds(int program, int board);

    /// The program's byte begins its way to the board. A dead line swallows it.
    void Send(std::uint8_t byte, MonotonicTime now);
    /// How many of the board's bytes have come back and wait to be taken.
    [[nodiscard]] std::size_t Arrived(MonotonicTime now) const;
    /// Takes the oldest; call only while one has arrived.
    [[nodiscard]] std::uint8_t Take();
    /// Throws away what has arrived; what is still on the wire arrives later.
    void DiscardArrived(MonotonicTime now);
    /// When the oldest byte not taken arrives, or the line goes dead, if either is to happen or has happened.
    [[nodiscard]] std::optional<MonotonicTime> NextEvent() const;

    /// The line goes dead at `at`, also when the board hangs up; what is on the wire then is lost.
    void Cut(MonotonicTime at);
    void Mend() { cutAt_.reset(); }
    [[nodiscard]] bool IsCut(MonotonicTime now) const { return cutAt_ && *cutAt_ <= now; }

private:
    void Answer(const BoardAnswer& answer);

    struct WireByte {
        MonotonicTime arrives;
        std::uint8_t value;
    };

    SimulatedBoard& board_;
    MonotonicTime byteTime_;
    int programSpeed_ = 0;
    int boardSpeed_ = 0;
    MonotonicTime toBoardEnds_{0};
    MonotonicTime fromBoardEnds_{0};
    std::deque<WireByte> fromBoard_; ///< In the order of arrival.
    std::optional<MonotonicTime> cutAt_;
};

} // namespace vantrel
