// The one table of the seven fields of a communication sequence, and the index rule of the value arrays. Uses nothing.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vantrel {

inline constexpr std::size_t SequenceCount = 31;
inline constexpr std::size_t FieldCount = 7;
inline constexpr std::size_t LastValueIndex = SequenceCount * FieldCount;
inline constexpr std::size_t ValueCount = LastValueIndex + 1;
inline constexpr std::size_t DescriptionCount = 33;
inline constexpr std::size_t StatusStackIndex = 0;

enum class SequenceField : std::size_t {
    NodeNumber,
    SendWordCount,
    SendFromTI,
    SendToNode,
    ReceiveWordCount,
    ReceiveFromNode,
    ReceiveToTI,
};

/// One field of a sequence. The limits are those of the board; an address in node memory is even.
struct FieldDescription {
    SequenceField field;
    std::string_view name; ///< The name in files, on the console and in code.
    char notation; ///< "#" count or number, "V" TI-505 word, "W" node word (switchable to "H").
    std::int32_t defaultValue;
    std::int32_t minimum; ///< Of a value that is in use; a node number may also be 0, not used.
    std::int32_t maximum; ///< In the notation of the table.
    std::int32_t hexadecimalMaximum; ///< In notation "H"; equal to `maximum` where the field cannot switch.
    std::string_view heading; ///< Grid heading.
    std::string_view reportLabel; ///< Label in the printed report, trailing blanks kept.
};

/// In the order of the fields, k = 0..6.
[[nodiscard]] const std::array<FieldDescription, FieldCount>& FieldTable();

/// Where field k of sequence s stands in the value arrays: 7 s + 1 + k.
[[nodiscard]] constexpr std::size_t ValueIndex(std::size_t sequence, SequenceField field) {
    return FieldCount * sequence + 1 + static_cast<std::size_t>(field);
}

/// The inverse of ValueIndex for an index of 1..LastValueIndex.
[[nodiscard]] constexpr std::size_t SequenceOf(std::size_t index) { return (index - 1) / FieldCount; }
/// The same for every index: the status stack goes with sequence 0.
[[nodiscard]] constexpr std::size_t SequenceAt(std::size_t index) {
    return index == StatusStackIndex ? 0 : SequenceOf(index);
}
[[nodiscard]] constexpr std::size_t FieldOf(std::size_t index) { return (index - 1) % FieldCount; }

/// The notation letter that a value has by default: "V" for the status stack address, the table's for the others.
[[nodiscard]] char DefaultNotation(std::size_t index);

} // namespace vantrel
