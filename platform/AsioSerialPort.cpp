#include "platform/AsioSerialPort.h"

#include "platform/RuntimeError.h"
#include "platform/SerialLine.h"
#include "platform/SerialSettings.h"

#include <asio/buffer.hpp>
#include <asio/io_context.hpp>
#include <asio/serial_port.hpp>
#include <asio/write.hpp>

#include <algorithm>
#include <array>
#include <deque>
#include <utility>

namespace vantrel {

/// An open device, with one read always under way: that is what notices a byte, and a device that goes, while waiting.
struct AsioSerialPort::Line {
    asio::io_context context{1};
    asio::serial_port device{context};
    std::array<std::uint8_t, serial::BytesAtOnce> incoming{};
    std::deque<std::uint8_t> received;
    bool reading = false;
    bool lost = false;

    void KeepReading() {
        if (reading || lost) return;
        reading = true;
        device.async_read_some(asio::buffer(incoming), [this](const std::error_code& error, std::size_t count) {
            reading = false;
            received.insert(received.end(), incoming.begin(), incoming.begin() + static_cast<std::ptrdiff_t>(count));
            if (error) lost = true;
        });
    }

    /// Lets the host hand over what has arrived, without waiting.
    void Collect() {
        KeepReading();
        context.restart();
        context.poll();
    }
};

AsioSerialPort::AsioSerialPort(Clock& clock, std::string device) : clock_(clock), device_(std::move(device)) {}

AsioSerialPort::~AsioSerialPort() { AsioSerialPort::Close(); }

void AsioSerialPort::SetSettings(const std::string& settings) { settings_ = settings; }

void AsioSerialPort::Open() {
    Close();
    const unsigned speed = SpeedOfSettings(settings_);
    auto line = std::make_unique<Line>();
    std::error_code error;
    const auto check = [&] {
        // asio's own category knows no conditions, so the host's takes its place.
        if (error) throw serial::OpenFailure(device_, {error.value(), std::system_category()});
    };
    line->device.open(device_, error); // NOLINT(bugprone-unused-return-value): the error is the result
    check();
    if (!serial::TakeForOneself(line->device.native_handle())) {
        throw serial::OpenFailure(device_, std::make_error_code(std::errc::device_or_resource_busy));
    }
    const auto set = [&](const auto& option) {
        line->device.set_option(option, error); // NOLINT(bugprone-unused-return-value)
        check();
    };
    set(asio::serial_port::baud_rate(speed));
    set(asio::serial_port::character_size(8));
    set(asio::serial_port::parity(asio::serial_port::parity::none));
    set(asio::serial_port::stop_bits(asio::serial_port::stop_bits::one));
    set(asio::serial_port::flow_control(asio::serial_port::flow_control::none));
    serial::AskForLowLatency(line->device.native_handle());
    line_ = std::move(line);
}

void AsioSerialPort::Close() noexcept {
    if (!line_) return;
    serial::GiveBack(line_->device.native_handle());
    std::error_code ignored;
    line_->device.close(
        ignored); // NOLINT(bugprone-unused-return-value): a device that has gone cannot be closed better
    line_.reset();
}

bool AsioSerialPort::IsOpen() const { return line_ != nullptr; }

bool AsioSerialPort::IsLost() const { return line_ && line_->lost; }

void AsioSerialPort::Write(std::span<const std::uint8_t> bytes) {
    if (!line_ || line_->lost) return;
    std::error_code error;
    asio::write(line_->device, asio::buffer(bytes.data(), bytes.size()), error);
    if (error) line_->lost = true;
}

std::size_t AsioSerialPort::ReceivedCount() {
    if (!line_) return 0;
    if (line_->received.empty()) line_->Collect();
    return line_->received.size();
}

std::uint8_t AsioSerialPort::ReadByte() {
    if (!line_ || line_->received.empty()) {
        throw RuntimeError(ErrorNumber::InputPastEndOfFile, "Nothing has been received.");
    }
    const std::uint8_t byte = line_->received.front();
    line_->received.pop_front();
    return byte;
}

void AsioSerialPort::ClearReceived() {
    if (!line_) return;
    serial::DiscardReceived(line_->device.native_handle());
    line_->Collect();
    line_->received.clear();
}

PortWait AsioSerialPort::WaitForByte(MonotonicTime deadline) {
    if (!line_) return PortWait::Lost;
    while (ReceivedCount() == 0) {
        if (line_->lost) return PortWait::Lost;
        const MonotonicTime left = deadline - clock_.Now();
        if (left <= MonotonicTime{0}) return PortWait::TimedOut;
        line_->context.restart();
        line_->context.run_one_for(left);
    }
    return PortWait::ByteReceived;
}

int AsioSerialPort::WatchedDescriptor() const {
    return line_ ? serial::WatchedDescriptor(line_->device.native_handle()) : -1;
}

} // namespace vantrel
