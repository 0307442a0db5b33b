// The commands that read and write single values of the board's memory.
#include "console/Commands.h"
#include "console/LinkSession.h"
#include "link/TargetAddress.h"
#include "text/NumberText.h"

#include <algorithm>
#include <ostream>

namespace vantrel {

namespace {

void RequireAddress(const std::string& address) {
    if (const std::string problem = AddressProblem(address); !problem.empty()) throw UsageError(problem);
}

/// What a person types between and behind digits is no part of the number.
void RequireNumber(const std::string& value) {
    if (value.find_first_not_of(" %,.") == std::string::npos) {
        throw UsageError("The value \"" + value + "\" is empty. Write a number in decimal.");
    }
}

/// Prints the value, or says why there is none. False when there is none.
bool ReadOne(CommandContext& context, LinkSession& session, const std::string& address) {
    const std::string value = session.Link().RSRead(address);
    if (!session.Link().ReadFailed()) {
        // No next value's echo would show it.
        if (session.Link().SurplusFollows()) {
            context.Say(address + " was not read reliably: the board sent more than it was asked for. Read it again.");
            return false;
        }
        context.host.out << address << ' ' << value << '\n' << std::flush;
        return true;
    }
    context.Say(address + " could not be read: " +
                (session.Link().LinkFailed() ? "the link to the board failed." : "the board's answer did not fit."));
    return false;
}

/// The number that the digits of an accepted value make.
std::string WrittenNumber(std::string value) {
    std::erase_if(value, [](char c) { return c < '0' || c > '9'; });
    return std::to_string(LeadingInteger(value).value_or(0));
}

ExitCode EndOf(WriteOutcome outcome) {
    switch (outcome) {
    case WriteOutcome::Written:
        return ExitCode::Done;
    case WriteOutcome::LinkFailed:
        return ExitCode::LinkFailed;
    case WriteOutcome::Refused:
    case WriteOutcome::NotConfirmed:
        break;
    }
    return ExitCode::Refused;
}

std::string NothingWritten(const std::string& address) { return "Nothing was written to " + address + "."; }

void ReportWrite(CommandContext& context, WriteOutcome outcome, const std::string& address) {
    const std::string& value = context.arguments.value;
    switch (outcome) {
    case WriteOutcome::Written:
        context.host.out << address << ' ' << WrittenNumber(value) << '\n';
        break;
    case WriteOutcome::Refused:
        context.Say(NothingWritten(address));
        break;
    case WriteOutcome::NotConfirmed:
        context.Say("The board did not confirm " + value + " at " + address +
                    ", also when it was sent again. What stands there now is not known; read " + address + " tells.");
        break;
    case WriteOutcome::LinkFailed:
        context.Say("The link to the board failed before it confirmed " + value + " at " + address + ".");
        break;
    }
}

} // namespace

ExitCode ReadCommand(CommandContext& context) {
    for (const std::string& address : context.arguments.addresses)
        RequireAddress(address);
    LinkSession session(context);
    if (!session.TraceAccepted()) return Refuse(context, "Nothing was read.");
    session.Open();
    bool allRead = true;
    for (const std::string& address : context.arguments.addresses) {
        if (session.Failed() || session.Interrupted()) break;
        allRead = ReadOne(context, session, address) && allRead;
    }
    const bool cancelled = session.Interrupted();
    if (cancelled) context.Say("Cancelled.");
    return session.Close(allRead && !cancelled ? ExitCode::Done : ExitCode::Refused);
}

ExitCode WriteCommand(CommandContext& context) {
    const std::string& address = context.arguments.address;
    RequireAddress(address);
    RequireNumber(context.arguments.value);
    LinkSession session(context);
    if (!session.TraceAccepted()) return Refuse(context, NothingWritten(address));
    session.Open();
    if (session.Failed()) return session.Close(ExitCode::Refused);
    const WriteOutcome outcome = session.Link().RSWrite(address, context.arguments.value);
    ReportWrite(context, outcome, address);
    return session.Close(EndOf(outcome));
}

} // namespace vantrel
