// The commands that read and write single values of the board's memory.
#include "console/AddressList.h"
#include "console/Commands.h"
#include "console/LinkSession.h"
#include "console/ResultJson.h"
#include "console/TransferReport.h"
#include "link/ReadingWalk.h"
#include "link/TargetAddress.h"
#include "text/NumberText.h"

#include <algorithm>
#include <ostream>
#include <utility>

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

void Keep(std::vector<NamedReading>& readings, const std::vector<std::string>& addresses,
          const std::optional<JudgedReading>& judged) {
    if (judged) readings.push_back({addresses.at(judged->tag), judged->reading});
}

/// Reads one address after the other, until the link fails or the user has had enough.
Task ReadAll(LinkSession& session, const std::vector<std::string>& addresses, std::vector<NamedReading>& readings) {
    ReadingWalk walk(session.Link());
    for (std::size_t i = 0; i < addresses.size(); ++i) {
        co_await session.Turns().Next();
        if (session.Failed() || session.Interrupted()) break;
        const auto judged = co_await walk.Read(addresses[i], i);
        Keep(readings, addresses, judged);
    }
    const auto last = co_await walk.End();
    Keep(readings, addresses, last);
}

std::string UnreadText(const NamedReading& read) {
    return read.address + (read.reading.HasLinkFailed() ? " could not be read: the link to the board failed."
                                                        : " was not read reliably, also when it was read again.");
}

/// Prints the values, and says which there are none of. True when all `addresses` have been read.
bool Report(CommandContext& context, const LinkSession& session, const std::vector<NamedReading>& readings,
            std::size_t addresses) {
    const bool json = context.arguments.json;
    if (json) context.host.out << ReadingsJson(readings);
    std::size_t read = 0;
    for (const NamedReading& each : readings) {
        const auto number = each.reading.Number();
        if (number && !json) context.host.out << each.address << ' ' << *number << '\n';
        if (number) ++read;
        if (!number && !(session.Interrupted() && each.reading.HasLinkFailed())) context.Say(UnreadText(each));
    }
    return read == addresses;
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

void ReportWrite(CommandContext& context, LinkSession& session, const WriteResult& result, const std::string& address) {
    const std::string& value = context.arguments.value;
    const std::string unknown = " What stands there now is not known; read " + address + " tells.";
    switch (result.outcome) {
    case WriteOutcome::Written:
        context.host.out << address << ' ' << WrittenNumber(value) << '\n';
        break;
    case WriteOutcome::Refused:
        context.Say(NothingWritten(address));
        break;
    case WriteOutcome::NotConfirmed:
        context.Say("The board did not confirm " + value + " at " + address + ", also when it was asked again." +
                    unknown);
        break;
    case WriteOutcome::LinkFailed:
        context.Say((session.Interrupted() ? "Cancelled before the board had confirmed "
                                           : "The link to the board failed before it confirmed ") +
                    value + " at " + address + "." + unknown);
        break;
    }
    context.SayIf(ReachedBesideText(address, result.repeated, session.Link().TakeMayHaveReached()));
}

} // namespace

ExitCode ReadCommand(CommandContext& context) {
    const std::vector<std::string> addresses = AddressesIn(context.arguments.addresses);
    LinkSession session(context);
    if (!session.TraceAccepted()) return Refuse(context, "Nothing was read.");
    session.Open();
    if (session.Failed()) return session.Close(ExitCode::LinkFailed);
    std::vector<NamedReading> readings;
    session.RunWhole([&] {
        readings.clear();
        session.Run(ReadAll(session, addresses, readings));
    });
    const bool allRead = Report(context, session, readings, addresses.size());
    if (session.Interrupted()) context.Say("Cancelled.");
    return session.Close(allRead && !session.Interrupted() ? ExitCode::Done : ExitCode::Refused);
}

ExitCode WriteCommand(CommandContext& context) {
    const std::string& address = context.arguments.address;
    RequireAddress(address);
    RequireNumber(context.arguments.value);
    LinkSession session(context);
    if (!session.TraceAccepted()) return Refuse(context, NothingWritten(address));
    session.Open();
    if (session.Failed()) return session.Close(ExitCode::Refused);
    const WriteResult result = session.Run(session.Link().RSWrite(address, context.arguments.value));
    ReportWrite(context, session, result, address);
    return session.Close(EndOf(result.outcome));
}

} // namespace vantrel
