// The schedule of the wire.
#include "simulator/BoardLine.h"

#include <algorithm>

namespace vantrel {

void BoardLine::Send(std::uint8_t byte, MonotonicTime now) {
    toBoardEnds_ = std::max(now, toBoardEnds_) + byteTime_;
    if (IsCut(toBoardEnds_)) return;
    const BoardAnswer answer = board_.Receive(byte, toBoardEnds_);
    for (const std::uint8_t value : answer.bytes) {
        fromBoardEnds_ = std::max(toBoardEnds_ + answer.delay, fromBoardEnds_) + byteTime_;
        fromBoard_.push_back({fromBoardEnds_, value});
    }
    if (answer.hangUp) Cut(toBoardEnds_);
}

std::size_t BoardLine::Arrived(MonotonicTime now) const {
    const auto onWire =
        std::find_if(fromBoard_.begin(), fromBoard_.end(), [&](const WireByte& byte) { return byte.arrives > now; });
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
