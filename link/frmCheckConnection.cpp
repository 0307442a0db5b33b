#include "link/frmCheckConnection.h"

#include "platform/QtScreen.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QShowEvent>
#include <QVBoxLayout>

namespace vantrel {

namespace {

constexpr int WidthTwips = 8400;
constexpr int HeightTwips = 6900;

QString Mark(CheckStep::Outcome outcome) {
    if (outcome == CheckStep::Outcome::Good) return QStringLiteral("\u2713");
    return outcome == CheckStep::Outcome::Notice ? QStringLiteral("\u25cb") : QStringLiteral("\u2717");
}

QString Escaped(const std::string& text) { return QString::fromStdString(text).toHtmlEscaped(); }

} // namespace

frmCheckConnection::frmCheckConnection(RSComm& link, SerialPort& port, const std::string& portName, Clock& clock,
                                       TurnQueue& turns, QWidget* parent)
    : QDialog(parent), check_(link, port, portName, clock, turns, *this) {
    setObjectName(QStringLiteral("frmCheckConnection"));
    setWindowTitle(QStringLiteral("Check Connection"));
    BuildControls();
    setMinimumSize(PixelsOfTwips(WidthTwips, *this), PixelsOfTwips(HeightTwips, *this));
}

void frmCheckConnection::BuildControls() {
    txtSteps = new QTextBrowser(this);
    txtSteps->setObjectName(QStringLiteral("txtSteps"));
    txtSteps->setAccessibleName(QStringLiteral("Steps"));
    barExchanges = new QProgressBar(this);
    barExchanges->setAccessibleName(QStringLiteral("Exchanges"));
    barExchanges->setRange(0, static_cast<int>(ConnectionCheck::Exchanges));
    lblVerdict = new QLabel(QStringLiteral("The check is running. Nothing is written to the board."), this);
    lblVerdict->setObjectName(QStringLiteral("lblVerdict"));
    lblVerdict->setTextFormat(Qt::PlainText);
    lblVerdict->setWordWrap(true);
    lblVerdict->setTextInteractionFlags(Qt::TextSelectableByMouse);
    cmdCopy = new QPushButton(QStringLiteral("C&opy"), this);
    cmdClose = new QPushButton(QStringLiteral("&Cancel"), this);
    cmdClose->setDefault(true);
    connect(cmdCopy, &QPushButton::clicked, this, [this] {
        QApplication::clipboard()->setText(txtSteps->toPlainText() + QLatin1Char('\n') + lblVerdict->text());
    });
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdCopy);
    buttons->addWidget(cmdClose);
    auto* all = new QVBoxLayout(this);
    all->addWidget(txtSteps, 1);
    all->addWidget(barExchanges);
    all->addWidget(lblVerdict);
    all->addLayout(buttons);
}

void frmCheckConnection::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (event->spontaneous() || running_) return;
    CentreOnScreen(*this);
    running_ = true;
    task_ = Check();
    task_.Start();
}

Task frmCheckConnection::Check() {
    const CheckResult result = co_await check_.Run();
    running_ = false;
    QString text = QString::fromStdString(result.verdict);
    if (!result.todo.empty()) text += QStringLiteral("\n\u2192 ") + QString::fromStdString(result.todo);
    lblVerdict->setText(text);
    cmdClose->setText(QStringLiteral("&Close"));
    // From the event loop: whoever owns the window destroys its task with it.
    if (closeWanted_)
        QMetaObject::invokeMethod(
            this, [this] { reject(); }, Qt::QueuedConnection);
}

void frmCheckConnection::Begins(const std::string& step) { lblVerdict->setText(QString::fromStdString(step + "...")); }

void frmCheckConnection::Ends(const CheckStep& step) {
    QString html =
        QStringLiteral("<p><b>%1 %2</b><br>%3").arg(Mark(step.outcome), Escaped(step.name), Escaped(step.seen));
    if (!step.todo.empty()) html += QStringLiteral("<br>\u2192 <i>%1</i>").arg(Escaped(step.todo));
    txtSteps->append(html + QStringLiteral("</p>"));
}

void frmCheckConnection::Progress(std::size_t done, std::size_t) { barExchanges->setValue(static_cast<int>(done)); }

void frmCheckConnection::done(int result) {
    if (!running_) {
        QDialog::done(result);
        return;
    }
    closeWanted_ = true;
    check_.Cancel();
}

} // namespace vantrel
