#include "platform/HostSerialPort.h"

#include "platform/AsioSerialPort.h"
#include "platform/NetworkAddress.h"
#include "platform/NetworkSerialPort.h"
#include "platform/RuntimeError.h"
#include "platform/SerialDevices.h"

#include <utility>

namespace vantrel {

namespace {

std::unique_ptr<SerialPort> PortOf(Clock& clock, const std::string& device) {
    if (!MeantAsNetworkAddress(device)) return std::make_unique<AsioSerialPort>(clock, device);
    const auto address = ParseNetworkAddress(device);
    if (!address || address->port == 0) {
        throw RuntimeError(ErrorNumber::FileNotFound,
                           "\"" + device + "\" is no address of a board behind a network: " + NetworkAddressForm + ".");
    }
    return std::make_unique<NetworkSerialPort>(clock, *address);
}

} // namespace

HostSerialPort::HostSerialPort(Clock& clock, std::filesystem::path supportFolder)
    : clock_(clock), supportFolder_(std::move(supportFolder)) {}

HostSerialPort::HostSerialPort(Clock& clock, std::string device) : clock_(clock), fixedDevice_(std::move(device)) {}

HostSerialPort::~HostSerialPort() { HostSerialPort::Close(); }

void HostSerialPort::SetPortNumber(int number) {
    number_ = number;
    opened_.clear();
}

void HostSerialPort::SetSettings(const std::string& settings) { settings_ = settings; }

std::string HostSerialPort::Device() const {
    if (!opened_.empty()) return opened_;
    return fixedDevice_.empty() ? SerialDeviceOf(number_, supportFolder_) : fixedDevice_;
}

void HostSerialPort::Open() {
    Close();
    const std::string device = Device();
    port_ = PortOf(clock_, device);
    port_->SetSettings(settings_);
    port_->Open();
    opened_ = device;
}

void HostSerialPort::BeginOpen() {
    Close();
    const std::string device = Device();
    port_ = PortOf(clock_, device);
    port_->SetSettings(settings_);
    port_->BeginOpen();
}

void HostSerialPort::FinishOpen() {
    if (!port_) return;
    const std::string device = Device();
    port_->FinishOpen();
    opened_ = device;
}

void HostSerialPort::Close() noexcept { port_.reset(); }

void HostSerialPort::Write(std::span<const std::uint8_t> bytes) {
    if (port_) port_->Write(bytes);
}

std::uint8_t HostSerialPort::ReadByte() {
    if (!port_) throw RuntimeError(ErrorNumber::InputPastEndOfFile, "Nothing has been received.");
    return port_->ReadByte();
}

void HostSerialPort::ClearReceived() {
    if (port_) port_->ClearReceived();
}

PortWait HostSerialPort::WaitForByte(MonotonicTime deadline) {
    return port_ ? port_->WaitForByte(deadline) : PortWait::Lost;
}

} // namespace vantrel
