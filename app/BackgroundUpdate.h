// The frame's background update: the system message, the panel's text, the poll of the board and its alarms. Knows the
// program's state and the link; no window.
#pragma once

#include "app/Program.h"
#include "link/RSComm.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace vantrel {

/// Both arguments must outlive it.
class BackgroundUpdate {
public:
    /// How often Tick() is to be called.
    static constexpr int TickMilliseconds = 500;

    BackgroundUpdate(Program& program, RSComm& link) : program_(program), link_(link) {}

    /// One tick: brings `systemMessage` and the panel's text up to date; while ONLINE polls the board with one read,
    /// and with up to two more when the faults are to be read again, which sets the alarms. Going ONLINE and every 20th
    /// ONLINE tick ask for that, and whoever raises `refreshTargetStatus`. While `transferring`, the line is left
    /// alone. Does nothing while the link is busy: a box that the link shows inside a tick lets further ticks through.
    /// The caller does not call it while another box of the program is up, whose place the link's warning would take.
    void Tick(bool transferring);

    /// What the status bar's first panel shows.
    [[nodiscard]] const std::string& PanelText() const { return panelText_; }

private:
    void TickOffline();
    void TickOnline(bool transferring);
    void Poll();
    void ReadAlarms(int currentFault);
    /// The value of a byte; nothing when it could not be read reliably.
    std::optional<int> Read(int byte);
    void LookForUserProgram();
    void ShowAlarms();

    Program& program_;
    RSComm& link_;
    std::string panelText_;
    bool wasOnline_ = false;
    int onlineTicks_ = 0;
    /// The set-up file whose user program `boardType_` was taken from.
    std::optional<std::filesystem::path> typeOf_;
    std::int16_t boardType_ = 0;
};

} // namespace vantrel
