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

struct Round {
    ExitCode end = ExitCode::Done;
    std::string board{};
    std::size_t bytes = 0;
    double seconds = 0;
};

void SaveAs(Document& document, const fs::path& file) {
    document.NameFile(file);
    document.Save({});
}

/// Downloads the document, forgets its values, and uploads them again.
Round SendAndFetch(CommandContext& context, const fs::path& sent, const fs::path& fetched) {
    Document& document = context.program.document;
    LinkSession session(context, {.kind = PortChoice::Kind::Demonstration}, DemonstrationSpeed);
    if (!session.TraceAccepted()) return {.end = ExitCode::Refused};
    const MonotonicTime start = context.host.clock.Now();
    context.Say("Downloading to " + session.PortName() + " at " + DemonstrationSpeed + " baud.");
    SaveAs(document, sent);
    session.Open();
    ExitCode end = session.Failed() ? ExitCode::LinkFailed : SendDocument(context, session);
    if (end == ExitCode::Done) {
        context.Say("Uploading into a second file, which has nothing but the descriptions and notations yet.");
        document.CurrentConfiguration.Values = document.DefaultConfiguration.Values;
        end = FetchDocument(context, session);
        SaveAs(document, fetched);
    }
    end = session.Close(end);
    const std::chrono::duration<double> seconds = context.host.clock.Now() - start;
    return {end, session.PortName(), session.BytesExchanged(), seconds.count()};
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

std::string Summary(const Round& round, const std::string& differences) {
    std::ostringstream text;
    text << "Demonstration: " << ValueCount << " values downloaded to " << round.board << " and uploaded again, "
         << round.bytes << " bytes on the line in " << std::fixed << std::setprecision(1) << round.seconds << " s.\n"
         << (differences.empty() ? std::string("Result: both set-up files hold the same record.")
                                 : "Result: the two set-up files differ in " + differences + ".")
         << '\n';
    return text.str();
}

} // namespace

ExitCode DemoCommand(CommandContext& context) {
    const fs::path sample = context.program.folder.File("samples", "bottling-line.vtl");
    const TemporaryFolder folder;
    const fs::path sent = folder.File("bottling-line.sdt");
    const fs::path fetched = folder.File("fetched.sdt");
    context.Say("Importing the sample " + Utf8FromPath(sample) + ".");
    OpenTextFile(context, Utf8FromPath(sample));

    const Round round = SendAndFetch(context, sent, fetched);
    if (round.end != ExitCode::Done) {
        context.Say("The demonstration did not come to its end.");
        return round.end;
    }
    const std::string differences = Differences(sent, fetched);
    context.host.out << Summary(round, differences);
    return differences.empty() ? ExitCode::Done : ExitCode::Refused;
}

} // namespace vantrel
