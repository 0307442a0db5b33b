// The command that shows what the sequences do on the board: the status of all of them as the editor's status tab has
// it, or one of them as the communication view has it. Writes nothing to the board.
#include "console/Commands.h"
#include "console/LinkSession.h"
#include "console/PrintableText.h"
#include "console/SetupFiles.h"
#include "document/StatusTab.h"
#include "link/TargetMap.h"
#include "text/NumberText.h"
#include "views/SequenceMonitor.h"

#include <algorithm>
#include <array>
#include <iomanip>
#include <ostream>
#include <string>

namespace vantrel {

namespace {

constexpr const char* Unread = "-";

/// Keeps the rows of the status tab until they are printed.
class StatusTable final : public StatusTabDisplay {
public:
    explicit StatusTable(const LinkSession& session) : session_(session) {
        nodes_.fill(Unread);
        statuses_.fill("-- : -");
    }

    [[nodiscard]] bool StatusWanted() const override { return !session_.Interrupted(); }
    [[nodiscard]] bool RowVisible(int) const override { return true; }
    void ShowNode(int row, const std::string& text) override { Show(nodes_, row, text); }
    void ShowStatus(int row, const std::string& text) override { Show(statuses_, row, text); }

    /// Whether both values of every sequence have been read.
    [[nodiscard]] bool Complete() const { return shown_ == 2 * SequenceCount; }
    /// The rows up to the last one of which something has been read.
    void Print(std::ostream& out) const {
        if (reached_ == 0) return;
        out << "Seq #  Node #  Communication Status\n";
        for (std::size_t i = 0; i < reached_; ++i)
            out << std::setw(5) << i << std::setw(8) << nodes_.at(i) << "  " << statuses_.at(i) << '\n';
    }

private:
    void Show(SequenceAddresses& column, int row, const std::string& text) {
        column.at(static_cast<std::size_t>(row) - 1) = text;
        reached_ = static_cast<std::size_t>(row);
        ++shown_;
    }

    const LinkSession& session_;
    std::array<std::string, SequenceCount> nodes_;
    std::array<std::string, SequenceCount> statuses_;
    std::size_t shown_ = 0;
    std::size_t reached_ = 0;
};

/// Keeps what the communication view shows of one sequence until it is printed. Of the data words those count that the
/// sequence moves.
class SequenceReport final : public SequenceDisplay {
public:
    explicit SequenceReport(const LinkSession& session) : session_(session) {}

    [[nodiscard]] bool Active() const override { return !session_.Interrupted(); }
    [[nodiscard]] bool RowVisible(int row) const override { return row <= std::max(send_.Words(), receive_.Words()); }
    void ShowDescription(const std::string& text) override { description_ = text; }
    void ShowNodeNumber(const std::string& text) override { node_ = text; }
    void ShowSetting(SettingsGrid grid, int row, const std::string& text) override {
        (grid == SettingsGrid::Send ? send_ : receive_).settings.at(static_cast<std::size_t>(row) - 1) = text;
    }
    void ShowStatus(const std::string& text) override { status_ = text; }
    void ShowDataWord(int row, DataDirection column, const std::string& text) override {
        (column == DataDirection::Send ? send_ : receive_).data.at(static_cast<std::size_t>(row) - 1) = text;
    }

    /// Whether everything that belongs to the sequence has been read.
    [[nodiscard]] bool Complete() const {
        return node_ != Unread && status_ != Unread && send_.Complete() && receive_.Complete();
    }
    void Print(std::ostream& out, std::size_t sequence) const;

private:
    struct Direction {
        std::array<std::string, 3> settings{Unread, Unread, Unread};
        std::array<std::string, DataWordCount> data;

        /// 0..120, whatever the board holds as the count.
        [[nodiscard]] int Words() const {
            return std::clamp(LeadingInteger(settings.front()).value_or(0), 0, DataWordCount);
        }
        [[nodiscard]] std::string DataText(int row) const {
            if (row > Words()) return "";
            const std::string& text = data.at(static_cast<std::size_t>(row) - 1);
            return text.empty() ? Unread : text;
        }
        [[nodiscard]] bool Complete() const {
            return std::find(settings.begin(), settings.end(), Unread) == settings.end() &&
                   std::none_of(data.begin(), data.begin() + Words(),
                                [](const std::string& word) { return word.empty(); });
        }
    };

    void PrintSettings(std::ostream& out) const;
    void PrintData(std::ostream& out) const;

    const LinkSession& session_;
    std::string description_ = Unread;
    std::string node_ = Unread;
    std::string status_ = Unread;
    Direction send_;
    Direction receive_;
};

void SequenceReport::Print(std::ostream& out, std::size_t sequence) const {
    if (node_ == Unread && status_ == Unread) return;
    out << "Sequence Number:  " << sequence << "\nNode Number:      " << node_
        << "\nDescription:      " << PrintableText(description_, Layout::Drop) << "\nStatus:           " << status_
        << "\n\n";
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
    for (int row = 1; RowVisible(row); ++row) {
        const std::string received = receive_.DataText(row);
        out << std::setw(4) << row << std::setw(11) << send_.DataText(row);
        if (!received.empty()) out << std::setw(14) << received;
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

/// No next value's echo would show a byte too many behind the last one.
bool InStep(LinkSession& session) { return session.Failed() || !session.Link().SurplusFollows(); }

ExitCode ShowAll(CommandContext& context, LinkSession& session) {
    StatusTable table(session);
    TurnQueue turns;
    const SequenceAddresses nodes = NodeNumberAddressTable();
    const SequenceAddresses statuses = StatusWordAddressTable();
    Task pass = RefreshStatusTab(table, nodes, statuses, session.Link(), turns);
    turns.RunToEnd(pass);
    table.Print(context.host.out);
    return EndOf(context, session, table.Complete() && InStep(session));
}

ExitCode ShowOne(CommandContext& context, LinkSession& session, std::size_t sequence) {
    SequenceReport report(session);
    TurnQueue turns;
    const auto selected = static_cast<std::int16_t>(sequence);
    SequenceMonitor monitor(context.program.document.CurrentConfiguration, session.Link(), turns, selected, report);
    Task settings = monitor.RefreshSettings(SettingsBaseOf(selected));
    turns.RunToEnd(settings);
    Task data = monitor.RefreshStatusAndData();
    turns.RunToEnd(data);
    report.Print(context.host.out, sequence);
    return EndOf(context, session, report.Complete() && InStep(session));
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
