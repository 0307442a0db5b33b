// The passes over the codes, the revision and the set-up fields, and what they show.
#include "views/BoardMonitor.h"

#include "link/FaultFiles.h"
#include "platform/RuntimeError.h"
#include "text/AsciiCase.h"
#include "text/PathText.h"
#include "text/Windows1252.h"
#include "views/ReadingPass.h"

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

constexpr int IdentLength = 8;

/// The character of an ident; what cannot be shown is a blank.
std::string IdentCharacter(std::uint32_t code) {
    constexpr std::uint32_t firstShown = 0x20;
    return code < firstShown ? " " : Utf8FromWindows1252(std::string(1, static_cast<char>(code)));
}

std::string FileName(const std::filesystem::path& file) { return Utf8FromPath(file.filename()); }

} // namespace

BoardFiles BoardFilesOf(const ProgramFolder& folder) {
    return {folder.SupportFile("FaultErrCodes.txt"), folder.SupportFile("CommErrCodes.txt")};
}

TaskOf<bool> BoardMonitor::ReadAll(std::vector<int> bytes, Take take) {
    std::vector<std::string> addresses;
    addresses.reserve(bytes.size());
    for (const int byte : bytes)
        addresses.push_back(ByteAddress(byte));
    const std::function<bool()> mayRead = [this] { return MayRead(); };
    co_return co_await ReadInTurns(link_, turns_, std::move(addresses), mayRead, std::move(take));
}

Task BoardMonitor::ShowBoardOnline() {
    bool shown = false;
    do {
        BeginShowing();
        shown = co_await ShowWhatTheBoardSays();
        // Still there although it ended early: the port was opened again.
    } while (!shown && MayRead());
    if (!display_.Active()) co_return;
    if (LinkDown()) {
        ShowDeadLink();
    } else {
        display_.ShowGoOnline(false);
    }
}

void BoardMonitor::BeginShowing() {
    display_.EnableReset(false);
    display_.EnableOnline(HasBoardClock(boardType_));
    if (Outdated()) ForgetShown();
    opened_ = link_.Opened();
}

void BoardMonitor::ForgetShown() {
    codes_ = {};
    clockComparison_.Forget();
    FaultCodes.fill(std::string(UnreadCode));
    ShowCodes();
    ShowInDescriptions("");
    ShowAdvice();
    for (std::size_t i = 0; i < SetupFieldCount; ++i) {
        if (display_.SetupWanted(i)) display_.ShowSetup(i, UnreadText);
    }
}

TaskOf<bool> BoardMonitor::ShowWhatTheBoardSays() {
    const bool codesRead = co_await ReadCodes();
    if (!codesRead) co_return false;
    ShowCodes();
    ShowDescriptions(Errors::Report);
    display_.EnableReset(AnyCode());
    const bool slotRead = co_await ReadSlotAgain();
    if (!slotRead) co_return false;
    ShowAdvice();
    co_return co_await ReadRevision();
}

Task BoardMonitor::RefreshCodes() {
    const auto before = FaultCodes;
    const bool read = co_await ReadCodes();
    if (!read) co_return;
    if (FaultCodes != before) {
        ShowCodes();
        ShowDescriptions(Errors::Keep);
        ShowAdvice();
        display_.EnableReset(AnyCode());
    }
    if (!revisionKnown_) (void)co_await ReadRevision();
}

TaskOf<bool> BoardMonitor::ReadCodes() {
    Codes codes{};
    const Take take = [&codes](const JudgedReading& judged) {
        if (const auto number = judged.reading.Number()) codes.at(judged.tag) = static_cast<int>(*number);
    };
    const std::vector<int> bytes(FaultAddresses.begin(), FaultAddresses.end());
    const bool read = co_await ReadAll(bytes, take);
    if (!read) co_return false;
    codes_ = codes;
    for (std::size_t i = 0; i < BoardCodeCount; ++i)
        FaultCodes[i] = codes[i] ? CodeText(*codes[i]) : std::string(UnreadCode);
    SetAlarms();
    co_return true;
}

void BoardMonitor::SetAlarms() {
    constexpr std::array<BoardCode, AlarmCount> behind{BoardCode::CurrentFault, BoardCode::CurrentCommError,
                                                       BoardCode::CoCpuSlot};
    const auto code = [this](BoardCode which) { return codes_[IndexOf(which)]; };
    const AlarmFlags told = AlarmsOf({.currentFault = code(behind[0]).value_or(0),
                                      .currentCommError = code(behind[1]).value_or(0),
                                      .coCpuSlot = code(behind[2]).value_or(0)},
                                     HasCoCpu(boardType_));
    // What was not told says nothing about the board.
    for (std::size_t i = 0; i < AlarmCount; ++i) {
        if (code(behind[i])) alarms_[i] = told[i];
    }
}

bool BoardMonitor::AnyCode() const {
    for (std::size_t i = 0; i < BoardCodeCount; ++i) {
        if (i != IndexOf(BoardCode::CoCpuSlot) && codes_[i].value_or(0) > 0) return true;
    }
    return false;
}

bool BoardMonitor::Reliable() const {
    return revisionKnown_ && std::all_of(codes_.begin(), codes_.end(), [](const auto& code) { return code; });
}

void BoardMonitor::ShowCodes() {
    for (std::size_t i = 0; i < BoardCodeCount; ++i) {
        const auto which = static_cast<BoardCode>(i);
        if (which == BoardCode::Advice || (which == BoardCode::CoCpuSlot && !HasCoCpu(boardType_))) continue;
        display_.ShowCaption(which, CodeCaption(which, FaultCodes[i]));
    }
}

void BoardMonitor::ShowDescriptions(Errors errors) {
    ShowDescriptionsFrom(files_.faults, {BoardCode::CurrentFault, BoardCode::LastFault}, errors);
    ShowDescriptionsFrom(files_.commErrors, {BoardCode::CurrentCommError, BoardCode::LastCommError}, errors);
}

void BoardMonitor::ShowDescriptionsFrom(const std::filesystem::path& file, std::array<BoardCode, 2> codes,
                                        Errors errors) {
    const auto showInstead = [&](const std::string& text) {
        for (const BoardCode which : codes)
            display_.ShowDescription(which, text);
    };
    try {
        const auto records = ReadFaultFile(file);
        if (!records) showInstead(FileName(file) + " was not found.");
        for (const BoardCode which : codes) {
            if (!records) break;
            // A code without a record must not stand beside the description of another.
            std::string description;
            for (const FaultRecord& record : *records) {
                if (SameIgnoringCase(record.code, FaultCodes[IndexOf(which)])) description = record.description;
            }
            display_.ShowDescription(which, description);
        }
    } catch (const RuntimeError& error) {
        showInstead(FileName(file) + " could not be read.");
        if (errors == Errors::Report) ReportRuntimeError(dialogs_, "TargetBoard FirstPass", error);
    }
}

void BoardMonitor::ShowInDescriptions(const std::string& text) {
    for (const BoardCode which :
         {BoardCode::CurrentFault, BoardCode::LastFault, BoardCode::CurrentCommError, BoardCode::LastCommError}) {
        display_.ShowDescription(which, text);
    }
}

TaskOf<bool> BoardMonitor::ReadSlotAgain() {
    if (!HasCoCpu(boardType_)) co_return true;
    const Take take = [this](const JudgedReading& judged) {
        display_.ShowCaption(BoardCode::CoCpuSlot, SlotCaption(judged.reading.TextOr(std::string(UnreadCode))));
    };
    const std::vector<int> bytes{CoCpuSlotByte};
    co_return co_await ReadAll(bytes, take);
}

void BoardMonitor::ShowAdvice() {
    display_.ShowDescription(BoardCode::Advice, AdviceText(FaultCodes[IndexOf(BoardCode::Advice)]));
}

TaskOf<bool> BoardMonitor::ReadRevision() {
    std::vector<int> bytes;
    bytes.reserve(IdentLength + 2);
    for (int i = 0; i < IdentLength + 2; ++i)
        bytes.push_back(i < IdentLength ? RevisionIdentBase + i : RevisionNumberBase + i - IdentLength);
    std::string ident;
    bool known = true;
    const Take take = [&](const JudgedReading& judged) {
        const auto number = judged.reading.Number();
        known = known && number;
        if (std::cmp_less(judged.tag, IdentLength)) {
            if (number) ident += IdentCharacter(*number);
            display_.ShowRevision(0, known ? ident : UnreadText);
            return;
        }
        const bool last = std::cmp_greater(judged.tag, IdentLength);
        revisionKnown_ = last && known;
        display_.ShowRevision(last ? 1 : 2, judged.reading.TextOr(UnreadText));
    };
    revisionKnown_ = false;
    co_return co_await ReadAll(std::move(bytes), take);
}

void BoardMonitor::ShowDeadLink() {
    codes_ = {};
    FaultCodes.fill(std::string(DeadLinkCode));
    display_.EnableReset(false);
    ShowCodes();
    ShowDescriptions(Errors::Keep);
    ShowAdvice();
}

Task BoardMonitor::RefreshSetupFields() {
    std::vector<int> bytes;
    bytes.reserve(SetupFields.size());
    for (const SetupField& field : SetupFields)
        bytes.push_back(field.byte);
    ClockReadings clock;
    const Take take = [this, &clock](const JudgedReading& judged) {
        clock.values.at(judged.tag) = judged.reading.Number();
        clock.at.at(judged.tag) = clock_.LocalNow();
        if (display_.SetupWanted(judged.tag)) display_.ShowSetup(judged.tag, judged.reading.TextOr(UnreadText));
    };
    const bool read = co_await ReadAll(std::move(bytes), take);
    clockComparison_.Take(read ? clock.Pass() : std::nullopt);
}

std::optional<ClockPass> BoardMonitor::ClockReadings::Pass() const {
    constexpr std::size_t second = 4;
    for (std::size_t field = FirstClockField; field < SetupFieldCount; ++field) {
        if (!values.at(field)) return std::nullopt;
    }
    const auto value = [&](std::size_t place) { return *values.at(FirstClockField + place); };
    // A reading is told while the one behind it is made: the second was asked for when the hour had been told.
    return ClockPass{value(0), value(1), value(2), value(3), value(4), value(5), at.at(second - 2), at.at(second)};
}

void BoardMonitor::ShowBoardOffline() {
    // What follows is another opening, whoever counts it.
    opened_ = -1;
    ShowInDescriptions(std::string(NoBoardText));
    display_.ShowGoOnline(true);
}

} // namespace vantrel
