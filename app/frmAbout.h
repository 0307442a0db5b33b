// The About dialog: title, version, whose program it is, and the way to the host's system information.
#pragma once

#include "app/SystemInfo.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>

namespace vantrel {

/// The system-information tool as this host knows it.
[[nodiscard]] SystemInfoHost QtSystemInfoHost();

class frmAbout final : public QDialog {
public:
    /// Modal; show it with exec().
    frmAbout(SystemInfoHost host, Dialogs& dialogs, QWidget* parent = nullptr);

    // Controls, by their names.
    QLabel* lblTitle = nullptr;
    QLabel* lblVersion = nullptr;
    QLabel* lblDescription = nullptr;
    QLabel* lblTechSupport = nullptr;
    QPushButton* cmdOk = nullptr;
    QPushButton* cmdSysInfo = nullptr;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void BuildLabels();
    void BuildButtons();
    void LayOut();

    SystemInfoHost host_;
    Dialogs& dialogs_;
};

} // namespace vantrel
