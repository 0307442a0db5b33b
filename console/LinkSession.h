// One use of the board by one command: the port that was named, the link over it, and the trace of its bytes.
#pragma once

#include "console/ByteTrace.h"
#include "console/CommandContext.h"
#include "console/ConsoleTurns.h"
#include "link/RSComm.h"

#include <atomic>
#include <cstddef>
#include <string>
#include <utility>

namespace vantrel {

class LinkSession {
public:
    /// The port and speed of the command line. Throws UsageError for a port number out of range, and for a trace that
    /// would wipe out the command's own file.
    explicit LinkSession(CommandContext& context);
    /// A port of the program's own choice; `RSPort.cfg` is left alone.
    LinkSession(CommandContext& context, const PortChoice& choice, const std::string& speed);
    LinkSession(const LinkSession&) = delete;
    LinkSession& operator=(const LinkSession&) = delete;
    ~LinkSession();

    /// Asks before the trace replaces a file that is none. False when the user wants to keep it; then nothing may be
    /// opened.
    [[nodiscard]] bool TraceAccepted();
    /// Opens the port and asks the board for a sign of life; from here on an interrupt ends the work in good order,
    /// and a silent board is given up then. The link's own boxes, and a line that names the port, tell the user what
    /// went wrong. Throws RuntimeError when the trace cannot be opened.
    void Open();
    /// Says goodbye to the board, closes the port and the trace. How the command ends that would have ended with `end`:
    /// a link that had failed before the goodbye and a trace that could not be written, which the user is told, outrank
    /// it. Whether the goodbye is answered makes no difference.
    [[nodiscard]] ExitCode Close(ExitCode end);

    [[nodiscard]] RSComm& Link() { return link_; }
    [[nodiscard]] ConsoleTurns& Turns() { return turns_; }
    /// Runs an operation of the link, or a pass over it, to its end.
    template <typename Result> Result Run(TaskOf<Result> task) { return turns_.RunToEnd(task); }
    /// Runs what `pass` does, and all of it again when the port was opened again meanwhile: what had been read before
    /// may be another board's.
    template <typename Pass> void RunWhole(const Pass& pass) {
        while (RunsAnew(pass)) {
        }
    }
    [[nodiscard]] bool CameOnline() const { return cameOnline_; }
    /// The link never came up, or broke since.
    [[nodiscard]] bool Failed() const { return !cameOnline_ || link_.LinkFailed(); }
    [[nodiscard]] const std::atomic<bool>& Interrupted() const { return *interrupted_; }
    [[nodiscard]] const std::string& PortName() const { return port_.name; }
    /// How many bytes have passed the line, both ways.
    [[nodiscard]] std::size_t BytesExchanged() const { return trace_.Bytes(); }

private:
    void CloseLink();
    void BeginToCancel();
    void GiveUpSilence();
    template <typename Pass> bool RunsAnew(const Pass& pass) {
        const int opened = link_.Opened();
        pass();
        return link_.Opened() != opened && !Failed() && !Interrupted();
    }

    CommandContext& context_;
    BoardPort port_;
    ConsoleTurns turns_;
    RSComm link_;
    ByteTrace trace_;
    const std::atomic<bool>* interrupted_ = nullptr;
    bool open_ = false;
    bool cameOnline_ = false;
};

} // namespace vantrel
