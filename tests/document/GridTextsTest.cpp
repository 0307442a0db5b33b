// What stands in the sequence editor's grids, cell by cell.
#include "document/GridTexts.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using enum EditorTab;
using Texts = std::vector<std::string>;

TEST(GridTexts, HeadingsAndWidthsAreThoseOfTheThreeGrids) {
    EXPECT_EQ(EditorGridFormat(CommStatus), "^Seq #|^Node #|<Communication Status");
    EXPECT_EQ(EditorGridFormat(EditorTab::Configuration),
              "^Seq #|^Node #|^# Send|^From TI|^To Node|^# Receive|^From Node|^To TI");
    EXPECT_EQ(EditorGridFormat(Descriptions), "^Seq #|^Node #|< Communication Description");

    EXPECT_EQ(EditorColumnWidths(CommStatus), (std::vector{900, 900, 6535}));
    // 6535 / 6 is 1089.17.
    EXPECT_EQ(EditorColumnWidths(EditorTab::Configuration),
              (std::vector{900, 900, 1089, 1089, 1089, 1089, 1089, 1089}));
    EXPECT_EQ(EditorColumnWidths(Descriptions), (std::vector{900, 900, 6535}));
}

TEST(GridTexts, ARowShowsItsSequenceInItsNotations) {
    auto record = DefaultRecord("VANTREL_R1.0.0", {});
    const std::int32_t values[] = {12, 120, 34463, 416, 7, 8174, 1};
    for (std::size_t field = 0; field < FieldCount; ++field)
        record.SetValue(7 * 30 + 1 + field, values[field]);
    record.SetAddressType(214, "H");
    record.SetNodeDescription(30, "M\u00FChle 2");

    EXPECT_EQ(EditorRowTexts(record, EditorTab::Configuration, 30),
              (Texts{"30", "12", "120", "V34463", "1A0H", "7", "W8174", "V1"}));
    EXPECT_EQ(EditorRowTexts(record, Descriptions, 30), (Texts{"30", "12", "M\u00FChle 2"}));
    EXPECT_EQ(EditorRowTexts(record, CommStatus, 30), (Texts{"30", "-", "-- : -"})) << "not from the record";
    EXPECT_EQ(EditorRowTexts(record, EditorTab::Configuration, 0),
              (Texts{"0", "0", "0", "V1", "W32", "0", "W32", "V1"}));
}

} // namespace
} // namespace vantrel
