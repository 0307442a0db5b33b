// How one accepted entry reaches the board while the program is ONLINE. Knows the link only.
#pragma once

#include "link/RSComm.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vantrel {

/// Raises the write-through flag, writes `value` at `address`, lowers the flag and reads the value back, each step only
/// while the link stands. The value that the board then holds; nothing when the link has failed or the read-back is
/// not to be relied on. The link has shown its boxes by then.
[[nodiscard]] std::optional<std::int32_t> WriteThrough(RSComm& link, const std::string& address, std::int32_t value);

} // namespace vantrel
