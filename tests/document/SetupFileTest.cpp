// The record, its dates, the bytes of the set-up file and the items of the import, good and bad.
#include "document/SetupFile.h"
#include "document/TextImport.h"
#include "tests/support/Thrown.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>

namespace vantrel {
namespace {

using namespace std::chrono_literals;
using Bytes = std::vector<std::uint8_t>;

Bytes DefaultBytes() { return SetupFileBytes(DefaultRecord("VANTREL_R1.0.0", {46095.25})); }

/// Where things stand in the default file.
constexpr std::size_t AddressHeader = 24;
constexpr std::size_t ValueHeader = 24 + 10 + 1743;
constexpr std::size_t DescriptionHeader = ValueHeader + 10 + 872;
constexpr std::size_t TypeHeader = DescriptionHeader + 10 + 66;
constexpr std::size_t DefaultLength = 3399;

TEST(SetupFile, DefaultRecordHasItsExactBytes) {
    const std::pair<std::size_t, Bytes> golden[] = {
        {0, {14, 0, 'V', 'A', 'N', 'T', 'R', 'E', 'L', '_', 'R', '1', '.', '0', '.', '0'}},
        {16, {0, 0, 0, 0, 0xE8, 0x81, 0xE6, 0x40}},
        {AddressHeader,
         {1, 0, 218, 0, 0, 0, 0, 0, 0, 0, 5, 0, 'W', '6', '4', '0', '0', 6, 0, 'W', '1', '6', '3', '8', '4'}},
        {ValueHeader - 8, {6, 0, 'W', '3', '1', '7', '5', '6'}},
        {ValueHeader, {1, 0, 218, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 32, 0, 0, 0}},
        {DescriptionHeader, {1, 0, 33, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {TypeHeader, {1, 0, 218, 0, 0, 0, 0, 0, 0, 0, 1, 0, 'V', 1, 0, '#', 1, 0, '#', 1, 0, 'V', 1, 0, 'W'}},
        {DefaultLength - 3, {1, 0, 'V'}},
    };
    const Bytes file = DefaultBytes();
    ASSERT_EQ(file.size(), DefaultLength);
    for (const auto& [offset, bytes] : golden)
        EXPECT_TRUE(std::ranges::equal(bytes, std::span(file).subspan(offset, bytes.size()))) << offset;
}

TEST(SetupFile, OtherSizesSignsAndCodePageTextsComeBackAndAnOldTailIsIgnored) {
    Configuration record;
    record.CreatorVersion = "VANTREL_R0.9.1";
    record.Values = {-1, 2147483647, -2147483647 - 1};
    record.NodeDescriptions = {"M\u00FChle \u20AC", ""};
    record.AddressTypes.assign(300, "H");
    const Bytes written = SetupFileBytes(record);
    Bytes file = written;
    file.insert(file.end(), 100, 0xAA);
    const Configuration read = ParseSetupFile(file);
    EXPECT_EQ(read.CreatorVersion, record.CreatorVersion);
    EXPECT_EQ(read.Values, record.Values);
    EXPECT_EQ(read.NodeDescriptions, record.NodeDescriptions);
    EXPECT_EQ(SetupFileBytes(read), written);
}

TEST(SetupFile, ATextTooLongForItsLengthIsRefused) {
    Configuration record;
    record.NodeDescriptions = {std::string(65535, 'x')};
    EXPECT_EQ(ParseSetupFile(SetupFileBytes(record)).NodeDescriptions, record.NodeDescriptions);
    record.NodeDescriptions = {std::string(65536, 'x')};
    EXPECT_THROW((void)SetupFileBytes(record), RuntimeError);
}

TEST(SetupFile, EveryTruncationIsNamedAndNothingElse) {
    const Bytes file = DefaultBytes();
    for (std::size_t length = 0; length < file.size(); ++length) {
        const auto error = Thrown<BadSetupFile>([&] { return ParseSetupFile(std::span(file).first(length)); });
        ASSERT_TRUE(error && error->Number() == 62 && error->Offset() <= length) << length;
    }
}

TEST(SetupFile, BadArrayHeadersAreRefusedWhereTheyStand) {
    const std::tuple<std::size_t, Bytes, int> cases[] = {
        // clang-format off
        {AddressHeader, {2}, 321}, {ValueHeader, {0}, 321}, {AddressHeader + 2, {0xFF, 0xFF, 0xFF, 0xFF}, 321},
        {TypeHeader + 6, {1}, 321}, {AddressHeader + 2, {0xFF, 0xFF, 0xFF, 0x7F}, 62}, {ValueHeader + 2, {0, 2}, 62},
        // clang-format on
    };
    for (const auto& [offset, bytes, number] : cases) {
        Bytes file = DefaultBytes();
        std::copy(bytes.begin(), bytes.end(), file.begin() + static_cast<std::ptrdiff_t>(offset));
        const auto error = Thrown<BadSetupFile>([&] { return ParseSetupFile(file); });
        ASSERT_TRUE(error) << offset;
        EXPECT_EQ(error->Number(), number) << offset;
        EXPECT_EQ(error->Offset(), offset);
        EXPECT_NE(error->Description().find("offset " + std::to_string(offset)), std::string::npos);
    }
}

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
        {-657434, "0100-01-01T00:00:00"}, {2958465.99, "9999-12-31T23:45:36"}, {-657435, ""}, {2958465.9999999, ""}, {2958466, ""},
        {std::numeric_limits<double>::max(), ""}, {-HUGE_VAL, ""}, {std::nan(""), ""},
        // clang-format on
    };
    for (const auto& [days, text] : cases)
        EXPECT_EQ(IsoText({days}), text) << days;

    for (const local_seconds time : {local_seconds(local_days(2026y / March / 14)) + 9h + 5min + 7s,
                                     local_seconds(local_days(1850y / May / 2)) + 23h + 59min + 59s})
        EXPECT_EQ(OleDate::FromLocal(time).ToLocal(), time);
}

Configuration Imported(const std::string& blocks) {
    return ImportText("a,b,c,500,e,f,g,h,i\n" + blocks, DefaultRecord("1", {}));
}

TEST(TextImport, TakesHeaderAndBlocks) {
    const Configuration record = Imported("N2,\"DMain pump, left\",10,V5,&H40,11.5,100,7,HW\nX3\n%\n,\xFC\xFC\n");
    EXPECT_EQ(std::vector(record.Values.begin(), record.Values.begin() + 8),
              (std::vector<std::int32_t>{500, 2, 10, 0, 64, 12, 100, 7}));
    EXPECT_EQ(record.AddressTypes.at(4) + record.AddressTypes.at(6), "HW");
    EXPECT_EQ(record.NodeDescriptions.at(0), "Main pump, left");
    EXPECT_EQ(record.Values.at(8), 3);
    EXPECT_EQ(record.Values.at(10), 1) << "a block that ends early keeps the remaining defaults";
    EXPECT_EQ(record.Values.at(15), 0);
    EXPECT_EQ(record.NodeDescriptions.at(2), "\u00FC") << "the prefix is one byte of the file";
}

TEST(TextImport, TextsAreUtf8OrWindows1252AndStoredAsIfTheyWereEntered) {
    for (const char* bytes : {"N2,DM\xFChle\tA \x80 \n", "N2,DM\u00FChle\tA \u20AC \n"})
        EXPECT_EQ(Imported(bytes).NodeDescriptions.at(0), "M\u00FChle A \u20AC ");
    EXPECT_EQ(Imported("N2,\u00FCM\u03A9\n").NodeDescriptions.at(0), "M?") << "the prefix is one character";
    EXPECT_EQ(ImportText("\xEF\xBB\xBF\"a\",b,c,\"7\"", DefaultRecord("1", {})).Values.at(0), 7);
    const Configuration small = Imported("N2,D,1,2,3,4,5,6,hw\n");
    EXPECT_EQ(small.AddressTypes.at(4) + small.AddressTypes.at(6), "HW");
}

TEST(TextImport, TheEndIsNoBlockAndShortLettersKeepTheDefaults) {
    const Configuration record = Imported("N2,D,1,2,3,4,5,6,H\n\n \r\n\x1AN9,D");
    EXPECT_EQ(record.AddressTypes.at(4) + record.AddressTypes.at(6), "HW");
    EXPECT_EQ(record.Values.at(8), 0);
    EXPECT_EQ(ImportText("1,2,3", DefaultRecord("1", {})).Values.at(0), 1) << "the header ended early";
}

TEST(TextImport, WhatMakesNoSenseAbandonsItAtItsPlace) {
    std::string blocks;
    for (int block = 0; block < 31; ++block)
        blocks += "N2,D\n%\n";
    EXPECT_EQ(Imported(blocks).Values.at(211), 2);
    EXPECT_EQ(Imported(blocks + "%\n").Values.at(211), 2) << "an end mark alone stores nothing";
    using Place = std::pair<std::size_t, std::size_t>; // Line and item.
    const std::tuple<std::string, int, Place> cases[] = {{blocks + "N2", 9, {64, 1}},
                                                         {"N2,D,1\n2,1e10", 6, {3, 2}},
                                                         {"N2,D,1,2,3,4,5,6,WV\n", 321, {2, 9}},
                                                         {"N2,D,1,2,3,4,5,6,#W\n", 321, {2, 9}},
                                                         {"N2,\"Dunclosed,1\nN3,D\n", 321, {2, 2}},
                                                         {"N2,\"D\rx\"\n", 321, {2, 2}}};
    for (const auto& [text, number, place] : cases) {
        const auto error = Thrown<BadImportFile>([&] { return Imported(text); });
        ASSERT_TRUE(error) << number;
        EXPECT_EQ(error->Number(), number);
        EXPECT_EQ(Place(error->Line(), error->ItemInLine()), place) << text;
    }
}

} // namespace
} // namespace vantrel
