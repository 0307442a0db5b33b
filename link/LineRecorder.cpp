#include "link/LineRecorder.h"

#include "text/NumberText.h"
#include "text/Padding.h"
#include "text/TimeText.h"

#include <utility>

namespace vantrel {

namespace {

std::string ByteText(std::optional<std::uint8_t> byte) { return byte ? HexText(*byte, 2) : "--"; }

std::string LineOf(const LineEntry& entry) {
    const auto cells = LineCells(entry);
    constexpr std::size_t secondsWidth = 13;
    std::string line = cells[0] + PadLeft(cells[1], secondsWidth);
    for (std::size_t i = 2; i < cells.size(); ++i)
        line += "  " + cells.at(i);
    return line + '\n';
}

} // namespace

void LineRecorder::Exchanged(MonotonicTime sentAt, std::uint8_t sent, std::optional<std::uint8_t> received) {
    Add(sentAt, sent, received, decoder_.Exchanged(sent, received));
}

void LineRecorder::Surplus(MonotonicTime at, std::uint8_t byte) { Add(at, {}, byte, TraceDecoder::Surplus(byte)); }

void LineRecorder::Add(MonotonicTime at, std::optional<std::uint8_t> sent, std::optional<std::uint8_t> received,
                       std::string meaning) {
    if (!keeps_) return;
    if (paused_) {
        ++missed_;
        return;
    }
    if (!first_) first_ = at;
    entries_.push_back({clock_.LocalNow(), at - *first_, sent, received, std::move(meaning)});
    if (entries_.size() <= Most) return;
    entries_.pop_front();
    ++gone_;
    ++pushedOut_;
}

void LineRecorder::SetPaused(bool paused) {
    if (paused == paused_) return;
    paused_ = paused;
    if (const std::size_t missed = std::exchange(missed_, 0); missed > 0)
        Add(clock_.Now(), {}, {},
            "paused: " + std::to_string(missed) + (missed == 1 ? " line was" : " lines were") + " not kept");
}

void LineRecorder::End() {
    keeps_ = paused_ = false;
    missed_ = 0;
    first_.reset();
    Clear();
}

void LineRecorder::Clear() {
    gone_ += entries_.size();
    entries_.clear();
    pushedOut_ = 0;
}

std::array<std::string, 5> LineCells(const LineEntry& entry) {
    constexpr long long microsecondsASecond = 1'000'000;
    const long long passed = std::chrono::duration_cast<std::chrono::microseconds>(entry.passed).count();
    const bool remark = !entry.sent && !entry.received;
    return {TimeOfDayText(entry.when),
            std::to_string(passed / microsecondsASecond) + '.' +
                PadLeft(std::to_string(passed % microsecondsASecond), 6, '0'),
            remark ? "" : ByteText(entry.sent), remark ? "" : ByteText(entry.received), entry.meaning};
}

std::string LineText(const LineRecorder& recorder) {
    std::string text = "# time       seconds  sent  received  meaning\n";
    if (recorder.PushedOut() > 0)
        text += "# older lines that were not kept: " + std::to_string(recorder.PushedOut()) + "\n";
    for (const LineEntry& entry : recorder.Entries())
        text += LineOf(entry);
    return text;
}

} // namespace vantrel
