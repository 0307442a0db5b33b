#include "link/ReadingWalk.h"

#include <utility>

namespace vantrel {

TaskOf<std::optional<JudgedReading>> ReadingWalk::Read(std::string address, std::size_t tag) {
    const RSComm::Line line = co_await link_.TakeLine();
    RSComm::Attempt attempt = co_await link_.ReadTarget(address);
    const auto before = co_await Settle();
    if (attempt.state == RSComm::Attempt::State::Spoiled) attempt = co_await link_.ReadTarget(address);
    Reading reading = Reading::Doubtful(attempt.number);
    if (attempt.state == RSComm::Attempt::State::LinkFailed) reading = Reading::LinkFailed();
    if (attempt.state == RSComm::Attempt::State::Clean) {
        reading = Reading::Value(*attempt.number);
        link_.Watch(neighbour_);
    }
    const JudgedReading judged{tag, reading};
    held_ = Held{std::move(address), judged};
    co_await link_.turns_.Allowed();
    co_return before;
}

TaskOf<std::optional<JudgedReading>> ReadingWalk::End() {
    const RSComm::Line line = co_await link_.TakeLine();
    if (held_ && neighbour_.state == RSComm::Neighbour::State::Unknown) co_await link_.LookForSurplus();
    const auto last = co_await Settle();
    co_await link_.turns_.Allowed();
    co_return last;
}

TaskOf<std::optional<JudgedReading>> ReadingWalk::Settle() {
    if (!held_) co_return std::nullopt;
    Held held = *std::exchange(held_, std::nullopt);
    const bool outOfStep = neighbour_.state == RSComm::Neighbour::State::OutOfStep;
    if (held.judged.reading.IsValue() && outOfStep) {
        held.judged.reading = co_await link_.ReadOnceAndLook(held.address);
    }
    co_return held.judged;
}

} // namespace vantrel
