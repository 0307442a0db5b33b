// The frame's background update: the system message, the panel's text, the poll of the board and its alarms. Knows the
// program's state and the link; no window.
#pragma once

#include "app/Program.h"
#include "link/RSComm.h"
#include "platform/Task.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vantrel {

/// All arguments must outlive it.
class BackgroundUpdate {
public:
    /// How often Tick() is to be called.
    static constexpr int TickMilliseconds = 500;

    BackgroundUpdate(Program& program, RSComm& link, const Clock& clock)
        : program_(program), link_(link), clock_(clock) {}

    /// One tick: brings `systemMessage` and the panel's text up to date; while ONLINE polls the board with one read,
    /// and with up to two more when the faults are to be read again. The alarms follow what was read: the fault at
    /// every tick. Going ONLINE and every 20th ONLINE tick ask for all of them, and whoever raises
    /// `refreshTargetStatus`. While `transferring`, the line is left alone. Do not start one while another has not
    /// ended: call Wait() instead.
    [[nodiscard]] Task Tick(bool transferring);
    /// What a tick comes to whose predecessor still waits for the board: nothing but the truth about that.
    void Wait();

    /// Keeps bytes that the board may have set to 255 in sight, below the system message, until ONLINE is begun anew.
    void NoteReached(const std::vector<std::uint16_t>& bytes) { reached_.insert(bytes.begin(), bytes.end()); }

    /// What the status bar's first panel shows.
    [[nodiscard]] const std::string& PanelText() const { return panelText_; }

private:
    void TickOffline();
    [[nodiscard]] Task TickOnline(bool transferring);
    [[nodiscard]] Task Poll();
    [[nodiscard]] Task ReadAlarms(int currentFault);
    /// The value of a byte; nothing when it is doubtful or the link has failed.
    [[nodiscard]] TaskOf<std::optional<int>> Read(int byte);
    void LookForUserProgram();
    void ShowAlarms();
    /// What half-sent writes may have done to the board since it came ONLINE, for the user; empty when nothing.
    [[nodiscard]] std::string ReachedText();

    Program& program_;
    RSComm& link_;
    const Clock& clock_;
    std::string panelText_;
    bool wasOnline_ = false;
    int onlineTicks_ = 0;
    std::set<std::uint16_t> reached_; ///< Bytes; kept in sight while ONLINE.
    /// The set-up file whose user program `boardType_` was taken from.
    std::optional<std::filesystem::path> typeOf_;
    std::int16_t boardType_ = 0;
};

} // namespace vantrel
