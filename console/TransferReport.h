// What a transfer did, in words: values by their names. Knows the record only.
#pragma once

#include "document/Configuration.h"
#include "document/SettingsTransfer.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vantrel {

/// "sequence 0, NodeNumber: file 2, board 7", between whatever two sides.
[[nodiscard]] std::string DifferenceText(const ValueDifference& difference, const std::string& recordSide = "file",
                                         const std::string& boardSide = "board");

/// That `what` had to be sent twice, if it was `repeated`, and which bytes a half-sent attempt may have set to 255;
/// empty for nothing of both.
[[nodiscard]] std::string ReachedBesideText(const std::string& what, bool repeated,
                                            const std::vector<std::uint16_t>& mayHaveReached);

} // namespace vantrel
