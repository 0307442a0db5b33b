// The demonstration: a sample plant on its way to a simulated board and back, as a user would send it.
#include "console/Commands.h"
#include "console/HostPorts.h"
#include "console/LinkSession.h"
#include "console/SetupFiles.h"
#include "console/Transfers.h"
#include "text/PathText.h"

#include <chrono>
#include <cstdint>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace vantrel {

namespace {

/// Downloads the document, forgets its values, and uploads them again.
ExitCode SendAndFetch(CommandContext& context, LinkSession& session) {
    Document& document = context.program.document;
    const ExitCode sent = SendDocument(context, session);
    if (sent != ExitCode::Done) return sent;
    context.Say("Uploading again, over the defaults.");
    document.CurrentConfiguration.Values = document.DefaultConfiguration.Values;
    return FetchDocument(context, session);
}

/// One decimal.
std::string SecondsText(MonotonicTime time) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(1) << std::chrono::duration<double>(time).count();
    return text.str();
}

ExitCode Demo(CommandContext& context) {
    const std::string sample = Utf8FromPath(context.program.folder.File("samples", "bottling-line.vtl"));
    context.Say("Importing the sample " + sample + ".");
    OpenTextFile(context, sample);
    const Configuration& record = context.program.document.CurrentConfiguration;
    const std::vector<std::int32_t> sent = record.Values;

    const std::string speed = std::to_string(DemonstrationSpeed);
    LinkSession session(context, {.kind = PortChoice::Kind::Demonstration}, speed);
    context.Say("Downloading to " + session.PortName() + " at " + speed + " baud.");
    const MonotonicTime start = context.host.clock.Now();
    const ExitCode end = session.Use(
        "No value was sent to the board.", [] { return true; }, [&] { return SendAndFetch(context, session); });
    if (end != ExitCode::Done) {
        context.Say("The demonstration did not come to its end.");
        return end;
    }
    const bool same = record.Values == sent;
    context.host.out << "Demonstration: " << ValueCount << " values downloaded to " << session.PortName()
                     << " and uploaded again, " << session.BytesExchanged() << " bytes on the line in "
                     << SecondsText(context.host.clock.Now() - start) << " s.\n"
                     << (same ? "Result: they came back as they were sent.\n"
                              : "Result: some of them came back otherwise than they were sent.\n");
    return same ? ExitCode::Done : ExitCode::Refused;
}

} // namespace

const Command DemoCommand{"demo", "Send a sample plant to a simulated board, fetch it back and compare",
                          [](CommandOptions& options) { options.Trace(); }, "  vantrelctl demo\n", Demo};

} // namespace vantrel
