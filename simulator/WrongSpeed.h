// What one end of a serial line makes of a byte that the other end sent at another speed. Pure.
#pragma once

#include <cstdint>
#include <vector>

namespace vantrel {

/// The bytes that a receiver at `heardAt` bits per second makes of one byte sent at `sentAt` on a quiet line, with one
/// start and one stop bit: none, another one, or several. Bytes without a stop bit are dropped. Both speeds from 1 to
/// 10 million; speeds as close as real clocks are understand each other.
[[nodiscard]] std::vector<std::uint8_t> HeardAtSpeed(std::uint8_t byte, int sentAt, int heardAt);

} // namespace vantrel
