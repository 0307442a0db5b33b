#include "link/frmLineMonitor.h"

#include "platform/QtScreen.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>
#include <vector>

namespace vantrel {

namespace {

constexpr int WidthTwips = 10500;
constexpr int HeightTwips = 8400;
constexpr auto FollowPeriod = std::chrono::milliseconds(200);
constexpr int CellPadding = 16; ///< Pixels.
constexpr int MeaningColumn = 4;

QString Text(const std::string& text) { return QString::fromStdString(text); }

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
    : QDialog(parent), recorder_(recorder), save_(std::move(save)), rows_(new LineRows(recorder_, this)) {
    setObjectName(QStringLiteral("frmLineMonitor"));
    setWindowTitle(QStringLiteral("Line Monitor"));
    setWindowFlag(Qt::WindowMinMaxButtonsHint);
    setAttribute(Qt::WA_DeleteOnClose);
    BuildControls();
    resize(SizeOnScreen(WidthTwips, HeightTwips, *this));
    recorder_.Begin();
    ShowCount();
    tmrFollow.setInterval(FollowPeriod);
    tmrFollow.callOnTimeout(this, [this] { Follow(); });
    tmrFollow.start();
}

frmLineMonitor::~frmLineMonitor() { recorder_.End(); }

void frmLineMonitor::BuildTable() {
    grdLines = new QTableView(this);
    grdLines->setObjectName(QStringLiteral("grdLines"));
    grdLines->setAccessibleName(QStringLiteral("Bytes on the line, the newest at the bottom"));
    grdLines->setModel(rows_);
    grdLines->setSelectionBehavior(QAbstractItemView::SelectRows);
    grdLines->setAlternatingRowColors(true);
    grdLines->setWordWrap(false);
    grdLines->setTabKeyNavigation(false);
    grdLines->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    grdLines->verticalHeader()->hide();
    grdLines->verticalHeader()->setDefaultSectionSize(grdLines->fontMetrics().height() + CellPadding / 4);
    constexpr std::array widest{"09:05:07", "99999.999999", "Sent", "Received"};
    for (std::size_t i = 0; i < widest.size(); ++i) {
        const int width = grdLines->fontMetrics().horizontalAdvance(QString::fromLatin1(widest.at(i)));
        grdLines->setColumnWidth(static_cast<int>(i), width + 2 * CellPadding);
    }
    grdLines->horizontalHeader()->setSectionResizeMode(MeaningColumn, QHeaderView::Stretch);
    grdLines->horizontalHeader()->setHighlightSections(false);
    grdLines->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void frmLineMonitor::BuildControls() {
    lblCount = new QLabel(this);
    lblCount->setObjectName(QStringLiteral("lblCount"));
    BuildTable();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    cmdPause = buttons->addButton(QStringLiteral("&Pause"), QDialogButtonBox::ActionRole);
    cmdClear = buttons->addButton(QStringLiteral("C&lear"), QDialogButtonBox::ActionRole);
    cmdCopy = buttons->addButton(QStringLiteral("&Copy"), QDialogButtonBox::ActionRole);
    cmdSave = buttons->addButton(QStringLiteral("&Save..."), QDialogButtonBox::ActionRole);
    // Enter in the table closes nothing and copies nothing.
    for (QAbstractButton* button : buttons->buttons())
        qobject_cast<QPushButton*>(button)->setAutoDefault(false);
    connect(cmdPause, &QPushButton::clicked, this, [this] { TogglePause(); });
    connect(cmdClear, &QPushButton::clicked, this, [this] {
        recorder_.Clear();
        Follow();
    });
    connect(cmdCopy, &QPushButton::clicked, this, [this] { Copy(); });
    connect(cmdSave, &QPushButton::clicked, this, [this] {
        Follow();
        save_(LineText(recorder_));
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);

    auto* all = new QVBoxLayout(this);
    all->addWidget(lblCount);
    all->addWidget(grdLines, 1);
    all->addWidget(buttons);
    grdLines->setFocus();
}

void frmLineMonitor::TogglePause() {
    recorder_.SetPaused(!recorder_.Paused());
    cmdPause->setText(recorder_.Paused() ? QStringLiteral("Co&ntinue") : QStringLiteral("&Pause"));
    Follow();
}

void frmLineMonitor::Follow() {
    // Whoever looks at older lines keeps them in sight.
    const QScrollBar& bar = *grdLines->verticalScrollBar();
    const bool atEnd = bar.value() == bar.maximum();
    rows_->Follow();
    if (atEnd) grdLines->scrollToBottom();
    ShowCount();
}

void frmLineMonitor::ShowCount() {
    const int count = rows_->rowCount();
    QString text = count == 0 ? QStringLiteral("No byte has passed yet. ONLINE the board is read all the time.")
                              : Lines(static_cast<std::size_t>(count));
    if (recorder_.PushedOut() > 0) text += QStringLiteral(", %1 older ones were not kept").arg(recorder_.PushedOut());
    if (recorder_.Paused()) text += QStringLiteral("; paused, %1 passed since").arg(Lines(recorder_.Missed()));
    lblCount->setText(text);
    for (QPushButton* button : {cmdClear, cmdCopy, cmdSave})
        button->setEnabled(count > 0);
}

void frmLineMonitor::Copy() const {
    std::vector<int> chosen;
    for (const QModelIndex& row : grdLines->selectionModel()->selectedRows())
        chosen.push_back(row.row());
    std::ranges::sort(chosen);
    const int count = chosen.empty() ? rows_->rowCount() : static_cast<int>(chosen.size());
    QString text;
    for (int i = 0; i < count; ++i) {
        for (int column = 0; column < rows_->columnCount(); ++column) {
            if (column > 0) text += QLatin1Char('\t');
            const int row = chosen.empty() ? i : chosen.at(static_cast<std::size_t>(i));
            text += rows_->index(row, column).data().toString();
        }
        text += QLatin1Char('\n');
    }
    QApplication::clipboard()->setText(text);
}

void frmLineMonitor::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy) && cmdCopy->isEnabled()) {
        Copy();
    } else {
        QDialog::keyPressEvent(event);
    }
}

} // namespace vantrel
