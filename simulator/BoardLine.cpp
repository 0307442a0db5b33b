// The schedule of the wire.
#include "simulator/BoardLine.h"

#include "simulator/WrongSpeed.h"

#include <algorithm>
#include <vector>

namespace vantrel {

namespace {

std::vector<std::uint8_t> Heard(std::uint8_t byte, int sentAt, int heardAt) {
    if (sentAt == heardAt || sentAt == 0 || heardAt == 0) return {byte};
    return HeardAtSpeed(byte, sentAt, heardAt);
}

} // namespace

void BoardLine::SetSpeeds(int program, int board) {
    programSpeed_ = program;
    boardSpeed_ = board;
}

void BoardLine::Send(std::uint8_t byte, MonotonicTime now) {
    toBoardEnds_ = std::max(now, toBoardEnds_) + byteTime_;
    if (!IsCut(toBoardEnds_) && board_.LinesTouch()) {
        fromBoardEnds_ = std::max(toBoardEnds_, fromBoardEnds_);
        fromBoard_.push_back({fromBoardEnds_, byte});
        return;
    }
    for (const std::uint8_t heard : Heard(byte, programSpeed_, boardSpeed_)) {
        if (IsCut(toBoardEnds_)) return;
        Answer(board_.Receive(heard, toBoardEnds_));
    }
}

void BoardLine::Answer(const BoardAnswer& answer) {
    for (const std::uint8_t sent : answer.bytes) {
        for (const std::uint8_t value : Heard(sent, boardSpeed_, programSpeed_)) {
            fromBoardEnds_ = std::max(toBoardEnds_ + answer.delay, fromBoardEnds_) + byteTime_;
            fromBoard_.push_back({fromBoardEnds_, value});
        }
    }
    if (answer.hangUp) Cut(toBoardEnds_);
}

std::size_t BoardLine::Arrived(MonotonicTime now) const {
    const auto onWire =
        std::ranges::partition_point(fromBoard_, [&](const WireByte& byte) { return byte.arrives <= now; });
    return static_cast<std::size_t>(onWire - fromBoard_.begin());
}

std::uint8_t BoardLine::Take() {
    const std::uint8_t value = fromBoard_.front().value;
    fromBoard_.pop_front();
    return value;
}

void BoardLine::DiscardArrived(MonotonicTime now) {
    fromBoard_.erase(fromBoard_.begin(), fromBoard_.begin() + static_cast<std::ptrdiff_t>(Arrived(now)));
}

std::optional<MonotonicTime> BoardLine::NextEvent() const {
    if (fromBoard_.empty()) return cutAt_;
    const MonotonicTime arrives = fromBoard_.front().arrives;
    return cutAt_ ? std::min(arrives, *cutAt_) : arrives;
}

void BoardLine::Cut(MonotonicTime at) {
    cutAt_ = cutAt_ ? std::min(at, *cutAt_) : at;
    std::erase_if(fromBoard_, [&](const WireByte& byte) { return byte.arrives > *cutAt_; });
}

} // namespace vantrel
