// Safety copies on the disk: kept whole and never over one another, and listed whatever else lies in their folder.
#include "document/Backups.h"

#include "document/SetupFile.h"
#include "platform/RuntimeError.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>

namespace vantrel {
namespace {

namespace fs = std::filesystem;

class BackupsTest : public testing::Test {
protected:
    [[nodiscard]] static Configuration Held(std::int32_t value, int hour) {
        Configuration record = DefaultRecord(
            "VANTREL_R1.0.0",
            OleDate::FromLocal(std::chrono::local_days(std::chrono::year(2026) / 3 / 14) + std::chrono::hours(hour)));
        record.SetValue(StatusStackIndex, value);
        return record;
    }
    [[nodiscard]] std::string Listed() const {
        std::string shown;
        const Backups::List list = backups.Find();
        for (const Backup& one : list.found)
            shown += std::to_string(one.record.Value(StatusStackIndex)) + " of " + one.board + "|";
        for (const std::string& one : list.skipped)
            shown += one + "|";
        return shown;
    }

    TemporaryFolder folder;
    Backups backups{folder / "user" / "Backups"};
};

TEST_F(BackupsTest, ACopyIsKeptUnderTimeAndNameAndNeverOverAnother) {
    EXPECT_EQ(Listed(), "");
    EXPECT_EQ(backups.Keep(Held(7, 9), "a:b/c", "board 3\nX").filename(), "2026-03-14 09.00.00 a_b_c.sdt");
    EXPECT_EQ(backups.Keep(Held(8, 9), "a:b/c", "").filename(), "2026-03-14 09.00.00 a_b_c 2.sdt");
    (void)backups.Keep(Held(9, 10), std::string(300, 'x') + ".sdt", "");
    EXPECT_EQ(Listed(), "9 of |8 of |7 of board 3?X|");
    const Backup newest = backups.Find().found.front();
    EXPECT_EQ(newest.DifferencesTo(Held(9, 1)), 0U);
    EXPECT_EQ(newest.DifferencesTo(Held(1, 1)), 1U);
    WriteText(folder / "file", "");
    EXPECT_THROW((void)Backups(folder / "file").Keep(Held(7, 9), "a", ""), RuntimeError);
}

TEST_F(BackupsTest, WhatIsNoCopyIsSkippedWithItsName) {
    (void)backups.Keep(Held(7, 9), "plant", "board 3");
    const auto put = [&](const char* name, const std::string& text) { WriteText(backups.Folder() / name, text); };
    Configuration few = Held(1, 1);
    few.Values.resize(5);
    const auto bytes = SetupFileBytes(few);
    put("few.SDT", std::string(bytes.begin(), bytes.end()));
    put("large.sdt", std::string(2'000'000, 'x'));
    put("other.txt", "");
    fs::create_directory(backups.Folder() / "folder.sdt");
    EXPECT_EQ(Listed(), "7 of board 3|few.SDT: It does not hold all values.|folder.sdt: It is no file.|"
                        "large.sdt: It is too large for a set-up file.|");
    put("text.sdt", "no set-up");
    EXPECT_EQ(backups.Find().skipped.size(), 4U);
}

} // namespace
} // namespace vantrel
