#include "widgets/QtLogWindow.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QVBoxLayout>

#include <algorithm>

namespace vantrel {

QtLogWindow::QtLogWindow(QWidget* parent)
    : QDialog(parent), grdRows(new QTableView(this)), lblCount(new QLabel(this)), aboveRows_(new QHBoxLayout),
      buttons_(new QDialogButtonBox(QDialogButtonBox::Close, this)) {
    setWindowFlag(Qt::WindowMinMaxButtonsHint);
    setAttribute(Qt::WA_DeleteOnClose);
    grdRows->setObjectName(QStringLiteral("grdRows"));
    lblCount->setObjectName(QStringLiteral("lblCount"));
    grdRows->setSelectionBehavior(QAbstractItemView::SelectRows);
    grdRows->setAlternatingRowColors(true);
    grdRows->setWordWrap(false);
    grdRows->setTabKeyNavigation(false);
    grdRows->verticalHeader()->hide();
    grdRows->horizontalHeader()->setHighlightSections(false);
    grdRows->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::close);
    aboveRows_->addWidget(lblCount, 1);
    auto* all = new QVBoxLayout(this);
    all->addLayout(aboveRows_);
    all->addWidget(grdRows, 1);
    all->addWidget(buttons_);
    grdRows->setFocus();
}

void QtLogWindow::ShowRows(QAbstractItemModel* rows, const std::vector<const char*>& widest) {
    rows->setParent(this);
    grdRows->setModel(rows);
    for (std::size_t i = 0; i < widest.size(); ++i) {
        const int width = grdRows->fontMetrics().horizontalAdvance(QString::fromLatin1(widest[i]));
        grdRows->setColumnWidth(static_cast<int>(i), width + 2 * CellPadding);
    }
}

QPushButton* QtLogWindow::AddButton(const QString& caption, const std::function<void()>& press) {
    auto* button = buttons_->addButton(caption, QDialogButtonBox::ActionRole);
    connect(button, &QPushButton::clicked, this, press);
    return button;
}

void QtLogWindow::Begin(const QString& saveCaption, const std::function<void()>& save,
                        std::chrono::milliseconds period) {
    cmdCopy = AddButton(QStringLiteral("&Copy"), [this] { Copy(); });
    cmdSave = AddButton(saveCaption, save);
    // Enter in the table closes nothing and copies nothing.
    for (QAbstractButton* button : buttons_->buttons())
        qobject_cast<QPushButton*>(button)->setAutoDefault(false);
    Follow();
    tmrFollow.setInterval(period);
    tmrFollow.callOnTimeout(this, [this] { Follow(); });
    tmrFollow.start();
}

void QtLogWindow::Copy() const {
    const QAbstractItemModel& rows = *grdRows->model();
    std::vector<int> chosen;
    for (const QModelIndex& row : grdRows->selectionModel()->selectedRows())
        chosen.push_back(row.row());
    std::ranges::sort(chosen);
    const int count = chosen.empty() ? rows.rowCount() : static_cast<int>(chosen.size());
    QString text;
    for (int i = 0; i < count; ++i) {
        const int row = chosen.empty() ? i : chosen.at(static_cast<std::size_t>(i));
        for (int column = 0; column < rows.columnCount(); ++column)
            text +=
                rows.index(row, column).data().toString() + QLatin1Char(column + 1 < rows.columnCount() ? '\t' : '\n');
    }
    QApplication::clipboard()->setText(text);
}

void QtLogWindow::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy) && cmdCopy->isEnabled()) {
        Copy();
    } else {
        QDialog::keyPressEvent(event);
    }
}

} // namespace vantrel
