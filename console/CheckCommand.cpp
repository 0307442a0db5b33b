// The command check: what is wrong with a set-up as a whole.
#include "console/Commands.h"
#include "console/ResultJson.h"
#include "console/SetupFiles.h"
#include "console/TextTable.h"
#include "document/SetupCheck.h"
#include "text/AsciiCase.h"

#include <ostream>

namespace vantrel {

namespace {

/// Under the names of files and commands.
Json PlaceJson(const Finding& finding) {
    if (finding.index) return NameJson(*finding.index);
    return {{"sequence", finding.sequence}, {"field", "NodeDescription"}};
}

ExitCode Check(CommandContext& context) {
    if (!OpenSetupFile(context, OtherVersion::Note)) return ExitCode::Refused;
    const std::vector<Finding> findings = CheckSetup(context.program.document.CurrentConfiguration);
    Json list = Json::array();
    std::vector<Row> rows;
    for (const Finding& finding : findings) {
        const std::string severity(SeverityName(finding.severity));
        list.push_back({{"severity", InLowerCase(severity)}});
        list.back().update(PlaceJson(finding));
        list.back().update(Json{{"text", finding.text}});
        rows.push_back({severity, finding.Place() + ":", finding.text});
    }
    context.host.out << (context.arguments.json ? JsonText(list) : TableText(rows, "lll"));
    if (findings.empty()) context.Say("Nothing was found. The rules see the set-up only, not the machine.");
    return findings.empty() ? ExitCode::Done : ExitCode::Refused;
}

} // namespace

const Command CheckCommand{"check", "Name what is wrong with a set-up as a whole: overlaps, ends, forgotten words",
                           [](CommandOptions& options) {
                               options.File("The set-up file to check");
                               options.Json();
                           },
                           "  vantrelctl check plant.sdt\n", Check};

} // namespace vantrel
