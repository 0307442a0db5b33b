// What a transfer did, in words: how far it came, what differs, what it may have set beside. Knows the record only.
#pragma once

#include "document/SettingsTransfer.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vantrel {

/// By which of its names a field is called: the one of files and commands, or the heading of its column.
enum class FieldNaming { Name, Heading };

/// Which values reached the board when the first `walked` of them were sent and the board did not confirm `unconfirmed`
/// of those.
[[nodiscard]] std::string ReachedText(std::size_t walked, std::size_t unconfirmed, FieldNaming naming);

/// Which values of the set-up are the board's now, when the first `walked` of them were read and `unconfirmed` of those
/// not reliably.
[[nodiscard]] std::string FetchedText(std::size_t walked, std::size_t unconfirmed, FieldNaming naming);

/// That the board's flag may still tell of a download, and what ends that.
inline constexpr const char* FlagLeftSentence =
    "B105 of the board may have been left at 1. The next transfer sets it to 0.";

/// "sequence 0, NodeNumber: file 2, board 7", between whatever two sides.
[[nodiscard]] std::string DifferenceText(const ValueDifference& difference, const std::string& recordSide = "file",
                                         const std::string& boardSide = "board");

/// That `what` had to be sent twice, if it was `repeated`, and which bytes a half-sent attempt may have set to 255;
/// empty for nothing of both.
[[nodiscard]] std::string ReachedBesideText(const std::string& what, bool repeated,
                                            const std::vector<std::uint16_t>& mayHaveReached);

} // namespace vantrel
