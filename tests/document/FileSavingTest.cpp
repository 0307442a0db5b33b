// Save and Save As as a user meets them: where the file goes, what a fetch from the board replaces, and who is asked.
#include "tests/document/FileCommandsFixture.h"

namespace vantrel {
namespace {

TEST_F(FileCommandsTest, WhatWasSavedOpensWithoutAQuestion) {
    document.CurrentConfiguration.SetNodeDescription(0, "M\u00FChle");
    document.CurrentConfiguration.CreatorVersion = "VANTREL_R0.9.0";
    Choose("plant.v1");
    clock.Advance(std::chrono::hours(1));
    EXPECT_EQ(files.SaveAs(), Outcome::Done);
    EXPECT_FALSE(document.Changed() || document.IsUnnamed);
    EXPECT_EQ(document.FilePath, folder / "plant.sdt");
    EXPECT_EQ(fs::file_size(folder / "plant.sdt"), 3399U + 5U);
    files.New();
    EXPECT_TRUE(document.IsUnnamed && document.ReloadDisplay && !document.FromBoard);
    Answer({});
    EXPECT_EQ(files.OpenPath(folder / "plant.sdt"), Outcome::Done);
    EXPECT_TRUE(dialogs.boxes.shown.empty());
    EXPECT_EQ(document.CurrentConfiguration.NodeDescription(0), "M\u00FChle");
    EXPECT_EQ(IsoText(document.CurrentConfiguration.SavedDate), "2026-03-14T10:05:07");
}

TEST_F(FileCommandsTest, TheExtensionIsForcedBehindTheLastPointButADotOfThePathIsNone) {
    EXPECT_EQ(ForceSetupExtension("C:\\my.dir\\plant"), "C:\\my.sdt");
    EXPECT_EQ(ForceSetupExtension("a.b.c."), "a.b.c.sdt");
    fs::create_directories(folder / "my.dir");
    const fs::path home = fs::canonical(folder.Path());
    for (const char* name : {"./plant", "my.dir/../plant", "my.dir/./.././plant.x"}) {
        document.NameFile(folder / name);
        EXPECT_EQ(document.SaveTarget(), home / "plant.sdt") << name;
    }
    document.NameFile(home / "PLANT.SDT");
    EXPECT_EQ(document.SaveTarget(), home / "PLANT.SDT");
    document.FileNamedBy = NamesFrom::User;
    document.NameFile(folder / "my.dir/plant.v1.vtl");
    EXPECT_EQ(document.SaveTarget(), folder / "my.dir/plant.v1.sdt");
}

TEST_F(FileCommandsTest, TheFirstSaveWhileOnlineStoresWhatTheBoardHoldsOrNothing) {
    Open();
    Choose("plant");
    document.CurrentConfiguration.SetValue(1, 7);
    const OleDate created = document.CurrentConfiguration.SavedDate;
    fetchSucceeds = false;
    clock.Advance(std::chrono::hours(1));
    for (const bool named : {false, true}) {
        EXPECT_EQ(named ? files.SaveAs() : files.Save(), Outcome::Failed);
        EXPECT_EQ(document.CurrentConfiguration.Value(1), 7);
        EXPECT_EQ(document.CurrentConfiguration.Value(2), 0) << "what the fetch brought is put back";
        EXPECT_EQ(document.CurrentConfiguration.SavedDate.days, created.days);
        EXPECT_FALSE(document.UploadedBeforeSave || fs::exists(folder / "plant.sdt"));
        EXPECT_TRUE(document.IsUnnamed);
    }
    Answer({MessageAnswer::Yes});
    EXPECT_EQ(files.New(), Outcome::Failed) << "changes are not thrown away for a board that does not answer";

    fetchSucceeds = true;
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(files.Save(), Outcome::Done);
        EXPECT_EQ(fetches, 4) << "only the first save after New or Open fetches";
        EXPECT_EQ(ParseSetupFile(ReadWholeFile(folder / "plant.sdt")).Value(2), 99);
    }
    EXPECT_EQ(dates.substr(dates.rfind('\n', dates.size() - 2) + 1), "2026-03-14T10:05:07\n");
}

TEST_F(FileCommandsTest, WhatAFetchReplacesIsKeptBesideOrTheUserGivesItUp) {
    Open();
    WriteText(folder / "plant before fetch.sdt", "precious");
    for (const std::string copy : {"plant before fetch 2.sdt", "documents/unnamed before fetch.sdt"}) {
        NewAndChanged();
        Choose("plant.sdt");
        const bool named = copy.starts_with("plant");
        EXPECT_EQ(named ? files.SaveAs() : files.Save(), Outcome::Done);
        EXPECT_EQ(ParseSetupFile(ReadWholeFile(folder / copy)).Value(1), 7) << copy;
        EXPECT_EQ(ParseSetupFile(ReadWholeFile(folder / copy)).Value(2), 0) << copy;
        EXPECT_NE(notice.find(fs::path(copy).filename().string() + "\""), std::string::npos) << notice;
    }
    EXPECT_EQ(FileText(folder / "plant before fetch.sdt"), "precious");
    fs::remove_all(folder / "documents");
    WriteText(folder / "documents", "no folder");
    for (const MessageAnswer answer : {MessageAnswer::No, MessageAnswer::Yes}) {
        NewAndChanged();
        Answer({answer});
        fetchedOver.reset();
        EXPECT_EQ(files.Save(), answer == MessageAnswer::Yes ? Outcome::Done : Outcome::Failed);
        EXPECT_EQ(fetchedOver, answer == MessageAnswer::Yes ? std::optional(0) : std::nullopt);
        EXPECT_EQ(document.CurrentConfiguration.Value(2), answer == MessageAnswer::Yes ? 99 : 0);
        EXPECT_NE(LastText().find("no copy could be made"), std::string::npos);
    }
}

TEST_F(FileCommandsTest, AFileThatSomebodyElseHasChangedIsReplacedOnlyAfterYes) {
    files.OpenPath(folder / Stored("plant.sdt", DefaultRecord("VANTREL_R1.0.0", {})));
    for (const MessageAnswer answer : {MessageAnswer::No, MessageAnswer::Yes}) {
        WriteText(folder / "plant.sdt", "theirs");
        Answer({answer});
        EXPECT_EQ(files.Save(), answer == MessageAnswer::Yes ? Outcome::Done : Outcome::Cancelled);
        EXPECT_EQ(FileText(folder / "plant.sdt") == "theirs", answer == MessageAnswer::No);
    }
    Answer({});
    EXPECT_EQ(files.Save(), Outcome::Done);
    fs::remove(folder / "plant.sdt");
    EXPECT_EQ(files.Save(), Outcome::Done);
    EXPECT_EQ(dialogs.trace, "[plant.sdt];[plant.sdt];") << "nobody's work is lost";
}

TEST_F(FileCommandsTest, TheUserIsToldWhereTheForcedExtensionLeads) {
    fs::create_directory(folder / "my.dir");
    Choose("my.dir/plant");
    EXPECT_EQ(files.SaveAs(), Outcome::Done);
    EXPECT_EQ(dialogs.trace, "save as;VANTREL;[plant.sdt];");
    EXPECT_NE(LastText().find((folder / "my.sdt").string()), std::string::npos);
    Answer({});
    EXPECT_EQ(files.Save(), Outcome::Done);
    EXPECT_EQ(dialogs.trace, "[plant.sdt];") << "the document's own file needs no question";
    EXPECT_EQ(files.OpenPath(folder / Stored("my.dir/typed", document.DefaultConfiguration)), Outcome::Done);
    EXPECT_EQ(files.Save(), Outcome::Done);
    EXPECT_EQ(document.OwnFile, folder / "my.dir/typed.sdt") << "a name on the command line stays in its folder";
}

} // namespace
} // namespace vantrel
