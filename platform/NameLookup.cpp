#include "platform/NameLookup.h"

#include <asio/io_context.hpp>

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

namespace vantrel {

struct NameLookup::Shared {
    std::mutex mutex;
    std::condition_variable known;
    bool done = false;
    Found found;

    void Tell(Found result) {
        const std::scoped_lock lock(mutex);
        found = std::move(result);
        done = true;
        known.notify_all();
    }
};

namespace {

NameLookup::Found LookUp(const NetworkAddress& address) {
    asio::io_context context(1);
    asio::ip::tcp::resolver resolver(context);
    NameLookup::Found found;
    const auto results = resolver.resolve(address.host, std::to_string(address.port), found.error);
    for (const auto& result : results)
        found.endpoints.push_back(result.endpoint());
    return found;
}

} // namespace

NameLookup::NameLookup(const NetworkAddress& address) : shared_(std::make_shared<Shared>()) {
    std::error_code noDigits;
    const auto digits = asio::ip::make_address(address.host, noDigits);
    if (!noDigits) {
        shared_->Tell({.error = {}, .endpoints = {{digits, address.port}}});
        return;
    }
    try {
        // Not joined by anybody: it ends when the host's call does.
        std::thread([shared = shared_, address] { shared->Tell(LookUp(address)); }).detach();
    } catch (const std::system_error& error) {
        shared_->Tell({.error = error.code(), .endpoints = {}});
    }
}

bool NameLookup::WaitFor(MonotonicTime longest) const {
    std::unique_lock lock(shared_->mutex);
    return shared_->known.wait_for(lock, longest, [this] { return shared_->done; });
}

NameLookup::Found NameLookup::Result() const {
    const std::scoped_lock lock(shared_->mutex);
    return shared_->found;
}

} // namespace vantrel
