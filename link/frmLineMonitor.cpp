#include "link/frmLineMonitor.h"

#include "platform/QtScreen.h"
#include "platform/QtText.h"

#include <QFontDatabase>
#include <QHeaderView>
#include <QScrollBar>

#include <algorithm>
#include <chrono>
#include <utility>

namespace vantrel {

namespace {

constexpr int MeaningColumn = 4;

QString Lines(std::size_t count) {
    return count == 1 ? QStringLiteral("1 line") : QStringLiteral("%1 lines").arg(count);
}

} // namespace

void LineRows::Follow() {
    const std::size_t gone = recorder_.Gone();
    if (const std::size_t first = std::clamp(gone, first_, end_); first > first_) {
        beginRemoveRows({}, 0, static_cast<int>(first - first_) - 1);
        first_ = first;
        endRemoveRows();
    }
    // None is shown any more, and some came and went unseen.
    if (gone > end_) first_ = end_ = gone;
    const std::size_t end = gone + recorder_.Entries().size();
    if (end == end_) return;
    beginInsertRows({}, rowCount(), static_cast<int>(end - first_) - 1);
    end_ = end;
    endInsertRows();
}

int LineRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(end_ - first_);
}

int LineRows::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(LineHeadings.size());
}

QVariant LineRows::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) return {};
    // One that has gone since is asked for only in the moment before it is dropped here.
    const std::size_t number = std::max(first_ + static_cast<std::size_t>(index.row()), recorder_.Gone());
    const std::size_t place = number - recorder_.Gone();
    if (place >= recorder_.Entries().size()) return {};
    return Text(LineCells(recorder_.Entries()[place]).at(static_cast<std::size_t>(index.column())));
}

QVariant LineRows::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return QString::fromLatin1(LineHeadings.at(static_cast<std::size_t>(section)));
}

frmLineMonitor::frmLineMonitor(LineRecorder& recorder, Save save, QWidget* parent)
    : QtLogWindow(parent), recorder_(recorder), rows_(new LineRows(recorder_)) {
    setObjectName(QStringLiteral("frmLineMonitor"));
    setWindowTitle(QStringLiteral("Line Monitor"));
    BuildTable();
    cmdPause = AddButton(QStringLiteral("&Pause"), [this] { TogglePause(); });
    cmdClear = AddButton(QStringLiteral("C&lear"), [this] {
        recorder_.Clear();
        Follow();
    });
    resize(SizeOnScreen({.width = 10500, .height = 8400}, *this));
    recorder_.Begin();
    const auto saveLines = [this, write = std::move(save)] {
        Follow();
        write(LineText(recorder_));
    };
    Begin(QStringLiteral("&Save..."), saveLines, std::chrono::milliseconds(200));
}

frmLineMonitor::~frmLineMonitor() { recorder_.End(); }

void frmLineMonitor::BuildTable() {
    grdRows->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    ShowRows(rows_, {"09:05:07", "99999.999999", "Sent", "Received"});
    grdRows->setAccessibleName(QStringLiteral("Bytes on the line, the newest at the bottom"));
    grdRows->verticalHeader()->setDefaultSectionSize(grdRows->fontMetrics().height() + CellPadding / 4);
    grdRows->horizontalHeader()->setSectionResizeMode(MeaningColumn, QHeaderView::Stretch);
}

void frmLineMonitor::TogglePause() {
    recorder_.SetPaused(!recorder_.Paused());
    cmdPause->setText(recorder_.Paused() ? QStringLiteral("Co&ntinue") : QStringLiteral("&Pause"));
    Follow();
}

void frmLineMonitor::Follow() {
    // Whoever looks at older lines keeps them in sight.
    const QScrollBar& bar = *grdRows->verticalScrollBar();
    const bool atEnd = bar.value() == bar.maximum();
    rows_->Follow();
    if (atEnd) grdRows->scrollToBottom();
    ShowCount();
}

void frmLineMonitor::ShowCount() {
    const int count = rows_->rowCount();
    QString text = count == 0 ? QStringLiteral("No byte has passed yet. ONLINE the board is read all the time.")
                              : Lines(static_cast<std::size_t>(count));
    if (recorder_.PushedOut() > 0)
        text += QStringLiteral(", older ones that were not kept: %1").arg(recorder_.PushedOut());
    if (recorder_.Paused()) text += QStringLiteral("; paused, %1 passed since").arg(Lines(recorder_.Missed()));
    lblCount->setText(text);
    for (QPushButton* button : {cmdClear, cmdCopy, cmdSave})
        button->setEnabled(count > 0);
}

} // namespace vantrel
