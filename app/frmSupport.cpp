#include "app/frmSupport.h"

#include "platform/QtScreen.h"

#include <QDialogButtonBox>
#include <QVBoxLayout>

namespace vantrel {

namespace {

QLabel* Line(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

frmSupport::frmSupport(const SupportReport& report, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmSupport"));
    setWindowTitle(QStringLiteral("Save Report for Support"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    lstItems = new QTreeWidget(this);
    lstItems->setObjectName(QStringLiteral("lstItems"));
    lstItems->setAccessibleName(tr("What goes in"));
    lstItems->setHeaderLabels({tr("File"), tr("What it is"), tr("Size")});
    lstItems->setRootIsDecorated(false);
    for (const SupportReport::Item& item : report.Items()) {
        auto* row = new QTreeWidgetItem(lstItems, {QString::fromStdString(item.name), QString::fromStdString(item.what),
                                                   QString::fromStdString(SizeText(item.bytes.size()))});
        row->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
    }
    for (int column = 0; column < lstItems->columnCount(); ++column) {
        lstItems->resizeColumnToContents(column);
        lstItems->setColumnWidth(column, lstItems->columnWidth(column) + 2 * fontMetrics().averageCharWidth());
    }
    QString leftOut;
    for (const std::string& one : report.LeftOut())
        leftOut += tr("Left out: %1\n").arg(QString::fromStdString(one));
    lblLeftOut = Line(leftOut.trimmed(), this);
    lblLeftOut->setVisible(!leftOut.isEmpty());
    cmdSave = new QPushButton(tr("&Save..."), this);
    cmdSave->setObjectName(QStringLiteral("cmdSave"));
    cmdSave->setDefault(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    buttons->addButton(cmdSave, QDialogButtonBox::AcceptRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* all = new QVBoxLayout(this);
    all->addWidget(Line(tr("All of this, and nothing else, goes into one zip file for the maintainers. It is only "
                           "saved, and sent nowhere."),
                        this));
    all->addWidget(lstItems, 1);
    all->addWidget(lblLeftOut);
    all->addWidget(buttons);
    resize(SizeOnScreen({.width = 9600, .height = 5200}, *this));
}

} // namespace vantrel
