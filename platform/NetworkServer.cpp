#include "platform/NetworkServer.h"

#include "platform/Rfc2217.h"
#include "platform/RuntimeError.h"

#include <asio/buffer.hpp>
#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/write.hpp>

#include <array>
#include <utility>

namespace vantrel {

namespace {

/// Of what a program does not take; more is lost, as on a line.
constexpr std::size_t LongestBacklog = 65536;

using asio::ip::tcp;

} // namespace

class NetworkServer::Sockets {
public:
    explicit Sockets(NetworkAddress::Kind kind) : kind_(kind) {}

    void Listen(const NetworkAddress& address) {
        tcp::resolver resolver(context_);
        const auto found = resolver.resolve(address.host, std::to_string(address.port), tcp::resolver::passive);
        const tcp::endpoint endpoint = found.begin()->endpoint();
        acceptor_.open(endpoint.protocol());
#ifndef _WIN32 // There it would let a second program in at the same port.
        acceptor_.set_option(tcp::acceptor::reuse_address(true));
#endif
        acceptor_.bind(endpoint);
        acceptor_.listen();
        KeepAccepting();
    }
    [[nodiscard]] std::uint16_t Port() const { return acceptor_.local_endpoint().port(); }
    [[nodiscard]] std::optional<int> Speed() const { return control_ ? control_->Speed() : std::nullopt; }

    std::vector<std::uint8_t> Read(MonotonicTime timeout) {
        context_.restart();
        if (received_.empty()) context_.run_one_for(timeout);
        context_.poll();
        return std::exchange(received_, {});
    }
    void Write(std::span<const std::uint8_t> data) {
        if (!client_.is_open()) return;
        SendAsIs(control_ ? telnet::Escaped(data) : telnet::Bytes(data.begin(), data.end()));
    }

private:
    void KeepAccepting();
    void Serve(tcp::socket client);
    void KeepReading();
    void Hear(std::size_t count);
    void SendAsIs(const telnet::Bytes& bytes);
    void KeepSending();
    void Drop();

    NetworkAddress::Kind kind_;
    asio::io_context context_{1};
    tcp::acceptor acceptor_{context_};
    tcp::socket next_{context_};
    tcp::socket client_{context_};
    std::optional<Rfc2217Server> control_;
    std::array<std::uint8_t, 1024> incoming_{};
    std::vector<std::uint8_t> received_;
    telnet::Bytes toSend_;
    telnet::Bytes sending_;
};

void NetworkServer::Sockets::KeepAccepting() {
    acceptor_.async_accept(next_, [this](const std::error_code& error) {
        if (!acceptor_.is_open()) return;
        // Another one while the line is taken is let go at once, as serial servers do.
        if (!error && !client_.is_open()) Serve(std::move(next_));
        next_ = tcp::socket(context_);
        KeepAccepting();
    });
}

void NetworkServer::Sockets::Serve(tcp::socket client) {
    client_ = std::move(client);
    std::error_code ignored;
    client_.set_option(tcp::no_delay(true), ignored); // NOLINT(bugprone-unused-return-value)
    received_.clear();
    toSend_.clear();
    if (kind_ == NetworkAddress::Kind::Rfc2217) SendAsIs(control_.emplace().Begin());
    KeepReading();
}

void NetworkServer::Sockets::KeepReading() {
    client_.async_read_some(asio::buffer(incoming_), [this](const std::error_code& error, std::size_t count) {
        Hear(count);
        if (!error) {
            KeepReading();
        } else {
            Drop();
        }
    });
}

void NetworkServer::Sockets::Hear(std::size_t count) {
    const std::span bytes = std::span(incoming_).first(count);
    if (!control_) {
        received_.insert(received_.end(), bytes.begin(), bytes.end());
        return;
    }
    const Rfc2217Client::Taken taken = control_->Take(bytes);
    received_.insert(received_.end(), taken.data.begin(), taken.data.end());
    SendAsIs(taken.replies);
}

void NetworkServer::Sockets::SendAsIs(const telnet::Bytes& bytes) {
    if (toSend_.size() + bytes.size() > LongestBacklog) return;
    toSend_.insert(toSend_.end(), bytes.begin(), bytes.end());
    KeepSending();
}

void NetworkServer::Sockets::KeepSending() {
    if (!client_.is_open() || !sending_.empty() || toSend_.empty()) return;
    std::swap(sending_, toSend_);
    asio::async_write(client_, asio::buffer(sending_), [this](const std::error_code& error, std::size_t) {
        sending_.clear();
        if (!error) KeepSending();
    });
}

void NetworkServer::Sockets::Drop() {
    std::error_code ignored;
    client_.close(ignored); // NOLINT(bugprone-unused-return-value): it is gone either way
    control_.reset();
}

NetworkServer::NetworkServer(const NetworkAddress& address) : sockets_(std::make_unique<Sockets>(address.kind)) {
    NetworkAddress reached = address;
    try {
        sockets_->Listen(address);
        reached.port = sockets_->Port();
    } catch (const std::system_error& error) {
        throw RuntimeError(ErrorNumber::PathFileAccess,
                           "No board can be served at " + HostAndPort(address) + ": " + error.code().message() + ".");
    }
    name_ = NetworkAddressText(reached);
}

NetworkServer::~NetworkServer() = default;

std::optional<int> NetworkServer::Speed() const { return sockets_ ? sockets_->Speed() : std::nullopt; }

std::vector<std::uint8_t> NetworkServer::Read(MonotonicTime timeout) {
    return sockets_ ? sockets_->Read(timeout) : std::vector<std::uint8_t>();
}

void NetworkServer::Write(std::span<const std::uint8_t> bytes) {
    if (sockets_) sockets_->Write(bytes);
}

void NetworkServer::Close() noexcept { sockets_.reset(); }

} // namespace vantrel
