// The commands that read and write single values of the board's memory.
#include "console/AddressList.h"
#include "console/Commands.h"
#include "console/LinkSession.h"
#include "console/ResultJson.h"
#include "document/TransferTexts.h"
#include "link/ReadingWalk.h"
#include "link/TargetAddress.h"
#include "text/NumberText.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace vantrel {

namespace {

/// What a person types between and behind digits is no part of the number.
void RequireNumber(const std::string& value) {
    if (value.find_first_not_of(" %,.") == std::string::npos) {
        throw UsageError("The value \"" + value + "\" is empty. Write a number in decimal.");
    }
}

/// A reading and the address that it is of.
struct NamedReading {
    std::string address;
    Reading reading;
};

/// Where a setting stands in the record; nothing for any other word.
std::optional<std::size_t> SettingAt(const std::string& address) {
    const TargetAddress parsed = ParseAddress(address);
    for (std::size_t index = 0; index < ValueCount; ++index) {
        if (ParseAddress(DefaultTargetAddress(index)) == parsed) return index;
    }
    return std::nullopt;
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

std::string WhyUnread(const NamedReading& read) {
    return read.address + (read.reading.HasLinkFailed() ? " could not be read: the link to the board failed."
                                                        : " was not read reliably, also when it was read again.");
}

/// Prints the values, and says which there are none of. True when all `addresses` have been read.
bool Report(CommandContext& context, const LinkSession& session, const std::vector<NamedReading>& readings,
            std::size_t addresses) {
    Json list = Json::array();
    std::string lines;
    std::size_t read = 0;
    for (const NamedReading& each : readings) {
        Json json{{"address", each.address}};
        if (const auto index = SettingAt(each.address)) json.update(NameJson(*index));
        const auto number = each.reading.Number();
        json["value"] = ValueJson(number);
        list.push_back(json);
        if (number) lines += each.address + " " + std::to_string(*number) + "\n";
        if (number) ++read;
        if (!number && !(session.Interrupted() && each.reading.HasLinkFailed())) context.Say(WhyUnread(each));
    }
    context.host.out << (context.arguments.json ? JsonText(list) : lines);
    return read == addresses;
}

/// The number that the digits of an accepted value make.
std::string WrittenNumber(std::string value) {
    std::erase_if(value, [](char c) { return c < '0' || c > '9'; });
    return std::to_string(LeadingInteger(value).value());
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

ExitCode Read(CommandContext& context) {
    const std::vector<std::string> addresses = AddressesIn(context.arguments.addresses);
    LinkSession session(context);
    return session.Use(
        "Nothing was read.", [] { return true; },
        [&] {
            std::vector<NamedReading> readings;
            session.RunWhole([&] {
                readings.clear();
                session.Run(ReadAll(session, addresses, readings));
            });
            const bool all = Report(context, session, readings, addresses.size());
            return session.EndOfReading(all);
        });
}

ExitCode Write(CommandContext& context) {
    const std::string& address = context.arguments.address;
    RequireAddress(address);
    RequireNumber(context.arguments.value);
    LinkSession session(context);
    return session.Use(
        NothingWritten(address), [] { return true; },
        [&] {
            const WriteResult result = session.Run(session.Link().RSWrite(address, context.arguments.value));
            ReportWrite(context, session, result, address);
            return result.Confirmed() ? ExitCode::Done : ExitCode::Refused;
        });
}

std::string AddressHelp() {
    return "Addresses: B8176 a byte, B8176.3 one of its bits (0 to 7), W16384 a word, D100 a double\n"
           "word, F13 a flag, 1F40H a byte by its hexadecimal address. The status stack address of\n"
           "the board is W6400; field k (0 to 6) of sequence s is W followed by 16384 + 512 s + 2 k.\n"
           "\n";
}

std::string ReadHelp() {
    return AddressHelp() + "A range, W16384-W16396, is all words from the first to the second; likewise bytes, double\n"
                           "words, flags, and bits of a byte. A value that the board did not give clearly, twice, is\n"
                           "not printed, but named as not read reliably.\n"
                           "\n";
}

} // namespace

const Command ReadCommand{"read",
                          "Read values from the board's memory",
                          [](CommandOptions& options) {
                              options.Place("ADDRESS", options.to.addresses,
                                            "Addresses in the board's memory, or ranges of them");
                              options.Json();
                              options.Port();
                          },
                          "  vantrelctl read W6400 B8176 --port 1\n"
                          "  vantrelctl read W16384-W16396 --port 1 --json\n",
                          Read,
                          ReadHelp};

const Command WriteCommand{"write",
                           "Write one value to the board's memory",
                           [](CommandOptions& options) {
                               options.Place("ADDRESS", options.to.address, "An address in the board's memory");
                               options.Place("VALUE", options.to.value, "The number to write, in decimal");
                               options.Port();
                           },
                           "  vantrelctl write W6400 100 --port 1\n",
                           Write,
                           AddressHelp};

} // namespace vantrel
