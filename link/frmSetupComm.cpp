// Controls, layout, and when the number in the box is checked.
#include "link/frmSetupComm.h"

#include "platform/NetworkAddress.h"
#include "platform/QtScreen.h"

#include <QApplication>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QShowEvent>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <initializer_list>
#include <utility>

namespace vantrel {

namespace {

constexpr int DialogTwips = 7200;
constexpr int DevicesTwips = 1800; ///< The height of the list.
constexpr int BoxTwips = 720;
constexpr int DeviceLines = 4;
/// Looking at a device opens it for a moment, which those that are only stepped over are spared.
constexpr int DeviceMilliseconds = 300;
constexpr int LookMilliseconds = 1000;

constexpr const char* Speeds[2] = {"9600", "19200"};

template <typename Control> Control* Named(Control* control, const char* name) {
    control->setObjectName(QLatin1String(name));
    return control;
}

} // namespace

frmSetupComm::frmSetupComm(PortSettingsEditor& decides, QWidget* parent) : QDialog(parent), decides_(decides) {
    setObjectName(QStringLiteral("frmSetupComm"));
    setWindowTitle(QStringLiteral("Comm Port Settings"));
    BuildPortFrame();
    BuildDevices();
    BuildNetwork();
    BuildSpeedFrame();
    BuildButtons();
    LayOut();
    ShowCurrentSettings();
    // The box must not come up in the middle of the click or key that moves the focus, but right after it.
    checkTimer_.setSingleShot(true);
    checkTimer_.callOnTimeout(this, [this] { CheckPort(); });
    connect(qApp, &QApplication::focusChanged, this, &frmSetupComm::FocusMoved);
}

frmSetupComm::~frmSetupComm() {
    // The window loses the focus while it goes, when this class is no longer there to hear of it.
    disconnect(qApp, nullptr, this, nullptr);
}

void frmSetupComm::BuildPortFrame() {
    fraCommPort = Named(new QGroupBox(tr("Comm &Port"), this), "fraCommPort");
    optCommPort = Named(new QRadioButton(QStringLiteral("COM"), fraCommPort), "optCommPort");
    // The only choice of its frame: it stands for the box behind it.
    optCommPort->setChecked(true);
    optCommPort->setFocusPolicy(Qt::NoFocus);
    txtCommPort = Named(new QLineEdit(QStringLiteral("1"), fraCommPort), "txtCommPort");
    txtCommPort->setAccessibleName(tr("Comm port number"));
    SelectAllOnFocus(*txtCommPort);
    updCommPort = Named(new QtUpDown(
                            *txtCommPort,
                            [this](int direction) {
                                const std::string text = decides_.Stepped(PortText(), direction);
                                txtCommPort->setText(QString::fromStdString(text));
                                txtCommPort->selectAll();
                            },
                            fraCommPort),
                        "updCommPort");
    lblDevice = Named(new QLabel(fraCommPort), "lblDevice");
    lblDevice->setTextFormat(Qt::PlainText);
    lblDevice->setWordWrap(true);
    lblDevice->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lblDevice->setTextInteractionFlags(Qt::TextSelectableByMouse);
    connect(optCommPort, &QRadioButton::clicked, this, &frmSetupComm::BackToPort);
    connect(txtCommPort, &QLineEdit::textChanged, this, &frmSetupComm::PortChanged);
    deviceTimer_.setSingleShot(true);
    deviceTimer_.setInterval(DeviceMilliseconds);
    deviceTimer_.callOnTimeout(this, [this] { ShowDevice(); });
}

void frmSetupComm::BuildDevices() {
    lstDevices = Named(new QTreeWidget(fraCommPort), "lstDevices");
    lstDevices->setAccessibleName(tr("Serial devices of this computer"));
    lstDevices->setHeaderLabels({tr("Port"), tr("Serial devices of this computer")});
    lstDevices->setRootIsDecorated(false);
    lstDevices->setUniformRowHeights(true);
    lstDevices->setFixedHeight(PixelsOfTwips(DevicesTwips, *this));
    connect(lstDevices, &QTreeWidget::itemSelectionChanged, this, &frmSetupComm::TakeDevice);
    lookTimer_.setInterval(LookMilliseconds);
    lookTimer_.callOnTimeout(this, [this] { LookForDevices(); });
}

void frmSetupComm::BuildNetwork() {
    txtNetwork = Named(new QLineEdit(fraCommPort), "txtNetwork");
    txtNetwork->setAccessibleName(tr("Board behind a network"));
    txtNetwork->setPlaceholderText(QString::fromLatin1(NetworkAddressForm));
    txtNetwork->setToolTip(tr("The address of a serial server, in the place of a device of this computer.\n"
                              "rfc2217: the program sets the speed there; socket: the server has its own."));
    SelectAllOnFocus(*txtNetwork);
    connect(txtNetwork, &QLineEdit::textEdited, this, &frmSetupComm::AddressEdited);
}

void frmSetupComm::ShowAddress() {
    const bool typed = !chosen_.empty() && chosen_ != PortSettingsEditor::NoChoice;
    const std::string address = chosen_.empty() ? decides_.AddressOf(PortText()) : typed ? chosen_ : std::string();
    txtNetwork->setText(MeantAsNetworkAddress(address) ? QString::fromStdString(address) : QString());
}

void frmSetupComm::AddressEdited() {
    chosen_ = txtNetwork->text().trimmed().toStdString();
    // Emptied where an address was kept, the number is to stand for its own port again.
    if (chosen_.empty() && !decides_.AddressOf(PortText()).empty()) chosen_ = PortSettingsEditor::NoChoice;
    lblDevice->setText(QString::fromStdString(decides_.DeviceName(PortText(), chosen_)));
    MarkDevice();
}

void frmSetupComm::BuildSpeedFrame() {
    fraPortSpeed = Named(new QGroupBox(tr("Port Sp&eed"), this), "fraPortSpeed");
    for (int i = 0; i < 2; ++i) {
        optPortSpeed[i] = new QRadioButton(QLatin1String(Speeds[i]), fraPortSpeed);
        optPortSpeed[i]->setObjectName(QStringLiteral("optPortSpeed%1").arg(i));
    }
}

void frmSetupComm::BuildButtons() {
    cmdSave = Named(new QPushButton(tr("&Save"), this), "cmdSave");
    cmdCancel = Named(new QPushButton(tr("&Cancel"), this), "cmdCancel");
    cmdSave->setDefault(true);
    for (QPushButton* button : {cmdSave, cmdCancel}) {
        // A click decides at once, with the focus still in the box: Save checks for itself, Cancel not at all.
        button->setFocusPolicy(Qt::TabFocus);
    }
    connect(cmdSave, &QPushButton::clicked, this, &frmSetupComm::Save);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmSetupComm::LayOut() {
    auto* number = new QHBoxLayout;
    number->addWidget(optCommPort);
    number->addWidget(txtCommPort);
    number->addWidget(updCommPort);
    number->addStretch();
    number->setSpacing(0);
    auto* port = new QVBoxLayout(fraCommPort);
    port->addLayout(number);
    port->addWidget(lstDevices);
    auto* network = new QHBoxLayout;
    auto* networkLabel = new QLabel(tr("Behind a &network:"), fraCommPort);
    networkLabel->setBuddy(txtNetwork);
    network->addWidget(networkLabel);
    network->addWidget(txtNetwork);
    port->addLayout(network);
    port->addWidget(lblDevice);
    auto* speed = new QHBoxLayout(fraPortSpeed);
    speed->addWidget(optPortSpeed[0]);
    speed->addWidget(optPortSpeed[1]);
    speed->addStretch();
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdSave);
    buttons->addWidget(cmdCancel);
    auto* column = new QVBoxLayout(this);
    column->addWidget(fraCommPort);
    column->addWidget(fraPortSpeed);
    column->addStretch();
    column->addLayout(buttons);

    txtCommPort->setFixedWidth(EntryWidth(BoxTwips, *txtCommPort, QStringLiteral("000")));
    lblDevice->setMinimumHeight(DeviceLines * lblDevice->fontMetrics().lineSpacing());
    setMinimumWidth(PixelsOfTwips(DialogTwips, *this));
    txtCommPort->setFocus();
}

void frmSetupComm::ShowCurrentSettings() {
    const PortSettings settings = decides_.CurrentSettings();
    txtCommPort->setText(QString::number(settings.number));
    ShowAddress();
    optPortSpeed[settings.speed == Speeds[1] ? 1 : 0]->setChecked(true);
}

void frmSetupComm::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        portIsOpen_ = decides_.PortIsOpen();
        devices_ = decides_.Devices();
        FillDevices();
        ShowDevice();
        lookTimer_.start();
        CentreOnScreen(*this);
    }
    QDialog::showEvent(event);
}

void frmSetupComm::LookForDevices() {
    const bool open = decides_.PortIsOpen();
    std::vector<SerialDevice> devices = decides_.Devices();
    if (saving_ || (open == portIsOpen_ && devices == devices_)) return;
    portIsOpen_ = open;
    devices_ = std::move(devices);
    FillDevices();
    ShowDevice();
}

void frmSetupComm::FillDevices() {
    const QSignalBlocker quiet(lstDevices);
    lstDevices->clear();
    for (const SerialDevice& device : devices_) {
        const auto texts = PortSettingsEditor::TextsOf(device);
        lstDevices->addTopLevelItem(
            new QTreeWidgetItem({QString::fromStdString(texts.name), QString::fromStdString(texts.what)}));
    }
    if (devices_.empty()) {
        auto* none = new QTreeWidgetItem({QString(), tr("No serial device is plugged in.")});
        none->setFlags(Qt::NoItemFlags);
        lstDevices->addTopLevelItem(none);
    }
    lstDevices->resizeColumnToContents(0);
    MarkDevice();
}

void frmSetupComm::MarkDevice() {
    const QSignalBlocker quiet(lstDevices);
    lstDevices->clearSelection();
    for (std::size_t i = 0; i < devices_.size(); ++i) {
        const bool marked =
            chosen_.empty() ? decides_.StandsFor(PortText(), devices_[i]) : devices_[i].device == chosen_;
        if (marked) lstDevices->setCurrentItem(lstDevices->topLevelItem(static_cast<int>(i)));
    }
}

void frmSetupComm::TakeDevice() {
    const QList<QTreeWidgetItem*> taken = lstDevices->selectedItems();
    if (taken.isEmpty()) {
        // A click beside the devices.
        MarkDevice();
        return;
    }
    const SerialDevice device = devices_.at(static_cast<std::size_t>(lstDevices->indexOfTopLevelItem(taken.front())));
    const std::string number = decides_.NumberFor(PortText(), device);
    txtCommPort->setText(QString::fromStdString(number));
    chosen_ = decides_.StandsFor(number, device) ? std::string() : device.device;
    ShowAddress();
    MarkDevice();
    ShowDevice();
}

void frmSetupComm::PortChanged() {
    chosen_.clear();
    ShowAddress();
    lblDevice->setText(QString::fromStdString(decides_.DeviceName(PortText())));
    MarkDevice();
    deviceTimer_.start();
}

void frmSetupComm::ShowDevice() {
    deviceTimer_.stop();
    const QString line = QString::fromStdString(decides_.DeviceLine(PortText(), chosen_));
    lblDevice->setText(line);
    txtCommPort->setAccessibleDescription(line);
}

void frmSetupComm::FocusMoved(const QWidget* from, const QWidget* to) {
    if (!isVisible() || from != txtCommPort || !to || to->window() != this || to == cmdCancel) return;
    checkTimer_.start();
}

void frmSetupComm::CheckPort() {
    if (txtCommPort->hasFocus() || decides_.AcceptsPort(PortText())) return;
    // The release of a button that was pressed went to the box.
    if (auto* button = qobject_cast<QAbstractButton*>(focusWidget())) button->setDown(false);
    BackToPort();
}

void frmSetupComm::BackToPort() {
    txtCommPort->setFocus();
    txtCommPort->selectAll();
}

void frmSetupComm::Save() {
    if (saving_) return;
    save_ = SaveTask();
    save_.Start();
}

Task frmSetupComm::SaveTask() {
    const std::string address = txtNetwork->text().trimmed().toStdString();
    if (!address.empty() && !decides_.AcceptsAddress(address)) {
        txtNetwork->setFocus();
        co_return;
    }
    EnableControls(false);
    const std::string speed = Speeds[optPortSpeed[1]->isChecked() ? 1 : 0];
    bool saved = false;
    try {
        saved = co_await decides_.Save(PortText(), speed, chosen_);
    } catch (...) {
        EnableControls(true);
        throw;
    }
    EnableControls(true);
    if (saved) {
        accept();
    } else {
        BackToPort();
    }
}

void frmSetupComm::EnableControls(bool enabled) {
    saving_ = !enabled;
    for (QWidget* one : std::initializer_list<QWidget*>{fraCommPort, fraPortSpeed, cmdSave, cmdCancel})
        one->setEnabled(enabled);
}

void frmSetupComm::done(int result) {
    if (saving_) return;
    lookTimer_.stop();
    deviceTimer_.stop();
    checkTimer_.stop();
    QDialog::done(result);
}

std::string frmSetupComm::PortText() const { return txtCommPort->text().toStdString(); }

} // namespace vantrel
