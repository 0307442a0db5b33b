// The command that shows what the sequences do on the board: the status of all of them as the editor's status tab has
// it, or one of them as the communication view has it; once, or watched for changes. Writes nothing to the board.
#include "console/Commands.h"
#include "console/LinkSession.h"
#include "console/ResultJson.h"
#include "console/SetupFiles.h"
#include "console/StatusWatch.h"
#include "console/TextTable.h"
#include "document/StatusTab.h"
#include "link/Reading.h"
#include "link/StatusAdvice.h"
#include "link/TargetMap.h"
#include "text/NumberText.h"
#include "views/History.h"
#include "views/SequenceMonitor.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace vantrel {

namespace {

struct SequenceStatus {
    std::string node = UnreadText;
    std::string status = UnreadText; ///< "02: Comm to Node OK"

    [[nodiscard]] bool IsKnown() const { return node != UnreadText && status != UnreadText; }
    [[nodiscard]] std::optional<std::uint16_t> Code() const { return Word(LeadingHexNumber(status)); }
    [[nodiscard]] SequenceHealth Health() const { return HealthOf(Code(), Word(WholeNumber(node))); }
    /// Disabled although its code says that it fails.
    [[nodiscard]] bool FailsWithoutNode() const {
        return Health() == SequenceHealth::Disabled && HealthOf(Code(), {}) == SequenceHealth::Failing;
    }

private:
    template <typename Number> static std::optional<std::uint16_t> Word(std::optional<Number> number) {
        return number ? std::optional(static_cast<std::uint16_t>(*number)) : std::nullopt;
    }
};

Json StatusJson(std::size_t sequence, const SequenceStatus& status) {
    Json json{{"sequence", sequence},
              {"NodeNumber", ValueJson(status.node)},
              {"statusCode", ValueJson(status.Code())},
              {"status", ValueJson(status.status)},
              {"state", HealthName(status.Health())}};
    if (status.Health() != SequenceHealth::Failing) return json;
    json["cause"] = AdviceOn(*status.Code()).cause;
    json["remedy"] = AdviceOn(*status.Code()).remedy;
    return json;
}

/// What to look at, for each code with which sequences fail.
std::string AdviceOf(const std::vector<SequenceStatus>& sequences) {
    std::map<std::uint16_t, std::string> failing;
    for (std::size_t i = 0; i < sequences.size(); ++i) {
        if (sequences[i].Health() != SequenceHealth::Failing) continue;
        std::string& list = failing[*sequences[i].Code()];
        list += (list.empty() ? "" : ", ") + std::to_string(i);
    }
    std::string text;
    for (const auto& [code, list] : failing) {
        const bool one = list.find(',') == std::string::npos;
        text += "\n" + StatusDisplay(std::to_string(code)) + (one ? " (sequence " : " (sequences ") + list + ")\n  " +
                std::string(AdviceOn(code).cause) + "\n  " + std::string(AdviceOn(code).remedy) + "\n";
    }
    return text;
}

/// Why nothing is said of sequences beside whose codes one would expect it.
std::string NodelessNote(const std::vector<SequenceStatus>& sequences) {
    std::string before;
    std::string last;
    for (std::size_t i = 0; i < sequences.size(); ++i) {
        if (!sequences[i].FailsWithoutNode()) continue;
        if (!last.empty()) before += (before.empty() ? "" : ", ") + last;
        last = std::to_string(i);
    }
    if (last.empty()) return "";
    if (before.empty()) return "\nSequence " + last + " has node 0: it counts as disabled.\n";
    return "\nSequences " + before + " and " + last + " have node 0: they count as disabled.\n";
}

/// Keeps the rows of the status tab until they are printed.
class StatusTable final : public StatusTabDisplay {
public:
    explicit StatusTable(const LinkSession& session) : session_(session) {}

    [[nodiscard]] bool StatusWanted() const override { return !session_.Interrupted(); }
    [[nodiscard]] bool RowVisible(int) const override { return true; }
    void ShowNode(int row, const std::string& text) override { RowOf(row).node = text; }
    void ShowStatus(int row, const std::string& text) override { RowOf(row).status = text; }

    /// Whether both values of every sequence have been read.
    [[nodiscard]] bool Complete() const {
        return rows_.size() == SequenceCount && std::ranges::all_of(rows_, &SequenceStatus::IsKnown);
    }
    /// As JSON, or as a table; up to the last row of which something has been read.
    void Print(std::ostream& out, bool json) const {
        Json list = Json::array();
        std::vector<Row> table{{"Seq #", "Node #", "Communication Status"}};
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            list.push_back(StatusJson(i, rows_[i]));
            table.push_back({std::to_string(i), rows_[i].node, rows_[i].status});
        }
        if (!rows_.empty())
            out << (json ? JsonText(list) : TableText(table, "rrl") + AdviceOf(rows_) + NodelessNote(rows_));
    }
    [[nodiscard]] bool AnyFails() const {
        return std::ranges::any_of(rows_,
                                   [](const SequenceStatus& one) { return one.Health() == SequenceHealth::Failing; });
    }

private:
    SequenceStatus& RowOf(int row) {
        rows_.resize(std::max(rows_.size(), static_cast<std::size_t>(row)));
        return rows_.at(static_cast<std::size_t>(row) - 1);
    }

    const LinkSession& session_;
    std::vector<SequenceStatus> rows_;
};

/// Keeps what the communication view shows of one sequence until it is printed. Of the data words those count that the
/// sequence moves.
class SequenceReport final : public SequenceDisplay {
public:
    explicit SequenceReport(const LinkSession& session) : session_(session) {}

    [[nodiscard]] bool Active() const override { return !session_.Interrupted(); }
    [[nodiscard]] bool RowVisible(int row) const override { return row <= Rows(); }
    void ShowDescription(const std::string& text) override { description_ = text; }
    void ShowNodeNumber(const std::string& text) override { status_.node = text; }
    void ShowSetting(SettingsGrid grid, int row, const std::string& text) override {
        ways_.at(grid == SettingsGrid::Send ? 0 : 1).settings.at(static_cast<std::size_t>(row) - 1) = text;
    }
    void ShowStatus(const std::string& text) override { status_.status = text; }
    void ShowDataWord(int row, DataDirection column, const std::string& text) override {
        ways_.at(column == DataDirection::Send ? 0 : 1).data.at(static_cast<std::size_t>(row) - 1) = text;
    }
    void ClearData() override {
        for (Way& way : ways_)
            way.data.fill(UnreadText);
    }

    /// Whether everything that belongs to the sequence has been read.
    [[nodiscard]] bool Complete() const { return status_.IsKnown() && std::ranges::all_of(ways_, &Way::IsComplete); }
    [[nodiscard]] bool Fails() const { return status_.Health() == SequenceHealth::Failing; }
    void Print(std::ostream& out, std::size_t sequence, bool json) const;

private:
    /// Sending, or receiving.
    struct Way {
        Way(SequenceField field, const char* dataName) : first(field), dataMember(dataName) {
            settings.fill(UnreadText);
            data.fill(UnreadText);
        }
        /// 0..120, whatever the board holds as the count.
        [[nodiscard]] int Words() const {
            return std::clamp(LeadingInteger(settings.front()).value_or(0), 0, DataWordCount);
        }
        [[nodiscard]] std::vector<std::string> MovedData() const { return {data.begin(), data.begin() + Words()}; }
        [[nodiscard]] bool IsComplete() const {
            return std::ranges::count(settings, UnreadText) + std::ranges::count(MovedData(), UnreadText) == 0;
        }

        SequenceField first; ///< Of the three that belong to it.
        const char* dataMember;
        std::array<std::string, 3> settings;
        std::array<std::string, DataWordCount> data;
    };

    [[nodiscard]] int Rows() const { return std::max(ways_[0].Words(), ways_[1].Words()); }

    const LinkSession& session_;
    std::string description_ = UnreadText;
    SequenceStatus status_;
    std::array<Way, 2> ways_{Way{SequenceField::SendWordCount, "sendData"},
                             Way{SequenceField::ReceiveWordCount, "receiveData"}};
};

void SequenceReport::Print(std::ostream& out, std::size_t sequence, bool json) const {
    if (status_.node == UnreadText && status_.status == UnreadText) return;
    Json result = StatusJson(sequence, status_);
    result["description"] = ValueJson(description_);
    std::vector<Row> settings(ways_[0].settings.size());
    std::vector<Row> data{{"Word", "Send Data", "Receive Data"}};
    for (int row = 1; row <= Rows(); ++row)
        data.push_back({std::to_string(row)});
    for (const Way& way : ways_) {
        for (std::size_t i = 0; i < settings.size(); ++i) {
            const FieldDescription& field = FieldTable().at(static_cast<std::size_t>(way.first) + i);
            result[std::string(field.name)] = ValueJson(way.settings.at(i));
            settings[i].insert(settings[i].end(), {std::string(field.heading), way.settings.at(i)});
        }
        Json& words = result[way.dataMember] = Json::array();
        for (std::size_t i = 1; i < data.size(); ++i) {
            const bool moved = i <= static_cast<std::size_t>(way.Words());
            data[i].push_back(moved ? way.data.at(i - 1) : "");
            if (moved) words.push_back(ValueJson(way.data.at(i - 1)));
        }
    }
    std::vector<Row> head{{"Sequence Number:", std::to_string(sequence)},
                          {"Node Number:", status_.node},
                          {"Description:", description_},
                          {"Status:", status_.status}};
    if (const auto code = status_.Code(); code && *code != OkCode) {
        head.push_back({"Cause:", std::string(AdviceOn(*code).cause)});
        head.push_back({"Remedy:", std::string(AdviceOn(*code).remedy)});
    }
    const std::string words = Rows() > 0 ? "\n" + TableText(data, "rrr") : "";
    out << (json ? JsonText(result) : TableText(head, "ll") + "\n" + TableText(settings, "llll") + words);
}

/// How a reading ends when everything is as it should be with it: by what was asked to be checked.
ExitCode EndOfStatus(CommandContext& context, LinkSession& session, bool complete, bool fails) {
    const ExitCode end = session.EndOfReading(complete);
    if (end != ExitCode::Done || !context.arguments.check || !fails) return end;
    return Refuse(context, "At least one sequence is failing.");
}

ExitCode ShowAll(CommandContext& context, LinkSession& session) {
    const SequenceAddresses nodes = NodeNumberAddressTable();
    const SequenceAddresses statuses = StatusWordAddressTable();
    std::optional<StatusTable> table;
    History log(context.host.clock);
    StatusSurvey survey(log);
    session.RunWhole([&] {
        table.emplace(session);
        session.Run(RefreshStatusTab(*table, survey, nodes, statuses, session.Link(), session.Turns()));
    });
    table->Print(context.host.out, context.arguments.json);
    return EndOfStatus(context, session, table->Complete(), table->AnyFails());
}

ExitCode ShowOne(CommandContext& context, LinkSession& session, std::size_t sequence) {
    const auto selected = static_cast<std::int16_t>(sequence);
    std::optional<SequenceReport> report;
    session.RunWhole([&] {
        report.emplace(session);
        SequenceMonitor monitor(context.program.document.CurrentConfiguration, session.Link(), session.Turns(),
                                selected, *report);
        session.Run(monitor.RefreshSettings(SettingsBaseOf(selected)));
        session.Run(monitor.RefreshStatusAndData());
    });
    report->Print(context.host.out, sequence, context.arguments.json);
    return EndOfStatus(context, session, report->Complete(), report->Fails());
}

ExitCode Status(CommandContext& context) {
    const Arguments& asked = context.arguments;
    const bool one = asked.sequence.has_value();
    const std::size_t sequence = one ? SequenceNumber(*asked.sequence) : 0;
    if (!asked.file.empty() && !one) {
        throw UsageError("--file: the status of all sequences needs no set-up file. Name one by --sequence.");
    }
    if (asked.watch && (one || !asked.file.empty())) {
        throw UsageError("--watch: it is all sequences that are watched. Leave out --sequence and --file.");
    }
    if (asked.watchFor && !asked.watch) throw UsageError("--for: say --watch, too.");
    LinkSession session(context);
    if (asked.watch) {
        StatusWatch watch(context, session);
        return session.Use(
            "Nothing was read.", [] { return true; }, [&] { return watch.Run(); });
    }
    return session.Use(
        "Nothing was read.", [&] { return asked.file.empty() || OpenSetupFile(context, OtherVersion::Note); },
        [&] { return one ? ShowOne(context, session, sequence) : ShowAll(context, session); });
}

} // namespace

const Command StatusCommand{
    "status", "Show whether the sequences communicate, or one of them with its data words",
    [](CommandOptions& options) {
        options.Option("--sequence", "N", options.to.sequence, "One sequence: its settings, status and data words");
        options.Option("--file", "FILE", options.to.file,
                       "Take the sequence's description, and whether its addresses are shown\n"
                       "in hexadecimal, from this set-up file");
        options.Flag("--watch", options.to.watch,
                     "Go on and print every change with its time, one a line, until\n"
                     "interrupted; --json: one object a line");
        options.Option("--for", "TIME", options.to.watchFor, "End watching after this time: 90s, 10m, 8h");
        options.Flag("--check", options.to.check,
                     "End with 1 when a sequence fails, or has failed while it was watched");
        options.Json();
        options.Port();
    },
    "  vantrelctl status --port 1\n"
    "  vantrelctl status --port 1 --sequence 3 --file plant.sdt\n"
    "  vantrelctl status --port 1 --watch --for 8h --json >night.jsonl\n"
    "  vantrelctl status --port 1 --check || echo something fails\n",
    Status};

} // namespace vantrel
