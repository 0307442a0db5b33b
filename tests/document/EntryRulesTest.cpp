// What the editor accepts for a value and what it refuses, through the whole field table; and what its grids show.
#include "document/EntryRules.h"
#include "document/GridTexts.h"
#include "document/ValueDisplay.h"
#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace vantrel {

namespace {

constexpr const char* NodeLimits = "Only a Number Between 2 and 32 can be Entered";
constexpr const char* CountLimits = "Only a Number Between 0 and 120 can be Entered";
constexpr const char* TILimits = "Only a Number Between V1 and V34463 can be Entered";
constexpr const char* WordLimits = "Only an Even Value Between W32 and W8174 can be Entered";
constexpr const char* HexLimits = "Only an Even Value Between 20H and FFFEH can be Entered";

/// What the cell then shows, with the notation where the text does not tell it; or the refusal.
std::string Judged(SequenceField field, const std::string& text) {
    const EntryAnswer answer = CheckEntry(field, text);
    if (const auto* refused = std::get_if<RefusedEntry>(&answer)) return refused->text;
    const auto accepted = std::get<AcceptedEntry>(answer);
    return DisplayValue(accepted.value, std::string(1, accepted.notation));
}

TEST(EntryRules, EveryFieldAcceptsItsNotationsAndNamesItsLimits) {
    using enum SequenceField;
    const std::vector<SequenceField> counts{SendWordCount, ReceiveWordCount};
    const std::vector<SequenceField> inTI{SendFromTI, ReceiveToTI};
    const std::vector<SequenceField> inNode{SendToNode, ReceiveFromNode};
    const std::vector<std::tuple<std::vector<SequenceField>, std::vector<std::string>, const char*>> cases = {
        {{NodeNumber}, {"0", "-0.5", "0.5", "-0"}, "0"},
        {{NodeNumber}, {"2", "1.5", "2.5", "+2", " 2 ", "2.", "2e0", "0.2E+1"}, "2"},
        {{NodeNumber}, {"32", "32.5", "3.2d1", "00032"}, "32"},
        {{NodeNumber}, {"1", "33", "-2", "32.6", "", " ", "abc", "2 3", "2x", "1e", "&H10", "V2", "2H"}, NodeLimits},
        {counts, {"120", "120.5", "119.5", "1.2e2", "12000e-2"}, "120"},
        {counts, {"12", "12.5", "11.5"}, "12"},
        {counts, {"13.5"}, "14"},
        {counts, {"0", "1e-400", ".4", "-.4"}, "0"},
        {counts,
         {"121", "-1", "120.51", "1E400", "-1E400", ".", "+", "e5", "\u0663", "5\u00A0", "1,5", "inf", "nan",
          "99999999999999999999", "4294967297"},
         CountLimits},
        {inTI, {"1200", "V1200", "v1200", "V 1200", "V1.2e3", "1200.5"}, "V1200"},
        {inTI, {"34463", "V34463"}, "V34463"},
        {inTI,
         {"0", "V0", "34464", "V34464", "X1200", "V", "VV1", "", " 5", "-5", "+5", ".5", "V-5", "W32", "20H", "1H"},
         TILimits},
        {inNode, {"32", "W32", "w32", "32.5", "W32.5", "31.5", " 32", "+32", "3.2e1"}, "W32"},
        {inNode, {"8174", "w8174"}, "W8174"},
        {inNode, {"1e2"}, "W100"},
        {inNode,
         {"33", "30", "8176", "W8176", "W", "-32", "Q100", "V100", "", " ", "W20H", "&H20", "20H ", "x", "1E400"},
         WordLimits},
        {inNode, {"20H", "20h", "0020H"}, "20H"},
        {inNode, {"fffeh", "ffFEH"}, "FFFEH"},
        {inNode, {"1e2H"}, "1E2H"},
        {inNode, {"8000H"}, "8000H"},
        {inNode,
         {"1FH", "1EH", "21H", "FFFFH", "10000H", "FFFF20H", "8000000000000020H", "GGH", "1GGH", "G20H", " 20H", "OFFH",
          "V1EH"},
         HexLimits},
    };
    for (const auto& [fields, texts, judged] : cases) {
        for (const SequenceField field : fields) {
            for (const std::string& text : texts)
                EXPECT_EQ(Judged(field, text), judged) << '"' << text << '"';
        }
    }
}

TEST(EntryRules, AHexadecimalEntryWithoutTwoDigitsIsAnInvalidCall) {
    for (const char* text : {"AH", "5h", "H", "XH"})
        EXPECT_THROW((void)CheckEntry(SequenceField::SendToNode, text), RuntimeError) << text;
}

TEST(EntryRules, APastedDescriptionIsOneLineThatTheFileCanHold) {
    EXPECT_EQ(DescriptionToStore("a\tb\r\nc\nd\re\x7F\x1B[\u0085\u2028f"), "a b c d e  [  f");
    EXPECT_EQ(DescriptionToStore(" M\u00FChle \u20AC \u03A9\xFF"), " M\u00FChle \u20AC ??");
}

TEST(ValueDisplay, ReadsInItsNotation) {
    EXPECT_EQ(DisplayValue(-1, "h"), "FFFFFFFFH");
    EXPECT_EQ(DisplayValue(-7, "#"), "-7");
    Configuration record = DefaultRecord("", {});
    record.SetAddressType(ValueIndex(0, SequenceField::SendToNode), "x");
    EXPECT_EQ(DisplayValue(record, ValueIndex(0, SequenceField::SendToNode)), "W32");
    record.SetAddressType(ValueIndex(0, SequenceField::SendFromTI), "H");
    EXPECT_EQ(DisplayValue(record, ValueIndex(0, SequenceField::SendFromTI)), "V1");
}

TEST(GridTexts, HeadingsAndWidthsAreThoseOfTheThreeGrids) {
    EXPECT_EQ(EditorGridFormat(EditorTab::CommStatus), "^Seq #|^Node #|<Communication Status");
    EXPECT_EQ(EditorGridFormat(EditorTab::Configuration),
              "^Seq #|^Node #|^# Send|^From TI|^To Node|^# Receive|^From Node|^To TI");
    EXPECT_EQ(EditorGridFormat(EditorTab::Descriptions), "^Seq #|^Node #|< Communication Description");

    // 6535 / 6 is 1089.17.
    EXPECT_EQ(EditorColumnWidths(EditorTab::Configuration),
              (std::vector{900, 900, 1089, 1089, 1089, 1089, 1089, 1089}));
}

TEST(GridTexts, ARowShowsItsSequenceInItsNotations) {
    auto record = DefaultRecord("VANTREL_R1.0.0", {});
    record.SetValue(211, 12);
    record.SetValue(214, 416);
    record.SetAddressType(214, "H");
    record.SetNodeDescription(30, "M\u00FChle 2");
    using Texts = std::vector<std::string>;
    EXPECT_EQ(EditorRowTexts(record, EditorTab::Configuration, 30),
              (Texts{"30", "12", "0", "V1", "1A0H", "0", "W32", "V1"}));
    EXPECT_EQ(EditorRowTexts(record, EditorTab::Descriptions, 30), (Texts{"30", "12", "M\u00FChle 2"}));
    EXPECT_EQ(EditorRowTexts(record, EditorTab::CommStatus, 30), (Texts{"30", "-", "-- : -"})) << "not from the record";
}

} // namespace

} // namespace vantrel
