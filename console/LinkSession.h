// One use of the board by one command: the port that was named, the link over it, and the trace of its bytes.
#pragma once

#include "console/CommandContext.h"
#include "link/RSComm.h"
#include "link/TrafficLog.h"

#include <atomic>
#include <cstddef>
#include <fstream>
#include <optional>
#include <string>

namespace vantrel {

/// Counts the bytes of the line, and writes each exchange into a file when one is opened.
class ByteTrace final : public TrafficLog {
public:
    /// Throws RuntimeError 75 when the file cannot be written.
    void WriteTo(const std::string& file);
    void Exchanged(MonotonicTime sentAt, std::uint8_t sent, std::optional<std::uint8_t> received) override;
    void Surplus(MonotonicTime at, std::uint8_t byte) override;
    [[nodiscard]] std::size_t Bytes() const { return bytes_; }

private:
    std::ofstream file_;
    TextTrafficLog text_{file_};
    std::size_t bytes_ = 0;
};

class LinkSession {
public:
    /// The port and speed of the command line. Throws UsageError for a port number out of range.
    explicit LinkSession(CommandContext& context);
    /// A port of the program's own choice; `RSPort.cfg` is left alone.
    LinkSession(CommandContext& context, const PortChoice& choice, const std::string& speed);
    LinkSession(const LinkSession&) = delete;
    LinkSession& operator=(const LinkSession&) = delete;
    ~LinkSession() { Close(); }

    /// Opens the port and asks the board for a sign of life; from here on an interrupt ends the work in good order. The
    /// link's own boxes, and a line that names the port, tell the user what went wrong.
    void Open();
    /// Says goodbye to the board and closes the port. Once closed, does nothing.
    void Close();

    [[nodiscard]] RSComm& Link() { return link_; }
    [[nodiscard]] bool CameOnline() const { return cameOnline_; }
    /// The link never came up, or broke since.
    [[nodiscard]] bool Failed() const { return !cameOnline_ || link_.LinkFailed(); }
    [[nodiscard]] const std::atomic<bool>& Interrupted() const { return *interrupted_; }
    [[nodiscard]] const std::string& PortName() const { return port_.name; }
    /// How many bytes have passed the line, both ways.
    [[nodiscard]] std::size_t BytesExchanged() const { return trace_.Bytes(); }

private:
    CommandContext& context_;
    BoardPort port_;
    RSComm link_;
    ByteTrace trace_;
    const std::atomic<bool>* interrupted_ = nullptr;
    bool open_ = false;
    bool cameOnline_ = false;
};

} // namespace vantrel
