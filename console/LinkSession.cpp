// What --port, --speed and --trace mean for the link.
#include "console/LinkSession.h"

#include "console/SetupFiles.h"
#include "console/TransferReport.h"
#include "document/FileQuestions.h"
#include "text/PathText.h"

#include <filesystem>
#include <system_error>
#include <utility>
#include <variant>

namespace vantrel {

namespace {

std::filesystem::path SupportFolder(const CommandContext& context) { return context.program.folder.SupportFolder(); }

PortRange AllowedPorts(const CommandContext& context) { return PortRangeOf(SupportFolder(context)); }

PortChoice ChoiceFor(const CommandContext& context) {
    auto choice = ReadPortChoice(context.arguments.port, AllowedPorts(context));
    if (const auto* problem = std::get_if<std::string>(&choice)) throw UsageError(*problem);
    return std::get<PortChoice>(std::move(choice));
}

bool IsSameFile(const std::filesystem::path& one, const std::filesystem::path& other) {
    std::error_code error;
    if (std::filesystem::equivalent(one, other, error)) return true;
    const auto full = [&](const std::filesystem::path& path) {
        return std::filesystem::weakly_canonical(std::filesystem::absolute(path, error), error);
    };
    return full(one) == full(other);
}

/// The trace must not go where the command's own file or its board is.
void RequireOwnTrace(const CommandContext& context) {
    const Arguments& arguments = context.arguments;
    if (!arguments.trace) return;
    if (IsStandardStream(*arguments.trace)) {
        if (!arguments.json) return;
        throw UsageError("--trace: standard output holds the JSON already. Name a file.");
    }
    const std::filesystem::path trace = PathFromUtf8(*arguments.trace);
    const auto refuse = [&](const std::string& what) {
        throw UsageError("--trace: \"" + *arguments.trace + "\" is " + what + ". Name another file.");
    };
    if (trace.empty()) throw UsageError("--trace: the name is empty.");
    for (const std::filesystem::path& file : SetupFilesMeant(arguments.file)) {
        if (IsSameFile(trace, file)) refuse("the set-up file itself");
    }
    if (IsSameFile(trace, PathFromUtf8(arguments.port))) refuse("the port itself");
}

} // namespace

LinkSession::LinkSession(CommandContext& context)
    : context_(context), turns_(context.host.clock),
      link_(context.program.CommSettingsFile(), AllowedPorts(context), context.host.clock, context.dialogs, turns_) {
    const PortChoice choice = ChoiceFor(context);
    RequireOwnTrace(context);
    port_ = context.host.reachBoard(choice, SupportFolder(context));
    link_.SetPortOverride(OverrideFor(choice, context.arguments.speed));
}

LinkSession::LinkSession(CommandContext& context, const PortChoice& choice, const std::string& speed)
    : context_(context), port_(context.host.reachBoard(choice, SupportFolder(context))), turns_(context.host.clock),
      link_(context.program.CommSettingsFile(), AllowedPorts(context), context.host.clock, context.dialogs, turns_) {
    link_.SetPortOverride({.number = {}, .speed = speed, .leaveFileAlone = true});
}

bool LinkSession::TraceAccepted() {
    if (!context_.arguments.trace || IsStandardStream(*context_.arguments.trace)) return true;
    const std::filesystem::path trace = PathFromUtf8(*context_.arguments.trace);
    return !HoldsSomethingElse(trace) || context_.dialogs.Show(ReplaceQuestion(trace)) == MessageAnswer::Yes;
}

void LinkSession::Open() {
    if (const auto& trace = context_.arguments.trace) {
        IsStandardStream(*trace) ? trace_.WriteTo(context_.host.out) : trace_.WriteTo(*trace);
    }
    link_.SetTrafficLog(&trace_);
    interrupted_ = &context_.host.catchInterrupts();
    turns_.HeedInterrupts(
        *interrupted_, [this] { BeginToCancel(); }, [this] { GiveUpSilence(); });
    context_.dialogs.HeedInterrupts(*interrupted_, [this] { turns_.Look(); });
    open_ = true;
    Run(link_.OpenRSComm(*port_.port));
    cameOnline_ = link_.OnlineMode();
    if (cameOnline_) return;
    context_.Say(Interrupted() ? "Cancelled before the board had answered."
                               : port_.name + ": there is no link to a board.");
}

LinkSession::~LinkSession() {
    CloseLink();
    context_.dialogs.LookNoMore();
}

void LinkSession::BeginToCancel() {
    context_.Say("Cancelling...");
    link_.GiveUp();
}

void LinkSession::GiveUpSilence() {
    // A wait for quiet is left alone: what comes behind it would be out of step.
    if (link_.AwaitingSince()) link_.GiveUp();
}

ExitCode LinkSession::Close(ExitCode end) {
    const bool failed = Failed();
    CloseLink();
    context_.SayIf(ReachedBesideText("the change from writing to reading", false, link_.TakeMayHaveReached()));
    const std::string traceProblem = trace_.Finish();
    if (!traceProblem.empty()) context_.Say(traceProblem);
    if (failed) return ExitCode::LinkFailed;
    return traceProblem.empty() ? end : ExitCode::FileError;
}

void LinkSession::CloseLink() {
    if (!open_) return;
    open_ = false;
    // What there was to cancel has ended.
    turns_.TellNoMore();
    Run(link_.CloseRSComm());
}

} // namespace vantrel
