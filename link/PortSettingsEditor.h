// What the dialog "Comm Port Settings" decides: what it shows, what it refuses, what saving writes. Knows the link, the
// port, the program folder and whoever asks the user; no toolkit.
#pragma once

#include "link/PortSettings.h"
#include "link/RSComm.h"
#include "platform/Dialogs.h"
#include "platform/Folders.h"
#include "platform/SerialDevices.h"
#include "platform/SerialPort.h"

#include <filesystem>
#include <string>
#include <vector>

namespace vantrel {

class PortSettingsEditor {
public:
    /// One showing of the dialog; everything given must outlive it. `fixedDevice`: what `port` opens whatever its
    /// number ("a simulated board"); empty when the number decides.
    PortSettingsEditor(RSComm& link, SerialPort& port, const ProgramFolder& folder, PortRange range, Dialogs& dialogs,
                       std::string fixedDevice = {});

    /// The settings to show on opening: those that the next opening of the port takes. Those that the link last used
    /// when the file cannot be read, which is reported.
    [[nodiscard]] PortSettings CurrentSettings();
    /// The port number that the text means: a whole number of the range. Otherwise the user is told; false.
    [[nodiscard]] bool AcceptsPort(const std::string& text);
    /// The text is the address of a board behind a network. Otherwise the user is told; false.
    [[nodiscard]] bool AcceptsAddress(const std::string& text);
    /// The address that the number stands for; empty when it stands for a device.
    [[nodiscard]] std::string AddressOf(const std::string& text) const;
    /// The text after so many steps up (below 0: down), within the range. What is no number steps to the minimum.
    [[nodiscard]] std::string Stepped(const std::string& text, int steps) const;

    /// The serial devices that are there. Opens none of them.
    [[nodiscard]] std::vector<SerialDevice> Devices() const { return PresentSerialDevices(supportFolder_); }
    /// What a device is called in a list, and what else is known of it.
    struct DeviceTexts {
        std::string name;
        std::string what;
    };
    [[nodiscard]] static DeviceTexts TextsOf(const SerialDevice& device);
    /// The number in the box stands for this device.
    [[nodiscard]] bool StandsFor(const std::string& text, const SerialDevice& device) const;
    /// The number to show when the user takes a device from the list: its own, else the one that it is chosen for.
    [[nodiscard]] std::string NumberFor(const std::string& text, const SerialDevice& device) const;
    /// The program has the port open, and its device is still there.
    [[nodiscard]] bool PortIsOpen();

    // `chosen`: the device, or the address, that the user has taken for the number; empty for the one that the number
    // stands for, NoChoice for none that was ever chosen.
    static constexpr const char* NoChoice = "(none)";

    /// The device that the number stands for; empty when the text is no number of the range.
    [[nodiscard]] std::string DeviceName(const std::string& text, const std::string& chosen = {}) const;
    /// The same, and whether it is there, in use or not permitted, with what to do. Opens the device for a moment,
    /// unless the program has it open.
    [[nodiscard]] std::string DeviceLine(const std::string& text, const std::string& chosen = {});

    /// Closes the port and writes `RSPort.cfg`, the device that was chosen for the number, and the file of each
    /// development tool. From then on the saved number counts, whatever the command line named. False when the dialog
    /// has to stay open: the number was refused, or the settings could not be written, which is reported.
    [[nodiscard]] TaskOf<bool> Save(std::string text, std::string speed, std::string chosen = {});
    /// Opens the port again if saving closed it; after the dialog has closed, by whatever button.
    [[nodiscard]] Task Finish();

private:
    [[nodiscard]] bool InRange(const std::string& text) const;
    [[nodiscard]] std::string DeviceOf(const std::string& text, const std::string& chosen) const;
    void WriteToolFile(const std::filesystem::path& file, int portNumber);

    RSComm& link_;
    SerialPort& port_;
    std::filesystem::path supportFolder_;
    PortRange range_;
    Dialogs& dialogs_;
    std::string fixedDevice_;
    std::vector<std::filesystem::path> toolFiles_; ///< One for each development tool whose folder is there.
    bool reopen_ = false;
};

} // namespace vantrel
