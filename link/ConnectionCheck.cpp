// The steps of the check until a board answers.
#include "link/ConnectionCheck.h"

#include "link/CheckTexts.h"
#include "link/ProtocolBytes.h"
#include "link/TargetMap.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

constexpr int MostReopenings = 5;

} // namespace

bool ConnectionCheck::Probe::Answered() const { return std::any_of(answers.begin(), answers.end(), IsAcknowledged); }

bool ConnectionCheck::Probe::Echoed() const {
    const auto isEcho = [](const auto& heard) { return heard.bytes == std::vector<std::uint8_t>{SyncByte}; };
    return !answers.empty() && std::all_of(answers.begin(), answers.end(), isEcho);
}

bool ConnectionCheck::Probe::Silent() const {
    const auto isNothing = [](const auto& heard) { return heard.bytes.empty(); };
    return !answers.empty() && std::all_of(answers.begin(), answers.end(), isNothing);
}

ConnectionCheck::ConnectionCheck(RSComm& link, SerialPort& port, CheckSubject subject, Clock& clock, TurnQueue& turns,
                                 CheckDisplay& display)
    : link_(link), port_(port), subject_(std::move(subject)), clock_(clock), turns_(turns), display_(display) {}

void ConnectionCheck::Cancel() {
    cancelled_ = true;
    turns_.GiveUpWaits(port_);
}

TaskOf<CheckResult> ConnectionCheck::Run() {
    RSComm::Line line = co_await link_.TakeLine();
    Went went = Went::On;
    if (link_.OnlineMode()) {
        went = co_await CheckOnline(&line);
        line_.emplace(link_, std::move(line), port_);
    } else {
        line_.emplace(link_, std::move(line), port_);
        went = co_await CheckOffline();
    }
    if (went == Went::On) went = co_await Measure();
    if (went == Went::On) went = co_await AskBoard();
    // The goodbye that the board is used to.
    if (went == Went::On && !link_.OnlineMode()) (void)co_await line_->Exchange(SyncByte, 100ms, 0ms);
    line_.reset();
    if (cancelled_) Conclude(CheckResult::Kind::Cancelled, "The check was cancelled.", "");
    co_return result_;
}

TaskOf<ConnectionCheck::Went> ConnectionCheck::CheckOnline(RSComm::Line* line) {
    settings_ = link_.Settings();
    display_.Begins(check::PortStep);
    End({.name = check::PortStep,
         .outcome = CheckStep::Outcome::Good,
         .seen = subject_.portName + " is open in this program, ONLINE" +
                 (Raw() ? "." : " at " + settings_.speed + " baud.")});
    display_.Begins(AnswerStep(settings_.speed));
    // One second of silence ends it, without the link's own box.
    line->Hurry();
    const Reading reading = co_await line->Read("B" + std::to_string(FirmwareRevisionByte));
    const bool reads = !reading.HasLinkFailed() && link_.TargetMode() == ReadMode;
    End({.name = AnswerStep(settings_.speed),
         .outcome = reads ? CheckStep::Outcome::Good : CheckStep::Outcome::Bad,
         .seen = reads ? "The board answers, and has taken read mode." : "The board does not answer any more.",
         .todo = reads ? "" : check::CableAdvice});
    if (reads) co_return cancelled_ ? Went::Ended : Went::On;
    Conclude(CheckResult::Kind::NoLink, "The board does not answer any more.", check::CableAdvice);
    co_return Went::Ended;
}

TaskOf<ConnectionCheck::Went> ConnectionCheck::CheckOffline() {
    std::optional<RuntimeError> failure;
    try {
        settings_ = link_.SettingsToCome();
    } catch (const RuntimeError& error) {
        failure = error;
    }
    if (failure) {
        Conclude(CheckResult::Kind::NoLink, failure->Description(), "Set the port and its speed anew.");
        co_return Went::Ended;
    }
    const Went opened = co_await OpenFirst(settings_);
    if (opened == Went::Ended) co_return opened;
    const Went tried = co_await TryBothSpeeds(settings_);
    if (tried == Went::Ended || JudgeProbes(settings_.speed) == Went::Ended) co_return Went::Ended;
    // The last speed that could be tried is still the port's, but for a port that was refused another one since.
    if (settings_.speed != probes_.back().speed || !port_.IsOpen()) {
        CheckStep reopened;
        const bool open = co_await Reopen(settings_, &reopened);
        if (!open) co_return Went::Ended;
    }
    (void)co_await line_->Listen(Quiet);
    const bool reads = co_await EnterReadMode();
    if (cancelled_) co_return Went::Ended;
    if (reads) co_return Went::On;
    Conclude(CheckResult::Kind::NoLink, "The board answers the sync byte, but does not take read mode.",
             "Switch the board off and on, and check again.");
    co_return Went::Ended;
}

TaskOf<ConnectionCheck::Went> ConnectionCheck::OpenFirst(PortSettings settings) {
    display_.Begins(check::PortStep);
    std::optional<RuntimeError> failure;
    bool open = false;
    try {
        if (!Raw()) settings.speed = check::Speeds[0];
        open = co_await line_->Open(settings);
    } catch (const RuntimeError& error) {
        failure = error;
    }
    if (failure) {
        const std::string todo = check::PortAdvice(failure->Number(), Local());
        End({.name = check::PortStep,
             .outcome = CheckStep::Outcome::Bad,
             .seen = failure->Description(),
             .todo = todo});
        Conclude(CheckResult::Kind::NoLink, check::FirstSentence(failure->Description()), todo);
        co_return Went::Ended;
    }
    if (!open) co_return Went::Ended;
    End({.name = check::PortStep,
         .outcome = CheckStep::Outcome::Good,
         .seen = subject_.portName + (Local() ? " is there, may be used, and is free." : " takes the connection.")});
    co_return Went::On;
}

TaskOf<ConnectionCheck::Went> ConnectionCheck::TryBothSpeeds(PortSettings settings) {
    if (Raw()) {
        const Went tried = co_await TrySpeed(settings);
        co_return tried;
    }
    for (const char* speed : check::Speeds) {
        settings.speed = speed;
        const Went went = co_await TrySpeed(settings);
        if (went == Went::Ended) co_return went;
    }
    co_return Went::On;
}

TaskOf<bool> ConnectionCheck::Reopen(PortSettings settings, CheckStep* whyNot) {
    // A server in the network may take a moment to notice that we have let go of the line.
    for (int tries = 0; tries < MostReopenings && !cancelled_; ++tries) {
        std::optional<RuntimeError> failure;
        try {
            const bool open = co_await line_->Open(settings);
            co_return open;
        } catch (const RuntimeError& error) {
            failure = error;
        }
        whyNot->name = AnswerStep(settings.speed);
        whyNot->outcome = CheckStep::Outcome::Notice;
        whyNot->seen = (Raw() ? "Could not be tried: " : "This speed could not be tried: ") + failure->Description();
        Conclude(CheckResult::Kind::NoLink, check::FirstSentence(failure->Description()),
                 check::PortAdvice(failure->Number(), Local()));
    }
    co_return false;
}

TaskOf<ConnectionCheck::Went> ConnectionCheck::TrySpeed(PortSettings settings) {
    display_.Begins(AnswerStep(settings.speed));
    Probe probe{.speed = settings.speed, .unasked = false, .answers = {}};
    CheckStep notTried;
    const bool open = co_await Reopen(settings, &notTried);
    if (!open && !cancelled_) {
        End(notTried);
        co_return Went::On;
    }
    if (!open) co_return Went::Ended;
    const BareLine::Heard unasked = co_await line_->Listen(Quiet);
    probe.unasked = !unasked.bytes.empty();
    BareLine::Heard more;
    if (probe.unasked && !cancelled_) more = co_await line_->Listen(Quiet);
    // A byte of ours amid another's could be a value for the board. Else: a board that is still in a mode takes two,
    // and three could be a value for it.
    for (int i = 0; more.bytes.empty() && i < 2 && !probe.Answered() && !cancelled_; ++i) {
        BareLine::Heard heard = co_await line_->Exchange(SyncByte, AnswerTime, BehindAnAnswer);
        probe.answers.push_back(std::move(heard));
    }
    if (cancelled_) co_return Went::Ended;
    CheckStep step = StepOf(probe);
    if (probe.unasked) {
        step.outcome = CheckStep::Outcome::Notice;
        step.seen = "Before anything was sent " + check::Hex(unasked.bytes) + " came. " + step.seen;
    }
    probes_.push_back(std::move(probe));
    End(step);
    co_return Went::On;
}

CheckStep ConnectionCheck::StepOf(const Probe& probe) const {
    CheckStep step{.name = AnswerStep(probe.speed), .outcome = CheckStep::Outcome::Notice, .seen = ""};
    if (probe.answers.empty()) {
        step.seen = "More came behind it, and nothing was sent into that.";
        return step;
    }
    const BareLine::Heard& last = probe.answers.back();
    if (probe.Answered()) {
        step.outcome = CheckStep::Outcome::Good;
        step.seen = "55 came back after " + check::Milliseconds(last.time) + ": a board's answer.";
        if (last.bytes.size() > 1)
            step.seen += " Behind it came " + check::Hex({last.bytes.begin() + 1, last.bytes.end()}) + ".";
    } else if (last.lost) {
        step.seen = "The device went away.";
    } else if (probe.Silent()) {
        step.seen = "Nothing came back within a second, twice.";
    } else if (probe.Echoed()) {
        step.seen = "FF came back, twice: the very byte that was sent.";
    } else {
        step.seen = "FF was sent, twice; what came back is no board's answer:";
        for (const BareLine::Heard& heard : probe.answers)
            step.seen += " " + (heard.bytes.empty() ? std::string("nothing") : check::Hex(heard.bytes)) + ";";
        step.seen.back() = '.';
    }
    return step;
}

ConnectionCheck::Went ConnectionCheck::JudgeProbes(const std::string& wanted) {
    if (probes_.empty()) return Went::Ended;
    // Before the answers: what looks like one may be another's.
    if (std::all_of(probes_.begin(), probes_.end(), [](const Probe& p) { return p.unasked; })) {
        Conclude(CheckResult::Kind::NoLink, "Something else is talking on this line.", check::TalkAdvice(Local()));
        return Went::Ended;
    }
    const auto answered = std::find_if(probes_.begin(), probes_.end(), [](const Probe& p) { return p.Answered(); });
    const bool asWanted =
        std::any_of(probes_.begin(), probes_.end(), [&](const Probe& p) { return p.speed == wanted && p.Answered(); });
    if (asWanted) return Went::On;
    if (answered != probes_.end()) {
        Conclude(CheckResult::Kind::NoLink,
                 "The board answers at " + answered->speed + " baud; the program is set to " + wanted + ".",
                 check::SpeedAdvice(answered->speed));
    } else {
        ConcludeUnanswered();
    }
    return Went::Ended;
}

void ConnectionCheck::ConcludeUnanswered() {
    const auto all = [&](auto what) { return std::all_of(probes_.begin(), probes_.end(), what); };
    using Kind = CheckResult::Kind;
    const std::string server = Raw() ? check::ServerSpeedAdvice + std::string(" ") : "";
    if (all([](const Probe& p) { return p.Echoed(); })) {
        Conclude(Kind::NoLink, "What is sent comes back itself" + AtSpeeds(", at every speed") + ": no board answers.",
                 check::EchoAdvice);
    } else if (all([](const Probe& p) { return p.Silent(); })) {
        const bool gone = port_.IsLost();
        const std::string nothing = "Nothing answers" + AtSpeeds(", at either speed") + ".";
        Conclude(Kind::NoLink, gone ? "The port was lost." : nothing, (gone ? "" : server) + check::CableAdvice);
    } else {
        Conclude(Kind::NoLink, "Something answers, but nothing that a board says" + AtSpeeds(" at either speed") + ".",
                 server + check::GarbageAdvice);
    }
}

std::string ConnectionCheck::AtSpeeds(const char* all) const {
    if (Raw()) return "";
    if (probes_.size() == check::Speeds.size()) return all;
    return " at " + probes_.front().speed + " baud, the only speed that could be tried";
}

std::string ConnectionCheck::AnswerStep(const std::string& speed) const {
    return check::AnswerStep(Raw() ? std::string() : speed);
}

void ConnectionCheck::End(const CheckStep& step) { display_.Ends(step); }

void ConnectionCheck::Conclude(CheckResult::Kind kind, const std::string& verdict, const std::string& todo) {
    result_.kind = kind;
    result_.verdict = verdict;
    result_.todo = todo;
}

} // namespace vantrel
