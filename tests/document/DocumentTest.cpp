// The open document: which steps move its records, its name and its flags, and which leave them alone.
#include "document/Document.h"

#include "document/SetupFile.h"
#include "platform/RuntimeError.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/VirtualClock.h"
#include "text/PathText.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

namespace fs = std::filesystem;

constexpr const char* Import = "a,b,c,500,e,f,g,h,i\nN2,DPump\n";

class DocumentFile : public testing::Test {
protected:
    DocumentFile() { document.InitDefaults(); }

    void WriteRecord(const std::string& name, const Configuration& record) const {
        const auto bytes = SetupFileBytes(record);
        WriteText(folder / name, std::string(bytes.begin(), bytes.end()));
    }

    /// Everything by which a user would notice that an operation did something.
    [[nodiscard]] std::string State() const {
        const auto record = [](const Configuration& configuration) {
            const auto bytes = SetupFileBytes(configuration);
            return std::string(bytes.begin(), bytes.end());
        };
        return record(document.CurrentConfiguration) + record(document.SavedConfiguration) +
               Utf8FromPath(document.FilePath) + "|" + document.FileTitle + "|" + document.BracketName +
               (document.IsUnnamed ? "U" : "") + (document.ReloadDisplay ? "R" : "") +
               (document.UploadedBeforeSave ? "B" : "") + (document.Changed() ? "C" : "");
    }

    void Save() {
        document.Save([](const std::string&) {});
    }

    TemporaryFolder folder;
    VirtualClock clock;
    Document document{"VANTREL_R1.0.0", clock};
};

TEST(ForceSetupExtension, ReplacesFromTheLastPointOfTheWholeText) {
    EXPECT_EQ(ForceSetupExtension("C:\\data\\plant.vtl"), "C:\\data\\plant.sdt");
    EXPECT_EQ(ForceSetupExtension("C:\\my.dir\\plant"), "C:\\my.sdt");
    EXPECT_EQ(ForceSetupExtension("plant"), "plant.sdt");
    EXPECT_EQ(ForceSetupExtension("a.b.c."), "a.b.c.sdt");
    EXPECT_EQ(ForceSetupExtension(""), ".sdt");
}

TEST_F(DocumentFile, TheDateSaysWhatItIsTheDateOfAndWhetherThatIsStillSo) {
    const auto edit = [&] { document.CurrentConfiguration.SetAddressType(4, "H"); };
    const auto said = [&] { return document.DateText("D"); };
    EXPECT_EQ(said(), "");
    edit();
    EXPECT_EQ(said(), "Not saved");
    document.NameFile(folder / "plant");
    Save();
    EXPECT_EQ(said(), "Saved D");
    document.CurrentConfiguration.SetAddressType(4, "W");
    EXPECT_EQ(said(), "Saved D, changed since");
    clock.Advance(std::chrono::hours(1));
    document.CurrentConfiguration.SavedDate = OleDate::FromLocal(clock.LocalNow());
    document.FromBoard = true;
    EXPECT_EQ(said(), "Upload of D, not saved");
    WriteText(folder / "old.vtl", "a,b,c,500,e,f,g,h,i\nN2\n");
    document.ImportTextFile(folder / "old.vtl");
    EXPECT_EQ(said(), "Import of D, not saved");
    document.TakeUnsaved(document.DefaultConfiguration, {});
    EXPECT_EQ(said(), "Recovered, not saved");
    document.New();
    EXPECT_EQ(said(), "");
}

TEST_F(DocumentFile, NewIsTheUnnamedDefaultAgain) {
    EXPECT_EQ(IsoText(document.CurrentConfiguration.SavedDate), "2026-03-14T09:05:07");
    document.CurrentConfiguration.SetValue(1, 5);
    document.UploadedBeforeSave = true;
    document.NameFile("a.sdt");
    EXPECT_EQ(document.FilePath, fs::current_path() / "a.sdt");
    EXPECT_TRUE(document.Changed() && !document.IsUnnamed);
    document.New();
    EXPECT_TRUE(document.IsUnnamed && document.ReloadDisplay);
    EXPECT_FALSE(document.UploadedBeforeSave || document.Changed());
    EXPECT_EQ(document.BracketName, "[unnamed]");
    EXPECT_EQ(document.CurrentConfiguration.Value(1), 0);
}

TEST_F(DocumentFile, WhatWasSavedOpensWithoutAQuestion) {
    document.CurrentConfiguration.SetValue(1, 5);
    document.CurrentConfiguration.SetNodeDescription(0, "M\u00FChle");
    document.CurrentConfiguration.CreatorVersion = "VANTREL_R0.9.0";
    document.NameFile(folder / "plant.v1");
    clock.Advance(std::chrono::hours(1));
    Save();
    EXPECT_FALSE(document.Changed() || document.IsUnnamed);
    EXPECT_EQ(document.BracketName, "[plant.sdt]");
    EXPECT_EQ(document.FilePath, folder / "plant.sdt");
    EXPECT_EQ(fs::file_size(folder / "plant.sdt"), 3399U + 5U);

    Document other("VANTREL_R1.0.0", clock);
    other.InitDefaults();
    other.UploadedBeforeSave = true;
    other.ReadSetupFile(folder / "plant.sdt");
    EXPECT_FALSE(other.LoadedByOtherVersion());
    other.ApplyLoadedFile();
    EXPECT_EQ(other.CurrentConfiguration.NodeDescription(0), "M\u00FChle");
    EXPECT_EQ(other.CurrentConfiguration.Value(1), 5);
    EXPECT_EQ(IsoText(other.CurrentConfiguration.SavedDate), "2026-03-14T10:05:07");
    EXPECT_EQ(other.BracketName, "[plant.sdt]");
    EXPECT_FALSE(other.Changed() || other.IsUnnamed || other.UploadedBeforeSave);
    EXPECT_TRUE(other.ReloadDisplay);
}

TEST_F(DocumentFile, ADeclinedOtherVersionMovesTheNameButNotTheDocument) {
    WriteRecord("old.sdt", DefaultRecord("VANTREL_R0.9.0", {}));
    document.ReadSetupFile(folder / "old.sdt");
    EXPECT_TRUE(document.LoadedByOtherVersion());
    EXPECT_EQ(document.OtherVersionText(), "File created by set-up program version: VANTREL_R0.9.0\n"
                                           "Data tables may not be properly aligned.\n\nDo you wish to continue?");
    EXPECT_EQ(document.FilePath, folder / "old.sdt");
    EXPECT_EQ(document.FileTitle, "old.sdt");
    EXPECT_EQ(document.BracketName, "[unnamed]");
    EXPECT_TRUE(document.IsUnnamed);
    EXPECT_FALSE(document.Changed());
    document.ApplyLoadedFile();
    EXPECT_TRUE(document.Changed()) << "until it is saved, the stamp is another version's";
}

TEST_F(DocumentFile, AppliedFilesHaveAllValuesWhateverTheirOwnSize) {
    Configuration record = DefaultRecord("VANTREL_R1.0.0", {});
    record.Values.resize(10);
    record.TargetAddresses.resize(400, "W1");
    record.NodeDescriptions.resize(3);
    record.AddressTypes.resize(5);
    WriteRecord("a.sdt", record);
    document.ReadSetupFile(folder / "a.sdt");
    document.ApplyLoadedFile();
    const Configuration& current = document.CurrentConfiguration;
    EXPECT_EQ(current.Values.size(), 218U);
    EXPECT_EQ(current.Values.at(217), 0);
    EXPECT_EQ(current.TargetAddresses.size(), 218U);
    EXPECT_EQ(current.NodeDescriptions.size() + current.AddressTypes.size(), 3U + 5U) << "these keep their sizes";
    EXPECT_FALSE(document.Changed());
}

TEST_F(DocumentFile, AFileThatCannotBeTakenOverChangesNothing) {
    WriteText(folder / "bad.sdt", "no set-up file");
    WriteText(folder / "bad.vtl", std::string(Import) + "N3,D,99999999999");
    document.CurrentConfiguration.SetValue(1, 5);
    document.UploadedBeforeSave = true;
    const std::string before = State();
    EXPECT_THROW(document.ReadSetupFile(folder / "bad.sdt"), RuntimeError);
    EXPECT_THROW(document.ReadSetupFile(folder / "none.sdt"), RuntimeError);
    EXPECT_THROW(document.ImportTextFile(folder / "bad.vtl"), RuntimeError);
    EXPECT_EQ(State(), before);
}

TEST_F(DocumentFile, AnImportCountsAsChangedAndIsSavedAsASetupFile) {
    WriteText(folder / "plant.vtl", Import);
    document.ImportTextFile(folder / "plant.vtl");
    clock.Advance(std::chrono::seconds(53));
    document.ImportTextFile(folder / "plant.vtl");
    EXPECT_TRUE(document.Changed() && document.ReloadDisplay);
    EXPECT_EQ(document.BracketName, "[plant.vtl]");
    EXPECT_FALSE(document.IsUnnamed);
    EXPECT_EQ(document.CurrentConfiguration.Value(0), 500);
    EXPECT_EQ(IsoText(document.CurrentConfiguration.SavedDate), "2026-03-14T09:06:00");

    WriteText(folder / "plant.sdt", std::string(5000, 'x'));
    Save();
    EXPECT_EQ(fs::file_size(folder / "plant.sdt"), 5000U) << "the old tail stays behind the record";
    EXPECT_EQ(FileText(folder / "plant.vtl"), Import);
    document.ReadSetupFile(document.FilePath);
    EXPECT_EQ(document.LoadedConfiguration.NodeDescription(0), "Pump");
}

TEST_F(DocumentFile, ThePointOfAFolderCountsInANameOfADialogOnly) {
    fs::create_directory(folder / "my.dir");
    document.NameFile(folder / "my.dir/plant");
    EXPECT_EQ(document.SaveTarget(), folder / "my.sdt");
    document.FileNamedBy = NamesFrom::User;
    EXPECT_EQ(document.SaveTarget(), folder / "my.dir/plant.sdt");
    document.NameFile(folder / "my.dir/plant.v1.vtl");
    EXPECT_EQ(document.SaveTarget(), folder / "my.dir/plant.v1.sdt");
}

TEST(Document, ADotOfThePathIsNoPointOfTheName) {
    const TemporaryFolder folder;
    const VirtualClock clock;
    Document document("VANTREL_R1.0.0", clock);
    std::filesystem::create_directories(folder / "sub");
    const std::filesystem::path home = std::filesystem::canonical(folder.Path());
    for (const char* name : {"./plant", "sub/../plant", "sub/./.././plant.x"}) {
        document.NameFile(folder / name);
        EXPECT_EQ(document.SaveTarget(), home / "plant.sdt") << name;
        EXPECT_EQ(document.FileTitle.substr(0, 5), "plant");
    }
}

TEST_F(DocumentFile, ADocumentThatCouldNotBeWrittenCountsAsBefore) {
    document.CurrentConfiguration.CreatorVersion = "VANTREL_R0.9.0";
    document.NameFile(folder / "none/plant");
    const std::string before = State();
    EXPECT_THROW(Save(), RuntimeError);
    EXPECT_EQ(State(), before);
}

} // namespace
} // namespace vantrel
