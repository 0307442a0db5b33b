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
    /// ended: call Refresh() instead.
    [[nodiscard]] Task Tick(bool transferring);
    /// The same texts from what is known without the board: OFFLINE, a failed link, a board that is waited for. At any
    /// time, also behind a box.
    void Refresh();

    /// Keeps bytes that the board may have set to 255 in sight, below the system message, until ONLINE is begun anew.
    void NoteReached(const std::vector<std::uint16_t>& bytes) { reached_.insert(bytes.begin(), bytes.end()); }

    /// Likewise that B105 of the board may have been left at 1.
    void NoteFlagLeft() { flagLeft_ = true; }

    /// The board's current fault code as a tick has read it last; nothing before one has since the port was opened.
    [[nodiscard]] std::optional<int> CurrentFault() const { return faultOf_ == link_.Opened() ? fault_ : std::nullopt; }

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
    /// What half-sent writes, and a transfer that was cut off, may have done to the board since it came ONLINE, for the
    /// user; empty when nothing.
    [[nodiscard]] std::string ReachedText();

    Program& program_;
    RSComm& link_;
    const Clock& clock_;
    std::string panelText_;
    bool wasOnline_ = false;
    int onlineTicks_ = 0;
    int known_ = -1; ///< The opening of the port since which all alarms have been read.
    std::optional<int> fault_;
    int faultOf_ = -1; ///< The opening of the port since which that was read.
    std::set<std::uint16_t> reached_; ///< Bytes; kept in sight while ONLINE.
    bool flagLeft_ = false;
    /// The set-up file whose user program `boardType_` was taken from.
    std::optional<std::filesystem::path> typeOf_;
    std::int16_t boardType_ = 0;
};

} // namespace vantrel
