#include "link/frmCheckConnection.h"

#include "platform/QtScreen.h"
#include "widgets/QtIcons.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QShowEvent>
#include <QVBoxLayout>

#include <utility>

namespace vantrel {

namespace {

QString Marked(QChar mark, ProgramIcon lamp) {
    return QStringLiteral("<span style=\"color:%1\">%2</span>").arg(LampColor(lamp).name(), QString(mark));
}

/// A shape as well as a colour.
QString Mark(CheckStep::Outcome outcome) {
    if (outcome == CheckStep::Outcome::Good) return Marked(u'\u2713', ProgramIcon::LampGood);
    return outcome == CheckStep::Outcome::Notice ? Marked(u'\u25cb', ProgramIcon::LampOff)
                                                 : Marked(u'\u2717', ProgramIcon::LampBad);
}

QString Todo(const std::string& todo) {
    return todo.empty() ? QString() : QStringLiteral("\u2192 ") + QString::fromStdString(todo);
}

QString Escaped(const std::string& text) { return QString::fromStdString(text).toHtmlEscaped(); }

} // namespace

frmCheckConnection::frmCheckConnection(RSComm& link, SerialPort& port, CheckSubject subject, Clock& clock,
                                       TurnQueue& turns, QWidget* parent)
    : QDialog(parent), check_(link, port, std::move(subject), clock, turns, *this) {
    setObjectName(QStringLiteral("frmCheckConnection"));
    setWindowTitle(QStringLiteral("Check Connection"));
    BuildControls();
    setMinimumSize(SizeOnScreen({.width = 8400, .height = 6900}, *this));
}

void frmCheckConnection::BuildControls() {
    txtSteps = new QTextBrowser(this);
    txtSteps->setObjectName(QStringLiteral("txtSteps"));
    txtSteps->setAccessibleName(QStringLiteral("Steps"));
    barExchanges = new QProgressBar(this);
    barExchanges->setAccessibleName(QStringLiteral("Exchanges"));
    barExchanges->setRange(0, static_cast<int>(ConnectionCheck::Exchanges));
    // Shown while there is something to count.
    barExchanges->hide();
    BuildVerdict();
    cmdCopy = new QPushButton(QStringLiteral("C&opy"), this);
    cmdClose = new QPushButton(QStringLiteral("&Cancel"), this);
    cmdClose->setDefault(true);
    connect(cmdCopy, &QPushButton::clicked, this, [this] {
        QApplication::clipboard()->setText(QStringList{txtSteps->toPlainText(), lblVerdict->text(), lblTodo->text()}
                                               .join(QLatin1Char('\n'))
                                               .trimmed());
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
    all->addWidget(lblTodo);
    all->addLayout(buttons);
}

void frmCheckConnection::BuildVerdict() {
    lblVerdict = new QLabel(QStringLiteral("The check is running. Nothing is written to the board."), this);
    lblVerdict->setObjectName(QStringLiteral("lblVerdict"));
    lblTodo = new QLabel(this);
    lblTodo->setObjectName(QStringLiteral("lblTodo"));
    lblTodo->hide();
    for (QLabel* label : {lblVerdict, lblTodo}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
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
    QFont bold = lblVerdict->font();
    bold.setBold(true);
    lblVerdict->setFont(bold);
    lblVerdict->setText(QString::fromStdString(result.verdict));
    lblTodo->setText(Todo(result.todo));
    lblTodo->setVisible(!result.todo.empty());
    barExchanges->hide();
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
    if (!step.todo.empty()) html += QStringLiteral("<br><i>%1</i>").arg(Todo(step.todo).toHtmlEscaped());
    txtSteps->append(html + QStringLiteral("</p>"));
}

void frmCheckConnection::Progress(std::size_t done, std::size_t) {
    barExchanges->show();
    barExchanges->setValue(static_cast<int>(done));
}

void frmCheckConnection::done(int result) {
    if (!running_) {
        QDialog::done(result);
        return;
    }
    closeWanted_ = true;
    check_.Cancel();
}

} // namespace vantrel
