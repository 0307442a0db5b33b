// A link on a scripted port, opened and probed.
#pragma once

#include "link/RSComm.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/ScriptedPort.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/VirtualClock.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <deque>
#include <initializer_list>
#include <optional>

namespace vantrel {

using Script = std::deque<ScriptStep>;
inline constexpr auto Silence = std::nullopt;

/// Sync, mode, then the address and what a read gives.
inline Script ReadFrames(std::uint8_t high, std::uint8_t low, std::uint8_t echo, std::uint8_t data) {
    Script frames{{0xFF, 0x55}, {0x01, 0x55}, {high, echo}};
    if (echo == high) frames.push_back({low, data});
    return frames;
}

inline Script Joined(std::initializer_list<Script> parts) {
    Script all;
    for (const Script& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

class LinkTest : public testing::Test {
protected:
    /// Opens the link; the probe is answered.
    void GoOnline() {
        port.Expect({{0xFF, 0x55}});
        Open();
        ASSERT_TRUE(link.OnlineMode());
        port.Expect({});
    }
    void Open() { turns.RunToEnd(link.OpenRSComm(port)); }
    void Close() { turns.RunToEnd(link.CloseRSComm()); }
    Reading Read(const std::string& address) { return turns.RunToEnd(link.Read(address)); }
    /// The judged value as text, "doubtful: " and what was heard, or "failed".
    std::string Told(const std::string& address) {
        const Reading reading = Read(address);
        if (reading.HasLinkFailed()) return "failed";
        if (reading.IsValue()) return reading.TextOr("");
        const auto heard = reading.NumberEvenIfDoubtful();
        return "doubtful" + (heard ? ": " + std::to_string(*heard) : "");
    }
    WriteResult Write(const std::string& address, const std::string& value) {
        return turns.RunToEnd(link.RSWrite(address, value));
    }
    void PutInMode(std::uint8_t mode) { port.script.insert(port.script.begin(), {{0xFF, 0x55}, {mode, 0x55}}); }
    [[nodiscard]] double Seconds() const { return std::chrono::duration<double>(clock.Now()).count(); }
    [[nodiscard]] std::string Shown(std::size_t index = 0) const {
        return index < dialogs.shown.size() ? dialogs.shown[index].title + "|" + dialogs.shown[index].text : "none";
    }

    TemporaryFolder folder;
    VirtualClock clock;
    ScriptedDialogs dialogs;
    ScriptedPort port{clock};
    TurnQueue turns{clock};
    RSComm link{folder / "Support" / "RSPort.cfg", {1, 4}, clock, dialogs, turns};
};

inline constexpr const char* CableWarning = "WARNING - Communication Error!|Cannot Communicate with Target Board.\n"
                                            "Verify RS-232 Cable is Connected Between\nCOMM Port and PROG Port.";
inline constexpr const char* ModeWarning = "WARNING - Communication Error!|Cannot Set PLC Mode Within Target Board.";

} // namespace vantrel
