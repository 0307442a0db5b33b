// The demonstration: a sample plant on its way to a simulated board and back, as a user would send it.
#include "console/Commands.h"
#include "console/LinkSession.h"
#include "console/SetupFiles.h"
#include "console/Transfers.h"
#include "document/SetupFile.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "text/PathText.h"

#include <algorithm>
#include <filesystem>
#include <iomanip>
#include <ostream>
#include <random>
#include <sstream>
#include <system_error>

namespace vantrel {

namespace {

namespace fs = std::filesystem;

constexpr const char* DemonstrationSpeed = "19200";

/// A new folder of the host's temporary ones, gone with everything in it when the demonstration ends.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        do {
            path_ = fs::temp_directory_path() / ("vantrel-demo-" + std::to_string(random()));
        } while (!fs::create_directory(path_));
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }

    [[nodiscard]] fs::path File(const std::string& name) const { return path_ / name; }

private:
    fs::path path_;
};

void SaveAs(Document& document, const fs::path& file) {
    document.NameFile(file);
    document.Save({});
}

/// Downloads the document, forgets its values, and uploads them again.
ExitCode SendAndFetch(CommandContext& context, LinkSession& session, const fs::path& sent, const fs::path& fetched) {
    Document& document = context.program.document;
    SaveAs(document, sent);
    const ExitCode end = SendDocument(context, session);
    if (end != ExitCode::Done) return end;
    context.Say("Uploading into a second file, which has nothing but the descriptions and notations yet.");
    document.CurrentConfiguration.Values = document.DefaultConfiguration.Values;
    const ExitCode back = FetchDocument(context, session);
    SaveAs(document, fetched);
    return back;
}

/// Which parts of two set-up files differ, as "values, descriptions"; empty when nothing does but the dates.
std::string Differences(const fs::path& one, const fs::path& other) {
    const Configuration a = ParseSetupFile(ReadWholeFile(one));
    const Configuration b = ParseSetupFile(ReadWholeFile(other));
    std::string parts;
    const auto compare = [&](bool same, const char* part) {
        if (!same) parts += (parts.empty() ? "" : ", ") + std::string(part);
    };
    compare(a.CreatorVersion == b.CreatorVersion, "program version");
    compare(a.TargetAddresses == b.TargetAddresses, "target addresses");
    compare(a.Values == b.Values, "values");
    compare(a.NodeDescriptions == b.NodeDescriptions, "descriptions");
    compare(a.AddressTypes == b.AddressTypes, "notations");
    return parts;
}

/// One decimal.
std::string SecondsText(MonotonicTime time) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(1) << std::chrono::duration<double>(time).count();
    return text.str();
}

ExitCode Demo(CommandContext& context) {
    const fs::path sample = context.program.folder.File("samples", "bottling-line.vtl");
    const TemporaryFolder folder;
    const fs::path sent = folder.File("bottling-line.sdt");
    const fs::path fetched = folder.File("fetched.sdt");
    context.Say("Importing the sample " + Utf8FromPath(sample) + ".");
    OpenTextFile(context, Utf8FromPath(sample));

    LinkSession session(context, {.kind = PortChoice::Kind::Demonstration}, DemonstrationSpeed);
    context.Say("Downloading to " + session.PortName() + " at " + DemonstrationSpeed + " baud.");
    const MonotonicTime start = context.host.clock.Now();
    const ExitCode end = session.Use(
        "No value was sent to the board.", [] { return true; },
        [&] { return SendAndFetch(context, session, sent, fetched); });
    if (end != ExitCode::Done) {
        context.Say("The demonstration did not come to its end.");
        return end;
    }
    const std::string differences = Differences(sent, fetched);
    context.host.out << "Demonstration: " << ValueCount << " values downloaded to " << session.PortName()
                     << " and uploaded again, " << session.BytesExchanged() << " bytes on the line in "
                     << SecondsText(context.host.clock.Now() - start) << " s.\n"
                     << (differences.empty() ? "Result: both set-up files hold the same record."
                                             : "Result: the two set-up files differ in " + differences + ".")
                     << '\n';
    return differences.empty() ? ExitCode::Done : ExitCode::Refused;
}

} // namespace

const Command DemoCommand{"demo", "Send a sample plant to a simulated board, fetch it back and compare",
                          [](CommandOptions& options) { options.Trace(); }, "  vantrelctl demo\n", Demo};

} // namespace vantrel
