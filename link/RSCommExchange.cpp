// The byte exchange: one byte out, one byte in; silence, repeats and the warning; the modes; a line that is out of
// step.
#include "link/RSComm.h"

#include "link/ProtocolBytes.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <cassert>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

constexpr MonotonicTime FirstAnswerTime = 1s;
constexpr MonotonicTime RepeatedAnswerTime = 2s;
constexpr int AttemptsBeforeWarning = 3;
constexpr MonotonicTime ModeTime = 2s;
/// Out of a mode: the first sync byte may pass for an address.
constexpr int TriesOfAGoodBoard = 2;
/// Longer than a sync and a mode byte take on a slow line; what takes as long held a silence, of the board or the host.
constexpr MonotonicTime LongestCleanTry = 900ms;
/// A board that is still in a mode takes two sync bytes to leave it.
constexpr MonotonicTime CleanTryTime = 200ms;

/// Longer than any byte is under way, also through an adapter that hands over its bytes every 16 ms.
constexpr MonotonicTime QuietTime = 50ms;
constexpr MonotonicTime LongestSettling = 500ms;

constexpr const char* WarningTitle = "WARNING - Communication Error!";

} // namespace

/// An answer that is awaited. When its task is stopped in the middle, nobody knows what is on the line.
class RSComm::Awaited {
public:
    explicit Awaited(RSComm& link) : link_(link) { link_.awaitingSince_ = link_.clock_.Now(); }
    Awaited(const Awaited&) = delete;
    Awaited& operator=(const Awaited&) = delete;
    ~Awaited() {
        link_.awaitingSince_.reset();
        if (ended_) return;
        link_.Log({});
        link_.OutOfStep();
    }
    void End() { ended_ = true; }

private:
    RSComm& link_;
    bool ended_ = false;
};

void RSComm::Send(std::uint8_t byte) {
    unlogged_ = SentByte{clock_.Now(), byte};
    port_->Write({&byte, 1});
}

void RSComm::Log(std::optional<std::uint8_t> answer) {
    if (unlogged_) logs_.Exchanged(unlogged_->at, unlogged_->byte, answer);
    unlogged_.reset();
}

void RSComm::OutOfStep() {
    unsettled_ = true;
    targetMode_ = 0;
}

TaskOf<int> RSComm::ExchangeByte(std::uint8_t byte, Reply reply, Receiver receiver) {
    assert(lock_.Held());
    if (linkFailed_) co_return NoAnswer;
    if (!port_ || !port_->IsOpen()) {
        targetMode_ = 0;
        linkFailed_ = true;
        co_return NoAnswer;
    }
    if (receiver == Receiver::FlushFirst) DiscardReceived();
    Send(byte);
    NoteGap(clock_.Now());
    if (reply == Reply::NoReply) {
        Log({});
        co_return 0;
    }
    co_return co_await AwaitAnswer();
}

void RSComm::NoteGap(MonotonicTime sent) {
    // A host that was busy, or asleep, counts like a board that was: the time is what the board saw.
    if (value_.lastSent && sent - *value_.lastSent > answerTimes_.LongestGap()) value_.gap = true;
    value_.lastSent = sent;
    lastExchange_ = sent;
}

TaskOf<int> RSComm::AwaitAnswer() {
    Awaited awaited(*this);
    const MonotonicTime sent = clock_.Now();
    MonotonicTime deadline = sent + FirstAnswerTime;
    bool repeated = false;
    int attempts = 0;
    for (;;) {
        const MonotonicTime until = givenUp_ ? std::min(deadline, sent + SilenceTime) : deadline;
        const PortWait wait = co_await turns_.WaitForByte(*port_, until);
        if (wait == PortWait::ByteReceived) break;
        if (givenUp_ && wait != PortWait::Lost && clock_.Now() < sent + SilenceTime) continue;
        Log({});
        OutOfStep();
        repeated = value_.repeated = true;
        linkFailed_ = true;
        ++attempts;
        const bool last = wait == PortWait::Lost || attempts == AttemptsBeforeWarning;
        // Runs on while the warning is up. A line that was opened anew has nothing to wait for before the next attempt.
        deadline = clock_.Now() + (wait == PortWait::Lost ? MonotonicTime{0} : RepeatedAnswerTime);
        if (givenUp_ || patience_ == Patience::Short) co_return FailedAnswer(awaited);
        if (last) {
            const bool retry = co_await AskAfterNoAnswer(wait);
            if (!retry) co_return FailedAnswer(awaited);
            attempts = 0;
        }
        linkFailed_ = false;
        if (last) continue;
        DiscardReceived();
        Send(SyncByte);
    }
    awaited.End();
    const std::uint8_t answer = port_->ReadByte();
    Log(answer);
    if (!repeated) answerTimes_.Add(clock_.Now() - sent);
    co_return answer;
}

int RSComm::FailedAnswer(Awaited& awaited) {
    awaited.End();
    linkFailed_ = true;
    return NoAnswer;
}

void RSComm::GiveUp() {
    if (!lock_.Held() || !port_) return;
    givenUp_ = true;
    if (awaitingSince_ && clock_.Now() >= *awaitingSince_ + SilenceTime) linkFailed_ = true;
    turns_.GiveUpWaits(*port_);
}

TaskOf<bool> RSComm::AskAfterNoAnswer(PortWait how) {
    // Not in the middle of whatever has started the task, nor over a box that the user has open.
    co_await turns_.Next();
    const MessageBox warning{.title = WarningTitle,
                             .text = "Cannot Communicate with Target Board.\n"
                                     "Verify RS-232 Cable is Connected Between\n"
                                     "COMM Port and PROG Port.",
                             .icon = MessageIcon::Critical,
                             .buttons = MessageButtons::RetryCancel,
                             .unasked = true};
    if (givenUp_ || dialogs_.Show(warning) != MessageAnswer::Retry || givenUp_) co_return false;
    if (how != PortWait::Lost) co_return true;
    std::optional<RuntimeError> failure;
    try {
        const bool opened = co_await OpenPort();
        if (!opened) co_return false;
        port_->ClearReceived();
        ++reopened_;
        ++opened_;
        co_return true;
    } catch (const RuntimeError& error) {
        failure = error;
    }
    // The warning was shown once and is not repeated; why the port stays closed is news.
    co_await turns_.Allowed();
    ShowPortError(*failure);
    co_return false;
}

TaskOf<bool> RSComm::SetTargetMode(int mode, std::uint8_t modeByte) {
    if (neighbour_) co_await LookForSurplus();
    targetMode_ = 0;
    MonotonicTime deadline = clock_.Now() + ModeTime;
    // The try before took long and may have used the time up; a clean one comes before the box.
    bool held = false;
    bool extended = false;
    int tries = 0;
    while (targetMode_ != mode) {
        const bool late = clock_.Now() >= deadline;
        if ((late && (extended || !held)) || (givenUp_ && tries >= TriesOfAGoodBoard)) {
            const bool retry = co_await AskAfterNoMode();
            if (!retry) co_return false;
            deadline = clock_.Now() + ModeTime;
            extended = false;
        } else if (late) {
            deadline = clock_.Now() + CleanTryTime;
            extended = true;
        }
        ++tries;
        if (unsettled_) co_await SettleLine();
        const MonotonicTime began = clock_.Now();
        const Handshake sync = co_await Shake(SyncByte, Receiver::FlushFirst);
        if (sync.answer == NoAnswer) co_return false;
        held = clock_.Now() - began >= LongestCleanTry;
        if (mayBeInWriteMode_) NoteSpoiledSync(sync.answer);
        if (!sync.acknowledged) continue;
        const Handshake set = co_await Shake(modeByte, Receiver::Keep);
        if (set.answer == NoAnswer) co_return false;
        held = clock_.Now() - began >= LongestCleanTry;
        if (!set.acknowledged) {
            unsettled_ = true;
            // The mode byte may have been taken for the rest of an address that a sync byte had begun.
            if (mayBeInWriteMode_) NoteReached(SyncByte, modeByte);
        }
        targetMode_ = set.acknowledged ? mode : 0;
        mayBeInWriteMode_ = mode == WriteMode || !set.acknowledged;
    }
    co_return true;
}

TaskOf<RSComm::Handshake> RSComm::Shake(std::uint8_t byte, Receiver receiver) {
    value_ = {};
    Handshake shake;
    shake.answer = co_await ExchangeByte(byte, Reply::Wait, receiver);
    // What answers a repeated sync byte acknowledges that one: the byte itself may never have arrived.
    shake.acknowledged = shake.answer == Acknowledge && !value_.repeated;
    co_return shake;
}

void RSComm::NoteSpoiledSync(int answer) {
    // In write mode it echoes the sync byte as one of an address. Another echo is another byte, and the sync bytes that
    // follow fill up the value that it begins.
    if (answer == Acknowledge || answer == SyncByte) return;
    NoteReached(answer, SyncByte);
    NoteReached(SyncByte, answer);
}

Task RSComm::SettleLine() {
    // One surplus byte, still on its way while the buffer is emptied, would pass for the answer to the next byte, and
    // every answer after it for the one before: the link would never get in step again.
    if (linkFailed_ || !port_ || !port_->IsOpen()) co_return;
    const MonotonicTime end = clock_.Now() + LongestSettling;
    while (clock_.Now() < end) {
        const PortWait wait = co_await turns_.WaitForByte(*port_, clock_.Now() + QuietTime);
        // Whoever gives up wants the rest to be in step all the same.
        if (wait == PortWait::GivenUp) continue;
        if (wait != PortWait::ByteReceived) break;
        DiscardReceived();
    }
    unsettled_ = false;
}

void RSComm::DiscardReceived() {
    while (port_->ReceivedCount() > 0) {
        const std::uint8_t surplus = port_->ReadByte();
        logs_.Surplus(clock_.Now(), surplus);
    }
    port_->ClearReceived();
}

TaskOf<bool> RSComm::AskAfterNoMode() {
    co_await turns_.Next();
    const MessageBox warning{.title = WarningTitle,
                             .text = "Cannot Set PLC Mode Within Target Board.",
                             .icon = MessageIcon::Critical,
                             .buttons = MessageButtons::RetryCancel,
                             .unasked = true};
    if (!givenUp_ && dialogs_.Show(warning) == MessageAnswer::Retry && !givenUp_) co_return true;
    linkFailed_ = true;
    onlineMode_ = false;
    co_await Close();
    co_return false;
}

} // namespace vantrel
