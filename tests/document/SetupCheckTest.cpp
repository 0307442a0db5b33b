// What a set-up's check finds between its cells, and what it lets pass.
#include "document/SetupCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace vantrel {

namespace {

using enum SequenceField;

/// "seq 0 node 5 receives 10 into 33": one sequence behind another; those that are named have a description.
Configuration RecordOf(std::int32_t stack, const std::string& fields) {
    const std::map<std::string, SequenceField> names{{"node", NodeNumber},           {"sends", SendWordCount},
                                                     {"from", SendFromTI},           {"to", SendToNode},
                                                     {"receives", ReceiveWordCount}, {"into", ReceiveToTI}};
    Configuration record = DefaultRecord("VANTREL_R1.0.0", {});
    record.SetValue(StatusStackIndex, stack);
    std::istringstream words(fields);
    std::size_t sequence = 0;
    std::int32_t value = 0;
    for (std::string name; words >> name >> value;) {
        if (name == "seq") {
            sequence = static_cast<std::size_t>(value);
            record.SetNodeDescription(sequence, "Filler");
        } else {
            record.SetValue(ValueIndex(sequence, names.at(name)), value);
        }
    }
    return record;
}

std::string Found(const Configuration& record) {
    std::string text;
    for (const Finding& finding : CheckSetup(record)) {
        text += std::string(SeverityName(finding.severity)).substr(0, 1) + " " +
                std::to_string(finding.index.value_or(ValueCount)) + ": " + finding.text + "\n";
    }
    return text;
}

TEST(SetupCheck, FindsWhatTheRulesOfSingleCellsCannotSee) {
    // The stack, the fields, and how the one line that is found begins; none for a clean set-up.
    const std::vector<std::tuple<std::int32_t, const char*, std::string>> cases = {
        {1, "", ""},
        {34432, "", ""},
        {34433, "", "E 0: The status stack takes 32 words: V34433 to V34464 end behind V34463"},
        {0, "", "E 0: V0 is no word of V memory."},
        // Blocks that touch do not overlap; what is sent may be read from anywhere.
        {1, "seq 0 node 5 receives 10 into 33  seq 1 node 6 receives 10 into 43  seq 2 node 7 sends 120 from 1", ""},
        {1, "seq 0 node 5 receives 10 into 32",
         "E 7: The words received, V32 to V41, overwrite the status stack, V1 to V32."},
        {1, "seq 0 node 5 receives 10 into 100  seq 3 node 6 receives 1 into 109",
         "E 28: The words received, V109, overwrite those of sequence 0, V100 to V109."},
        {1, "seq 0 node 5 sends 2 from 34463",
         "E 3: The words sent, V34463 to V34464, end behind V34463, the last word of V memory. Begin at V34462"},
        // Words of a node count by two.
        {1, "seq 0 node 5 sends 2 to 8172", ""},
        {1, "seq 0 node 5 sends 2 to 8174", "E 4: W8174 to W8176 end behind W8174"},
        {1, "seq 0 node 5 sends 3 to 40  seq 1 node 5 sends 1 to 44",
         "W 11: In node 5 sequence 0 writes W40 to W44 and this one W44"},
        {1, "seq 0 node 5 sends 3 to 40  seq 1 node 6 sends 1 to 44", ""},
        {1, "seq 4 node 5", "W 29: Nothing is sent to node 5"},
        {1, "seq 4 sends 5", "W 29: Words are to be moved, but the node number is 0"},
        {1, "seq 4 node 1 sends 5", "E 29: 1 is out of range. Only a Number Between 2 and 32"},
    };
    for (const auto& [stack, fields, begin] : cases) {
        const std::string found = Found(RecordOf(stack, fields));
        EXPECT_EQ(found.substr(0, begin.size()), begin);
        EXPECT_EQ(std::ranges::count(found, '\n'), begin.empty() ? 0 : 1) << found;
    }
}

TEST(SetupCheck, HexadecimalAddressesReachFurtherAndTheWorstStandsFirst) {
    Configuration record = RecordOf(1, "seq 0 node 5 sends 2 to 65534");
    record.SetAddressType(ValueIndex(0, SendToNode), "H");
    record.SetNodeDescription(0, " ");
    record.SetValue(ValueIndex(9, SendWordCount), 1);
    EXPECT_EQ(Found(record).substr(0, 25), "E 4: FFFEH to 10000H end ");
    const std::vector<Finding> findings = CheckSetup(record);
    ASSERT_EQ(findings.size(), 3U);
    EXPECT_EQ(findings[1].severity, Severity::Warning);
    EXPECT_EQ(findings[2].Place(), "sequence 0, Description");
}

} // namespace

} // namespace vantrel
