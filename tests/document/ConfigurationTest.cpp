// The record: its defaults, its comparison, and what it answers when a file gave it other sizes.
#include "document/Configuration.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>

namespace vantrel {
namespace {

using namespace std::chrono_literals;

TEST(DefaultRecord, HasTheAddressesValuesAndTypesOfTheMemoryMap) {
    const Configuration record = DefaultRecord("VANTREL_R1.0.0", {1.0});
    const std::tuple<std::size_t, std::string, std::int32_t, std::string> cases[] = {
        // clang-format off
        {0, "W6400", 1, "V"}, {1, "W16384", 0, "#"}, {2, "W16386", 0, "#"}, {3, "W16388", 1, "V"}, {4, "W16390", 32, "W"},
        {5, "W16392", 0, "#"}, {6, "W16394", 32, "W"}, {7, "W16396", 1, "V"}, {8, "W16896", 0, "#"},
        {211, "W31744", 0, "#"}, {213, "W31748", 1, "V"}, {214, "W31750", 32, "W"}, {217, "W31756", 1, "V"},
        // clang-format on
    };
    for (const auto& [index, address, value, type] : cases) {
        EXPECT_EQ(record.TargetAddresses.at(index), address);
        EXPECT_EQ(record.Values.at(index), value) << index;
        EXPECT_EQ(record.AddressTypes.at(index), type) << index;
    }
    EXPECT_EQ(record.Values.size(), 218U);
    EXPECT_EQ(record.NodeDescriptions, std::vector<std::string>(33));
}

TEST(Configuration, MissingElementsReadAsEmptyAndGrowWhenStored) {
    Configuration record;
    EXPECT_EQ(record.TargetAddress(0), "");
    EXPECT_EQ(record.Value(217), 0);
    EXPECT_EQ(record.NodeDescription(32), "");
    EXPECT_EQ(record.AddressType(0), "V");
    EXPECT_EQ(record.AddressType(214), "W");

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
    EXPECT_FALSE(DocumentChanged(same, saved, "1"));
    EXPECT_TRUE(DocumentChanged(same, saved, "2"));

    for (const std::size_t index : {0U, 100U, 217U}) {
        Configuration current = saved;
        current.SetValue(index, 99);
        EXPECT_TRUE(DocumentChanged(current, saved, "1")) << index;
    }
    for (const std::size_t index : {0U, 30U, 32U}) {
        Configuration current = saved;
        current.SetNodeDescription(index, "x");
        EXPECT_TRUE(DocumentChanged(current, saved, "1")) << index;
    }
    Configuration shorter = saved;
    shorter.NodeDescriptions.clear();
    EXPECT_FALSE(DocumentChanged(shorter, saved, "1")) << "missing descriptions read as empty";
}

TEST(Configuration, NamesTheValuesThatNoWordCanHold) {
    Configuration record = DefaultRecord("1", {});
    record.SetValue(0, 65535);
    record.SetValue(4, 65536);
    record.SetValue(217, -1);
    EXPECT_EQ(ValuesNoWordCanHold(record), (std::vector<std::size_t>{4, 217}));
    EXPECT_EQ(ValueName(0), "status stack address");
    EXPECT_EQ(ValueName(25), "sequence 3, SendToNode");
    EXPECT_EQ(ValueLabel(25), "sequence 3, To Node");
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
