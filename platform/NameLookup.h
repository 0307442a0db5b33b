// Looking up a host's name without waiting for it: name servers that do not answer keep the host's own call for as long
// as they like. Private to the ports behind a network.
#pragma once

#include "platform/Clock.h"
#include "platform/NetworkAddress.h"

#include <asio/ip/tcp.hpp>

#include <memory>
#include <system_error>
#include <vector>

namespace vantrel {

class NameLookup {
public:
    /// Begins; an address in digits is known at once.
    explicit NameLookup(const NetworkAddress& address);

    struct Found {
        std::error_code error;
        std::vector<asio::ip::tcp::endpoint> endpoints;
    };
    /// Waits at most so long; false while nothing is known yet. Whoever goes away leaves the host's call to itself.
    [[nodiscard]] bool WaitFor(MonotonicTime longest) const;
    /// Once it is known.
    [[nodiscard]] Found Result() const;

private:
    struct Shared;
    std::shared_ptr<Shared> shared_;
};

} // namespace vantrel
