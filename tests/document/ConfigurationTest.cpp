// The record: its defaults, its comparison, and what it answers when a file gave it other sizes.
#include "document/Configuration.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>

namespace vantrel {
namespace {

using namespace std::chrono_literals;

TEST(Configuration, MissingElementsReadAsEmptyAndGrowWhenStored) {
    Configuration record;
    EXPECT_EQ(record.TargetAddress(0) + record.NodeDescription(32), "");
    EXPECT_EQ(record.Value(217), 0);
    EXPECT_EQ(record.AddressType(0) + record.AddressType(214), "VW");
    record.SetValue(3, 7);
    record.SetNodeDescription(2, "Pump");
    record.SetAddressType(6, "H");
    EXPECT_EQ(record.Values, (std::vector<std::int32_t>{0, 0, 0, 7}));
    EXPECT_EQ(record.NodeDescriptions, (std::vector<std::string>{"", "", "Pump"}));
    EXPECT_EQ(record.AddressTypes, (std::vector<std::string>{"V", "#", "#", "V", "W", "#", "H"}));
}

TEST(DocumentChanged, ComparesValuesDescriptionsAndVersionOnly) {
    const Configuration saved = DefaultRecord("1", {1.0});
    Configuration same = saved;
    same.AddressTypes.at(4) = "H";
    same.TargetAddresses.at(4) = "W1";
    same.SavedDate.days = 2.0;
    same.NodeDescriptions.clear();
    EXPECT_FALSE(DocumentChanged(same, saved, "1")) << "missing descriptions read as empty";
    EXPECT_TRUE(DocumentChanged(same, saved, "2"));
    Configuration value = saved;
    value.SetValue(217, 99);
    EXPECT_TRUE(DocumentChanged(value, saved, "1"));
    Configuration description = saved;
    description.SetNodeDescription(32, "x");
    EXPECT_TRUE(DocumentChanged(description, saved, "1"));
}

TEST(OleDate, CountsDaysFromTheOriginAndTheFractionForward) {
    using namespace std::chrono;
    const std::pair<double, std::string> cases[] = {
        // clang-format off
        {0.0, "1899-12-30T00:00:00"}, {1.25, "1899-12-31T06:00:00"}, {-1.25, "1899-12-29T06:00:00"},
        {-0.5, "1899-12-30T12:00:00"}, {46095.5, "2026-03-14T12:00:00"}, {2.9999999, "1900-01-02T00:00:00"},
        {-657434, "0100-01-01T00:00:00"}, {2958465.99, "9999-12-31T23:45:36"}, {-657435, ""}, {2958465.9999999, ""},
        {std::numeric_limits<double>::max(), ""}, {-HUGE_VAL, ""}, {std::nan(""), ""},
        // clang-format on
    };
    for (const auto& [days, text] : cases)
        EXPECT_EQ(IsoText({days}), text) << days;

    for (const local_seconds time : {local_seconds(local_days(2026y / March / 14)) + 9h + 5min + 7s,
                                     local_seconds(local_days(1850y / May / 2)) + 23h + 59min + 59s}) {
        EXPECT_EQ(OleDate::FromLocal(time).ToLocal(), time);
    }
}

} // namespace
} // namespace vantrel
