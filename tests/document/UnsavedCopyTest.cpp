// Unsaved edits on the disk: when they are kept, who offers them, and that nothing stays that nobody
// needs; and safety copies: kept whole, never over one another, and listed whatever else lies in their folder.
#include "document/UnsavedCopy.h"
#include "document/Backups.h"
#include "document/SetupFile.h"

#include "tests/support/TemporaryFolder.h"
#include "tests/support/VirtualClock.h"

#include <gtest/gtest.h>

#include <functional>

namespace vantrel {
namespace {

namespace fs = std::filesystem;

/// What one running program has to do with the matter.
struct Running {
    Running(const fs::path& folder, VirtualClock& itsClock)
        : clock(itsClock), document("VANTREL_R1.0.0", itsClock), copy(folder, document, itsClock) {
        document.InitDefaults();
        document.New();
    }
    std::string TickAMinuteLater() {
        clock.Advance(std::chrono::minutes(1));
        return copy.Tick().value_or("");
    }
    VirtualClock& clock;
    Document document;
    UnsavedCopy copy;
};

class UnsavedCopyTest : public testing::Test {
protected:
    [[nodiscard]] std::size_t Files() const {
        std::error_code error;
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(unsaved, error), {}));
    }
    /// A program that edits and is killed: its claim goes with it, its copy stays.
    void EditAndDie(std::int32_t value, const fs::path& path) {
        Running program(unsaved, clock);
        if (!path.empty()) program.document.NameFile(path);
        program.document.CurrentConfiguration.SetValue(1, value);
        program.document.CurrentConfiguration.SetAddressType(4, "H");
        EXPECT_EQ(program.TickAMinuteLater(), "");
    }

    TemporaryFolder folder;
    fs::path unsaved = folder / "user" / "Unsaved";
    VirtualClock clock;
};

TEST_F(UnsavedCopyTest, EditsAreKeptOnceAMinuteAndGoWhenTheyAreSavedOrGivenUp) {
    Running program(unsaved, clock);
    EXPECT_EQ(program.TickAMinuteLater(), "");
    EXPECT_FALSE(fs::exists(unsaved)) << "nothing has been edited";
    const std::vector<std::pair<const char*, std::function<void()>>> ends = {
        {"saved",
         [&] {
             program.document.NameFile(folder / "plant");
             program.document.Save({});
         }},
        {"new", [&] { program.document.New(); }},
        {"ended", [&] { program.copy.Discard(); }}};
    for (const auto& [name, end] : ends) {
        program.document.CurrentConfiguration.SetAddressType(4, program.document.IsUnnamed ? "H" : "W");
        program.document.CurrentConfiguration.SetNodeDescription(1, name);
        EXPECT_FALSE(program.copy.Tick() || fs::exists(unsaved)) << "not before its time";
        EXPECT_EQ(program.TickAMinuteLater(), "");
        EXPECT_EQ(Files(), 2U) << "the copy and its claim";
        EXPECT_TRUE(program.copy.Find().empty() && Running(unsaved, clock).copy.Find().empty()) << "it still runs";
        end();
        (void)program.copy.Tick();
        EXPECT_FALSE(fs::exists(unsaved)) << name;
    }
}

TEST_F(UnsavedCopyTest, WhatIsLeftBehindIsFoundByOneProgramAloneUntilItIsTakenOrDeleted) {
    EditAndDie(7, folder / "plant.sdt");
    EditAndDie(8, {});
    WriteText(unsaved / "torn.sdt", "VANTREL");
    Running program(unsaved, clock);
    {
        auto found = program.copy.Find();
        ASSERT_EQ(found.size(), 2U);
        EXPECT_EQ(found[0].path, "") << "the newest comes first";
        EXPECT_EQ(IsoText(found[0].when), "2026-03-14T09:07:07");
        EXPECT_EQ(found[1].path, folder / "plant.sdt");
        EXPECT_TRUE(Running(unsaved, clock).copy.Find().empty()) << "somebody is being asked already";
        found[0].Delete();
    }
    auto found = program.copy.Find();
    ASSERT_EQ(found.size(), 1U);
    program.document.TakeUnsaved(std::move(found[0].record), found[0].path);
    program.copy.Adopt(std::move(found[0]));
    EXPECT_EQ(program.document.BracketName, "[plant.sdt]");
    EXPECT_EQ(program.document.CurrentConfiguration.AddressType(4), "H");
    EXPECT_TRUE(program.document.Changed() && program.document.OwnFile.empty()) << "the file knows nothing of it yet";
    EXPECT_EQ(program.TickAMinuteLater(), "");
    EXPECT_EQ(Files(), 3U);
    program.document.Save({});
    EXPECT_FALSE(program.copy.Tick() || program.document.Changed());
    EXPECT_EQ(Files(), 1U) << "what is no copy is not ours to delete";
    fs::remove(unsaved / "torn.sdt");
    program.copy.Discard();
    EXPECT_FALSE(fs::exists(unsaved)) << "nor is an empty folder left";
}

TEST_F(UnsavedCopyTest, WhereNothingCanBeKeptTheUserHearsItOnce) {
    WriteText(folder / "user", "no folder");
    Running program(unsaved, clock);
    program.document.CurrentConfiguration.SetValue(1, 7);
    EXPECT_TRUE(program.TickAMinuteLater().starts_with("Unsaved edits are not kept"));
    EXPECT_EQ(program.TickAMinuteLater(), "");
}

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
