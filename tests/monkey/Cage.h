// What keeps a program that acts at random from harming anybody: it is nobody, at home in a scratch folder, and can
// write nowhere else. Knows the host; no window.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace vantrel::monkey {

/// Build first, before anything else of the process.
class Cage {
public:
    /// Makes the scratch folder with a copy of the program's data from `data` (its "help", "support", ...), and goes to
    /// live there in a process of its own: home, settings, temporary and working folder. As root gives up its rights
    /// for those of `nobody`. Where the kernel can, it then refuses any change outside, and any program. Ends the
    /// process when a step of that fails.
    explicit Cage(const std::filesystem::path& data);
    Cage(const Cage&) = delete;
    Cage& operator=(const Cage&) = delete;
    ~Cage() = default;

    [[nodiscard]] const std::filesystem::path& Folder() const { return folder_; }
    [[nodiscard]] bool IsSandboxed() const { return sandboxed_; }
    /// By rights and, where the kernel has it, by its sandbox, for the user.
    [[nodiscard]] std::string Text() const;
    /// A file that this process could not, or should not, make outside: where it could, empty where it could not.
    [[nodiscard]] static std::string WrittenOutside();

private:
    std::filesystem::path folder_;
    bool droppedRights_ = false;
    bool sandboxed_ = false;
};

/// Ends the process with a message and whatever `tell` writes when Alive() was not called for so many real seconds.
class Watchdog {
public:
    Watchdog(unsigned seconds, std::function<std::string()> tell);
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;
    ~Watchdog();
    void Alive();

private:
    unsigned seconds_;
};

/// What this process has of its host.
struct Usage {
    double allocated = 0; ///< MB; under a sanitizer nobody tells.
    double resident = 0; ///< MB.
    int descriptors = 0; ///< Open files, devices, sockets.
};
[[nodiscard]] Usage UsageNow();

} // namespace vantrel::monkey
