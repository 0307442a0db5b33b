// Blocks of cells: what a spreadsheet's text becomes, and what is refused.
#include "document/CellBlock.h"

#include "tests/document/Defaults.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vantrel {

namespace {

constexpr std::size_t LastField = FieldCount - 1;

/// What stands in the block afterwards, or what is refused.
std::string Shown(const BlockAnswer& answer, const CellBlock& block) {
    if (const auto* refused = std::get_if<std::vector<RefusedCell>>(&answer)) return RefusalText(*refused);
    return CopiedCells(std::get<Configuration>(answer), block);
}

std::string Pasted(const std::string& text, const CellBlock& block, std::size_t lastColumn = LastField) {
    return Shown(PastedCells(Defaults(), block, text, lastColumn), block);
}

TEST(CellBlock, TakesASpreadsheetsTextByTheRulesOfTheSingleCells) {
    const CellBlock rows{2, 3, 2, 4};
    EXPECT_EQ(Pasted("v100\t40\t7\n200\tFFFEh\t0\n", rows), "V100\tW40\t7\r\nV200\tFFFEH\t0\r\n");
    EXPECT_EQ(Pasted("Seq #\tfrom ti\tTo Node\t# Receive\r\n2\tV100\tW40\t7\r\n3\tV200\tW50\t8", rows),
              "V100\tW40\t7\r\nV200\tW50\t8\r\n");
    EXPECT_EQ(Pasted("To TI\tDescription\nV7\tFiller\n", {2, 2, 6, 7}), "V7\tFiller\r\n") << "of the other tab";
    EXPECT_EQ(Pasted("9", {0, 1, 0, 1}), "9\t9\r\n9\t9\r\n");
    const CellBlock described{30, 30, DescriptionColumn, DescriptionColumn};
    EXPECT_EQ(Pasted("\"a \"\"b\"\"\nc\"", described, DescriptionColumn), "\"a \"\"b\"\" c\"\r\n");
}

TEST(CellBlock, RefusesTheWholeBlockAndNamesEveryCell) {
    EXPECT_EQ(Pasted("1\t120\n2\t121\n", {0, 1, 0, 1}),
              ValueLabel(1) + ": \"1\": Only a Number Between 2 and 32 can be Entered\n" + ValueLabel(9) +
                  ": \"121\": Only a Number Between 0 and 120 can be Entered\n\nNothing was stored.");
    EXPECT_EQ(Pasted("AH", {0, 0, 3, 3}).substr(0, 40), (ValueLabel(4) + ": \"AH\": Invalid procedure").substr(0, 40));
    // What would fall off the grid is not lost silently; empty cells beyond it are nothing.
    EXPECT_EQ(Pasted("V1\t5\t\n", {30, 30, LastField, LastField}),
              "line 1, cell 2: \"5\": The grid ends before it\n\nNothing was stored.");
    const std::string many = Pasted(std::string(36, '\n') + "5\n", {0, 0, 0, 0});
    EXPECT_NE(many.find("and 22 more\n"), std::string::npos) << many;
}

TEST(CellBlock, FillsDownAndInSeries) {
    Configuration record = Defaults();
    record.SetValue(ValueIndex(0, SequenceField::SendToNode), 0x20);
    record.SetValue(ValueIndex(1, SequenceField::SendToNode), 0x60);
    record.SetAddressType(ValueIndex(1, SequenceField::SendToNode), "H");
    const CellBlock three{0, 3, 3, 3};
    EXPECT_EQ(Shown(FilledSeries(record, three), three), "W32\r\n60H\r\nA0H\r\nE0H\r\n");
    EXPECT_EQ(Shown(FilledDown(record, {1, 3, 3, 3}), three), "W32\r\n60H\r\n60H\r\n60H\r\n");
    record.SetValue(ValueIndex(1, SequenceField::SendToNode), 30);
    EXPECT_NE(Shown(FilledSeries(record, three), three).find("\"1CH\": Only an Even Value"), std::string::npos);
    record.SetValue(ValueIndex(0, SequenceField::SendFromTI), 40);
    const CellBlock addresses{0, 2, 2, 2};
    EXPECT_NE(Shown(FilledSeries(record, addresses), addresses).find("\"-38\": Only a Number"), std::string::npos);
}

TEST(CellBlock, MovesWholeSequences) {
    Configuration record = Defaults();
    record.SetValue(ValueIndex(30, SequenceField::NodeNumber), 7);
    record.SetNodeDescription(30, "Filler");
    const Configuration swapped = SwappedSequences(record, 30, 1);
    EXPECT_EQ(swapped.NodeDescription(1), "Filler");
    EXPECT_EQ(swapped.Value(ValueIndex(1, SequenceField::NodeNumber)), 7);
    EXPECT_EQ(EditsBetween(Defaults(), SwappedSequences(swapped, 1, 30)).size(), 2U);
    EXPECT_EQ(CopiedSequence(record, 30, 2).NodeDescription(30), "Filler");
    EXPECT_EQ(EmptySequence(record, 29), 0U);
    EXPECT_EQ(EmptySequence(swapped, 0), 2U);
}

} // namespace

} // namespace vantrel
