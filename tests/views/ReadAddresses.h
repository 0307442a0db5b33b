// Which words the link reads, seen from the line.
#pragma once

#include "link/TrafficLog.h"

#include <functional>
#include <string>
#include <vector>

namespace vantrel {

/// In the read mode every word is four exchanges: high and low address, twice. Call Forget() there.
class ReadAddresses final : public TrafficLog {
public:
    std::function<void()> onByte;

    [[nodiscard]] std::vector<std::string> Words() const {
        std::vector<std::string> words;
        for (std::size_t i = 0; i + 3 < bytes_.size(); i += 4)
            words.push_back("W" + std::to_string(bytes_[i] * 256 + bytes_[i + 1]));
        return words;
    }
    void Forget() { bytes_.clear(); }

    void Exchanged(MonotonicTime /*at*/, std::uint8_t sent, std::optional<std::uint8_t> /*answer*/) override {
        bytes_.push_back(sent);
        if (onByte) onByte();
    }
    void Surplus(MonotonicTime /*at*/, std::uint8_t /*byte*/) override {}

private:
    std::vector<int> bytes_;
};

} // namespace vantrel
