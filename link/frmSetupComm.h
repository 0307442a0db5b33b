// The dialog "Comm Port Settings": carries texts and clicks to PortSettingsEditor, which decides.
#pragma once

#include "link/PortSettingsEditor.h"
#include "platform/Task.h"
#include "widgets/QtUpDown.h"

#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QTreeWidget>

#include <string>
#include <vector>

namespace vantrel {

class frmSetupComm final : public QDialog {
public:
    /// Modal; show it with exec(). `decides` must outlive it; whoever owns that finishes what Save has begun when the
    /// dialog has gone from the screen.
    explicit frmSetupComm(PortSettingsEditor& decides, QWidget* parent = nullptr);

    ~frmSetupComm() override;

    /// While Save is at work, which takes a second at the most, the dialog stays.
    void done(int result) override;

    // Controls, by their names.
    QGroupBox* fraCommPort = nullptr;
    QRadioButton* optCommPort = nullptr;
    QLineEdit* txtCommPort = nullptr;
    QtUpDown* updCommPort = nullptr;
    QTreeWidget* lstDevices = nullptr; ///< The serial devices that are there; a click takes one.
    QLineEdit* txtNetwork = nullptr; ///< The address of a board behind a network, in the place of a device.
    QLabel* lblDevice = nullptr;
    QGroupBox* fraPortSpeed = nullptr;
    QRadioButton* optPortSpeed[2] = {nullptr, nullptr}; ///< 9600 and 19200.
    QPushButton* cmdSave = nullptr;
    QPushButton* cmdCancel = nullptr;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void BuildPortFrame();
    void BuildDevices();
    /// Looks which devices are there, and whether the open port still is one of them.
    void LookForDevices();
    void FillDevices();
    void MarkDevice();
    void TakeDevice();
    void PortChanged();
    void BuildNetwork();
    /// Shows the address that is taken for the number, if there is one.
    void ShowAddress();
    void AddressEdited();
    void BuildSpeedFrame();
    void BuildButtons();
    void LayOut();
    void ShowCurrentSettings();
    void ShowDevice();
    void FocusMoved(const QWidget* from, const QWidget* to);
    void CheckPort();
    void BackToPort();
    void Save();
    Task SaveTask();
    void EnableControls(bool enabled);
    [[nodiscard]] std::string PortText() const;

    PortSettingsEditor& decides_;
    std::vector<SerialDevice> devices_; ///< As they are listed.
    std::string
        chosen_; ///< The device taken from the list, or the address typed, for the number; empty: the number says it.
    bool portIsOpen_ = false;
    QTimer lookTimer_; ///< While the dialog is up; devices come and go with their plugs.
    QTimer deviceTimer_; ///< Until the device of a changed number is looked at.
    QTimer checkTimer_; ///< Until the number that the focus has left is checked.
    bool saving_ = false;
    Task save_;
};

} // namespace vantrel
