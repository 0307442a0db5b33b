// From counts and addresses to blocks of words.
#include "document/MemoryMap.h"

#include "document/ValueDisplay.h"

#include <array>

namespace vantrel {

namespace {

/// One way of an exchange: how many words, and where they stand on either side.
struct Way {
    MemoryBlock::Kind kind;
    SequenceField count;
    SequenceField inTI;
    SequenceField inNode;
};
constexpr std::array Ways{
    Way{MemoryBlock::Kind::Send, SequenceField::SendWordCount, SequenceField::SendFromTI, SequenceField::SendToNode},
    Way{MemoryBlock::Kind::Receive, SequenceField::ReceiveWordCount, SequenceField::ReceiveToTI,
        SequenceField::ReceiveFromNode}};

MemoryBlock BlockAt(const Configuration& record, MemoryBlock::Kind kind, std::size_t index, std::int64_t count,
                    std::int64_t step) {
    const std::int64_t first = record.Value(index);
    return {.kind = kind,
            .index = index,
            .first = first,
            .last = first + step * (count - 1),
            .notation = DisplayValue(record, index).ends_with('H') ? 'H' : DefaultNotation(index)};
}

/// A block for each way of each used sequence that moves any words.
template <typename Make> void ForEachWay(const Configuration& record, const Make& make) {
    for (std::size_t sequence = 0; sequence < SequenceCount; ++sequence) {
        if (!IsUsed(record, sequence)) continue;
        for (const Way& way : Ways) {
            const std::int32_t count = record.Value(ValueIndex(sequence, way.count));
            if (count > 0) make(way, sequence, count);
        }
    }
}

} // namespace

bool MemoryBlock::Overlaps(const MemoryBlock& other) const {
    return node == other.node && first <= other.last && other.first <= last;
}

bool MemoryBlock::Destroys(const MemoryBlock& other) const {
    return index != other.index && kind == Kind::Receive && other.kind != Kind::Send && Overlaps(other);
}

std::string MemoryBlock::Text() const {
    const auto shown = [this](std::int64_t word) {
        return DisplayValue(static_cast<std::int32_t>(word), std::string(1, notation));
    };
    return first == last ? shown(first) : shown(first) + " to " + shown(last);
}

bool IsUsed(const Configuration& record, std::size_t sequence) {
    return record.Value(ValueIndex(sequence, SequenceField::NodeNumber)) != 0;
}

std::vector<MemoryBlock> VBlocks(const Configuration& record) {
    std::vector<MemoryBlock> blocks{
        BlockAt(record, MemoryBlock::Kind::StatusStack, StatusStackIndex, StatusStackWords, 1)};
    ForEachWay(record, [&](const Way& way, std::size_t sequence, std::int32_t count) {
        blocks.push_back(BlockAt(record, way.kind, ValueIndex(sequence, way.inTI), count, 1));
    });
    return blocks;
}

std::vector<MemoryBlock> NodeBlocks(const Configuration& record) {
    constexpr std::int64_t wordStep = 2;
    std::vector<MemoryBlock> blocks;
    ForEachWay(record, [&](const Way& way, std::size_t sequence, std::int32_t count) {
        blocks.push_back(BlockAt(record, way.kind, ValueIndex(sequence, way.inNode), count, wordStep));
        blocks.back().node = record.Value(ValueIndex(sequence, SequenceField::NodeNumber));
    });
    return blocks;
}

} // namespace vantrel
