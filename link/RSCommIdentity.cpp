// Which board is at the other end and how it is: model, library letter, revision, fault, readiness. Library letter,
// revision, fault code and readiness for PLS functions belong to the link's interface; nothing calls them yet but their
// tests.
#include "link/RSComm.h"

#include "link/FaultFiles.h"
#include "link/ProtocolBytes.h"
#include "link/TargetMap.h"
#include "platform/RuntimeError.h"
#include "text/AsciiCase.h"
#include "text/NumberText.h"
#include "text/Windows1252.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

struct BoardModel {
    std::string_view name;
    std::string_view letter; ///< In the program library; empty for none.
};

constexpr std::int16_t FirstBoardType = '1';
// clang-format off
constexpr std::array<BoardModel, 21> BoardModels{{
    {"K5210", "1"},      {"K5212", "1"},      {"K5214", "?"},      {"K5221", "2"},      {"K5222", "3"},
    {"K5216", "D"},      {"K5241", ""},       {"K5224", "F"},      {"Not Defined", ""}, {"Q8110", "@"},
    {"Q8111", "A"},      {"Q8112", "B"},      {"Q8120(PLC)", "C"}, {"Q8120(PLS)", ""},  {"Q8140", ""},
    {"Q8141", ""},       {"J8310", "E"},      {"Q8121(PLC)", ""},  {"Q8121(PLS)", ""},  {"Q6700(PLC)", "G"},
    {"Q6700(PLS)", ""},
}};
// clang-format on

const BoardModel* ModelOf(std::int16_t boardType) {
    const int index = boardType - FirstBoardType;
    return index >= 0 && index < static_cast<int>(BoardModels.size()) ? &BoardModels[static_cast<std::size_t>(index)]
                                                                      : nullptr;
}

/// The character of an identifier; "?" for what is no character that can be shown.
std::string CharacterOf(std::int16_t boardType) {
    constexpr int firstShown = 0x20;
    constexpr int last = 0xFF;
    if (boardType < firstShown || boardType > last) return "?";
    return Utf8FromWindows1252(std::string(1, static_cast<char>(boardType)));
}

constexpr std::uint8_t ReadyRequest = 0x38;
constexpr int Ready = 0x00;
constexpr MonotonicTime ReadyTime = 3s;
constexpr MonotonicTime ReadyTimeAfterRetry = 2s;

} // namespace

std::string RSComm::TargetboardName(std::int16_t boardType) {
    const BoardModel* model = ModelOf(boardType);
    return model ? std::string(model->name) : CharacterOf(boardType) + " Is Not Defined.";
}

std::string RSComm::LCFBoardIndex(std::int16_t boardType) {
    const BoardModel* model = ModelOf(boardType);
    return model ? std::string(model->letter) : std::string();
}

std::string RSComm::MarkHex2HEX(std::string digits) {
    for (char& digit : digits) {
        if (digit >= ':' && digit <= '?') digit = static_cast<char>(digit - ':' + 'A');
    }
    return digits;
}

TaskOf<std::int16_t> RSComm::ReadByteValue(int byte) {
    const Reading reading = co_await Read("B" + std::to_string(byte));
    co_return static_cast<std::int16_t>(reading.Number().value_or(0));
}

TaskOf<std::int16_t> RSComm::FirmwareRev() {
    const bool connected = port_ && port_->IsOpen();
    if (!connected || linkFailed_) co_return 0;
    co_return co_await ReadByteValue(FirmwareRevisionByte);
}

TaskOf<std::int16_t> RSComm::FaultCode() { return ReadByteValue(CurrentFaultByte); }

std::string RSComm::FaultDescription(std::int16_t code) {
    const std::string hex = HexText(static_cast<std::uint16_t>(code), 2);
    std::string text = "Fault Code (" + hex + "H): ";
    try {
        const auto records = ReadFaultFile(faultFile_);
        if (!records) return text + "--- Fault File Not Found ---";
        const auto found = std::find_if(records->begin(), records->end(),
                                        [&](const FaultRecord& record) { return SameIgnoringCase(record.code, hex); });
        if (found != records->end()) text += found->description;
    } catch (const RuntimeError& error) {
        ReportRuntimeError(dialogs_, "RSComm FaultDescription", error);
    }
    return text;
}

TaskOf<bool> RSComm::PLSReady() {
    const Line line = co_await TakeLine();
    // Whatever mode the board was in, it is in none after this.
    targetMode_ = 0;
    for (MonotonicTime deadline = clock_.Now() + ReadyTime;;) {
        if (linkFailed_) co_return false;
        if (clock_.Now() >= deadline) {
            const bool retry = co_await AskAfterNotReady();
            if (!retry) {
                linkFailed_ = true;
                co_return false;
            }
            deadline = clock_.Now() + ReadyTimeAfterRetry;
        }
        const int acknowledged = co_await ExchangeByte(ReadyRequest);
        if (acknowledged != Acknowledge) continue;
        const int ready = co_await ExchangeByte(Acknowledge);
        if (ready != Ready) continue;
        // Nobody waits for an answer to the last byte; if one comes, it must not pass for another's.
        (void)co_await ExchangeByte(Acknowledge, Reply::NoReply);
        unsettled_ = true;
        co_return true;
    }
}

TaskOf<bool> RSComm::AskAfterNotReady() {
    co_await turns_.Next();
    const MessageBox warning{.title = "WARNING - Communication Error!",
                             .text = "Cannot Determine PLS READY Mode Within Target Board.",
                             .icon = MessageIcon::Critical,
                             .buttons = MessageButtons::RetryCancel,
                             .unasked = true};
    co_return dialogs_.Show(warning) == MessageAnswer::Retry;
}

} // namespace vantrel
