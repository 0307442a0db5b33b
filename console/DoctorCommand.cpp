// The command that checks the connection step by step and says what to do about it.
#include "console/Commands.h"
#include "console/LinkSession.h"
#include "console/ResultJson.h"
#include "link/ConnectionCheck.h"
#include "views/UserProgram.h"

#include <algorithm>
#include <chrono>
#include <ostream>
#include <string>
#include <vector>

namespace vantrel {

namespace {

const char* OutcomeWord(CheckStep::Outcome outcome) {
    if (outcome == CheckStep::Outcome::Good) return "good";
    return outcome == CheckStep::Outcome::Notice ? "notice" : "bad";
}

/// Broken between words, every line but the first begun with `indent` blanks.
std::string Wrapped(const std::string& text, std::size_t indent) {
    constexpr std::size_t width = 92;
    std::string wrapped;
    std::size_t column = indent;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        if (column > indent && column + 1 + (end - at) > width) {
            wrapped += "\n" + std::string(indent, ' ');
            column = indent;
        } else if (column > indent) {
            wrapped += ' ';
            ++column;
        }
        wrapped += text.substr(at, end - at);
        column += end - at;
        at = end + 1;
    }
    return wrapped;
}

class ConsoleCheck final : public CheckDisplay {
public:
    explicit ConsoleCheck(CommandContext& context) : context_(context) {}

    void Begins(const std::string& step) override { context_.progress.ShowLabel(step); }
    void Ends(const CheckStep& step) override {
        context_.progress.EndLine();
        steps_.push_back(
            {{"step", step.name}, {"outcome", OutcomeWord(step.outcome)}, {"seen", step.seen}, {"todo", step.todo}});
        if (context_.arguments.json) return;
        constexpr std::size_t indent = 18;
        std::string name = step.name;
        name.resize(indent - 3, ' ');
        context_.host.out << Mark(step.outcome) << ' ' << name << ' ' << Wrapped(step.seen, indent) << '\n';
        if (!step.todo.empty())
            context_.host.out << std::string(indent, ' ') << Wrapped("-> " + step.todo, indent) << '\n';
        context_.host.out << std::flush;
    }
    void Progress(std::size_t done, std::size_t all) override { context_.progress.ShowProgress(done, all); }

    /// The user has read that advice already.
    [[nodiscard]] bool HasShown(const std::string& todo) const {
        return std::any_of(steps_.begin(), steps_.end(), [&](const Json& step) { return step["todo"] == todo; });
    }
    [[nodiscard]] Json Steps() const { return steps_; }

private:
    /// Said without colours.
    [[nodiscard]] static const char* Mark(CheckStep::Outcome outcome) {
        if (outcome == CheckStep::Outcome::Good) return "+";
        return outcome == CheckStep::Outcome::Notice ? "o" : "!";
    }

    CommandContext& context_;
    Json steps_ = Json::array();
};

double InMilliseconds(MonotonicTime time) {
    constexpr double microseconds = 1000;
    return static_cast<double>(std::chrono::round<std::chrono::microseconds>(time).count()) / microseconds;
}

Json FiguresJson(const CheckResult& result) {
    if (!result.figures) return nullptr;
    const ExchangeFigures& figures = *result.figures;
    constexpr double ninetyNine = 0.99;
    Json json{{"exchanges", figures.tried}, {"lost", figures.lost},       {"late", figures.late},
              {"wrong", figures.wrong},     {"doubled", figures.doubled}, {"leastMs", nullptr},
              {"medianMs", nullptr},        {"p99Ms", nullptr},           {"mostMs", nullptr}};
    if (figures.times.empty()) return json;
    json["leastMs"] = InMilliseconds(figures.times.front());
    json["medianMs"] = InMilliseconds(figures.Share(1.0 / 2));
    json["p99Ms"] = InMilliseconds(figures.Share(ninetyNine));
    json["mostMs"] = InMilliseconds(figures.times.back());
    return json;
}

Json BoardJson(const CheckResult& result) {
    if (!result.board) return nullptr;
    const CheckedBoard& board = *result.board;
    return {{"model", board.model.empty() ? Json() : Json(board.model)},
            {"program", board.ident},
            {"revisions", {board.revisions[0], board.revisions[1]}},
            {"firmware", board.firmware},
            {"networkAddress", board.networkAddress}};
}

const char* KindWord(CheckResult::Kind kind) {
    if (kind == CheckResult::Kind::Healthy) return "healthy";
    if (kind == CheckResult::Kind::Flawed) return "flawed";
    return kind == CheckResult::Kind::NoLink ? "no link" : "cancelled";
}

void Show(CommandContext& context, const ConsoleCheck& display, const CheckResult& result, const std::string& port) {
    if (!context.arguments.json) {
        context.host.out << '\n' << Wrapped(result.verdict, 0) << '\n';
        if (!result.todo.empty() && !display.HasShown(result.todo)) {
            context.host.out << Wrapped("-> " + result.todo, 0) << '\n';
        }
        return;
    }
    context.host.out << JsonText({{"port", port},
                                  {"result", KindWord(result.kind)},
                                  {"verdict", result.verdict},
                                  {"todo", result.todo},
                                  {"steps", display.Steps()},
                                  {"answers", FiguresJson(result)},
                                  {"board", BoardJson(result)}});
}

ExitCode Doctor(CommandContext& context) {
    LinkSession session(context);
    ConsoleCheck display(context);
    ConnectionCheck check(session.Link(), session.Port(),
                          SubjectOfCheck(session.PortName(), context.program.document.FilePath, context.program.folder),
                          context.host.clock, session.Turns(), display);
    return session.UseClosed([&] { check.Cancel(); },
                             [&] {
                                 const CheckResult result = session.Run(check.Run());
                                 context.progress.EndLine();
                                 Show(context, display, result, session.PortName());
                                 if (result.kind == CheckResult::Kind::Healthy) return ExitCode::Done;
                                 const bool noLink = result.kind == CheckResult::Kind::NoLink;
                                 return noLink ? ExitCode::LinkFailed : ExitCode::Refused;
                             });
}

} // namespace

const Command DoctorCommand{
    "doctor",
    "Check the connection step by step: what was seen, and what to do",
    [](CommandOptions& options) {
        options.Json();
        options.Port();
    },
    "  vantrelctl doctor --port 1\n"
    "  vantrelctl doctor --port rfc2217://10.0.0.5:4001 --speed 19200\n",
    Doctor,
    [] {
        return std::string(
            "Opens the port, asks for an answer at 9600 and at 19200 baud (behind socket:// once, at the\n"
            "server's own speed), tries 200 exchanges and reads what the board says of itself. Writes\n"
            "nothing to the board. Ends with 0 when all is well, 1 when the board answers slowly or with\n"
            "flaws, 3 when there is no link at the speed that is set.\n\n");
    }};

} // namespace vantrel
