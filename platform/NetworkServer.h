// A line that is served to the network, for one program at a time: as raw bytes, or as a server of RFC 2217. Neither
// private nor authenticated.
#pragma once

#include "platform/NetworkAddress.h"
#include "platform/ServedLine.h"

#include <memory>
#include <string>

namespace vantrel {

class NetworkServer final : public ServedLine {
public:
    /// Listens at the address; port 0 takes any that is free. Throws RuntimeError 75, with the reason, when it cannot.
    explicit NetworkServer(const NetworkAddress& address);
    ~NetworkServer() override;

    /// The address that reaches it, with the port that it has got.
    [[nodiscard]] const std::string& Device() const override { return name_; }
    [[nodiscard]] std::optional<int> Speed() const override;
    [[nodiscard]] std::vector<std::uint8_t> Read(MonotonicTime timeout) override;
    void Write(std::span<const std::uint8_t> bytes) override;
    void Close() noexcept override;

private:
    class Sockets;
    std::unique_ptr<Sockets> sockets_;
    std::string name_;
};

} // namespace vantrel
