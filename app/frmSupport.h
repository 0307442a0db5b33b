// What goes into the report for support, before it is written. Shows only; whoever owns it writes the file.
#pragma once

#include "app/SupportReport.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

namespace vantrel {

/// Modal, by exec(): Accepted when the user wants to save it.
class frmSupport final : public QDialog {
public:
    frmSupport(const SupportReport& report, QWidget* parent);

    // Controls.
    QTreeWidget* lstItems = nullptr;
    QLabel* lblLeftOut = nullptr;
    QPushButton* cmdSave = nullptr;
};

} // namespace vantrel
