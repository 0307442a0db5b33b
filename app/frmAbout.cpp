#include "app/frmAbout.h"

#include "app/Program.h"
#include "platform/QtScreen.h"
#include "widgets/QtIcons.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QProcess>
#include <QShowEvent>
#include <QVBoxLayout>

#include <utility>

namespace vantrel {

namespace {

constexpr int IconTwips = 960;
constexpr int MarginTwips = 240;
constexpr double TitleScale = 1.6; ///< Of the host's font.

constexpr const char* Description = "Set-up utility for the K5216-505 network communication board.\n"
                                    "Copyright (c) 2026 The VANTREL developers.\n"
                                    "Free software under the MIT licence, without any warranty.\n"
                                    "Uses Qt, copyright (c) The Qt Company Ltd. and others, under the GNU Lesser\n"
                                    "General Public License, version 3: see the licences that came with it.";
constexpr const char* TechSupport = "Something does not work?  Help Topics (F1) names the cause of every message.\n"
                                    "To report a fault, please add the program's version, what the status bar said,\n"
                                    "and the trace of the line: start the program with --trace FILE.";

QLabel* AddLabel(QWidget* parent, const char* name, const QString& text) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

SystemInfoHost QtSystemInfoHost() {
    return {.registry = GetKeyValue,
            .fileExists = [](const std::string& path) { return QFileInfo::exists(QString::fromStdString(path)); },
            .start = [](const std::string& path) { return QProcess::startDetached(QString::fromStdString(path), {}); }};
}

frmAbout::frmAbout(SystemInfoHost host, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent), host_(std::move(host)), dialogs_(dialogs) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About VANTREL"));
    BuildLabels();
    BuildButtons();
    LayOut();
}

void frmAbout::BuildLabels() {
    lblTitle = AddLabel(this, "lblTitle", QStringLiteral("VANTREL"));
    QFont large = lblTitle->font();
    large.setPointSizeF(TitleScale * large.pointSizeF());
    large.setBold(true);
    lblTitle->setFont(large);
    lblVersion = AddLabel(this, "lblVersion", QStringLiteral("Version ") + QString::fromStdString(VersionNumber()));
    lblDescription = AddLabel(this, "lblDescription", QString::fromLatin1(Description));
    lblTechSupport = AddLabel(this, "lblTechSupport", QString::fromLatin1(TechSupport));
}

void frmAbout::BuildButtons() {
    cmdOk = new QPushButton(tr("&Ok"), this);
    cmdOk->setObjectName(QStringLiteral("cmdOk"));
    cmdOk->setDefault(true);
    connect(cmdOk, &QPushButton::clicked, this, &QDialog::accept);
    cmdSysInfo = new QPushButton(tr("&System Info..."), this);
    cmdSysInfo->setObjectName(QStringLiteral("cmdSysInfo"));
    cmdSysInfo->setAutoDefault(false);
    connect(cmdSysInfo, &QPushButton::clicked, this, [this] { StartSysInfo(host_, dialogs_); });
    cmdOk->setFocus();
}

void frmAbout::LayOut() {
    auto* icon = new QLabel(this);
    const int side = PixelsOfTwips(IconTwips, *this);
    icon->setPixmap(IconOf(ProgramIcon::Program).pixmap(side));
    icon->setAlignment(Qt::AlignTop);
    auto* texts = new QVBoxLayout;
    const int gap = PixelsOfTwips(MarginTwips, *this);
    texts->setSpacing(gap / 3);
    for (QLabel* label : {lblTitle, lblVersion})
        texts->addWidget(label);
    texts->addSpacing(gap / 2);
    for (QLabel* label : {lblDescription, lblTechSupport}) {
        texts->addWidget(label);
        texts->addSpacing(gap / 2);
    }
    auto* top = new QHBoxLayout;
    top->setSpacing(gap);
    top->addWidget(icon, 0, Qt::AlignTop);
    top->addLayout(texts);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdSysInfo);
    buttons->addWidget(cmdOk);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(gap, gap, gap, gap);
    all->setSizeConstraint(QLayout::SetFixedSize);
    all->addLayout(top);
    all->addLayout(buttons);
}

void frmAbout::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) CentreOnScreen(*this);
    QDialog::showEvent(event);
}

} // namespace vantrel
