// Port and settings of the link: reading them, opening with the probe, closing with the goodbye.
#include "link/RSComm.h"

#include "link/ProtocolBytes.h"
#include "platform/RuntimeError.h"
#include "platform/SetWhile.h"
#include "text/PathText.h"

#include <utility>

namespace vantrel {

RSComm::RSComm(std::filesystem::path settingsFile, PortRange range, Clock& clock, Dialogs& dialogs, TurnQueue& turns)
    : settingsFile_(std::move(settingsFile)), range_(range), clock_(clock), dialogs_(dialogs), turns_(turns) {}

std::string RSComm::CommSettingsFile() const { return Utf8FromPath(settingsFile_); }

StoredPortSettings RSComm::StoredSettings() const {
    const bool needed = !(override_.speed || override_.anySpeed) || !(override_.number || override_.leaveFileAlone);
    try {
        return ReadPortSettings(settingsFile_, range_);
    } catch (const RuntimeError&) {
        if (needed) throw;
        // There is a file; what it holds stays as it is.
        StoredPortSettings unread;
        unread.present = true;
        return unread;
    }
}

PortSettings RSComm::EffectiveSettings() {
    const StoredPortSettings stored = StoredSettings();
    PortSettings settings = stored.settings;
    if (!stored.present && !override_.leaveFileAlone) WritePortSettings(settingsFile_, settings);
    if (override_.speed) settings.speed = *override_.speed;
    if (override_.number) {
        settings.number = *override_.number;
    } else if (!stored.storedPort.empty() && !override_.leaveFileAlone) {
        dialogs_.Show({.title = "Comm Port",
                       .text = "\"" + stored.storedPort + "\" is stored as the port, but only a number between " +
                               std::to_string(range_.minimum) + " and " + std::to_string(range_.maximum) +
                               " can be used here.\nCOM" + std::to_string(settings.number) + " is used instead.",
                       .icon = MessageIcon::Information,
                       .buttons = MessageButtons::Ok});
    }
    return settings;
}

PortSettings RSComm::SettingsToCome() const {
    PortSettings settings = StoredSettings().settings;
    if (override_.speed) settings.speed = *override_.speed;
    if (override_.number) settings.number = *override_.number;
    return settings;
}

void RSComm::InitializeRSComm(SerialPort& port) {
    try {
        settings_ = EffectiveSettings();
        if (port.IsOpen()) port.Close();
        port.SetPortNumber(settings_.number);
        port.SetSettings(SettingsString(settings_));
        port_ = &port;
        initFailed_ = false;
    } catch (const RuntimeError& error) {
        initFailed_ = true;
        port.Close();
        ReportRuntimeError(dialogs_, "RSComm InitializeRSComm", error);
    }
}

Task RSComm::OpenRSComm(SerialPort& port) {
    const Line line = co_await TakeLine();
    InitializeRSComm(port);
    std::optional<RuntimeError> failure;
    try {
        if (!initFailed_) {
            const bool opened = co_await OpenPort();
            if (opened) {
                port.ClearReceived();
                ForgetBoard();
            } else {
                linkFailed_ = true;
            }
        }
        (void)co_await ExchangeByte(SyncByte);
        onlineMode_ = !linkFailed_;
    } catch (const RuntimeError& error) {
        failure = error;
    }
    if (failure) {
        port.Close();
        targetMode_ = 0;
        onlineMode_ = false;
    }
    co_await turns_.Allowed();
    if (failure) ShowPortError(*failure);
}

TaskOf<bool> RSComm::OpenPort() {
    port_->BeginOpen();
    const SetWhile waiting(awaitingSince_, clock_.Now());
    while (port_->Opening()) {
        const PortWait wait = co_await turns_.WaitForByte(*port_, clock_.Now() + LongestOpening);
        if (wait != PortWait::GivenUp && !givenUp_) continue;
        port_->Close();
        co_return false;
    }
    port_->FinishOpen();
    co_return true;
}

void RSComm::ForgetBoard() {
    targetMode_ = 0;
    // Whoever used it before may have left it so.
    mayBeInWriteMode_ = true;
    linkFailed_ = false;
    unsettled_ = false;
    reopened_ = 0;
    ++opened_;
    lastExchange_.reset();
    answerTimes_.Clear();
}

void RSComm::ShowPortError(const RuntimeError& error) {
    dialogs_.Show({.title = "Comm Port Error",
                   .text = "Error Number = " + std::to_string(error.Number()) + "\nError Source = " + error.Source() +
                           "\n\n" + error.Description(),
                   .icon = MessageIcon::Critical,
                   .buttons = MessageButtons::Ok});
}

Task RSComm::CloseRSComm() {
    onlineMode_ = false;
    const Line line = co_await TakeLine();
    co_await Close();
    co_await turns_.Allowed();
}

Task RSComm::Close() {
    TellNeighbour(false);
    if (port_ && port_->IsOpen()) {
        patience_ = Patience::Short;
        if (!linkFailed_) {
            const int answer = co_await ExchangeByte(SyncByte);
            if (mayBeInWriteMode_ && answer != NoAnswer) NoteSpoiledSync(answer);
        }
        port_->Close();
    }
    targetMode_ = 0;
    onlineMode_ = false;
}

} // namespace vantrel
