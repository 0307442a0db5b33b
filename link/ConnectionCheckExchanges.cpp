// What the check tells of a board that answers: exchanges by the hundred, and what the board says of itself.
#include "link/ConnectionCheck.h"

#include "link/CheckTexts.h"
#include "link/ProtocolBytes.h"
#include "link/TargetMap.h"
#include "platform/NetworkAddress.h"
#include "text/Windows1252.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

/// Each loss costs more than a second; after so many nothing new is learnt.
constexpr std::size_t MostFailures = 10;

} // namespace

MonotonicTime ExchangeFigures::Share(double share) const {
    if (times.empty()) return {};
    const auto last = static_cast<double>(times.size() - 1);
    return times.at(static_cast<std::size_t>(std::lround(last * share)));
}

TaskOf<bool> ConnectionCheck::EnterReadMode() {
    for (int i = 0; i < 2 && !cancelled_; ++i) {
        const BareLine::Heard heard = co_await line_->Exchange(SyncByte, AnswerTime, BehindAnAnswer);
        if (!IsAcknowledged(heard)) continue;
        const BareLine::Heard mode = co_await line_->Exchange(ReadMode, AnswerTime, BehindAnAnswer);
        co_return IsAcknowledged(mode);
    }
    co_return false;
}

TaskOf<ConnectionCheck::Went> ConnectionCheck::Measure() {
    display_.Begins(check::ExchangeStep);
    constexpr std::uint8_t high = FirmwareRevisionByte >> 8;
    constexpr std::uint8_t low = FirmwareRevisionByte & 0xFF;
    std::optional<std::uint8_t> echo = high;
    std::optional<std::uint8_t> data; // The same each time: the revision does not change.
    std::size_t failures = 0;
    while (figures_.tried < Exchanges && failures < MostFailures && !cancelled_) {
        const ExchangeFigures before = figures_;
        bool good = co_await MeasureOne(high, &echo);
        if (good && figures_.tried < Exchanges) good = co_await MeasureOne(low, &data);
        display_.Progress(figures_.tried, Exchanges);
        if (good) continue;
        ++failures;
        if (cancelled_ || port_.IsLost()) break;
        const BareLine::Heard behind = co_await line_->Listen(Quiet);
        if (!behind.bytes.empty()) NoteSurplus(before);
        const bool reads = co_await EnterReadMode();
        if (!reads) failures += MostFailures / 3;
    }
    if (cancelled_) co_return Went::Ended;
    std::sort(figures_.times.begin(), figures_.times.end());
    Judge(figures_);
    co_return figures_.times.empty() || port_.IsLost() || failures >= MostFailures ? Went::Ended : Went::On;
}

void ConnectionCheck::NoteSurplus(const ExchangeFigures& before) {
    if (figures_.lost > before.lost) {
        // What comes now is what was given up.
        --figures_.lost;
        ++figures_.late;
    } else if (figures_.wrong > before.wrong) {
        // The answer that was taken was one too many of the byte before.
        --figures_.wrong;
        ++figures_.doubled;
    }
}

TaskOf<bool> ConnectionCheck::MeasureOne(std::uint8_t byte, std::optional<std::uint8_t>* due) {
    const BareLine::Heard heard = co_await line_->Exchange(byte, AnswerTime, 0ms);
    if (cancelled_) co_return false;
    ++figures_.tried;
    if (heard.bytes.empty()) {
        ++figures_.lost;
        co_return false;
    }
    figures_.times.push_back(heard.time);
    if (!*due) *due = heard.bytes.front();
    const bool wrong = heard.bytes.front() != **due;
    if (wrong) ++figures_.wrong;
    // A second byte of a doubled answer may come a little later, and then spoils the next exchange.
    if (heard.bytes.size() > 1) ++figures_.doubled;
    co_return !wrong && heard.bytes.size() == 1;
}

bool ConnectionCheck::IsAcknowledged(const BareLine::Heard& heard) {
    return !heard.bytes.empty() && heard.bytes.front() == Acknowledge;
}

bool ConnectionCheck::Local() const { return !MeantAsNetworkAddress(subject_.portName); }

bool ConnectionCheck::Raw() const {
    const auto address = ParseNetworkAddress(subject_.portName);
    return address && address->kind == NetworkAddress::Kind::Raw;
}

void ConnectionCheck::Judge(const ExchangeFigures& figures) {
    const MonotonicTime usual = figures.Share(0.5);
    for (const MonotonicTime time : figures_.times) {
        if (time > std::max<MonotonicTime>(RSComm::SilenceTime, 10 * usual)) ++figures_.late;
    }
    CheckStep step{
        .name = check::ExchangeStep, .outcome = CheckStep::Outcome::Good, .seen = check::FiguresText(figures)};
    result_.figures = figures_;
    if (figures_.Flawless()) {
        End(JudgeFlawless(std::move(step)));
        return;
    }
    step.outcome = CheckStep::Outcome::Bad;
    step.todo = check::FlawAdvice(figures_, Local(), Raw() ? std::string() : settings_.speed);
    const bool gone = figures_.times.empty() || port_.IsLost();
    Conclude(gone ? CheckResult::Kind::NoLink : CheckResult::Kind::Flawed,
             port_.IsLost() ? "The line went away while it was tried." : check::FlawVerdict(figures_), step.todo);
    End(step);
}

CheckStep ConnectionCheck::JudgeFlawless(CheckStep step) {
    if (Local() && (check::LooksLikeLatencyTimer(figures_) || check::IsSlow(figures_))) {
        const bool slow = check::IsSlow(figures_);
        step.outcome = CheckStep::Outcome::Notice;
        step.todo = slow ? check::SlowAdvice : check::LatencyAdvice;
        Conclude(CheckResult::Kind::Flawed,
                 slow ? "The board answers, but slowly: " + check::SlowText(figures_)
                      : "The board answers, but every byte takes about 16 ms: the latency timer of a USB adapter, by "
                        "its figure.",
                 step.todo);
        return step;
    }
    Conclude(CheckResult::Kind::Healthy,
             "The board answers" + (Raw() ? std::string() : " at " + settings_.speed + " baud") + "; " +
                 std::to_string(figures_.tried) + " exchanges went without a flaw.",
             "");
    return step;
}

TaskOf<std::optional<std::uint8_t>> ConnectionCheck::ReadByte(int address) {
    const auto high = static_cast<std::uint8_t>(address >> 8);
    const BareLine::Heard echo = co_await line_->Exchange(high, AnswerTime, 0ms);
    if (echo.bytes != std::vector<std::uint8_t>{high}) co_return std::nullopt;
    const BareLine::Heard data = co_await line_->Exchange(static_cast<std::uint8_t>(address & 0xFF), AnswerTime, 0ms);
    if (data.bytes.size() != 1) co_return std::nullopt;
    co_return data.bytes.front();
}

TaskOf<ConnectionCheck::Went> ConnectionCheck::AskBoard() {
    display_.Begins(check::BoardStep);
    std::vector<int> addresses{FirmwareRevisionByte, NetworkAddressByte, RevisionNumberBase, RevisionNumberBase + 1};
    constexpr std::size_t identAt = 4;
    constexpr int identLength = 8;
    for (int i = 0; i < identLength; ++i)
        addresses.push_back(RevisionIdentBase + i);
    std::vector<std::uint8_t> bytes;
    for (const int address : addresses) {
        const auto byte = co_await ReadByte(address);
        if (!byte || cancelled_) break;
        bytes.push_back(*byte);
    }
    if (cancelled_) co_return Went::Ended;
    if (bytes.size() < addresses.size()) {
        End({.name = check::BoardStep,
             .outcome = CheckStep::Outcome::Notice,
             .seen = "Not all of what the board says of itself was read in step.",
             .todo = "Check again."});
        if (result_.kind == CheckResult::Kind::Healthy) {
            Conclude(CheckResult::Kind::Flawed,
                     "The exchanges went well, but the board's own data were not read in step.", "Check again.");
        }
        co_return Went::On;
    }
    // The second of them is the one that is shown first.
    CheckedBoard board{
        .firmware = bytes[0], .networkAddress = bytes[1], .ident = {}, .revisions = {bytes[3], bytes[2]}};
    board.ident = Utf8FromWindows1252(std::string(bytes.begin() + identAt, bytes.end()));
    if (subject_.boardType != 0 && subject_.identOnDisk == board.ident)
        board.model = RSComm::TargetboardName(subject_.boardType);
    End({.name = check::BoardStep,
         .outcome = CheckStep::Outcome::Good,
         .seen = check::BoardText(board) + " " + check::ModelText(board, subject_)});
    result_.board = std::move(board);
    co_return Went::On;
}

} // namespace vantrel
