// The meaning of a trace: what each exchange says, in order, and after something went wrong.
#include "tests/link/LinkFixture.h"

namespace vantrel {
namespace {

TEST(TraceDecoder, SaysWhatTheExchangesMean) {
    const std::vector<std::pair<std::string, std::vector<std::string>>> cases{
        {"FF>55 01>55 1F F0>00", {"sync", "read mode", "address 1F..H", "read B8176 = 0"}},
        {"FF>55 01>55 40 00>02 40 01>01",
         {"", "", "address 40..H", "read B16384 = 2", "address 40..H", "read B16385 = 1, so W16384 = 258"}},
        {"FF>55 02>55 00 69 01", {"", "write mode", "address 00..H", "address 0069H, B105", "write B105 = 1"}},
        {"01>55 FF>00 FF>55", {"not known: no sync was seen before it", "sync not acknowledged: answer 00H", "sync"}},
        {"FF>55 01>55 FF FF>55 01>55", {"", "", "sync, or address FF..H: echoed", "sync", "read mode"}},
        {"FF>55 01>55 1F>-- FF>-- FF>55 01>55",
         {"", "", "no answer", "sync repeated after silence: no answer", "sync repeated after silence: answer 55H",
          "read mode"}},
        {"FF>55 01>55 1F>20 1F",
         {"", "", "address 1FH.. not echoed: answer 20H", "not known: no sync was seen before it"}},
        {"FF>55 02>55 00 69 01>00", {"", "", "", "", "write B105 = 1 not echoed: answer 00H"}},
        {"FF>55 07>00 FF>55 02>54", {"", "no mode that is known", "sync", "write mode not acknowledged: answer 54H"}},
    };
    for (const auto& [frames, meanings] : cases) {
        TraceDecoder decoder;
        std::size_t i = 0;
        for (const ScriptStep& step : Frames(frames)) {
            const std::string said = decoder.Exchanged(step.expected, step.answer);
            ASSERT_LT(i, meanings.size());
            EXPECT_TRUE(meanings[i].empty() || said == meanings[i]) << frames << ": " << said;
            ++i;
        }
        EXPECT_EQ(i, meanings.size()) << frames;
    }
    EXPECT_EQ(TraceDecoder().Surplus(0xAA), "surplus: AAH came without being asked for");
}

TEST_F(LinkTest, ADecodedTraceSaysItBesideTheBytesAndIsStillATrace) {
    std::ostringstream out;
    TextTrafficLog log(out);
    log.Decode();
    link.SetTrafficLog(&log);
    GoOnline();
    Expect("FF>55 01>55 1F F0>07");
    EXPECT_EQ(Told("B8176"), "7");
    EXPECT_NE(out.str().find("  F0  07  read B8176 = 7\n"), std::string::npos) << out.str();
    WriteText(folder / "trace", out.str());
    EXPECT_FALSE(HoldsSomethingElse(folder / "trace"));
    link.SetTrafficLog(nullptr);
}

} // namespace
} // namespace vantrel
