#include "app/frmWaitDisplay.h"

#include "platform/QtScreen.h"

#include <QVBoxLayout>

#include <utility>

namespace vantrel {

namespace {

constexpr int LabelTwips = 3600;
constexpr int SideTwips = 360;

} // namespace

frmWaitDisplay::frmWaitDisplay(WaitSelector selector, std::function<Task()> job, TurnQueue& turns, QWidget* parent)
    // Without a close button: there is nothing that it could do.
    : QtTaskDialog(turns, parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint), job_(std::move(job)),
      turns_(turns) {
    setObjectName(QStringLiteral("frmWaitDisplay"));
    setWindowTitle(tr("Please Standby"));
    lblWait = new QLabel(selector == WaitSelector::Report ? tr("Generating Report, Please Standby ...")
                                                          : tr("Please Standby ..."),
                         this);
    lblWait->setObjectName(QStringLiteral("lblWait"));
    lblWait->setAlignment(Qt::AlignCenter);
    lblWait->setMinimumWidth(PixelsOfTwips(LabelTwips, *this));
    auto* column = new QVBoxLayout(this);
    const int margin = PixelsOfTwips(SideTwips, *this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSizeConstraint(QLayout::SetFixedSize);
    column->addWidget(lblWait);
}

bool frmWaitDisplay::RunModal() { return RunTask(Work()); }

Task frmWaitDisplay::Work() {
    if (job_) co_await job_();
    // What the job painted last is seen before the window goes.
    co_await turns_.Next();
}

} // namespace vantrel
