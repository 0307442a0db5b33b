// The bytes of the byte-echo protocol that are no data, as they go over the line.
#pragma once

#include <cstdint>

namespace vantrel {

inline constexpr std::uint8_t SyncByte = 0xFF; ///< Asks for attention; in a mode it may pass for an address byte.
inline constexpr std::uint8_t Acknowledge = 0x55; ///< The board's answer to a sync or a mode byte that it took.
inline constexpr std::uint8_t ReadMode = 1;
inline constexpr std::uint8_t WriteMode = 2;

} // namespace vantrel
