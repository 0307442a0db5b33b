// A serial port whose far end is a simulated board in the same process, paced like a line. Runs on whatever clock it is
// given: on a virtual one a five-second silence takes no time.
#pragma once

#include "platform/Clock.h"
#include "platform/SerialPort.h"
#include "simulator/BoardLine.h"
#include "simulator/SimulatedBoard.h"

#include <cstdint>
#include <string>

namespace vantrel {

/// Pacing of the line: each byte takes 10 bits at the speed of the port's settings, each way; or it is
/// as good as instantaneous (one microsecond, so that a virtual clock always moves).
enum class LinePacing { LineSpeed, None };

class SimulatedPort : public SerialPort {
public:
    SimulatedPort(SimulatedBoard& board, Clock& clock, LinePacing pacing);

    void SetPortNumber(int number) override;
    void SetSettings(const std::string& settings) override;
    void Open() override;
    void Close() noexcept override;
    [[nodiscard]] bool IsOpen() const override;
    [[nodiscard]] bool IsLost() const override;
    void Write(std::span<const std::uint8_t> bytes) override;
    [[nodiscard]] std::size_t ReceivedCount() override;
    [[nodiscard]] std::uint8_t ReadByte() override;
    void ClearReceived() override;
    [[nodiscard]] PortWait WaitForByte(MonotonicTime deadline) override;

    /// As configured by the link, for tests and displays.
    [[nodiscard]] int PortNumber() const { return number_; }
    [[nodiscard]] const std::string& Settings() const { return settings_; }
    /// The board's own speed in bits per second, from the next opening on; 0, as it is at first, for any.
    void SetBoardSpeed(int bitsPerSecond) { boardSpeed_ = bitsPerSecond; }
    /// Cuts the line: the port is lost until it is opened again, and opening fails while it is cut. A board that hangs
    /// up cuts it likewise.
    void CutLine();
    void MendLine();

private:
    Clock& clock_;
    LinePacing pacing_;
    BoardLine line_;
    int number_ = 1;
    int boardSpeed_ = 0;
    std::string settings_ = "9600,n,8,1";
    bool open_ = false;
    bool lost_ = false; ///< The line was cut under the open port and has been mended since.
};

} // namespace vantrel
