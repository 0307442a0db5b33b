// What one tick does, step by step.
#include "app/BackgroundUpdate.h"

#include "document/TransferTexts.h"
#include "link/TargetAddress.h"
#include "link/TargetMap.h"
#include "platform/RuntimeError.h"
#include "views/BoardTexts.h"
#include "views/UserProgram.h"

#include <chrono>

namespace vantrel {

namespace {

constexpr int TicksBetweenRefreshes = 20;
constexpr std::size_t FaultAlarm = 0;
constexpr std::size_t CoCpuAlarm = 2;
constexpr std::chrono::seconds ShortestSilence{1};

/// Two blanks separate the panel's heading from what it says.
std::string Panel(const std::string& text) { return "System Message:  " + text; }

} // namespace

Task BackgroundUpdate::Tick(bool transferring) {
    if (typeOf_ != program_.document.FilePath) LookForUserProgram();
    if (!HasCoCpu(boardType_)) program_.alarms.at(CoCpuAlarm) = false;
    if (link_.OnlineMode()) {
        co_await TickOnline(transferring);
    } else {
        TickOffline();
    }
}

void BackgroundUpdate::Refresh() {
    if (!link_.OnlineMode()) {
        TickOffline();
    } else if (link_.LinkFailed()) {
        program_.systemMessage = "Set-up Program is Currently ONLINE\nThe board does not answer.";
        panelText_ = Panel("Comm Fault with Q6700");
    }
    const auto since = link_.AwaitingSince();
    if (!since || link_.LinkFailed()) return;
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(clock_.Now() - *since);
    // A board that is only slow answers before this.
    if (seconds < ShortestSilence) return;
    // OFFLINE it is the port being opened that waits.
    if (link_.OnlineMode()) program_.systemMessage = "Set-up Program is Currently ONLINE\nWaiting for the board ...";
    panelText_ = Panel("Waiting for the board ... " + std::to_string(seconds.count()) + " s");
}

void BackgroundUpdate::TickOffline() {
    wasOnline_ = false;
    program_.systemMessage = "Set-up Program is Currently OFFLINE" + ReachedText();
    panelText_ = Panel(link_.LinkFailed() ? "Comm Fault with Q6700" : "Program is Currently OFFLINE");
}

Task BackgroundUpdate::TickOnline(bool transferring) {
    if (!wasOnline_) {
        onlineTicks_ = 0;
        reached_.clear();
        flagLeft_ = false;
        // The file may have come or changed since.
        LookForUserProgram();
    }
    wasOnline_ = true;
    if (onlineTicks_++ % TicksBetweenRefreshes == 0 || known_ != link_.Opened()) program_.refreshTargetStatus = true;
    if (!link_.LinkFailed() && !transferring) co_await Poll();
    if (!link_.LinkFailed() && link_.OnlineMode()) ShowAlarms();
}

Task BackgroundUpdate::Poll() {
    const int opened = link_.Opened();
    const std::optional<int> currentFault = co_await Read(CurrentFaultByte);
    if (!currentFault || link_.Opened() != opened) co_return;
    fault_ = currentFault;
    faultOf_ = opened;
    program_.alarms.at(FaultAlarm) = *currentFault != 0;
    if (program_.refreshTargetStatus) co_await ReadAlarms(*currentFault);
}

Task BackgroundUpdate::ReadAlarms(int currentFault) {
    const int opened = link_.Opened();
    const std::optional<int> commError = co_await Read(CurrentCommErrorByte);
    if (!commError) co_return;
    const bool hasCoCpu = HasCoCpu(boardType_);
    std::optional<int> slot = 0;
    if (hasCoCpu) slot = co_await Read(CoCpuSlotByte);
    if (!slot || link_.Opened() != opened) co_return;
    const BoardCodes codes{.currentFault = currentFault, .currentCommError = *commError, .coCpuSlot = *slot};
    program_.alarms = AlarmsOf(codes, hasCoCpu);
    program_.refreshTargetStatus = false;
    known_ = opened;
}

TaskOf<std::optional<int>> BackgroundUpdate::Read(int byte) {
    const Reading reading = co_await link_.Read(ByteAddress(byte));
    std::optional<int> number;
    if (reading.IsValue()) number = static_cast<int>(*reading.Number());
    co_return number;
}

void BackgroundUpdate::LookForUserProgram() {
    typeOf_ = program_.document.FilePath;
    try {
        boardType_ = ReadUserProgram(FindUserProgram(*typeOf_, program_.folder)).boardType;
    } catch (const RuntimeError&) {
        // The target board view tells the user; a box every half second would not.
        boardType_ = 0;
    }
}

std::string BackgroundUpdate::ReachedText() {
    NoteReached(link_.TakeMayHaveReached());
    return (flagLeft_ ? std::string("\n") + FlagLeftSentence : "") + HalfSentLine({reached_.begin(), reached_.end()});
}

void BackgroundUpdate::ShowAlarms() {
    std::string alarmText;
    for (std::size_t i = 0; i < AlarmCount; ++i) {
        if (program_.alarms[i]) alarmText += "***** SYSTEM ALARM *****\n" + std::string(AlarmNames[i]) + "\n\n";
    }
    const bool normal = alarmText.empty();
    if (normal && known_ != link_.Opened()) {
        // Nobody has asked this board for all of them yet, or it has not said.
        program_.systemMessage = "Set-up Program is Currently ONLINE" + ReachedText();
        panelText_ = Panel("Program is Currently ONLINE");
        return;
    }
    program_.systemMessage = normal ? "Set-up Program is Currently ONLINE\n-- System Normal --" : alarmText;
    program_.systemMessage += ReachedText();
    panelText_ = Panel(normal ? "All Faults Normal" : "Faults Active in PLC");
}

} // namespace vantrel
