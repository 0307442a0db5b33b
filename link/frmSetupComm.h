// The dialog "Comm Port Settings": carries texts and clicks to PortSettingsEditor, which decides.
#pragma once

#include "link/PortSettingsEditor.h"
#include "platform/DocumentDialogs.h"
#include "widgets/QtUpDown.h"

#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <string>

namespace vantrel {

class frmSetupComm final : public QDialog {
public:
    /// Modal; show it with exec(). An open port is closed by Save and opened again when the dialog has gone from the
    /// screen. `fixedDevice`: see PortSettingsEditor.
    frmSetupComm(RSComm& link, SerialPort& port, const ProgramFolder& folder, PortRange range, DocumentDialogs& dialogs,
                 QWidget* parent = nullptr, std::string fixedDevice = {});

    ~frmSetupComm() override;

    void done(int result) override;

    // Controls, by their names.
    QGroupBox* fraCommPort = nullptr;
    QRadioButton* optCommPort = nullptr;
    QLineEdit* txtCommPort = nullptr;
    QtUpDown* updCommPort = nullptr;
    QLabel* lblDevice = nullptr;
    QGroupBox* fraPortSpeed = nullptr;
    QRadioButton* optPortSpeed[2] = {nullptr, nullptr}; ///< 9600 and 19200.
    QPushButton* cmdSave = nullptr;
    QPushButton* cmdCancel = nullptr;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void BuildPortFrame();
    void BuildSpeedFrame();
    void BuildButtons();
    void LayOut();
    void ShowCurrentSettings();
    void ShowDevice();
    void FocusMoved(const QWidget* from, const QWidget* to);
    void CheckPort();
    void BackToPort();
    void Save();
    [[nodiscard]] std::string PortText() const;

    PortSettingsEditor decides_;
    QTimer deviceTimer_; ///< Until the device of a changed number is looked at.
    QTimer checkTimer_; ///< Until the number that the focus has left is checked.
};

} // namespace vantrel
