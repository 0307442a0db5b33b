#include "platform/NetworkSerialPort.h"

#include "platform/NameLookup.h"
#include "platform/Rfc2217.h"
#include "platform/RuntimeError.h"
#include "platform/SerialSettings.h"

#include <asio/buffer.hpp>
#include <asio/connect.hpp>
#include <asio/error.hpp>
#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/write.hpp>

#include <algorithm>
#include <array>
#include <deque>
#include <optional>
#include <utility>
#include <vector>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

/// A server whose port is in use takes the connection, says so in words of its own, and ends it.
constexpr MonotonicTime TurnedAwayTime = 150ms;

RuntimeError Failure(ErrorNumber number, const std::string& text) { return {number, text}; }

RuntimeError LookupFailure(const NetworkAddress& address, const std::error_code& why) {
    const bool unknown = why == asio::error::host_not_found || why == asio::error::no_data;
    if (unknown) {
        return Failure(ErrorNumber::FileNotFound, "There is no host \"" + address.host +
                                                      "\" in this network. Is the name right, and the network up?");
    }
    return Failure(ErrorNumber::PathFileAccess,
                   "The host \"" + address.host + "\" cannot be looked up now: " + why.message() + ".");
}

RuntimeError ConnectFailure(const NetworkAddress& address, const std::error_code& why) {
    const std::string where = HostAndPort(address);
    if (why == asio::error::connection_refused) {
        return Failure(ErrorNumber::PathFileAccess,
                       "The connection was refused by " + where +
                           ". Is the serial server running, and is the port number right?");
    }
    return Failure(ErrorNumber::PathFileAccess, where + " cannot be reached: " + why.message() + ".");
}

RuntimeError TurnedAway(const NetworkAddress& address) {
    return Failure(ErrorNumber::PathFileAccess,
                   HostAndPort(address) +
                       " ended the connection at once. Another program uses its serial port, or the server lets "
                       "nobody in from here.");
}

} // namespace

/// From looking up the name to the end. Everything happens in Step(), which waits for nothing.
class NetworkSerialPort::Connection {
public:
    Connection(Clock& clock, const NetworkAddress& address, unsigned speed)
        : clock_(clock), address_(address), speed_(speed), lookup_(address), openBy_(clock.Now() + LongestOpening) {
        if (address.kind == NetworkAddress::Kind::Rfc2217) control_.emplace(speed);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() {
        std::error_code ignored;
        socket_.shutdown(asio::ip::tcp::socket::shutdown_both, ignored); // NOLINT(bugprone-unused-return-value)
        socket_.close(ignored); // NOLINT(bugprone-unused-return-value): it is gone either way
    }

    [[nodiscard]] bool Opening() const { return phase_ < Phase::Open; }
    [[nodiscard]] bool Lost() const { return lost_; }
    [[nodiscard]] std::deque<std::uint8_t>& Received() { return received_; }
    [[nodiscard]] const std::optional<RuntimeError>& WhyNot() const { return failure_; }
    [[nodiscard]] int Descriptor() const;

    /// Takes what the host has ready.
    void Step() {
        Poll();
        if (!Opening()) return;
        try {
            StepOpening();
        } catch (const RuntimeError& error) {
            failure_ = error;
            phase_ = Phase::Failed;
            lost_ = true;
        }
    }
    /// The same, after sleeping until the host has something, at most so long.
    void SleepAndStep(MonotonicTime longest) {
        if (phase_ == Phase::LookingUp) {
            (void)lookup_.WaitFor(longest);
        } else {
            context_.restart();
            context_.run_one_for(longest);
        }
        Step();
    }
    /// When opening has to be looked at again without anything from outside.
    [[nodiscard]] MonotonicTime NextLook() const {
        return phase_ == Phase::Settling && !control_ ? settledAt_ : openBy_;
    }

    void Send(std::span<const std::uint8_t> data) {
        if (control_) {
            SendAsIs(telnet::Escaped(data));
        } else {
            SendAsIs(data);
        }
    }
    void Discard() {
        Step();
        received_.clear();
        if (control_) SendAsIs(Rfc2217Client::PurgeReceived());
    }

private:
    enum class Phase { LookingUp, Connecting, Settling, Open, Failed };

    void Poll() {
        context_.restart();
        context_.poll();
    }
    void StepOpening();
    void Connect(const NameLookup::Found& found);
    void Connected();
    void Settle();
    [[noreturn]] void FailSettling() const;
    void KeepReading();
    void Hear(std::span<const std::uint8_t> bytes);
    void SendAsIs(std::span<const std::uint8_t> bytes);
    void KeepSending();

    Clock& clock_;
    const NetworkAddress& address_;
    unsigned speed_;
    asio::io_context context_{1};
    asio::ip::tcp::socket socket_{context_};
    NameLookup lookup_;
    std::vector<asio::ip::tcp::endpoint> endpoints_;
    std::optional<std::error_code> connectResult_;
    std::optional<Rfc2217Client> control_;
    std::optional<RuntimeError> failure_;
    MonotonicTime openBy_;
    MonotonicTime settledAt_{0};
    Phase phase_ = Phase::LookingUp;
    std::array<std::uint8_t, 1024> incoming_{};
    std::deque<std::uint8_t> received_;
    std::vector<std::uint8_t> toSend_;
    std::vector<std::uint8_t> sending_;
    bool reading_ = false;
    bool lost_ = false;
};

void NetworkSerialPort::Connection::StepOpening() {
    if (phase_ == Phase::LookingUp && lookup_.WaitFor(0s)) Connect(lookup_.Result());
    if (phase_ == Phase::Connecting && connectResult_) Connected();
    if (phase_ == Phase::Settling) Settle();
    if (!Opening() || clock_.Now() < openBy_) return;
    if (phase_ == Phase::Settling) FailSettling();
    const std::string what = phase_ == Phase::LookingUp ? "The name \"" + address_.host + "\" could not be looked up"
                                                        : "There was no answer from " + HostAndPort(address_);
    throw Failure(ErrorNumber::PathFileAccess, what + " within 5 seconds. Is the network up, and the server on?");
}

void NetworkSerialPort::Connection::Connect(const NameLookup::Found& found) {
    if (found.error) throw LookupFailure(address_, found.error);
    endpoints_ = found.endpoints;
    phase_ = Phase::Connecting;
    asio::async_connect(socket_, endpoints_,
                        [this](const std::error_code& error, const auto&) { connectResult_ = error; });
    Poll();
}

void NetworkSerialPort::Connection::Connected() {
    if (*connectResult_) throw ConnectFailure(address_, *connectResult_);
    std::error_code ignored; // One that cannot be set makes the line slower, not wrong.
    socket_.set_option(asio::ip::tcp::no_delay(true), ignored); // NOLINT(bugprone-unused-return-value)
    socket_.set_option(asio::socket_base::keep_alive(true), ignored); // NOLINT(bugprone-unused-return-value)
    phase_ = Phase::Settling;
    settledAt_ = clock_.Now() + TurnedAwayTime;
    if (control_) SendAsIs(control_->Begin());
    KeepReading();
    Poll();
}

void NetworkSerialPort::Connection::Settle() {
    if (lost_) throw TurnedAway(address_);
    using State = Rfc2217Client::State;
    const State state = control_ ? control_->Now() : State::Ready;
    if (state == State::NoControl || state == State::Refused) FailSettling();
    if (state == State::Asking || (!control_ && clock_.Now() < settledAt_)) return;
    // A greeting is not of the line.
    received_.clear();
    phase_ = Phase::Open;
}

void NetworkSerialPort::Connection::FailSettling() const {
    const std::string where = HostAndPort(address_);
    const std::string advice = " Where it passes on the bytes of the line as they are, use socket://" + where +
                               " and set the speed at the server.";
    if (control_->Now() == Rfc2217Client::State::Refused) {
        throw Failure(ErrorNumber::InvalidProcedureCall,
                      "The server at " + where + " cannot set its line to " + std::to_string(speed_) + ",n,8,1.");
    }
    if (control_->Now() == Rfc2217Client::State::NoControl) {
        throw Failure(ErrorNumber::PathFileAccess,
                      "The server at " + where + " lets nobody set the speed of its line (RFC 2217)." + advice);
    }
    throw Failure(ErrorNumber::PathFileAccess,
                  control_->SpeaksTelnet()
                      ? "The server at " + where + " has not confirmed the speed of its line within 5 seconds."
                      : "Something takes connections at " + where +
                            ", but it does not answer as a server of RFC 2217." + advice);
}

void NetworkSerialPort::Connection::KeepReading() {
    if (reading_ || lost_) return;
    reading_ = true;
    socket_.async_read_some(asio::buffer(incoming_), [this](const std::error_code& error, std::size_t count) {
        reading_ = false;
        Hear(std::span(incoming_).first(count));
        if (error) lost_ = true;
        KeepReading();
    });
}

void NetworkSerialPort::Connection::Hear(std::span<const std::uint8_t> bytes) {
    if (!control_) {
        received_.insert(received_.end(), bytes.begin(), bytes.end());
        return;
    }
    const Rfc2217Client::Taken taken = control_->Take(bytes);
    received_.insert(received_.end(), taken.data.begin(), taken.data.end());
    SendAsIs(taken.replies);
}

void NetworkSerialPort::Connection::SendAsIs(std::span<const std::uint8_t> bytes) {
    if (lost_) return;
    toSend_.insert(toSend_.end(), bytes.begin(), bytes.end());
    KeepSending();
}

void NetworkSerialPort::Connection::KeepSending() {
    if (lost_ || !sending_.empty() || toSend_.empty()) return;
    std::swap(sending_, toSend_);
    asio::async_write(socket_, asio::buffer(sending_), [this](const std::error_code& error, std::size_t) {
        sending_.clear();
        if (error) lost_ = true;
        KeepSending();
    });
}

int NetworkSerialPort::Connection::Descriptor() const {
#ifdef _WIN32
    return -1; // Its sockets are watched by the host's own means, which two cannot share.
#else
    return phase_ == Phase::Open ? const_cast<asio::ip::tcp::socket&>(socket_).native_handle() : -1;
#endif
}

NetworkSerialPort::NetworkSerialPort(Clock& clock, NetworkAddress address)
    : clock_(clock), address_(std::move(address)) {}

NetworkSerialPort::~NetworkSerialPort() { NetworkSerialPort::Close(); }

void NetworkSerialPort::Open() {
    BeginOpen();
    while (Opening())
        (void)WaitForByte(clock_.Now() + LongestOpening);
    FinishOpen();
}

void NetworkSerialPort::BeginOpen() {
    Close();
    connection_ = std::make_unique<Connection>(clock_, address_, SpeedOfSettings(settings_));
}

bool NetworkSerialPort::Opening() {
    if (!connection_ || !connection_->Opening()) return false;
    connection_->Step();
    return connection_->Opening();
}

void NetworkSerialPort::FinishOpen() {
    if (!connection_ || !connection_->WhyNot()) return;
    const auto failed = std::move(connection_);
    throw RuntimeError(*failed->WhyNot());
}

void NetworkSerialPort::Close() noexcept { connection_.reset(); }

bool NetworkSerialPort::IsOpen() const { return connection_ != nullptr; }

bool NetworkSerialPort::IsLost() const { return connection_ && connection_->Lost(); }

void NetworkSerialPort::Write(std::span<const std::uint8_t> bytes) {
    if (!connection_) return;
    connection_->Step();
    if (!connection_->Opening()) connection_->Send(bytes);
}

std::size_t NetworkSerialPort::ReceivedCount() {
    if (!connection_) return 0;
    if (connection_->Received().empty()) connection_->Step();
    return connection_->Received().size();
}

std::uint8_t NetworkSerialPort::ReadByte() {
    if (!connection_ || connection_->Received().empty()) {
        throw RuntimeError(ErrorNumber::InputPastEndOfFile, "Nothing has been received.");
    }
    const std::uint8_t byte = connection_->Received().front();
    connection_->Received().pop_front();
    return byte;
}

void NetworkSerialPort::ClearReceived() {
    if (connection_ && !connection_->Opening()) connection_->Discard();
}

PortWait NetworkSerialPort::WaitForByte(MonotonicTime deadline) {
    if (!connection_) return PortWait::Lost;
    const bool opening = Opening();
    for (;;) {
        if (opening && !Opening()) return PortWait::Opened;
        if (!opening && ReceivedCount() > 0) return PortWait::ByteReceived;
        if (connection_->Lost()) return PortWait::Lost;
        const MonotonicTime until = opening ? std::min(deadline, connection_->NextLook()) : deadline;
        const MonotonicTime left = until - clock_.Now();
        if (clock_.Now() >= deadline) return PortWait::TimedOut;
        connection_->SleepAndStep(std::max<MonotonicTime>(left, 0s));
    }
}

int NetworkSerialPort::WatchedDescriptor() const { return connection_ ? connection_->Descriptor() : -1; }

} // namespace vantrel
