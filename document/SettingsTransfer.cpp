#include "document/SettingsTransfer.h"

#include "link/TargetMap.h"

#include <algorithm>
#include <numeric>
#include <utility>

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

std::vector<std::size_t> EveryIndex() {
    std::vector<std::size_t> indices(ValueCount);
    std::iota(indices.begin(), indices.end(), std::size_t{0});
    return indices;
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

std::vector<std::size_t> SettingsTransfer::WalkedIndices() const {
    return {indices_.begin(), indices_.begin() + static_cast<std::ptrdiff_t>(walked_)};
}

bool SettingsTransfer::HasWalked(std::size_t index) const {
    const auto end = indices_.begin() + static_cast<std::ptrdiff_t>(walked_);
    return std::find(indices_.begin(), end, index) != end;
}

void SettingsTransfer::Load() {
    display_.ShowLabel(TransferLabel(mode_));
    if (HasWork()) display_.ShowProgress(0, indices_.size());
}

void SettingsTransfer::Cancel() {
    cancelled_ = true;
    link_.GiveUp();
}

Task SettingsTransfer::Run() {
    const int opened = link_.Opened();
    if (mode_ == TransferMode::DownloadData && !link_.LinkFailed()) flagRaised_ = co_await WriteFlag("1");
    if (!HasWork()) co_return;
    if (mode_ == TransferMode::UploadData) {
        co_await Upload();
    } else {
        co_await Download();
    }
    if (!link_.LinkFailed()) flagCleared_ = co_await WriteFlag("0");
    reconnected_ = link_.Opened() != opened;
    mayHaveReached_ = link_.TakeMayHaveReached();
    // To somebody who has just given up it is no news.
    if (!link_.LinkFailed() || cancelled_) co_return;
    dialogs_.Show({.title = "RTFCD7",
                   .text = "Error Processing Request\n\nProcess Not Complete",
                   .icon = MessageIcon::Exclamation,
                   .buttons = MessageButtons::Ok});
}

TaskOf<bool> SettingsTransfer::WriteFlag(std::string value) {
    RSComm::Line line = co_await link_.TakeLine();
    // Who has cancelled does not wait for a board that falls silent now.
    if (cancelled_) line.Hurry();
    const WriteResult written = co_await line.RSWrite(WriteThroughFlag, std::move(value));
    co_return written.Confirmed();
}

void SettingsTransfer::Advance() { display_.ShowProgress(++walked_, indices_.size()); }

Task SettingsTransfer::Download() {
    for (const std::size_t index : indices_) {
        co_await turns_.Next();
        if (!MayGoOn()) co_return;
        const WriteResult written =
            co_await link_.RSWrite(record_.TargetAddress(index), SignedText(record_.Value(index)));
        if (written.repeated || !written.mayHaveReached.empty()) repeated_.push_back({index, written.mayHaveReached});
        if (link_.LinkFailed()) co_return;
        if (!written.Confirmed()) unconfirmed_.push_back(index);
        Advance();
    }
}

Task SettingsTransfer::Upload() {
    ReadingWalk walk(link_);
    for (const std::size_t index : indices_) {
        co_await turns_.Next();
        if (!MayGoOn()) break;
        const auto judged = co_await walk.Read(record_.TargetAddress(index), index);
        Store(judged);
    }
    const auto last = co_await walk.End();
    Store(last);
}

void SettingsTransfer::Store(const std::optional<JudgedReading>& judged) {
    // What a dead line could not tell must not wipe out what the record holds.
    if (!judged || judged->reading.HasLinkFailed()) return;
    const std::uint32_t number = judged->reading.NumberEvenIfDoubtful().value_or(0);
    record_.SetValue(judged->tag, static_cast<std::int32_t>(number));
    if (!judged->reading.IsValue()) unconfirmed_.push_back(judged->tag);
    Advance();
}

BoardComparison::BoardComparison(const Configuration& record, RSComm& link, TurnQueue& turns, TransferDisplay& display)
    : record_(record), link_(link), turns_(turns), display_(display) {}

void BoardComparison::Cancel() {
    cancelled_ = true;
    link_.GiveUp();
}

void BoardComparison::Load() {
    display_.ShowLabel(label_);
    display_.ShowProgress(0, indices_.size());
}

Task BoardComparison::Run() {
    Load();
    ReadingWalk walk(link_);
    for (const std::size_t index : indices_) {
        co_await turns_.Next();
        if (cancelled_ || link_.LinkFailed()) break;
        const auto judged = co_await walk.Read(record_.TargetAddress(index), index);
        Compare(judged);
    }
    const auto last = co_await walk.End();
    Compare(last);
    reconnected_ = walk.Reconnected();
}

void BoardComparison::Compare(const std::optional<JudgedReading>& judged) {
    if (!judged || judged->reading.HasLinkFailed()) return;
    const std::size_t index = judged->tag;
    if (const auto number = judged->reading.Number(); !number) {
        unread_.push_back(index);
    } else if (const auto onBoard = static_cast<std::int32_t>(*number); onBoard != record_.Value(index)) {
        differences_.push_back({index, record_.Value(index), onBoard});
    }
    display_.ShowProgress(++compared_, indices_.size());
}

Configuration BoardComparison::OnBoard() const {
    Configuration board = record_;
    for (const ValueDifference& difference : differences_)
        board.SetValue(difference.index, difference.onBoard);
    return board;
}

} // namespace vantrel
