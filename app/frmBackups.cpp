#include "app/frmBackups.h"

#include "platform/QtScreen.h"
#include "text/PathText.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QLocale>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <utility>

namespace vantrel {

namespace {

QString WhenText(OleDate date) {
    const auto time = date.ToLocal();
    if (!time) return QStringLiteral("-");
    const auto day = std::chrono::floor<std::chrono::days>(*time);
    const std::chrono::year_month_day parts(day);
    const QDate shown(int{parts.year()}, static_cast<int>(unsigned{parts.month()}),
                      static_cast<int>(unsigned{parts.day()}));
    const QTime clock = QTime(0, 0).addSecs(static_cast<int>((*time - day).count()));
    const QLocale locale = QLocale::system();
    return locale.toString(shown, QLocale::ShortFormat) + QLatin1Char(' ') +
           locale.toString(clock, QLocale::ShortFormat);
}

QString DifferencesText(std::size_t count) { return count == 0 ? QStringLiteral("none") : QString::number(count); }

} // namespace

frmBackups::frmBackups(Backups::List list, const std::filesystem::path& folder, const Configuration& here,
                       QWidget* parent)
    : QDialog(parent), list_(std::move(list)) {
    setObjectName(QStringLiteral("frmBackups"));
    setWindowTitle(QStringLiteral("Backups"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    BuildControls(folder);
    Fill(here);
    ShowSkipped();
    resize(SizeOnScreen({.width = 12000, .height = 6000}, *this));
}

void frmBackups::BuildControls(const std::filesystem::path& folder) {
    lblFolder = new QLabel(this);
    lblFolder->setTextFormat(Qt::PlainText);
    lblFolder->setWordWrap(true);
    lblFolder->setText(QStringLiteral("What boards held before a download. Kept in ") +
                       QString::fromStdString(Utf8FromPath(folder)));
    lstBackups = new QTreeWidget(this);
    lstBackups->setObjectName(QStringLiteral("lstBackups"));
    lstBackups->setAccessibleName(QStringLiteral("Backups"));
    lstBackups->setHeaderLabels(
        {QStringLiteral("Date"), QStringLiteral("Differences"), QStringLiteral("Board"), QStringLiteral("File")});
    lstBackups->headerItem()->setToolTip(1, QStringLiteral("Values that are not those of the open set-up"));
    lstBackups->setRootIsDecorated(false);
    lblSkipped = new QLabel(this);
    lblSkipped->setTextFormat(Qt::PlainText);
    lblSkipped->setWordWrap(true);
    cmdOpen = new QPushButton(tr("&Open"), this);
    cmdOpen->setObjectName(QStringLiteral("cmdOpen"));
    cmdOpen->setDefault(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->addButton(cmdOpen, QDialogButtonBox::AcceptRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(lstBackups, &QTreeWidget::itemActivated, this, &QDialog::accept);
    auto* all = new QVBoxLayout(this);
    all->addWidget(lblFolder);
    all->addWidget(lstBackups, 1);
    all->addWidget(lblSkipped);
    all->addWidget(buttons);
}

void frmBackups::Fill(const Configuration& here) {
    for (const Backup& backup : list_.found) {
        const QString board = backup.board.empty() ? QStringLiteral("not known") : QString::fromStdString(backup.board);
        const QString file = QString::fromStdString(Utf8FromPath(backup.file.filename()));
        auto* row = new QTreeWidgetItem(
            lstBackups, {WhenText(backup.record.SavedDate), DifferencesText(backup.DifferencesTo(here)), board, file});
        row->setToolTip(3, file);
    }
    FitColumns(*lstBackups);
    if (lstBackups->topLevelItemCount() > 0) lstBackups->setCurrentItem(lstBackups->topLevelItem(0));
    cmdOpen->setEnabled(!list_.found.empty());
}

void frmBackups::ShowSkipped() {
    constexpr std::size_t mostShown = 5;
    const std::size_t count = list_.skipped.size();
    QString text = QStringLiteral("Not listed, because it cannot be read:");
    for (std::size_t i = 0; i < std::min(count, mostShown); ++i)
        text += QLatin1Char('\n') + QString::fromStdString(list_.skipped[i]);
    if (count > mostShown) text += QStringLiteral("\nand %1 more").arg(count - mostShown);
    if (list_.found.empty() && count == 0) {
        text = QStringLiteral("There is none yet. With \"Back Up Before Download\" in the menu Tools every download "
                              "keeps one first.");
    }
    lblSkipped->setText(text);
    lblSkipped->setVisible(count > 0 || list_.found.empty());
}

std::optional<Backup> frmBackups::Chosen() const {
    const int row = lstBackups->indexOfTopLevelItem(lstBackups->currentItem());
    if (row < 0) return std::nullopt;
    return list_.found.at(static_cast<std::size_t>(row));
}

} // namespace vantrel
