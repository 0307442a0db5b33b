// The passes as the plain loops that they are, and the writes between them.
#include "views/BoardMonitor.h"

#include "link/FaultFiles.h"
#include "platform/RuntimeError.h"
#include "text/AsciiCase.h"
#include "text/NumberText.h"
#include "text/Windows1252.h"

#include <algorithm>

namespace vantrel {

namespace {

constexpr int IdentLength = 8;

int Number(const std::string& value) { return static_cast<int>(LeadingInteger(value).value_or(0)); }

/// The character of an ident; what cannot be shown is a blank.
std::string IdentCharacter(const std::string& value) {
    constexpr int firstShown = 0x20;
    const int code = Number(value);
    return code < firstShown ? " " : Utf8FromWindows1252(std::string(1, static_cast<char>(code)));
}

/// What the user must know of several writes: the worst of them.
WriteOutcome Worse(WriteOutcome one, WriteOutcome other) {
    const auto rank = [](WriteOutcome outcome) {
        switch (outcome) {
        case WriteOutcome::Written:
            return 0;
        case WriteOutcome::NotConfirmed:
            return 1;
        case WriteOutcome::Refused:
            return 2;
        case WriteOutcome::LinkFailed:
            break;
        }
        return 3;
    };
    return rank(one) < rank(other) ? other : one;
}

std::chrono::hh_mm_ss<std::chrono::seconds> TimeOf(const Clock& clock) {
    const auto now = clock.LocalNow();
    return std::chrono::hh_mm_ss<std::chrono::seconds>(now - std::chrono::floor<std::chrono::days>(now));
}

std::chrono::year_month_day DateOf(const Clock& clock) {
    return std::chrono::year_month_day(std::chrono::floor<std::chrono::days>(clock.LocalNow()));
}

} // namespace

BoardFiles BoardFilesOf(const ProgramFolder& folder) {
    return {folder.File("Support", "FaultErrCodes.txt"), folder.File("Support", "CommErrCodes.txt")};
}

Task BoardMonitor::ReadByte(int byte) {
    constexpr int attempts = 2;
    value_.reset();
    for (int attempt = 0; attempt < attempts; ++attempt) {
        co_await turns_.Next();
        if (!display_.Active() || LinkDown()) co_return;
        const std::string read = link_.RSRead(ByteAddress(byte));
        // The warning of a failed link is a box of its own: the display may have been closed under it.
        if (!display_.Active() || LinkDown()) co_return;
        value_ = read;
        if (!link_.ReadFailed()) co_return;
    }
    reliable_ = false;
}

Task BoardMonitor::ShowBoardOnline() {
    reliable_ = true;
    display_.EnableReset(false);
    display_.EnableOnline(HasBoardClock(boardType_));
    co_await ReadCodes();
    if (display_.Active() && !LinkDown()) co_await ShowWhatIsKnown();
    if (!display_.Active()) co_return;
    if (LinkDown()) {
        ShowDeadLink();
    } else {
        display_.ShowGoOnline(false);
    }
}

Task BoardMonitor::ShowWhatIsKnown() {
    ShowCodes();
    ShowDescriptions();
    co_await ReadSlotAgain();
    if (!display_.Active()) co_return;
    ShowAdvice();
    co_await ReadRevision();
}

Task BoardMonitor::ReadCodes() {
    std::array<int, BoardCodeCount> values{};
    for (std::size_t i = 0; i < BoardCodeCount; ++i) {
        co_await ReadByte(FaultAddresses[i]);
        if (!display_.Active()) co_return;
        values[i] = value_ ? Number(*value_) : 0;
        faultCodes_[i] = value_ ? CodeText(values[i]) : std::string(DeadLinkCode);
        if (i != IndexOf(BoardCode::CoCpuSlot) && values[i] > 0) display_.EnableReset(true);
    }
    // What was not told says nothing about the board.
    if (LinkDown() || !reliable_) co_return;
    alarms_ = AlarmsOf({.currentFault = values[IndexOf(BoardCode::CurrentFault)],
                        .currentCommError = values[IndexOf(BoardCode::CurrentCommError)],
                        .coCpuSlot = values[IndexOf(BoardCode::CoCpuSlot)]},
                       HasCoCpu(boardType_));
}

void BoardMonitor::ShowCodes() {
    for (std::size_t i = 0; i < BoardCodeCount; ++i) {
        const auto which = static_cast<BoardCode>(i);
        if (which == BoardCode::Advice || (which == BoardCode::CoCpuSlot && !HasCoCpu(boardType_))) continue;
        display_.ShowCaption(which, CodeCaption(which, faultCodes_[i]));
    }
}

void BoardMonitor::ShowDescriptions() {
    // That the board cannot be reached is no longer true, whatever the files say.
    if (offlineTextShown_) ShowInDescriptions("");
    offlineTextShown_ = false;
    try {
        ShowDescriptionsFrom(files_.faults, BoardCode::CurrentFault, BoardCode::LastFault);
        ShowDescriptionsFrom(files_.commErrors, BoardCode::CurrentCommError, BoardCode::LastCommError);
    } catch (const RuntimeError& error) {
        ReportRuntimeError(dialogs_, "TargetBoard FirstPass", error);
    }
}

void BoardMonitor::ShowInDescriptions(const std::string& text) {
    for (const BoardCode which :
         {BoardCode::CurrentFault, BoardCode::LastFault, BoardCode::CurrentCommError, BoardCode::LastCommError}) {
        display_.ShowDescription(which, text);
    }
}

void BoardMonitor::ShowDescriptionsFrom(const std::filesystem::path& file, BoardCode current, BoardCode last) {
    const auto records = ReadFaultFile(file);
    if (!records) return;
    for (const BoardCode which : {current, last}) {
        // A code without a record must not stand beside the description of another.
        std::string description;
        for (const FaultRecord& record : *records) {
            if (SameIgnoringCase(record.code, faultCodes_[IndexOf(which)])) description = record.description;
        }
        display_.ShowDescription(which, description);
    }
}

Task BoardMonitor::ReadSlotAgain() {
    if (!HasCoCpu(boardType_) || LinkDown()) co_return;
    co_await ReadByte(CoCpuSlotByte);
    if (value_) display_.ShowCaption(BoardCode::CoCpuSlot, SlotCaption(*value_));
}

void BoardMonitor::ShowAdvice() {
    display_.ShowDescription(BoardCode::Advice, AdviceText(faultCodes_[IndexOf(BoardCode::Advice)]));
}

Task BoardMonitor::ReadRevision() {
    std::string ident;
    for (int i = 0; i < IdentLength; ++i) {
        co_await ReadByte(RevisionIdentBase + i);
        if (!value_) co_return;
        ident += IdentCharacter(*value_);
        display_.ShowRevision(0, ident);
    }
    for (const std::size_t label : {std::size_t{2}, std::size_t{1}}) {
        co_await ReadByte(label == 2 ? RevisionNumberBase : RevisionNumberBase + 1);
        if (!value_) co_return;
        display_.ShowRevision(label, *value_);
    }
}

void BoardMonitor::ShowDeadLink() {
    faultCodes_.fill(std::string(DeadLinkCode));
    display_.EnableReset(false);
    ShowCodes();
    ShowDescriptions();
    ShowAdvice();
}

Task BoardMonitor::RefreshSetupFields() {
    for (std::size_t i = 0; i < SetupFieldCount; ++i) {
        co_await turns_.Next();
        if (!display_.Active() || LinkDown()) co_return;
        const std::string value = link_.RSRead(ByteAddress(SetupFields[i].byte));
        if (!display_.Active() || LinkDown()) co_return;
        if (!link_.ReadFailed() && display_.SetupWanted(i)) display_.ShowSetup(i, value);
    }
}

void BoardMonitor::ShowBoardOffline() {
    offlineTextShown_ = true;
    ShowInDescriptions(std::string(NoBoardText));
    display_.ShowGoOnline(true);
}

WriteOutcome BoardMonitor::Write(int byte, const std::string& value) {
    return LinkDown() ? WriteOutcome::LinkFailed : link_.RSWrite(ByteAddress(byte), value);
}

WriteOutcome BoardMonitor::ResetFaultCodes() {
    display_.EnableReset(false);
    WriteOutcome outcome = WriteOutcome::Written;
    for (const int byte : {LastCommErrorByte, CurrentCommErrorByte, LastFaultByte, CurrentFaultByte})
        outcome = Worse(outcome, Write(byte, "0"));
    return outcome;
}

WriteOutcome BoardMonitor::SetToCurrTime() {
    WriteOutcome outcome = Write(ClockHourByte, std::to_string(TimeOf(clock_).hours().count()));
    outcome = Worse(outcome, Write(ClockMinuteByte, std::to_string(TimeOf(clock_).minutes().count())));
    return Worse(outcome, Write(ClockSecondByte, std::to_string(TimeOf(clock_).seconds().count())));
}

WriteOutcome BoardMonitor::SetToCurrDate() {
    constexpr int century = 100;
    WriteOutcome outcome = Write(ClockMonthByte, std::to_string(static_cast<unsigned>(DateOf(clock_).month())));
    outcome = Worse(outcome, Write(ClockDayByte, std::to_string(static_cast<unsigned>(DateOf(clock_).day()))));
    const int year = static_cast<int>(DateOf(clock_).year()) % century;
    return Worse(outcome, Write(ClockYearByte, std::to_string(year)));
}

WriteOutcome BoardMonitor::WriteSetup(std::size_t field, const std::string& value) {
    return Write(SetupFields.at(field).byte, value);
}

} // namespace vantrel
