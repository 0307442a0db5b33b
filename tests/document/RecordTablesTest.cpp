// The record as JSON and as a table: there and back, and what is refused.
#include "document/RecordTables.h"

#include "document/Edit.h"
#include "tests/document/Defaults.h"
#include "tests/support/Thrown.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vantrel {

namespace {

Configuration Sample() {
    Configuration record = DefaultRecord("VANTREL_R1.0.0", OleDate{45000.5});
    for (std::size_t sequence = 0; sequence < SequenceCount; ++sequence) {
        record.SetValue(ValueIndex(sequence, SequenceField::NodeNumber), 2 + static_cast<std::int32_t>(sequence % 31));
        record.SetValue(ValueIndex(sequence, SequenceField::SendToNode), 0x1A0);
        record.SetAddressType(ValueIndex(sequence, SequenceField::SendToNode), sequence % 2 == 0 ? "H" : "W");
        record.SetNodeDescription(sequence, "Füller, \"" + std::to_string(sequence) + "\"");
    }
    record.SetValue(StatusStackIndex, 500);
    return record;
}

TEST(RecordTables, ARecordComesBackTheSame) {
    Configuration record = Sample();
    const auto same = [&](const Configuration& other) {
        return other.CreatorVersion == record.CreatorVersion && other.SavedDate.days == record.SavedDate.days &&
               other.Values == record.Values && other.TargetAddresses == record.TargetAddresses &&
               other.NodeDescriptions == record.NodeDescriptions && other.AddressTypes == record.AddressTypes;
    };
    EXPECT_TRUE(same(RecordFromJson(RecordJson(record), Defaults())));
    record.Values = {1, -5};
    EXPECT_TRUE(same(RecordFromJson("\xEF\xBB\xBF" + RecordJson(record), Defaults())));
    record = Sample();
    EXPECT_TRUE(EditsBetween(record, RecordFromCsv(RecordCsv(record), Defaults())).empty());
}

TEST(RecordTables, AnySpreadsheetsTableIsTaken) {
    const Configuration record =
        RecordFromCsv("to node;seq #;Description;\r\n1A0h;3;F\xFCller;\r\n;;;\r\nStatus stack;v77\r\n", Defaults());
    Configuration expected = Defaults();
    expected.SetValue(StatusStackIndex, 77);
    expected.SetValue(ValueIndex(3, SequenceField::SendToNode), 0x1A0);
    expected.SetAddressType(ValueIndex(3, SequenceField::SendToNode), "H");
    expected.SetNodeDescription(3, "Füller");
    EXPECT_TRUE(EditsBetween(expected, record).empty());
}

TEST(RecordTables, NonsenseIsRefusedWithItsPlace) {
    const std::vector<std::pair<std::string, std::string>> tables = {
        {"", "Line 1, item 1: a table begins with its headings"},
        {"Node #,To TI\n1,2", "Line 1, item 1: a table begins with its headings"},
        {"Seq #,Nodes\n", "Line 1, item 2: there is no column \"Nodes\""},
        {"Seq #,Node #\n31,2", "Line 2, item 1: a sequence is a number from 0 to 30, not \"31\""},
        {"Seq #,Node #\n1,2\n1,3", "Line 3, item 1: sequence 1 is there twice"},
        {"Seq #,Node #\n1,2,3", "Line 2, item 3: there is no heading over \"3\""},
        {"Seq #,To Node\n1,33", "Line 2, item 2: \"33\": Only an Even Value Between W32"},
        {"Seq #,To Node\n1,AH", "Line 2, item 2: \"AH\": Invalid procedure call"},
        {"Seq #\nStatus stack,V0", "Line 2, item 2: the status stack stands at"},
    };
    for (const auto& [table, refusal] : tables) {
        const std::string said = ErrorText([&] { return RecordFromCsv(table, Defaults()); });
        EXPECT_NE(said.find(refusal), std::string::npos) << table << said;
    }
    for (const std::string json :
         {"", "[1]", "{}", "{\"values\": [1.5]}", "{\"values\": [3000000000]}", "{\"values\": 7}",
          "{\"values\": [1], \"savedDate\": \"2026-02-30T00:00:00\"}", "{\"values\": [1], \"nodeDescriptions\": [3]}"})
        EXPECT_THROW(static_cast<void>(RecordFromJson(json, Defaults())), RuntimeError) << json;
    const Configuration widest = RecordFromJson("{\"values\": [2147483647, -2147483648]}", Defaults());
    EXPECT_EQ(std::pair(widest.Value(0), widest.Value(1)), std::pair(INT32_MAX, INT32_MIN));
    EXPECT_NE(ErrorText([] { return RecordFromJson("{\"values\": [\"\u00FC\"]}", Defaults()); }).find("\\u00fc"),
              std::string::npos);
}

} // namespace

} // namespace vantrel
