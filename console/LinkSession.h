// One use of the board by one command: the port that was named, the link over it, and the trace of its bytes.
#pragma once

#include "console/CommandContext.h"
#include "console/ConsoleTurns.h"
#include "link/ByteTrace.h"
#include "link/RSComm.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace vantrel {

class LinkSession {
public:
    /// The port and speed of the command line. Throws UsageError for a port number out of range, and for a trace that
    /// would wipe out the command's own file.
    explicit LinkSession(CommandContext& context);
    /// A port of the program's own choice; `RSPort.cfg` is left alone.
    LinkSession(CommandContext& context, const PortChoice& choice, const std::optional<std::string>& speed);
    LinkSession(const LinkSession&) = delete;
    LinkSession& operator=(const LinkSession&) = delete;
    ~LinkSession();

    /// Does `work` with the board once the user has `agreed`, also to the file that the trace would replace. Else, and
    /// when the board gives no sign of life, it says `nothing`: what has not happened. Opens the port and closes it
    /// with a goodbye; in between an interrupt ends the work in good order, and a silent board is given up then. The
    /// link's own boxes, and a line that names the port, tell the user what went wrong.
    /// How the command ends: as `work` did, but a link that had failed before the goodbye and a trace that could not be
    /// written, which the user is told, outrank it. Whether the goodbye is answered makes no difference. Throws
    /// RuntimeError when the trace cannot be opened.
    [[nodiscard]] ExitCode Use(const std::string& nothing, const std::function<bool()>& agreed,
                               const std::function<ExitCode()>& work);

    /// The same without opening anything: `work` opens the port itself. `cancel` is what an interrupt does.
    [[nodiscard]] ExitCode UseClosed(const std::function<void()>& cancel, const std::function<ExitCode()>& work);

    [[nodiscard]] SerialPort& Port() { return *port_.port; }
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
    /// How a command ends that was to read something, after saying why not all of it was; `complete`: it was.
    [[nodiscard]] ExitCode EndOfReading(bool complete);
    /// The link never came up, or broke since.
    [[nodiscard]] bool Failed() const { return !cameOnline_ || link_.LinkFailed(); }
    [[nodiscard]] const std::atomic<bool>& Interrupted() const { return *interrupted_; }
    [[nodiscard]] const std::string& PortName() const { return port_.name; }
    /// How many bytes have passed the line, both ways.
    [[nodiscard]] std::size_t BytesExchanged() const { return trace_.Bytes(); }

private:
    [[nodiscard]] bool TraceAccepted();
    void BeginTrace();
    [[nodiscard]] ExitCode EndTrace(ExitCode end);
    void Open();
    [[nodiscard]] ExitCode Close(ExitCode end);
    void CloseLink();
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
