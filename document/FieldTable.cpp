// The seven fields of a sequence, one line each. Uses nothing.
#include "document/FieldTable.h"

namespace vantrel {

const std::array<FieldDescription, FieldCount>& FieldTable() {
    using enum SequenceField;
    // clang-format off
    static constexpr std::array<FieldDescription, FieldCount> table = {{
        {NodeNumber,       "NodeNumber",       '#', 0,  2,  32,    32,    "Node #",    "Slave Node Number:  "},
        {SendWordCount,    "SendWordCount",    '#', 0,  0,  120,   120,   "# Send",    "Number of Words to Send: "},
        {SendFromTI,       "SendFromTI",       'V', 1,  1,  34463, 34463, "From TI",   "From Starting Address in TI-505: "},
        {SendToNode,       "SendToNode",       'W', 32, 32, 8174,  65534, "To Node",   "To Starting Address in Slave Node: "},
        {ReceiveWordCount, "ReceiveWordCount", '#', 0,  0,  120,   120,   "# Receive", "Number of Words to Read: "},
        {ReceiveFromNode,  "ReceiveFromNode",  'W', 32, 32, 8174,  65534, "From Node", "From Starting Address in Slave Node: "},
        {ReceiveToTI,      "ReceiveToTI",      'V', 1,  1,  34463, 34463, "To TI",     "To Starting Address in TI-505: "},
    }};
    // clang-format on
    return table;
}

char DefaultNotation(std::size_t index) {
    return index == StatusStackIndex ? 'V' : FieldTable().at(FieldOf(index)).notation;
}

} // namespace vantrel
