#include "document/SettingsTransfer.h"

#include "link/TargetMap.h"
#include "text/NumberText.h"

namespace vantrel {

namespace {

MessageBox TransferQuestion(const std::string& title, const std::string& what) {
    return {.title = title,
            .text = "You are about to " + what + " the PLC\n\nDo You Wish to Continue?",
            .icon = MessageIcon::Question,
            .buttons = MessageButtons::YesNo};
}

} // namespace

std::string_view TransferLabel(TransferMode mode) {
    switch (mode) {
    case TransferMode::UploadSetupParameters:
        return "Uploading Set-up Parameters, Please Standby...";
    case TransferMode::UploadTimingChannels:
        return "Uploading Timing Channels, Please Standby...";
    case TransferMode::UploadShiftData:
        return "Uploading Shift Data, Please Standby...";
    case TransferMode::UploadData:
        return "Uploading Data, Please Standby...";
    case TransferMode::DownloadSetupParameters:
        return "Downloading Set-up Parameters, Please Standby...";
    case TransferMode::DownloadTimingChannels:
        return "Downloading Timing Channels, Please Standby...";
    case TransferMode::DownloadShiftData:
        return "Downloading Shift Data, Please Standby...";
    case TransferMode::DownloadData:
        return "Downloading Data, Please Standby...";
    }
    return {};
}

std::string SignedText(std::int32_t value) { return value < 0 ? std::to_string(value) : " " + std::to_string(value); }

MessageBox UploadQuestion() { return TransferQuestion("Data Upload", "Upload Data from"); }

MessageBox DownloadQuestion() { return TransferQuestion("Data Download", "Download Data to"); }

MessageBox OfflineQuestion() {
    return {.title = "Program Offline",
            .text = "Program is Currently OFFLINE\n\nDo You Wish to Switch to ONLINE MODE to Continue?",
            .icon = MessageIcon::Question,
            .buttons = MessageButtons::YesNo};
}

SettingsTransfer::SettingsTransfer(TransferMode mode, Configuration& record, RSComm& link, Dialogs& dialogs,
                                   TurnQueue& turns, TransferDisplay& display)
    : mode_(mode), record_(record), link_(link), dialogs_(dialogs), turns_(turns), display_(display) {}

bool SettingsTransfer::HasWork() const {
    return mode_ == TransferMode::UploadData || mode_ == TransferMode::DownloadData;
}

void SettingsTransfer::Load() {
    if (mode_ == TransferMode::DownloadData && !link_.LinkFailed()) {
        flagRaised_ = link_.RSWrite(WriteThroughFlag, "1") == WriteOutcome::Written;
    }
    display_.ShowLabel(TransferLabel(mode_));
    if (HasWork()) display_.ShowProgress(0, ValueCount);
}

Task SettingsTransfer::Run() {
    if (!HasWork()) co_return;
    for (std::size_t index = 0; index < ValueCount; ++index) {
        co_await turns_.Next();
        if (cancelled_ || link_.LinkFailed()) break;
        const bool arrived = mode_ == TransferMode::UploadData ? UploadValue(index) : DownloadValue(index);
        if (!link_.LinkFailed()) {
            walked_ = index + 1;
            if (!arrived) NoteUnconfirmed(index);
            display_.ShowProgress(walked_, ValueCount);
        }
    }
    if (!link_.LinkFailed()) flagCleared_ = link_.RSWrite(WriteThroughFlag, "0") == WriteOutcome::Written;
    if (link_.LinkFailed()) {
        dialogs_.Show({.title = "RTFCD7",
                       .text = "Error Processing Request\n\nProcess Not Complete",
                       .icon = MessageIcon::Exclamation,
                       .buttons = MessageButtons::Ok});
    }
}

void SettingsTransfer::NoteUnconfirmed(std::size_t index) {
    // A surplus byte on the line is taken for data first and makes the echo wrong only at the value behind it.
    const bool spoilsTheOneBefore = mode_ == TransferMode::UploadData && index > 0;
    if (spoilsTheOneBefore && (unconfirmed_.empty() || unconfirmed_.back() != index - 1)) {
        unconfirmed_.push_back(index - 1);
    }
    unconfirmed_.push_back(index);
}

bool SettingsTransfer::UploadValue(std::size_t index) {
    const std::string text = link_.RSRead(record_.TargetAddress(index));
    // What a dead line could not tell must not wipe out what the record holds.
    if (link_.LinkFailed()) return false;
    record_.SetValue(index, LeadingInteger(text).value_or(0));
    // The echo of a next value, which would show a surplus byte, does not come behind the last one.
    const bool last = index == LastValueIndex;
    return !link_.ReadFailed() && !(last && link_.SurplusFollows());
}

bool SettingsTransfer::DownloadValue(std::size_t index) {
    return link_.RSWrite(record_.TargetAddress(index), SignedText(record_.Value(index))) == WriteOutcome::Written;
}

BoardComparison::BoardComparison(const Configuration& record, RSComm& link, TurnQueue& turns, TransferDisplay& display)
    : record_(record), link_(link), turns_(turns), display_(display) {}

Task BoardComparison::Run() {
    display_.ShowLabel("Comparing Data, Please Standby...");
    display_.ShowProgress(0, ValueCount);
    for (std::size_t index = 0; index < ValueCount; ++index) {
        co_await turns_.Next();
        if (cancelled_ || link_.LinkFailed()) break;
        const std::string text = link_.RSRead(record_.TargetAddress(index));
        if (link_.LinkFailed()) break;
        const std::int32_t onBoard = LeadingInteger(text).value_or(0);
        if (link_.ReadFailed()) {
            unread_.push_back(index);
        } else if (onBoard != record_.Value(index)) {
            differences_.push_back({index, record_.Value(index), onBoard});
        }
        compared_ = index + 1;
        display_.ShowProgress(compared_, ValueCount);
    }
}

} // namespace vantrel
