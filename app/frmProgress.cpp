#include "app/frmProgress.h"

#include "platform/QtScreen.h"

#include <QVBoxLayout>

#include <utility>

namespace vantrel {

namespace {

constexpr int BarTwips = 4800;

} // namespace

frmProgress::frmProgress(const char* name, TurnQueue& turns, QWidget* parent) : QtTaskDialog(turns, parent) {
    setObjectName(QString::fromLatin1(name));
    setWindowTitle(tr("Processing"));
    BuildControls();
    LayOutControls();
}

void frmProgress::BuildControls() {
    lblProcessing = new QLabel(this);
    lblProcessing->setObjectName(QStringLiteral("lblProcessing"));
    lblProcessing->setTextFormat(Qt::PlainText);
    prgProcessing = new QProgressBar(this);
    prgProcessing->setObjectName(QStringLiteral("prgProcessing"));
    prgProcessing->setAccessibleName(tr("Progress"));
    prgProcessing->setMinimum(0);
    prgProcessing->setValue(0);
    cmdCancel = new QPushButton(tr("&Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    // An Enter that was meant for the question before must not cancel what it has just begun.
    cmdCancel->setAutoDefault(false);
    connect(cmdCancel, &QPushButton::clicked, this, [this] { CloseAsked(); });
}

void frmProgress::LayOutControls() {
    auto* column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    prgProcessing->setMinimumWidth(PixelsOfTwips(BarTwips, *this));
    column->addWidget(lblProcessing);
    column->addWidget(prgProcessing);
    column->addSpacing(column->spacing());
    column->addWidget(cmdCancel, 0, Qt::AlignHCenter);
}

void frmProgress::ShowLabel(std::string_view label) {
    lblProcessing->setText(QString::fromUtf8(label.data(), static_cast<qsizetype>(label.size())));
}

void frmProgress::ShowProgress(std::size_t done, std::size_t total) {
    prgProcessing->setMaximum(static_cast<int>(total));
    prgProcessing->setValue(static_cast<int>(done));
}

frmComparing::frmComparing(const Configuration& record, std::vector<std::size_t> indices, RSComm& link,
                           TurnQueue& turns, QWidget* parent)
    : frmProgress("frmComparing", turns, parent), link_(link), turns_(turns), comparison_(record, link, turns, *this) {
    comparison_.Only(std::move(indices));
}

const BoardComparison& frmComparing::RunModal() {
    static_cast<void>(RunTask(Run())); // What an exception has cut off is not complete.
    return comparison_;
}

Task frmComparing::Run() {
    comparison_.Load();
    const int opened = link_.Opened();
    if (identifies_) board_ = co_await ReadBoardIdentity(link_, turns_, [this] { return !comparison_.Cancelled(); });
    co_await comparison_.Run();
    // The port was opened again: it may have been two boards.
    if (link_.Opened() != opened) board_.reset();
}

frmIdentifying::frmIdentifying(RSComm& link, TurnQueue& turns, QWidget* parent)
    : frmProgress("frmIdentifying", turns, parent), link_(link), turns_(turns) {}

std::optional<BoardIdentity> frmIdentifying::RunModal() {
    static_cast<void>(RunTask(Ask())); // What an exception has cut off is not known.
    return board_;
}

Task frmIdentifying::Ask() {
    lblProcessing->setText(QStringLiteral("Asking Which Board This Is, Please Standby..."));
    prgProcessing->setMaximum(0);
    board_ = co_await ReadBoardIdentity(link_, turns_, [this] { return !cancelled_; });
}

void frmIdentifying::CloseAsked() {
    cancelled_ = true;
    link_.GiveUp();
}

} // namespace vantrel
