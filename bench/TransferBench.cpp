// How close the transfers and the views' passes come to what the line allows, and to a client that does nothing but
// write a byte, poll and read a byte. Both run against the same paced board behind a pseudo-terminal, which is a
// process of its own, so that the processor time is the program's alone. POSIX only. Prints ratios; decides nothing.
#include "document/SettingsTransfer.h"
#include "document/StatusTab.h"
#include "platform/AsioSerialPort.h"
#include "platform/SystemClock.h"
#include "simulator/BoardServer.h"
#include "simulator/SimulatedBoard.h"
#include "views/History.h"
#include "views/SequenceMonitor.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace vantrel;

std::atomic<bool> stopServing{false};

void OnTerminate(int) { stopServing = true; }

/// A paced board in a process of its own.
class PacedBoard {
public:
    explicit PacedBoard(int bitsPerSecond) {
        std::array<int, 2> channel{};
        if (pipe(channel.data()) != 0) std::abort();
        child_ = fork();
        if (child_ == 0) Serve(bitsPerSecond, channel[1]);
        close(channel[1]);
        std::array<char, 256> name{};
        const ssize_t length = read(channel[0], name.data(), name.size());
        close(channel[0]);
        device_.assign(name.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    }
    PacedBoard(const PacedBoard&) = delete;
    PacedBoard& operator=(const PacedBoard&) = delete;
    ~PacedBoard() {
        kill(child_, SIGTERM);
        waitpid(child_, nullptr, 0);
    }

    [[nodiscard]] const std::string& Device() const { return device_; }

private:
    [[noreturn]] static void Serve(int bitsPerSecond, int reportTo) {
        std::signal(SIGTERM, OnTerminate);
        SystemClock clock;
        SimulatedBoard board;
        BoardServer server(board, clock, bitsPerSecond);
        if (write(reportTo, server.Device().data(), server.Device().size()) < 0) std::abort();
        close(reportTo);
        server.Run(stopServing);
        _exit(0);
    }

    pid_t child_ = 0;
    std::string device_;
};

class NoBoxes final : public Dialogs {
public:
    MessageAnswer Show(const MessageBox& box) override {
        std::fprintf(stderr, "%s: %s\n", box.title.c_str(), box.text.c_str());
        return MessageAnswer::Cancel;
    }
};

class NoDisplay final : public TransferDisplay {
public:
    void ShowLabel(std::string_view) override {}
    void ShowProgress(std::size_t, std::size_t) override {}
};

/// As many rows as the editor shows at once, but for its heading.
class CountingStatusTab final : public StatusTabDisplay {
public:
    static constexpr int Rows = EditorRowsShown - 1;

    [[nodiscard]] bool StatusWanted() const override { return true; }
    [[nodiscard]] bool RowVisible(int row) const override { return row <= Rows; }
    void ShowNode(int, const std::string&) override { ++shown; }
    void ShowStatus(int, const std::string&) override { ++shown; }
    int shown = 0;
};

/// A data grid of the usual height.
class CountingSequence final : public SequenceDisplay {
public:
    static constexpr int Rows = 10;

    [[nodiscard]] bool Active() const override { return true; }
    [[nodiscard]] bool RowVisible(int row) const override { return row <= Rows; }
    void ShowDescription(const std::string&) override {}
    void ShowNodeNumber(const std::string&) override {}
    void ShowSetting(SettingsGrid, int, const std::string&) override {}
    void ShowStatus(const std::string&) override { ++shown; }
    void ShowDataWord(int, DataDirection, const std::string&) override { ++shown; }
    void ClearData() override {}
    int shown = 0;
};

#ifndef VANTREL_BENCH_TURNS
/// The console's queue. QtTransferBench.cpp brings that of the windows instead.
class Turns final {
public:
    explicit Turns(Clock& clock) : queue_(clock) {}

    TurnQueue& Queue() { return queue_; }
    void RunToEnd(Task task) { queue_.RunToEnd(task); }

private:
    TurnQueue queue_;
};
/// What has to live while the queue runs.
struct Host {
    Host(int& /*argc*/, char** /*argv*/) {}
};
#endif

/// What is measured, on a link that stands; true when all of it was done.
using Work = std::function<bool(RSComm& link, Turns& turns)>;

Work Transfer(TransferMode mode) {
    return [mode](RSComm& link, Turns& turns) {
        NoBoxes boxes;
        NoDisplay display;
        Configuration record = DefaultRecord("bench", {});
        SettingsTransfer transfer(mode, record, link, boxes, turns.Queue(), display);
        transfer.Load();
        turns.RunToEnd(transfer.Run());
        return transfer.Complete() && transfer.Unconfirmed().empty();
    };
}

/// What of these values differs from the board; nothing unless all of them were read clearly.
std::optional<std::vector<std::size_t>> Differing(const Configuration& record, std::vector<std::size_t> indices,
                                                  RSComm& link, Turns& turns) {
    NoDisplay display;
    BoardComparison comparison(record, link, turns.Queue(), display);
    comparison.Only(std::move(indices));
    turns.RunToEnd(comparison.Run());
    if (!comparison.Complete() || !comparison.Unread().empty()) return std::nullopt;
    std::vector<std::size_t> differing;
    for (const ValueDifference& difference : comparison.Differences())
        differing.push_back(difference.index);
    return differing;
}

/// A download of changes after one value was changed: all is read, one value written, and that one read back.
Work OneChange() {
    return [changed = 0](RSComm& link, Turns& turns) mutable {
        Configuration record = DefaultRecord("bench", {});
        // Another value in every round: what the round before has written is on the board.
        record.SetValue(ValueIndex(SequenceCount / 2, SequenceField::SendWordCount), ++changed);
        const auto changes = Differing(record, EveryIndex(), link, turns);
        if (!changes || changes->size() != 1) return false;
        NoBoxes boxes;
        NoDisplay display;
        SettingsTransfer transfer(TransferMode::DownloadData, record, link, boxes, turns.Queue(), display);
        transfer.Only(*changes);
        transfer.Load();
        turns.RunToEnd(transfer.Run());
        const auto left = Differing(record, *changes, link, turns);
        return transfer.Complete() && transfer.Unconfirmed().empty() && left && left->empty();
    };
}

bool PassOverStatusTab(RSComm& link, Turns& turns) {
    CountingStatusTab display;
    const SequenceAddresses nodes = NodeNumberAddressTable();
    const SequenceAddresses statuses = StatusWordAddressTable();
    const SystemClock clock;
    History log(clock);
    StatusSurvey survey(log);
    turns.RunToEnd(RefreshStatusTab(display, survey, nodes, statuses, link, turns.Queue()));
    // And the status word of one row out of sight.
    return display.shown == 2 * CountingStatusTab::Rows + 1;
}

bool PassOverSequence(RSComm& link, Turns& turns) {
    CountingSequence display;
    const Configuration record = DefaultRecord("bench", {});
    const std::int16_t sequence = 0;
    SequenceMonitor monitor(record, link, turns.Queue(), sequence, display);
    turns.RunToEnd(monitor.RefreshStatusAndData());
    return display.shown == 1 + 2 * CountingSequence::Rows;
}

/// The bytes that the work sent, for the minimal client to send again.
class Recording final : public TrafficLog {
public:
    void Exchanged(MonotonicTime, std::uint8_t sent, std::optional<std::uint8_t>) override { bytes.push_back(sent); }
    void Surplus(MonotonicTime, std::uint8_t) override {}
    std::vector<std::uint8_t> bytes;
};

double ProcessorSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

struct Measurement {
    double seconds = 0;
    double processorSeconds = 0;
    std::vector<std::uint8_t> sent;
};

Measurement MeasureWork(const std::string& device, int speed, const Work& work) {
    SystemClock clock;
    NoBoxes boxes;
    Recording recording;
    Turns turns(clock);
    AsioSerialPort port(clock, device);
    RSComm link(std::filesystem::temp_directory_path() / "vantrel-bench-none.cfg", {}, clock, boxes, turns.Queue());
    link.SetPortOverride({.number = {}, .speed = std::to_string(speed), .leaveFileAlone = true});
    turns.RunToEnd(link.OpenRSComm(port));
    if (!link.OnlineMode()) std::exit(3);
    link.SetTrafficLog(&recording);
    const double processorBefore = ProcessorSeconds();
    const MonotonicTime before = clock.Now();
    const bool done = work(link, turns);
    Measurement result;
    result.seconds = std::chrono::duration<double>(clock.Now() - before).count();
    result.processorSeconds = ProcessorSeconds() - processorBefore;
    if (!done) std::exit(1);
    link.SetTrafficLog(nullptr);
    turns.RunToEnd(link.CloseRSComm());
    result.sent = std::move(recording.bytes);
    return result;
}

/// Writes a byte, polls, reads a byte: the least that any program can do on this line.
double MeasureMinimalClient(const std::string& device, const std::vector<std::uint8_t>& bytes) {
    const int line = open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (line < 0) std::abort();
    termios raw{};
    tcgetattr(line, &raw);
    cfmakeraw(&raw);
    tcsetattr(line, TCSANOW, &raw);
    const SystemClock clock;
    const MonotonicTime before = clock.Now();
    for (const std::uint8_t byte : bytes) {
        std::uint8_t answer = 0;
        pollfd waiting{.fd = line, .events = POLLIN, .revents = 0};
        if (write(line, &byte, 1) != 1 || poll(&waiting, 1, 5000) != 1 || read(line, &answer, 1) != 1) std::abort();
    }
    const double seconds = std::chrono::duration<double>(clock.Now() - before).count();
    close(line);
    return seconds;
}

/// Returns how long it took, in seconds.
double Compare(const char* name, int speed, const Work& work) {
    const PacedBoard board(speed);
    // In turns, so that whatever else the machine does strikes both alike; the best of each counts.
    Measurement ours;
    double minimal = 0;
    for (int round = 0; round < 5; ++round) {
        Measurement once = MeasureWork(board.Device(), speed, work);
        const double onceMinimal = MeasureMinimalClient(board.Device(), once.sent);
        if (round == 0 || once.seconds < ours.seconds) ours = std::move(once);
        if (round == 0 || onceMinimal < minimal) minimal = onceMinimal;
    }
    const double limit = static_cast<double>(ours.sent.size()) * 20.0 / speed;
    std::printf("%-10s %6d baud  %5zu exchanges  %6.3f s  %5.1f %% of the wire limit  minimal client %5.1f %%  "
                "ratio %5.1f %%  processor %4.1f %% of a core\n",
                name, speed, ours.sent.size(), ours.seconds, 100 * limit / ours.seconds, 100 * limit / minimal,
                100 * minimal / ours.seconds, 100 * ours.processorSeconds / ours.seconds);
    std::fflush(stdout);
    return ours.seconds;
}

} // namespace

int main(int argc, char** argv) {
    [[maybe_unused]] const Host host(argc, argv);
    for (const int speed : {9600, 19200}) {
        const double whole = Compare("download", speed, Transfer(TransferMode::DownloadData));
        const double oneChange = Compare("one change", speed, OneChange());
        std::printf("%-10s %6d baud  %5.1f %% of a whole download's time\n", "one change", speed,
                    100 * oneChange / whole);
        Compare("upload", speed, Transfer(TransferMode::UploadData));
        Compare("status tab", speed, PassOverStatusTab);
        Compare("data words", speed, PassOverSequence);
    }
    return 0;
}
