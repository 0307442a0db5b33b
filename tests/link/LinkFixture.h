// A link on a scripted port, opened and probed.
#pragma once

#include "link/RSComm.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/ScriptedPort.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/VirtualClock.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

namespace vantrel {

using Bytes = std::vector<std::uint8_t>;

/// "FF>55 28 01>--": the bytes that must be sent, each with its answer ("--": silence). One that stands alone is
/// echoed.
inline std::deque<ScriptStep> Frames(const std::string& text) {
    const auto byte = [](const std::string& digits) {
        return static_cast<std::uint8_t>(std::stoi(digits, nullptr, 16));
    };
    std::deque<ScriptStep> frames;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        ScriptStep& step = frames.emplace_back(ScriptStep{byte(word.substr(0, 2)), byte(word.substr(0, 2))});
        if (word.ends_with("--")) {
            step.answer.reset();
        } else if (word.size() > 2) {
            step.answer = byte(word.substr(3));
        }
    }
    return frames;
}

class LinkTest : public testing::Test {
protected:
    /// Opens the link; the probe is answered.
    void GoOnline() {
        Expect("FF>55");
        Open();
        ASSERT_TRUE(link.OnlineMode());
        Expect("");
    }
    void Open() { turns.RunToEnd(link.OpenRSComm(port)); }
    void Close() { turns.RunToEnd(link.CloseRSComm()); }
    void Expect(const std::string& frames) { port.Expect(Frames(frames)); }
    /// What was to be sent was sent, and nothing else.
    [[nodiscard]] bool AsExpected() const { return port.unexpected == 0 && port.script.empty(); }
    /// The judged value as text, "doubtful: " and what was heard, or "failed".
    std::string Told(const std::string& address) {
        const Reading reading = turns.RunToEnd(link.Read(address));
        if (reading.HasLinkFailed()) return "failed";
        if (reading.IsValue()) return reading.TextOr("");
        const auto heard = reading.NumberEvenIfDoubtful();
        return "doubtful" + (heard ? ": " + std::to_string(*heard) : "");
    }
    WriteResult Write(const std::string& address, const std::string& value) {
        return turns.RunToEnd(link.RSWrite(address, value));
    }
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
