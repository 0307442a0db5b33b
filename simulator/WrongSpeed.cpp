// The line's levels over time, and a receiver that looks at them in the middle of what it takes for bits.
#include "simulator/WrongSpeed.h"

#include <optional>

namespace vantrel {

namespace {

/// Time counts in steps of which a sent bit has twice `heardAt` and a heard one twice `sentAt`.
using Steps = std::int64_t;

struct SentByte {
    std::uint8_t byte;
    Steps bit;

    /// Low is the start bit and each 0, lowest bit first; high is each 1, the stop bit and the quiet line.
    [[nodiscard]] bool HighAt(Steps time) const {
        const Steps index = time / bit;
        return index > 8 || (index > 0 && (byte >> (index - 1) & 1) != 0);
    }
    /// The next fall from high to low; nothing on the quiet line behind the byte.
    [[nodiscard]] std::optional<Steps> NextFall(Steps time) const {
        for (Steps index = time / bit + 1; index <= 8; ++index) {
            if (HighAt((index - 1) * bit) && !HighAt(index * bit)) return index * bit;
        }
        return std::nullopt;
    }
};

} // namespace

std::vector<std::uint8_t> HeardAtSpeed(std::uint8_t byte, int sentAt, int heardAt) {
    const SentByte sent{byte, Steps{2} * heardAt};
    const Steps bit = Steps{2} * sentAt;
    std::vector<std::uint8_t> heard;
    for (std::optional<Steps> start = 0; start;) {
        const Steps middle = *start + bit / 2;
        if (sent.HighAt(middle)) {
            start = sent.NextFall(middle);
            continue;
        }
        unsigned value = 0;
        for (int index = 0; index < 8; ++index)
            value |= sent.HighAt(middle + (index + 1) * bit) ? 1U << index : 0U;
        const Steps stop = middle + 9 * bit;
        if (sent.HighAt(stop)) heard.push_back(static_cast<std::uint8_t>(value));
        start = sent.NextFall(stop);
    }
    return heard;
}

} // namespace vantrel
