// Pseudo-terminals as Linux has them. The device's end is kept open beside the master: a flag of exclusive use outlives
// its program in the kernel, and only somebody who has the device open already can clear it. So that programs are seen
// to come and go all the same, the device file is watched.
#include "platform/PseudoTerminal.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace vantrel {

namespace {

/// An open file of the host, closed with its owner.
class FileHandle {
public:
    explicit FileHandle(int handle = -1) : handle_(handle) {}
    FileHandle(FileHandle&& other) noexcept : handle_(std::exchange(other.handle_, -1)) {}
    FileHandle& operator=(FileHandle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~FileHandle() { Close(); }

    [[nodiscard]] int Get() const { return handle_; }
    [[nodiscard]] bool IsOpen() const { return handle_ >= 0; }
    void Close() noexcept {
        if (IsOpen()) close(std::exchange(handle_, -1));
    }

private:
    int handle_;
};

void Check(bool succeeded) {
    if (succeeded) return;
    throw RuntimeError(ErrorNumber::InvalidProcedureCall,
                       "This host gives no pseudo-terminal: " + std::generic_category().message(errno) + ".");
}

FileHandle OpenMaster() {
    FileHandle master(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    Check(master.IsOpen() && grantpt(master.Get()) == 0 && unlockpt(master.Get()) == 0);
    return master;
}

std::string DeviceOf(const FileHandle& master) {
    std::array<char, 128> name{};
    Check(ptsname_r(master.Get(), name.data(), name.size()) == 0);
    return name.data();
}

FileHandle OpenDevice(const std::string& device) {
    FileHandle file(open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    Check(file.IsOpen());
    return file;
}

/// Without a speed, so that one that is there later has been set by a program.
bool MakeRaw(int device) {
    termios settings{};
    if (tcgetattr(device, &settings) != 0) return false;
    cfmakeraw(&settings);
    cfsetispeed(&settings, B0);
    cfsetospeed(&settings, B0);
    return tcsetattr(device, TCSANOW, &settings) == 0;
}

std::optional<int> SpeedNamed(speed_t name) {
    static constexpr std::array<std::pair<speed_t, int>, 15> speeds{{{B300, 300},
                                                                     {B600, 600},
                                                                     {B1200, 1200},
                                                                     {B1800, 1800},
                                                                     {B2400, 2400},
                                                                     {B4800, 4800},
                                                                     {B9600, 9600},
                                                                     {B19200, 19200},
                                                                     {B38400, 38400},
                                                                     {B57600, 57600},
                                                                     {B115200, 115200},
                                                                     {B230400, 230400},
                                                                     {B460800, 460800},
                                                                     {B921600, 921600},
                                                                     {B1000000, 1000000}}};
    const auto* found =
        std::find_if(speeds.begin(), speeds.end(), [&](const auto& each) { return each.first == name; });
    return found == speeds.end() ? std::nullopt : std::optional(found->second);
}

/// Whether a program has the device open, told by the host's file watch. The watch folds equal news into one, so that
/// opens and closes cannot be counted: what closes may not have been the only one.
class ClientWatch {
public:
    explicit ClientWatch(const std::string& device) : watch_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        if (watch_.IsOpen() && inotify_add_watch(watch_.Get(), device.c_str(), IN_OPEN | IN_CLOSE) < 0) watch_.Close();
    }

    [[nodiscard]] int Handle() const { return watch_.Get(); }
    /// A host that cannot watch counts as a program that never leaves.
    [[nodiscard]] bool Nobody() const { return watch_.IsOpen() && nobody_; }
    /// Takes the news; true when since then the last program has left `device`.
    bool LastOneLeft(int device);

private:
    FileHandle watch_;
    bool nobody_ = true;
};

bool ClientWatch::LastOneLeft(int device) {
    bool left = false;
    std::array<char, 4096> news{};
    ssize_t size = 0;
    while (watch_.IsOpen() && (size = read(watch_.Get(), news.data(), news.size())) > 0) {
        inotify_event event{};
        for (std::size_t at = 0; at < static_cast<std::size_t>(size); at += sizeof event + event.len) {
            std::memcpy(&event, news.data() + at, sizeof event);
            left = (event.mask & IN_CLOSE) != 0;
            if ((event.mask & IN_OPEN) != 0) nobody_ = false;
        }
    }
    if (!left || nobody_) return false;
    // Whoever uses the line as a serial port holds its lock.
    nobody_ = flock(device, LOCK_EX | LOCK_NB) == 0;
    if (nobody_) flock(device, LOCK_UN);
    return nobody_;
}

class PosixPseudoTerminal final : public PseudoTerminal {
public:
    PosixPseudoTerminal()
        : master_(OpenMaster()), name_(DeviceOf(master_)), device_(OpenDevice(name_)), clients_(name_) {
        Check(MakeRaw(device_.Get()));
    }

    [[nodiscard]] const std::string& Device() const override { return name_; }
    [[nodiscard]] std::optional<int> Speed() const override;
    [[nodiscard]] std::vector<std::uint8_t> Read(MonotonicTime timeout) override;
    void Write(std::span<const std::uint8_t> bytes) override;
    void Close() noexcept override;

private:
    void FollowClients();

    FileHandle master_;
    std::string name_;
    FileHandle device_;
    ClientWatch clients_;
};

void WaitForNews(int master, int watch, MonotonicTime timeout) {
    // The host's usual 50 microseconds of slack are a twentieth of a byte at 9600 baud.
    prctl(PR_SET_TIMERSLACK, 1UL);
    std::array<pollfd, 2> waits{{{master, POLLIN, 0}, {watch, POLLIN, 0}}};
    const auto seconds = std::chrono::floor<std::chrono::seconds>(timeout);
    const timespec limit{seconds.count(), (timeout - seconds).count()};
    ppoll(waits.data(), waits.size(), &limit, nullptr);
}

void PosixPseudoTerminal::FollowClients() {
    if (!clients_.LastOneLeft(device_.Get())) return;
    ioctl(device_.Get(), TIOCNXCL);
    tcflush(device_.Get(), TCIFLUSH);
    MakeRaw(device_.Get());
}

std::optional<int> PosixPseudoTerminal::Speed() const {
    termios settings{};
    if (tcgetattr(device_.Get(), &settings) != 0) return std::nullopt;
    return SpeedNamed(cfgetospeed(&settings));
}

std::vector<std::uint8_t> PosixPseudoTerminal::Read(MonotonicTime timeout) {
    if (!master_.IsOpen()) return {};
    WaitForNews(master_.Get(), clients_.Handle(), std::max(timeout, MonotonicTime{0}));
    FollowClients();
    std::array<std::uint8_t, 256> buffer{};
    const ssize_t size = read(master_.Get(), buffer.data(), buffer.size());
    return {buffer.begin(), buffer.begin() + std::max<ssize_t>(size, 0)};
}

void PosixPseudoTerminal::Write(std::span<const std::uint8_t> bytes) {
    FollowClients();
    if (!master_.IsOpen() || clients_.Nobody()) return;
    // A program that does not read loses bytes, as it would on a line; it must not stop the board.
    [[maybe_unused]] const ssize_t taken = write(master_.Get(), bytes.data(), bytes.size());
}

void PosixPseudoTerminal::Close() noexcept {
    device_.Close();
    master_.Close();
}

} // namespace

std::unique_ptr<PseudoTerminal> PseudoTerminal::Create() { return std::make_unique<PosixPseudoTerminal>(); }

} // namespace vantrel
