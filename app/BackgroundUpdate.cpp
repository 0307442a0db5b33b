// What one tick does, step by step.
#include "app/BackgroundUpdate.h"

#include "link/TargetMap.h"
#include "platform/RuntimeError.h"
#include "views/BoardTexts.h"
#include "views/UserProgram.h"

#include <charconv>

namespace vantrel {

namespace {

constexpr int TicksBetweenRefreshes = 20;
constexpr std::size_t CoCpuAlarm = 2;

/// Two blanks separate the panel's heading from what it says.
std::string Panel(const char* text) { return std::string("System Message:  ") + text; }

} // namespace

void BackgroundUpdate::Tick(bool transferring) {
    if (link_.Busy()) return;
    if (typeOf_ != program_.document.FilePath) LookForUserProgram();
    if (!HasCoCpu(boardType_)) program_.alarms.at(CoCpuAlarm) = false;
    if (link_.OnlineMode()) {
        TickOnline(transferring);
    } else {
        TickOffline();
    }
}

void BackgroundUpdate::TickOffline() {
    wasOnline_ = false;
    program_.systemMessage = "Set-up Program is Currently OFFLINE";
    panelText_ = Panel(link_.LinkFailed() ? "Comm Fault with Q6700" : "Program is Currently OFFLINE");
}

void BackgroundUpdate::TickOnline(bool transferring) {
    if (!wasOnline_) {
        onlineTicks_ = 0;
        // The file may have come or changed since.
        LookForUserProgram();
    }
    wasOnline_ = true;
    if (onlineTicks_++ % TicksBetweenRefreshes == 0) program_.refreshTargetStatus = true;
    if (!link_.LinkFailed() && !transferring) Poll();
    if (!link_.LinkFailed()) ShowAlarms();
}

void BackgroundUpdate::Poll() {
    const std::optional<int> currentFault = Read(CurrentFaultByte);
    if (!currentFault || !program_.refreshTargetStatus) return;
    ReadAlarms(*currentFault);
}

void BackgroundUpdate::ReadAlarms(int currentFault) {
    const std::optional<int> commError = Read(CurrentCommErrorByte);
    if (!commError) return;
    const bool hasCoCpu = HasCoCpu(boardType_);
    const std::optional<int> slot = hasCoCpu ? Read(CoCpuSlotByte) : 0;
    if (!slot) return;
    program_.alarms =
        AlarmsOf({.currentFault = currentFault, .currentCommError = *commError, .coCpuSlot = *slot}, hasCoCpu);
    program_.refreshTargetStatus = false;
}

std::optional<int> BackgroundUpdate::Read(int byte) {
    const std::string value = link_.RSRead(ByteAddress(byte));
    if (link_.ReadFailed()) return std::nullopt;
    int number = 0;
    std::from_chars(value.data(), value.data() + value.size(), number);
    return number;
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

void BackgroundUpdate::ShowAlarms() {
    std::string alarmText;
    for (std::size_t i = 0; i < AlarmCount; ++i) {
        if (program_.alarms[i]) alarmText += "***** SYSTEM ALARM *****\n" + std::string(AlarmNames[i]) + "\n\n";
    }
    const bool normal = alarmText.empty();
    program_.systemMessage = normal ? "Set-up Program is Currently ONLINE\n-- System Normal --" : alarmText;
    panelText_ = Panel(normal ? "All Faults Normal" : "Faults Active in PLC");
}

} // namespace vantrel
