// The command that shows what the sequences do on the board: the status of all of them as the editor's status tab has
// it, or one of them as the communication view has it. Writes nothing to the board.
#include "console/Commands.h"
#include "console/LinkSession.h"
#include "console/PrintableText.h"
#include "console/ResultJson.h"
#include "console/SetupFiles.h"
#include "document/StatusTab.h"
#include "link/TargetMap.h"
#include "text/NumberText.h"
#include "views/SequenceMonitor.h"

#include <algorithm>
#include <array>
#include <iomanip>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace vantrel {

namespace {

constexpr const char* Unread = "-";

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
        return rows_.size() == SequenceCount && std::none_of(rows_.begin(), rows_.end(), [](const auto& row) {
                   return row.node == Unread || row.status == Unread || row.status == NoStatus;
               });
    }
    /// As JSON, or as a table; up to the last row of which something has been read.
    void Print(std::ostream& out, bool json) const {
        if (rows_.empty()) return;
        if (json) {
            out << StatusJson(rows_);
            return;
        }
        out << "Seq #  Node #  Communication Status\n";
        for (std::size_t i = 0; i < rows_.size(); ++i)
            out << std::setw(5) << i << std::setw(8) << rows_[i].node << "  " << rows_[i].status << '\n';
    }

private:
    static constexpr const char* NoStatus = "-- : -"; ///< As the tab begins.

    SequenceStatus& RowOf(int row) {
        while (rows_.size() < static_cast<std::size_t>(row))
            rows_.push_back({Unread, NoStatus});
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
    [[nodiscard]] bool RowVisible(int row) const override { return row <= std::max(Words(send_), Words(receive_)); }
    void ShowDescription(const std::string& text) override { description_ = text; }
    void ShowNodeNumber(const std::string& text) override { status_.node = text; }
    void ShowSetting(SettingsGrid grid, int row, const std::string& text) override {
        (grid == SettingsGrid::Send ? send_ : receive_).settings.at(static_cast<std::size_t>(row) - 1) = text;
    }
    void ShowStatus(const std::string& text) override { status_.status = text; }
    void ShowDataWord(int row, DataDirection column, const std::string& text) override {
        (column == DataDirection::Send ? send_ : receive_).data.at(static_cast<std::size_t>(row) - 1) = text;
    }
    void ClearData() override {
        send_.data.fill(Unread);
        receive_.data.fill(Unread);
    }

    /// Whether everything that belongs to the sequence has been read.
    [[nodiscard]] bool Complete() const {
        return status_.node != Unread && status_.status != Unread && IsComplete(send_) && IsComplete(receive_);
    }
    void Print(std::ostream& out, std::size_t sequence, bool json) const;

private:
    struct Direction {
        Direction() {
            settings.fill(Unread);
            data.fill(Unread);
        }
        std::array<std::string, 3> settings;
        std::array<std::string, DataWordCount> data;
    };

    /// 0..120, whatever the board holds as the count.
    [[nodiscard]] static int Words(const Direction& direction) {
        return std::clamp(LeadingInteger(direction.settings.front()).value_or(0), 0, DataWordCount);
    }
    [[nodiscard]] static std::vector<std::string> DataOf(const Direction& direction) {
        return {direction.data.begin(), direction.data.begin() + Words(direction)};
    }
    [[nodiscard]] static bool IsComplete(const Direction& direction) {
        const std::vector<std::string> data = DataOf(direction);
        return std::find(direction.settings.begin(), direction.settings.end(), Unread) == direction.settings.end() &&
               std::find(data.begin(), data.end(), Unread) == data.end();
    }

    void PrintSettings(std::ostream& out) const;
    void PrintData(std::ostream& out) const;

    const LinkSession& session_;
    std::string description_ = Unread;
    SequenceStatus status_{Unread, Unread};
    Direction send_;
    Direction receive_;
};

void SequenceReport::Print(std::ostream& out, std::size_t sequence, bool json) const {
    if (status_.node == Unread && status_.status == Unread) return;
    if (json) {
        out << SequenceJson(sequence, description_, status_, {send_.settings, receive_.settings},
                            {DataOf(send_), DataOf(receive_)});
        return;
    }
    out << "Sequence Number:  " << sequence << "\nNode Number:      " << status_.node
        << "\nDescription:      " << PrintableText(description_, Layout::Drop)
        << "\nStatus:           " << status_.status << "\n\n";
    PrintSettings(out);
    if (RowVisible(1)) PrintData(out);
}

void SequenceReport::PrintSettings(std::ostream& out) const {
    constexpr auto firstSend = static_cast<std::size_t>(SequenceField::SendWordCount);
    constexpr auto firstReceive = static_cast<std::size_t>(SequenceField::ReceiveWordCount);
    for (std::size_t i = 0; i < send_.settings.size(); ++i) {
        out << std::left << std::setw(11) << FieldTable().at(firstSend + i).heading << std::setw(12)
            << send_.settings.at(i) << std::setw(12) << FieldTable().at(firstReceive + i).heading << std::right
            << receive_.settings.at(i) << '\n';
    }
}

void SequenceReport::PrintData(std::ostream& out) const {
    out << "\nWord  Send Data  Receive Data\n";
    const std::vector<std::string> sent = DataOf(send_);
    const std::vector<std::string> received = DataOf(receive_);
    for (std::size_t i = 0; i < std::max(sent.size(), received.size()); ++i) {
        out << std::setw(4) << i + 1 << std::setw(11) << (i < sent.size() ? sent[i] : "");
        if (i < received.size()) out << std::setw(14) << received[i];
        out << '\n';
    }
}

ExitCode EndOf(CommandContext& context, LinkSession& session, bool complete) {
    if (session.Interrupted()) {
        context.Say("Cancelled.");
    } else if (session.Failed()) {
        context.Say("The link to the board failed before everything was read.");
    } else if (!complete) {
        context.Say("Some of this was not read reliably. Run the command again.");
    }
    return session.Close(complete && !session.Interrupted() ? ExitCode::Done : ExitCode::Refused);
}

ExitCode ShowAll(CommandContext& context, LinkSession& session) {
    const SequenceAddresses nodes = NodeNumberAddressTable();
    const SequenceAddresses statuses = StatusWordAddressTable();
    std::optional<StatusTable> table;
    session.RunWhole([&] {
        table.emplace(session);
        session.Run(RefreshStatusTab(*table, nodes, statuses, session.Link(), session.Turns()));
    });
    table->Print(context.host.out, context.arguments.json);
    return EndOf(context, session, table->Complete());
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
    return EndOf(context, session, report->Complete());
}

} // namespace

ExitCode StatusCommand(CommandContext& context) {
    const Arguments& asked = context.arguments;
    const bool one = asked.sequence.has_value();
    const std::size_t sequence = one ? SequenceNumber(*asked.sequence) : 0;
    if (!asked.file.empty() && !one) {
        throw UsageError("--file: the status of all sequences needs no set-up file. Name one by --sequence.");
    }
    LinkSession session(context);
    if (!session.TraceAccepted() ||
        (!asked.file.empty() && !OpenSetupFile(context, SetupFileNamed(asked.file), OtherVersion::Note))) {
        return Refuse(context, "Nothing was read.");
    }
    session.Open();
    if (session.Failed()) return session.Close(ExitCode::LinkFailed);
    return one ? ShowOne(context, session, sequence) : ShowAll(context, session);
}

} // namespace vantrel
