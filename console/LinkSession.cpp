// What --port, --speed and --trace mean for the link.
#include "console/LinkSession.h"

#include "console/SetupFiles.h"
#include "document/FileQuestions.h"
#include "document/TransferTexts.h"
#include "text/PathText.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace vantrel {

namespace {

std::filesystem::path SupportFolder(const CommandContext& context) { return context.program.folder.SupportFolder(); }

PortRange AllowedPorts(const CommandContext& context) { return PortRangeOf(SupportFolder(context)); }

/// The trace must not go where the command's own file or its board is.
void RequireOwnTrace(const CommandContext& context) {
    const Arguments& arguments = context.arguments;
    if (arguments.decode && !arguments.trace)
        throw UsageError("--decode: there is no trace. Name its file with --trace.");
    if (!arguments.trace) return;
    if (IsStandardStream(*arguments.trace)) {
        if (!arguments.json) return;
        throw UsageError("--trace: standard output holds the JSON already. Name a file.");
    }
    const std::filesystem::path trace = PathFromUtf8(*arguments.trace);
    const auto refuse = [&](const std::string& what) {
        throw UsageError("--trace: \"" + *arguments.trace + "\" is " + what + ". Name another file.");
    };
    for (const std::filesystem::path& file : SetupFilesMeant(arguments.file)) {
        if (IsSameFile(trace, file)) refuse("the set-up file itself");
    }
    if (!arguments.port.empty() && IsSameFile(trace, PathFromUtf8(arguments.port))) refuse("the port itself");
}

} // namespace

LinkSession::LinkSession(CommandContext& context)
    : LinkSession(context, ReadPortChoice(context.arguments.port, AllowedPorts(context)), context.arguments.speed) {}

LinkSession::LinkSession(CommandContext& context, const PortChoice& choice, const std::optional<std::string>& speed)
    : context_(context), turns_(context.host.clock),
      link_(context.program.CommSettingsFile(), AllowedPorts(context), context.host.clock, context.dialogs, turns_) {
    RequireOwnTrace(context);
    port_ = context.host.reachBoard(choice, SupportFolder(context));
    link_.SetPortOverride(OverrideFor(choice, speed));
}

ExitCode LinkSession::Use(const std::string& nothing, const std::function<bool()>& agreed,
                          const std::function<ExitCode()>& work) {
    if (!TraceAccepted() || !agreed()) return Refuse(context_, nothing);
    Open();
    return Close(Failed() ? Refuse(context_, nothing) : work());
}

ExitCode LinkSession::EndOfReading(bool complete) {
    if (Interrupted()) return Refuse(context_, "Cancelled.");
    if (Failed()) return Refuse(context_, "The link to the board failed before everything was read.");
    if (!complete) return Refuse(context_, "Some of this was not read reliably. Run the command again.");
    return ExitCode::Done;
}

bool LinkSession::TraceAccepted() {
    if (!context_.arguments.trace || IsStandardStream(*context_.arguments.trace)) return true;
    const std::filesystem::path trace = PathFromUtf8(*context_.arguments.trace);
    return !HoldsSomethingElse(trace) || context_.dialogs.Show(ReplaceQuestion(trace)) == MessageAnswer::Yes;
}

ExitCode LinkSession::UseClosed(const std::function<void()>& cancel, const std::function<ExitCode()>& work) {
    if (!TraceAccepted()) return Refuse(context_, "Nothing was sent to the board.");
    BeginTrace();
    interrupted_ = &context_.host.catchInterrupts();
    turns_.HeedInterrupts(
        *interrupted_, [this] { context_.Say("Cancelling..."); }, cancel);
    return EndTrace(work());
}

void LinkSession::BeginTrace() {
    if (context_.arguments.decode) trace_.Decode();
    if (context_.arguments.trace) trace_.WriteTo(*context_.arguments.trace, context_.host.out);
    link_.SetTrafficLog(&trace_);
}

ExitCode LinkSession::EndTrace(ExitCode end) {
    const std::string problem = trace_.Finish();
    context_.SayIf(problem);
    const bool linkFailed = end == ExitCode::LinkFailed;
    return problem.empty() || linkFailed ? end : ExitCode::FileError;
}

void LinkSession::Open() {
    BeginTrace();
    interrupted_ = &context_.host.catchInterrupts();
    const auto beginToCancel = [this] {
        context_.Say("Cancelling...");
        link_.GiveUp();
    };
    const auto giveUpSilence = [this] {
        // A wait for quiet is left alone: what comes behind it would be out of step.
        if (link_.AwaitingSince()) link_.GiveUp();
    };
    turns_.HeedInterrupts(*interrupted_, beginToCancel, giveUpSilence);
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

ExitCode LinkSession::Close(ExitCode end) {
    const bool failed = Failed();
    CloseLink();
    context_.SayIf(ReachedBesideText("the change from writing to reading", false, link_.TakeMayHaveReached()));
    return EndTrace(failed ? ExitCode::LinkFailed : end);
}

void LinkSession::CloseLink() {
    if (!open_) return;
    open_ = false;
    // What there was to cancel has ended.
    turns_.TellNoMore();
    Run(link_.CloseRSComm());
}

} // namespace vantrel
