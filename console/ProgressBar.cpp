// Drawing one line over and over, and the guess of how long it still takes.
#include "console/ProgressBar.h"

#include <algorithm>
#include <chrono>
#include <ostream>

namespace vantrel {

namespace {

constexpr std::size_t BarWidth = 40;

} // namespace

void ProgressBar::ShowLabel(std::string_view label) {
    EndLine();
    if (draws_) out_ << label << '\n' << std::flush;
    startedAt_ = clock_.Now();
}

void ProgressBar::ShowProgress(std::size_t done, std::size_t total) {
    if (!draws_ || total == 0) return;
    const std::size_t filled = BarWidth * done / total;
    std::string line = "[" + std::string(filled, '#') + std::string(BarWidth - filled, '.') + "] " +
                       std::to_string(100 * done / total) + " %" + TimeLeft(done, total);
    if (line == shown_ && lineOpen_) return;
    const std::size_t leftOver = lineOpen_ && shown_.size() > line.size() ? shown_.size() - line.size() : 0;
    out_ << '\r' << line << std::string(leftOver, ' ') << std::flush;
    shown_ = std::move(line);
    lineOpen_ = true;
    if (done == total) EndLine();
}

void ProgressBar::EndLine() {
    if (lineOpen_) out_ << '\n' << std::flush;
    lineOpen_ = false;
}

std::string ProgressBar::TimeLeft(std::size_t done, std::size_t total) const {
    using Seconds = std::chrono::duration<double>;
    if (done == 0 || done == total) return {};
    const Seconds each = Seconds(clock_.Now() - startedAt_) / static_cast<double>(done);
    const auto left = std::chrono::ceil<std::chrono::seconds>(each * static_cast<double>(total - done)).count();
    if (left < 60) return ", " + std::to_string(left) + " s left";
    return ", " + std::to_string(left / 60) + " min " + std::to_string(left % 60) + " s left";
}

} // namespace vantrel
