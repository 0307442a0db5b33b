// Values in their notations, as grid, report and console show them.
#include "document/ValueDisplay.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

TEST(ValueDisplay, ReadsInItsNotation) {
    EXPECT_EQ(DisplayValue(34463, "V"), "V34463");
    EXPECT_EQ(DisplayValue(8174, "W"), "W8174");
    EXPECT_EQ(DisplayValue(416, "H"), "1A0H");
    EXPECT_EQ(DisplayValue(-1, "h"), "FFFFFFFFH");
    EXPECT_EQ(DisplayValue(-7, "#"), "-7");
    Configuration record = DefaultRecord("", {});
    record.SetAddressType(ValueIndex(0, SequenceField::SendToNode), "x");
    EXPECT_EQ(DisplayValue(record, ValueIndex(0, SequenceField::SendToNode)), "W32");
    record.SetAddressType(ValueIndex(0, SequenceField::SendFromTI), "H");
    EXPECT_EQ(DisplayValue(record, ValueIndex(0, SequenceField::SendFromTI)), "V1");
}

} // namespace
} // namespace vantrel
