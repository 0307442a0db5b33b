#include "app/frmProcessing.h"

#include "platform/QtScreen.h"

#include <QVBoxLayout>

#include <algorithm>

namespace vantrel {

namespace {

constexpr int BarTwips = 4800;

} // namespace

frmProcessing::frmProcessing(TransferMode mode, Configuration& record, RSComm& link, Dialogs& dialogs, TurnQueue& turns,
                             QWidget* parent)
    : QtTaskDialog(turns, parent), link_(link), mode_(mode), transfer_(mode, record, link, dialogs, turns, *this) {
    setObjectName(QStringLiteral("frmProcessing"));
    setWindowTitle(tr("Processing"));
    BuildControls();
    LayOutControls();
}

void frmProcessing::BuildControls() {
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

void frmProcessing::LayOutControls() {
    auto* column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    prgProcessing->setMinimumWidth(PixelsOfTwips(BarTwips, *this));
    column->addWidget(lblProcessing);
    column->addWidget(prgProcessing);
    column->addSpacing(column->spacing());
    column->addWidget(cmdCancel, 0, Qt::AlignHCenter);
}

frmProcessing::Result frmProcessing::RunModal() {
    transfer_.Load();
    const bool linkStood = !link_.LinkFailed();
    const bool ended = RunTask(transfer_.Run());
    Result result;
    result.failed = !ended || (link_.LinkFailed() && !transfer_.GaveUp());
    result.cancelled = !result.failed && transfer_.Cancelled() && (transfer_.GaveUp() || !transfer_.Complete());
    result.complete = !result.failed && !result.cancelled;
    result.flagLeft = mode_ == TransferMode::DownloadData && linkStood && !transfer_.FlagCleared();
    result.reconnected = transfer_.Reconnected();
    result.unconfirmed = transfer_.Unconfirmed();
    result.alsoReached = transfer_.MayHaveReached();
    for (const RepeatedWrite& one : transfer_.Repeated()) {
        // The one at which the link failed was not sent twice.
        if (one.index >= transfer_.Walked()) continue;
        result.repeated.push_back(one);
        std::erase_if(result.alsoReached,
                      [&](std::uint16_t byte) { return std::ranges::count(one.mayHaveReached, byte) > 0; });
    }
    return result;
}

// The button stays enabled: a board that falls silent later is given up by another press.
void frmProcessing::CloseAsked() { transfer_.Cancel(); }

void frmProcessing::ShowLabel(std::string_view label) {
    lblProcessing->setText(QString::fromUtf8(label.data(), static_cast<qsizetype>(label.size())));
}

void frmProcessing::ShowProgress(std::size_t done, std::size_t total) {
    prgProcessing->setMaximum(static_cast<int>(total));
    prgProcessing->setValue(static_cast<int>(done));
}

} // namespace vantrel
