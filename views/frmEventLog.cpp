#include "views/frmEventLog.h"

#include "platform/QtScreen.h"
#include "platform/QtText.h"
#include "views/HistoryTexts.h"
#include "widgets/QtIcons.h"

#include <QHeaderView>
#include <QStringList>

#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <utility>

namespace vantrel {

namespace {

constexpr int StateColumn = 3;

QVariant LampOf(const HistoryEntry& entry) {
    static const std::array icons{IconOf(ProgramIcon::LampGood), IconOf(ProgramIcon::LampBad),
                                  IconOf(ProgramIcon::LampOff), IconOf(ProgramIcon::LampUnknown)};
    const auto* change = std::get_if<SequenceChange>(&entry.what);
    return change ? QVariant(icons.at(static_cast<std::size_t>(change->health))) : QVariant();
}

} // namespace

void HistoryRows::Choose(std::optional<std::size_t> sequence) {
    beginResetModel();
    sequence_ = sequence;
    shown_.clear();
    seen_ = history_.Gone();
    endResetModel();
    Follow();
}

void HistoryRows::DropGone() {
    // The oldest rows are the last ones.
    const auto behind = std::ranges::lower_bound(shown_, history_.Gone());
    const int gone = static_cast<int>(behind - shown_.begin());
    if (gone == 0) return;
    const int count = rowCount();
    beginRemoveRows({}, count - gone, count - 1);
    shown_.erase(shown_.begin(), behind);
    endRemoveRows();
}

void HistoryRows::Follow() {
    DropGone();
    std::deque<std::size_t> come;
    for (seen_ = std::max(seen_, history_.Gone()); seen_ < history_.Added(); ++seen_) {
        const HistoryEntry& entry = history_.Entries().at(seen_ - history_.Gone());
        if (Concerns(entry, sequence_)) come.push_back(seen_);
    }
    if (come.empty()) return;
    beginInsertRows({}, 0, static_cast<int>(come.size()) - 1);
    shown_.insert(shown_.end(), come.begin(), come.end());
    endInsertRows();
}

const HistoryEntry& HistoryRows::EntryAt(int row) const {
    // One that has gone since is not asked for before it is dropped here, but for the moment in between.
    const std::size_t number = shown_.at(shown_.size() - 1 - static_cast<std::size_t>(row));
    return history_.Entries().at(std::max(number, history_.Gone()) - history_.Gone());
}

int HistoryRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int HistoryRows::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(HistoryHeadings().size());
}

QVariant HistoryRows::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role == Qt::DecorationRole && index.column() == StateColumn) return LampOf(EntryAt(index.row()));
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    return Text(HistoryCells(EntryAt(index.row())).at(static_cast<std::size_t>(index.column())));
}

QVariant HistoryRows::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return Text(HistoryHeadings().at(static_cast<std::size_t>(section)));
}

frmEventLog::frmEventLog(const History& history, Save save, QWidget* parent)
    : QtLogWindow(parent), history_(history), rows_(new HistoryRows(history)) {
    setObjectName(QStringLiteral("frmEventLog"));
    setWindowTitle(QStringLiteral("Event Log"));
    BuildChoice();
    BuildTable();
    resize(SizeOnScreen({.width = 16500, .height = 7500}, *this));
    rows_->Choose({});
    Begin(
        QStringLiteral("&Save as CSV..."), [this, write = std::move(save)] { write(Sequence()); },
        std::chrono::milliseconds(500));
}

void frmEventLog::BuildTable() {
    // As wide as what they have to hold, whatever they hold now; where that is too wide, the table scrolls.
    ShowRows(rows_, {"2026-03-14 09:05:07", "Sequence", "Not looked at", "disabled       ",
                     "05: No Slave Response, Timeout (was 02: Comm to Node OK)", "2026-03-14 09:05:07 "});
    grdRows->setAccessibleName(QStringLiteral("Events, the newest first"));
    grdRows->setIconSize(LampSize(*grdRows));
    grdRows->verticalHeader()->setDefaultSectionSize(grdRows->fontMetrics().height() + CellPadding / 2);
    grdRows->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    grdRows->horizontalHeader()->setStretchLastSection(true);
}

void frmEventLog::BuildChoice() {
    cboSequence = new QComboBox(this);
    cboSequence->setObjectName(QStringLiteral("cboSequence"));
    cboSequence->addItem(QStringLiteral("All events"));
    for (std::size_t sequence = 0; sequence < SequenceCount; ++sequence)
        cboSequence->addItem(QStringLiteral("Sequence %1").arg(sequence));
    connect(cboSequence, &QComboBox::currentIndexChanged, this, [this] {
        rows_->Choose(Sequence());
        Follow();
    });
    auto* show = new QLabel(QStringLiteral("S&how:"), this);
    show->setBuddy(cboSequence);
    aboveRows_->insertWidget(0, show);
    aboveRows_->insertWidget(1, cboSequence);
    aboveRows_->insertSpacing(2, CellPadding);
    setTabOrder(cboSequence, grdRows);
}

std::optional<std::size_t> frmEventLog::Sequence() const {
    const int chosen = cboSequence->currentIndex();
    return chosen > 0 ? std::optional(static_cast<std::size_t>(chosen) - 1) : std::nullopt;
}

void frmEventLog::Follow() {
    rows_->Follow();
    const int count = rows_->rowCount();
    QString text = count == 1 ? QStringLiteral("1 event") : QStringLiteral("%1 events").arg(count);
    text += QStringLiteral(", kept in memory until the program ends");
    if (history_.Gone() > 0) text += QStringLiteral("; older ones that were not kept: %1").arg(history_.Gone());
    lblCount->setText(text);
    cmdCopy->setEnabled(count > 0);
    cmdSave->setEnabled(count > 0);
}

} // namespace vantrel
