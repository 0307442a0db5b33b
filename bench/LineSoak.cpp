// So many seconds on a real clock and a pseudo-terminal: polls, passes and transfers, while the board behind it, a
// process of its own, has a new fault every few seconds and now and then takes the device away. line_soak SECONDS
// [SEED]. Prints each minute what both processes need; fails when an upload brings other values than the board holds.
// Linux only.
#include "document/SettingsTransfer.h"
#include "document/StatusTab.h"
#include "link/TargetMap.h"
#include "platform/AsioSerialPort.h"
#include "platform/SystemClock.h"
#include "simulator/BoardServer.h"
#include "simulator/SimulatedBoard.h"
#include "views/History.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <string>

namespace {

using namespace vantrel;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

constexpr int Speed = 19200;
std::atomic<bool> pauseServing{false};

void OnAlarm(int /*signal*/) { pauseServing = true; }

/// What the board holds from the beginning, so that it is known what an upload has to bring.
std::int32_t Held(std::size_t index) { return static_cast<std::int32_t>(index * 7 % 1000); }

[[noreturn]] void ServeBoard(std::uint32_t seed, int reportTo) {
    std::signal(SIGALRM, OnAlarm);
    SystemClock clock;
    SimulatedBoard board(BoardStart(clock));
    BoardServer server(board, clock, Speed);
    if (write(reportTo, server.Device().data(), server.Device().size()) < 0) std::abort();
    close(reportTo);
    std::mt19937 random(seed);
    // Wrong data of a read is all that the protocol cannot see.
    constexpr std::array kinds{FaultKind::NoAnswer,    FaultKind::WrongEcho, FaultKind::LateAnswer, FaultKind::LostByte,
                               FaultKind::DoubledByte, FaultKind::LostByte,  FaultKind::DoubledByte};
    while (true) {
        pauseServing = false;
        alarm(5);
        server.Run(pauseServing);
        if (!pauseServing) std::_Exit(0); // It has hung up.
        board.AddFault({.kind = random() % 40 == 0 ? FaultKind::HangUp : kinds.at(random() % kinds.size()),
                        .firstTimeOnly = true,
                        .afterBytes = board.ReceivedBytes() + random() % 300,
                        .lateBy = 10ms * (random() % 150)});
    }
}

class FaultyBoard {
public:
    explicit FaultyBoard(std::uint32_t seed) {
        std::array<int, 2> channel{};
        if (pipe(channel.data()) != 0) std::abort();
        child_ = fork();
        if (child_ == 0) ServeBoard(seed, channel[1]);
        close(channel[1]);
        std::array<char, 256> name{};
        const ssize_t length = read(channel[0], name.data(), name.size());
        close(channel[0]);
        device_.assign(name.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    }
    FaultyBoard(const FaultyBoard&) = delete;
    FaultyBoard& operator=(const FaultyBoard&) = delete;
    ~FaultyBoard() {
        kill(child_, SIGKILL);
        if (!gone_) waitpid(child_, nullptr, 0);
    }
    [[nodiscard]] bool HasGone() { return gone_ = gone_ || waitpid(child_, nullptr, WNOHANG) == child_; }
    [[nodiscard]] const std::string& Device() const { return device_; }
    [[nodiscard]] pid_t Process() const { return child_; }

private:
    pid_t child_ = 0;
    bool gone_ = false;
    std::string device_;
};

/// "12.3 MB 7 files" of a process.
std::string Needs(const std::string& process) {
    long pages = 0;
    std::ifstream("/proc/" + process + "/statm") >> pages >> pages;
    std::error_code error;
    const auto files = std::distance(fs::directory_iterator("/proc/" + process + "/fd", error), {});
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.1f MB %d files",
                  static_cast<double>(pages * sysconf(_SC_PAGESIZE)) / 1e6, static_cast<int>(files));
    return text.data();
}

class NoBoxes final : public Dialogs {
public:
    MessageAnswer Show(const MessageBox& /*box*/) override { return ++shown, MessageAnswer::Cancel; }
    int shown = 0;
};

class NoDisplay final : public TransferDisplay, public StatusTabDisplay {
public:
    void ShowLabel(std::string_view) override {}
    void ShowProgress(std::size_t, std::size_t) override {}
    [[nodiscard]] bool StatusWanted() const override { return true; }
    [[nodiscard]] bool RowVisible(int row) const override { return row <= 12; }
    void ShowNode(int, const std::string&) override {}
    void ShowStatus(int, const std::string&) override {}
};

class Soak {
public:
    explicit Soak(std::uint32_t seed) : seed_(seed) {
        link_.SetPortOverride({.number = {}, .speed = std::to_string(Speed), .leaveFileAlone = true});
        Renew();
    }
    Soak(const Soak&) = delete;
    Soak& operator=(const Soak&) = delete;
    ~Soak() { fs::remove(name_); }

    /// False when it has failed.
    bool Run(MonotonicTime length) {
        const MonotonicTime end = clock_.Now() + length;
        for (MonotonicTime told{0}; clock_.Now() < end && wrong_ == 0;) {
            if ((!link_.OnlineMode() || link_.LinkFailed()) && !Open()) continue;
            turns_.RunToEnd(RefreshStatusTab(display_, survey_, nodes_, statuses_, link_, turns_));
            ++passes_;
            if (passes_ % 10 == 1) Transfer();
            if (clock_.Now() - told >= 60s || told == 0s) Tell(), told = clock_.Now();
        }
        Tell();
        return wrong_ == 0 && transfers_ > 0;
    }

private:
    void Renew() {
        board_ = nullptr;
        board_ = std::make_unique<FaultyBoard>(seed_++);
        fs::remove(name_);
        fs::create_symlink(board_->Device(), name_);
        downloaded_ = false;
    }
    bool Open() {
        turns_.RunToEnd(link_.CloseRSComm());
        if (board_->HasGone()) Renew();
        link_.SetOnlineMode(true);
        turns_.RunToEnd(link_.OpenRSComm(port_));
        ++openings_;
        if (!link_.OnlineMode()) clock_.SleepUntil(clock_.Now() + 200ms);
        return link_.OnlineMode();
    }
    /// What was sent without a doubt has to come back.
    void Transfer() {
        const TransferMode mode = downloaded_ ? TransferMode::UploadData : TransferMode::DownloadData;
        Configuration record = DefaultRecord("soak", {});
        for (const std::size_t index : EveryIndex())
            record.SetValue(index, mode == TransferMode::DownloadData ? Held(index) : 0);
        SettingsTransfer transfer(mode, record, link_, boxes_, turns_, display_);
        transfer.Load();
        turns_.RunToEnd(transfer.Run());
        const bool sure = transfer.Complete() && transfer.Unconfirmed().empty();
        if (mode == TransferMode::DownloadData) {
            downloaded_ = sure;
        } else if (sure) {
            ++transfers_;
            for (const std::size_t index : EveryIndex())
                wrong_ += record.Value(index) != Held(index) ? 1 : 0;
        }
    }
    /// How far the board's clock and this computer's are apart: both go by the host's.
    int Drift() {
        const auto second = turns_.RunToEnd(link_.Read("B" + std::to_string(ClockSecondByte))).Number();
        const auto now = std::chrono::floor<std::chrono::seconds>(clock_.LocalNow()).time_since_epoch().count();
        if (!second) return -1;
        const int apart = static_cast<int>((now % 60 - *second + 60) % 60);
        return std::min(apart, 60 - apart);
    }
    void Tell() {
        std::printf("%6.0f s: %d passes, %d uploads right, %d openings, %d boxes; drift %d s; program %s, board %s\n",
                    std::chrono::duration<double>(clock_.Now() - begun_).count(), passes_, transfers_, openings_,
                    boxes_.shown, Drift(), Needs("self").c_str(), Needs(std::to_string(board_->Process())).c_str());
        if (wrong_ > 0) std::printf("%d values of an upload are not what the board holds\n", wrong_);
        std::fflush(stdout);
    }

    const fs::path name_ = fs::temp_directory_path() / ("vantrel-soak-" + std::to_string(getpid()));
    std::uint32_t seed_;
    std::unique_ptr<FaultyBoard> board_;
    SystemClock clock_;
    History history_{clock_};
    StatusSurvey survey_{history_};
    NoBoxes boxes_;
    NoDisplay display_;
    TurnQueue turns_{clock_};
    AsioSerialPort port_{clock_, name_.string()};
    RSComm link_{"/nowhere/RSPort.cfg", {}, clock_, boxes_, turns_};
    const SequenceAddresses nodes_ = NodeNumberAddressTable();
    const SequenceAddresses statuses_ = StatusWordAddressTable();
    const MonotonicTime begun_ = clock_.Now();
    bool downloaded_ = false;
    int passes_ = 0;
    int transfers_ = 0;
    int openings_ = 0;
    int wrong_ = 0;
};

} // namespace

int main(int argc, char** argv) {
    const int seconds = argc > 1 ? std::atoi(argv[1]) : 0;
    if (seconds <= 0) return std::fprintf(stderr, "usage: line_soak SECONDS [SEED]\n"), 2;
    Soak soak(argc > 2 ? static_cast<std::uint32_t>(std::atoi(argv[2])) : 1);
    return soak.Run(std::chrono::seconds(seconds)) ? 0 : 1;
}
