// What the program asks of a serial port: one byte out, one byte in, and a wait with a deadline.
#pragma once

#include "platform/Clock.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace vantrel {

/// How a wait for a received byte ended.
enum class PortWait {
    ByteReceived,
    TimedOut,
    Lost,
    Opened, ///< The port was being opened and no longer is: it is open, or FinishOpen() says why not.
    GivenUp, ///< By whoever waits (TurnQueue); no port says so.
};

/// A serial port in binary mode, read one byte at a time, without handshaking.
class SerialPort {
public:
    SerialPort() = default;
    SerialPort(const SerialPort&) = delete;
    SerialPort& operator=(const SerialPort&) = delete;
    virtual ~SerialPort() = default;

    /// The port that the next Open() opens: 1 is COM1. A port that stands for a named device ignores it.
    virtual void SetPortNumber(int number) = 0;
    /// Speed and framing of the next Open(): "9600,n,8,1" or "19200,n,8,1".
    virtual void SetSettings(const std::string& settings) = 0;

    /// Opens the port for exclusive use. Throws RuntimeError: 53 no such device, 70 not permitted, 75 in use or
    /// any other refusal, 5 settings that the device cannot take. A port that is open already is opened anew.
    virtual void Open() = 0;
    /// The same without waiting, for a port whose opening takes time (one behind a network): it is Opening() until that
    /// has ended, and FinishOpen() throws then what Open() would have thrown. Close() ends it early.
    virtual void BeginOpen() { Open(); }
    [[nodiscard]] virtual bool Opening() { return false; }
    virtual void FinishOpen() {}
    virtual void Close() noexcept = 0;
    [[nodiscard]] virtual bool IsOpen() const = 0;
    /// True while the port is open but its device has gone (adapter unplugged, far end hung up).
    [[nodiscard]] virtual bool IsLost() const = 0;

    /// Sends all bytes. A device that has gone swallows them and the port becomes lost; never throws for that.
    virtual void Write(std::span<const std::uint8_t> bytes) = 0;
    /// How many received bytes can be read at once: 0 only when none has come, otherwise at least 1.
    [[nodiscard]] virtual std::size_t ReceivedCount() = 0;
    /// Takes the oldest received byte; call only while ReceivedCount() is above 0.
    [[nodiscard]] virtual std::uint8_t ReadByte() = 0;
    /// Throws away everything received so far.
    virtual void ClearReceived() = 0;
    /// Sleeps in the host until a byte has been received, the port is lost or no longer being opened, or `deadline` has
    /// come.
    [[nodiscard]] virtual PortWait WaitForByte(MonotonicTime deadline) = 0;
    /// What the host's event loop can watch for a received byte while the port is open: a descriptor; -1 for none.
    [[nodiscard]] virtual int WatchedDescriptor() const { return -1; }
};

} // namespace vantrel
