// Which words of the controller's V memory, and of the nodes, a set-up uses. Knows the record only.
#pragma once

#include "document/Configuration.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vantrel {

inline constexpr std::int32_t LastVWord = 34463; ///< V memory counts its words from 1, one by one.
inline constexpr std::int32_t StatusStackWords = 32; ///< A watchdog, and the status of every sequence.

/// Consecutive words, and the value of the record that says where they begin.
struct MemoryBlock {
    enum class Kind { StatusStack, Send, Receive };
    Kind kind = Kind::StatusStack;
    std::size_t index = StatusStackIndex;
    std::int64_t first = 0;
    std::int64_t last = 0; ///< The last word itself.
    char notation = 'V'; ///< "V", or "W" or "H" in a node.
    std::int32_t node = 0; ///< The node whose words they are; 0 for V memory.

    [[nodiscard]] bool Overlaps(const MemoryBlock& other) const;
    /// What is received here overwrites the other block, which is the board's to write as well. In V memory.
    [[nodiscard]] bool Destroys(const MemoryBlock& other) const;
    /// "V100 to V119", "V7" for a single word.
    [[nodiscard]] std::string Text() const;
};

/// A sequence with a node number is used.
[[nodiscard]] bool IsUsed(const Configuration& record, std::size_t sequence);

/// The V memory of a set-up: the status stack first, then what every used sequence sends and receives. A block may end
/// where there is no memory any more.
[[nodiscard]] std::vector<MemoryBlock> VBlocks(const Configuration& record);
/// The words in the nodes that used sequences write to and read from. Words count by two there.
[[nodiscard]] std::vector<MemoryBlock> NodeBlocks(const Configuration& record);

} // namespace vantrel
