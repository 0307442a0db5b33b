// What a transfer did, in words: values by their names, and how far it came. Knows the record only.
#pragma once

#include "document/Configuration.h"
#include "document/SettingsTransfer.h"

#include <cstddef>
#include <string>

namespace vantrel {

/// Which values reached the board when the first `count` of them did.
[[nodiscard]] std::string ReachedText(std::size_t count);

/// "sequence 0, NodeNumber: file 2, board 7"
[[nodiscard]] std::string DifferenceText(const ValueDifference& difference);

} // namespace vantrel
