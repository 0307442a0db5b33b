// What the program sends to the board, heard on the line.
#pragma once

#include "link/TrafficLog.h"

#include <functional>
#include <string>
#include <vector>

namespace vantrel {

using Texts = std::vector<std::string>;

class SentBytes final : public TrafficLog {
public:
    std::vector<std::uint8_t> bytes; ///< Since the last Forget().
    std::function<void()> onByte;

    /// The words that are read: in the read mode each is four exchanges, high and low address, twice.
    [[nodiscard]] Texts Words() const {
        Texts words;
        for (std::size_t i = 0; i + 3 < bytes.size(); i += 4)
            words.push_back("W" + std::to_string(bytes[i] * 256 + bytes[i + 1]));
        return words;
    }
    void Forget() { bytes.clear(); }

    void Exchanged(MonotonicTime, std::uint8_t sent, std::optional<std::uint8_t>) override {
        bytes.push_back(sent);
        if (onByte) onByte();
    }
    void Surplus(MonotonicTime, std::uint8_t) override {}
};

} // namespace vantrel
