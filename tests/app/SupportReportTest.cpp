// One file for the maintainers: what goes in, what is said of it, and the archive's own bytes.
#include "app/SupportReport.h"

#include "document/SetupFile.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Thrown.h"
#include "tests/support/VirtualClock.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace std::chrono_literals;
using Bytes = std::vector<std::uint8_t>;

Bytes BytesOf(const std::string& text) { return {text.begin(), text.end()}; }

TEST(ZipArchiveTest, AnArchiveIsMadeOfTheFormatsOwnBytes) {
    EXPECT_EQ(Crc32(BytesOf("123456789")), 0xCBF43926U);
    EXPECT_EQ(Crc32({}), 0U);
    // 2026-03-14 09:05:07; 'é' in the name.
    const std::vector<ZipEntry> entries{{"\xC3\xA9.txt", BytesOf("ab")}};
    const Bytes facts{20,   0, 0, 8, 0, 0, 0xA3, 0x48, 0x6E, 0x5C, 0x6D, 0x48, 0x83,
                      0x9E, 2, 0, 0, 0, 2, 0,    0,    0,    6,    0,    0,    0};
    const Bytes name = BytesOf("\xC3\xA9.txt");
    Bytes wanted{'P', 'K', 3, 4};
    const auto add = [&](const Bytes& bytes) { wanted.insert(wanted.end(), bytes.begin(), bytes.end()); };
    add(facts);
    add(name);
    add(BytesOf("ab"));
    add({'P', 'K', 1, 2, 20, 0});
    add(facts);
    add({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    add(name);
    add({'P', 'K', 5, 6, 0, 0, 0, 0, 1, 0, 1, 0, 52, 0, 0, 0, 38, 0, 0, 0, 0, 0});
    EXPECT_EQ(ZipBytes(entries, VirtualClock().LocalNow()), wanted);
    EXPECT_EQ(ZipBytes({}, {}).size(), 22U) << "an empty one, of a time before the format's";
    EXPECT_NE(ErrorText([&] { return ZipBytes(std::vector<ZipEntry>(65536), {}); }), "");
    EXPECT_NE(ErrorText([&] { return ZipBytes(std::vector{ZipEntry{std::string(65536, 'x'), {}}}, {}); }), "");
}

class SupportReportTest : public testing::Test {
protected:
    SupportReportTest() {
        std::filesystem::create_directory(folder / "Support");
        state.InitDefaults();
    }
    [[nodiscard]] SupportReport Make(const SupportSources& sources) const { return {state, sources, clock.LocalNow()}; }
    static std::string Names(const SupportReport& report) {
        std::string names;
        for (const SupportReport::Item& item : report.Items())
            names += item.name + "|";
        return names;
    }

    TemporaryFolder folder;
    VirtualClock clock;
    Program state{ProgramFolder(folder / "", folder / "user"), clock};
};

TEST_F(SupportReportTest, WhatIsThereGoesInAndAllOfItIsListed) {
    EXPECT_EQ(Names(Make({.program = "vantrelctl", .withSetup = false})), "versions.txt|") << "no settings were kept";
    WriteText(folder / "Support/RSPort.cfg", "3,9600");
    WriteText(folder / "Support/vantrel.ini", "[Window]");
    WriteText(folder / "line.trace", "ff");
    state.document.CurrentConfiguration.SetValue(0, 500);
    const SupportReport report = Make({.program = "vantrel",
                                       .toolkit = "Qt 6.4.2",
                                       .trace = folder / "line.trace",
                                       .texts = {{"events.csv", "the event log", std::string(1234, 'x')}},
                                       .files = {folder / "line.trace", folder / "gone.txt"}});
    EXPECT_EQ(Names(report), "versions.txt|RSPort.cfg|vantrel.ini|set-up.sdt|line.trace|events.csv|line-2.trace|");
    const std::string versions(report.Items()[0].bytes.begin(), report.Items()[0].bytes.end());
    EXPECT_TRUE(versions.starts_with("Program: vantrel " + VersionNumber() + "\nToolkit: Qt 6.4.2\nHost: "))
        << versions;
    EXPECT_EQ(ParseSetupFile(report.Items()[3].bytes).Value(0), 500) << "as it stands, saved or not";
    const std::string list = report.ListText();
    for (const char* said : {"set-up.sdt    the set-up with its unsaved changes (3,399 bytes)\n",
                             "events.csv    the event log (1,234 bytes)\n", "Left out: \""})
        EXPECT_NE(list.find(said), std::string::npos) << list;
    ASSERT_EQ(report.LeftOut().size(), 1U);
    const Bytes archive = report.Archive();
    EXPECT_EQ(std::string(archive.begin() + 30, archive.begin() + 42), "contents.txt");
    EXPECT_EQ(archive.at(archive.size() - 12), report.Items().size() + 1) << "and nothing else";
}

TEST_F(SupportReportTest, OfALongTraceTheEndGoesIn) {
    WriteText(folder / "long.trace",
              std::string(20, 'x') + "\n" + std::string(SupportReport::MostOfTrace - 5, 'y') + "\nlast");
    const SupportReport report = Make({.program = "", .withSetup = false, .trace = folder / "long.trace"});
    const SupportReport::Item& trace = report.Items().back();
    EXPECT_EQ(trace.what, "the end of the last trace of the line");
    EXPECT_EQ(std::string(trace.bytes.begin(), trace.bytes.end()), "last") << "from the beginning of a line";
}

TEST_F(SupportReportTest, NoNameLeadsOutOfTheArchiveOrStandsForItsList) {
    const SupportReport report =
        Make({.program = "",
              .withSetup = false,
              .texts = {{"..\\a/b:c", "", ""}, {"contents.txt", "", ""}, {"x", "", ""}, {"x", "", ""}}});
    EXPECT_EQ(Names(report), "versions.txt|.._a_b_c|contents-2.txt|x|x-2|");
}

} // namespace
} // namespace vantrel
