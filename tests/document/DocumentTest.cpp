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

class DocumentFile : public testing::Test {
protected:
    DocumentFile() { document.InitDefaults(); }

    void WriteRecord(const std::string& name, const Configuration& record) const {
        const auto bytes = SetupFileBytes(record);
        WriteText(folder / name, std::string(bytes.begin(), bytes.end()));
    }

    /// Everything by which a user would notice that an operation did something.
    [[nodiscard]] std::string State() const {
        const auto bytes = SetupFileBytes(document.CurrentConfiguration);
        return std::string(bytes.begin(), bytes.end()) + Utf8FromPath(document.FilePath) + "|" + document.FileTitle +
               document.BracketName + (document.IsUnnamed ? "U" : "") + (document.ReloadDisplay ? "R" : "") +
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
    EXPECT_EQ(ForceSetupExtension("C:\\my.dir\\plant"), "C:\\my.sdt");
    EXPECT_EQ(ForceSetupExtension("plant"), "plant.sdt");
    EXPECT_EQ(ForceSetupExtension("a.b.c."), "a.b.c.sdt");
}

TEST_F(DocumentFile, NewIsTheUnnamedDefaultAgain) {
    document.CurrentConfiguration.SetValue(1, 5);
    document.UploadedBeforeSave = true;
    document.NameFile("a.sdt");
    EXPECT_EQ(document.FilePath, fs::current_path() / "a.sdt");
    EXPECT_TRUE(document.Changed() && !document.IsUnnamed);
    document.New();
    EXPECT_TRUE(document.IsUnnamed && document.ReloadDisplay);
    EXPECT_FALSE(document.UploadedBeforeSave || document.Changed());
    EXPECT_EQ(document.BracketName, "[unnamed]");
}

TEST_F(DocumentFile, WhatWasSavedOpensWithoutAQuestion) {
    document.CurrentConfiguration.SetNodeDescription(0, "M\u00FChle");
    document.CurrentConfiguration.CreatorVersion = "VANTREL_R0.9.0";
    document.NameFile(folder / "plant.v1");
    clock.Advance(std::chrono::hours(1));
    Save();
    EXPECT_FALSE(document.Changed() || document.IsUnnamed);
    EXPECT_EQ(document.FilePath, folder / "plant.sdt");
    EXPECT_EQ(fs::file_size(folder / "plant.sdt"), 3399U + 5U);

    Document other("VANTREL_R1.0.0", clock);
    other.InitDefaults();
    other.UploadedBeforeSave = true;
    other.ReadSetupFile(folder / "plant.sdt");
    EXPECT_FALSE(other.LoadedByOtherVersion());
    other.ApplyLoadedFile();
    EXPECT_EQ(other.CurrentConfiguration.NodeDescription(0), "M\u00FChle");
    EXPECT_EQ(IsoText(other.CurrentConfiguration.SavedDate), "2026-03-14T10:05:07");
    EXPECT_EQ(document.BracketName + other.BracketName, "[plant.sdt][plant.sdt]");
    EXPECT_FALSE(other.Changed() || other.IsUnnamed || other.UploadedBeforeSave);
    EXPECT_TRUE(other.ReloadDisplay);
}

TEST_F(DocumentFile, AppliedFilesHaveAllValuesWhateverTheirOwnSize) {
    Configuration record = DefaultRecord("VANTREL_R1.0.0", {});
    record.Values.resize(10);
    record.TargetAddresses.resize(400, "W1");
    record.NodeDescriptions.resize(3);
    WriteRecord("a.sdt", record);
    document.ReadSetupFile(folder / "a.sdt");
    document.ApplyLoadedFile();
    const Configuration& current = document.CurrentConfiguration;
    EXPECT_EQ(current.Values.size() + current.TargetAddresses.size(), 2 * 218U);
    EXPECT_EQ(current.NodeDescriptions.size(), 3U) << "these keep their size";
    EXPECT_FALSE(document.Changed());
}

TEST_F(DocumentFile, WhatFailsChangesNothing) {
    WriteText(folder / "bad.sdt", "no set-up file");
    WriteText(folder / "bad.vtl", "a,b,c,500,e,f,g,h,i\nN3,D,99999999999");
    document.CurrentConfiguration.CreatorVersion = "VANTREL_R0.9.0";
    document.UploadedBeforeSave = true;
    document.NameFile(folder / "none/plant");
    const std::string before = State();
    EXPECT_THROW(document.ReadSetupFile(folder / "bad.sdt"), RuntimeError);
    EXPECT_THROW(document.ReadSetupFile(folder / "none.sdt"), RuntimeError);
    EXPECT_THROW(document.ImportTextFile(folder / "bad.vtl"), RuntimeError);
    EXPECT_THROW(Save(), RuntimeError);
    EXPECT_EQ(State(), before);
}

TEST_F(DocumentFile, AnImportCountsAsChangedAndIsSavedAsASetupFile) {
    WriteText(folder / "plant.vtl", "a,b,c,500,e,f,g,h,i\nN2,DPump\n");
    clock.Advance(std::chrono::seconds(53));
    document.ImportTextFile(folder / "plant.vtl");
    EXPECT_TRUE(document.Changed() && document.ReloadDisplay && !document.IsUnnamed);
    EXPECT_EQ(document.BracketName, "[plant.vtl]");
    EXPECT_EQ(IsoText(document.CurrentConfiguration.SavedDate), "2026-03-14T09:06:00");
    WriteText(folder / "plant.sdt", std::string(5000, 'x'));
    Save();
    EXPECT_EQ(fs::file_size(folder / "plant.sdt"), 5000U) << "the old tail stays behind the record";
    document.ReadSetupFile(document.FilePath);
    EXPECT_EQ(document.LoadedConfiguration.NodeDescription(0), "Pump");
}

TEST_F(DocumentFile, ADotOfThePathIsNoPointOfTheName) {
    fs::create_directories(folder / "my.dir");
    const fs::path home = fs::canonical(folder.Path());
    for (const char* name : {"./plant", "my.dir/../plant", "my.dir/./.././plant.x"}) {
        document.NameFile(folder / name);
        EXPECT_EQ(document.SaveTarget(), home / "plant.sdt") << name;
    }
    document.FileNamedBy = NamesFrom::User;
    document.NameFile(folder / "my.dir/plant.v1.vtl");
    EXPECT_EQ(document.SaveTarget(), folder / "my.dir/plant.v1.sdt");
}

} // namespace
} // namespace vantrel
