// What a transfer did, in words: values by their names, and how far it came. Knows the record only.
#pragma once

#include "document/Configuration.h"
#include "document/SettingsTransfer.h"

#include <cstddef>
#include <string>

namespace vantrel {

/// Which values reached the board when the first `walked` of them were sent and the board did not confirm `unconfirmed`
/// of those.
[[nodiscard]] std::string ReachedText(std::size_t walked, std::size_t unconfirmed);

/// "sequence 0, NodeNumber: file 2, board 7"
[[nodiscard]] std::string DifferenceText(const ValueDifference& difference);

} // namespace vantrel
