// The File menu's commands as a user meets them: which questions come in which order, and what each answer leaves.
#include "document/FileCommands.h"

#include "document/SetupFile.h"
#include "tests/support/BoardLink.h"

#include <deque>

namespace vantrel {
namespace {

namespace fs = std::filesystem;
using Outcome = FileCommands::Outcome;

/// Answers boxes from a list, everything else alike every time. Each question leaves its title or its kind in `trace`.
class Person final : public DocumentDialogs {
public:
    MessageAnswer Show(const MessageBox& box) override {
        trace += box.title + ";";
        return boxes.Show(box);
    }
    std::optional<std::string> AskText(const std::string& title, const std::string& text,
                                       const std::string& initialText, const std::string& note) override {
        trace += title + ";";
        whose = note;
        prompt = text;
        initial = initialText;
        return answer;
    }
    std::optional<FileChoice> OpenFile(const FileQuestion& question) override {
        trace += "open;";
        asked = question;
        return choice;
    }
    std::optional<FileChoice> SaveFile(const FileQuestion& question) override {
        trace += "save as;";
        asked = question;
        return choice;
    }

    ScriptedDialogs boxes;
    std::optional<std::string> answer;
    std::optional<FileChoice> choice;
    std::string trace, prompt, initial, whose;
    FileQuestion asked;
};

class FileCommandsTest : public BoardLink<Person> {
protected:
    FileCommandsTest() { document.InitDefaults(); }

    void Answer(std::deque<MessageAnswer> answers) {
        dialogs.trace.clear();
        dialogs.boxes.shown.clear();
        dialogs.boxes.answers = std::move(answers);
    }
    void Choose(const std::string& name, std::size_t filter = 0) { dialogs.choice = FileChoice{folder / name, filter}; }
    std::string Stored(const std::string& name, const Configuration& record) const {
        const auto bytes = SetupFileBytes(record);
        WriteText(folder / name, std::string(bytes.begin(), bytes.end()));
        return name;
    }
    [[nodiscard]] std::string LastText() const {
        return dialogs.boxes.shown.empty() ? "no box" : dialogs.boxes.shown.back().text;
    }

    Document document{"VANTREL_R1.0.0", clock};
    bool fetchSucceeds = true;
    int fetches = 0;
    std::string dates; ///< What the document date showed, one line each time.
    FileCommands files{
        document,
        link,
        dialogs,
        clock,
        {.uploadData =
             [this] {
                 ++fetches;
                 document.CurrentConfiguration.SetValue(2, 99);
                 return fetchSucceeds;
             },
         .showDocumentDate =
             [this] { dates += document.IsUnnamed ? "-\n" : IsoText(document.CurrentConfiguration.SavedDate) + "\n"; },
         .showCaption = [this] { dialogs.trace += document.BracketName + ";"; },
         .documentsFolder = [this] { return folder / "documents"; },
         .dateText = [](OleDate date) { return IsoText(date); },
         .notice = [this](const std::string& text) { notice = text; }}};
    std::string notice;
};

TEST_F(FileCommandsTest, NewAndOpenAndExitObeyTheAnswerToTheSaveQuestion) {
    using enum MessageAnswer;
    struct Case {
        std::deque<MessageAnswer> answers;
        const char* saveAs; ///< None: the save dialog is cancelled. There is no folder "none".
        const char* trace;
        bool goesOn;
        bool ends;
    };
    const std::vector<Case> cases = {
        {{Cancel}, nullptr, "VANTREL;", false, false},
        {{No}, nullptr, "VANTREL;", true, true},
        {{Yes}, "plant", "VANTREL;save as;[plant.sdt];", true, true},
        {{Yes}, nullptr, "VANTREL;save as;", true, false},
        {{Yes, No}, "taken.cfg", "VANTREL;save as;Save;", true, false},
        {{Yes}, "none/plant", "VANTREL;save as;MDIMain FileSave;", false, false},
    };
    WriteText(folder / "taken.sdt", "precious");
    for (const Case& one : cases) {
        const auto after = [&](const auto& command) {
            document.New();
            document.CurrentConfiguration.SetValue(1, 7);
            Answer(one.answers);
            dialogs.choice.reset();
            if (one.saveAs) Choose(one.saveAs);
            fs::remove(folder / "plant.sdt");
            command();
            return dialogs.trace;
        };
        EXPECT_EQ(after([&] { files.New(); }), one.trace + std::string(one.goesOn ? "[unnamed];" : ""));
        EXPECT_EQ(document.CurrentConfiguration.Value(1), one.goesOn ? 0 : 7);
        EXPECT_EQ(after([&] { files.Open(); }).find("open;") != std::string::npos, one.goesOn) << one.trace;
        EXPECT_EQ(after([&] { EXPECT_EQ(files.MayClose(), one.ends); }), one.trace);
        EXPECT_EQ(dialogs.boxes.shown[0].text, "Save Changes to File?");
        EXPECT_EQ(dialogs.boxes.shown[0].buttons, MessageButtons::YesNoCancel);
        EXPECT_EQ(document.IsUnnamed, !one.saveAs || !one.ends) << "a name that nothing was written under is none";
    }
    EXPECT_EQ(FileText(folder / "taken.sdt"), "precious");
    document.New();
    Answer({});
    EXPECT_TRUE(files.MayClose());
    EXPECT_EQ(dialogs.trace, "") << "nothing has changed";
}

TEST_F(FileCommandsTest, TheStackAddressIsAskedForByNewAndWrittenThroughWhileOnline) {
    Open();
    board.PokeWord(6400, 77);
    dialogs.answer = "v500";
    files.New();
    turns.RunToEnd(files.AskStatusStackAddress());
    EXPECT_EQ(dialogs.trace, "[unnamed];TI Status Stack Address;");
    EXPECT_EQ(dates, "-\n");
    EXPECT_EQ(dialogs.initial + dialogs.whose, "V77This is the address that the board holds.");
    EXPECT_EQ(dialogs.prompt,
              "The TI-505 Communications Status Stack Address is the starting address of 32 consecutive "
              "V memory locations. \n\nThe first V memory location is a Watchdog toggle from the "
              "K5216-505. The remainder are the communication status of the respective 31 Comm "
              "sequences (0 through 30). \n\nThe Status stack can be located anywhere within the V "
              "memory space (V1 to V34463).\n\nTI-505 Communications Status Stack Address V:");
    EXPECT_EQ(document.CurrentConfiguration.Value(0), 500);
    EXPECT_EQ(board.PeekWord(6400, clock.Now()), 500);

    board.AddFault({.kind = FaultKind::WrongEcho});
    dialogs.answer = "V500";
    turns.RunToEnd(files.AskStatusStackAddress());
    EXPECT_TRUE(LastText().starts_with("The board did not confirm the address V500")) << LastText();
    board.ClearFaults();

    turns.RunToEnd(link.CloseRSComm());
    for (const char* refused : {"0", "34464", "X5", "V", "12.5", "1e3", "-5", "5V", " ", "99999999999"}) {
        Answer({});
        dialogs.answer = refused;
        turns.RunToEnd(files.AskStatusStackAddress());
        EXPECT_EQ(dialogs.initial + dialogs.whose, "V500This is the address of the set-up.");
        EXPECT_EQ(dialogs.trace, "TI Status Stack Address;TI Status Stack Address;") << refused;
        EXPECT_EQ(LastText(), "Only a V Memory Space Address Between 1 and 34463 can be Entered");
    }
    EXPECT_EQ(StackAddressIn(" 34463 "), 34463);
    Answer({});
    dialogs.answer = "V 1";
    turns.RunToEnd(files.AskStatusStackAddress());
    EXPECT_TRUE(dialogs.boxes.shown.empty()) << "nothing is sent, and nothing missed";
    EXPECT_EQ(document.CurrentConfiguration.Value(0), 1);
    EXPECT_EQ(board.PeekWord(6400, clock.Now()), 500);
}

TEST_F(FileCommandsTest, OpenTellsSetupFilesFromTextFilesByTheFilterAndDroppedOnesByTheirName) {
    document.FilePath = folder / "*.sdt";
    document.UploadedBeforeSave = true;
    Choose(Stored("plant.sdt", DefaultRecord("VANTREL_R1.0.0", {46000.5})));
    EXPECT_EQ(files.Open(), Outcome::Done);
    EXPECT_EQ(dialogs.asked.initial, folder / "*.sdt");
    ASSERT_EQ(dialogs.asked.filters.size(), 2U);
    EXPECT_EQ(dialogs.asked.filters[1].name + dialogs.asked.filters[1].pattern, "Vantrel Files(*.vtl)*.vtl");
    EXPECT_EQ(dialogs.trace, "open;[plant.sdt];");
    EXPECT_FALSE(document.Changed() || document.IsUnnamed || document.UploadedBeforeSave);

    WriteText(folder / "OLD.VTL", "a,b,c,500,e,f,g,h,i\nN2,DPump\n");
    EXPECT_EQ(files.OpenPath(folder / "OLD.VTL"), Outcome::Done);
    EXPECT_EQ(document.BracketName, "[OLD.VTL]");
    EXPECT_TRUE(document.Changed() && document.ReloadDisplay && !document.IsUnnamed) << "until it is saved";
    EXPECT_EQ(dates, "2025-12-09T12:00:00\n2026-03-14T09:05:07\n") << "that of the file, and that of the import";
    const auto before = SetupFileBytes(document.CurrentConfiguration);
    Choose("plant.sdt", 1);
    Answer({MessageAnswer::No, MessageAnswer::No, MessageAnswer::No});
    EXPECT_EQ(files.Open(), Outcome::Failed) << "a set-up file is no text file";
    EXPECT_EQ(files.OpenPath(folder / "none.sdt"), Outcome::Failed);
    EXPECT_EQ(LastText().substr(0, 18), "Error Number = 53\n");
    EXPECT_EQ(SetupFileBytes(document.CurrentConfiguration), before) << "what fails changes nothing";
    EXPECT_EQ(document.FilePath, folder / "OLD.VTL");
    files.Open();
    EXPECT_EQ(dialogs.asked.filter, 1U) << "the name in the dialog is the imported file's";
}

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

TEST_F(FileCommandsTest, OpenedFilesHaveAllValuesWhateverTheirOwnSize) {
    Configuration record = DefaultRecord("VANTREL_R1.0.0", {});
    record.Values.resize(10);
    record.TargetAddresses.resize(400, "W1");
    record.NodeDescriptions.resize(3);
    files.OpenPath(folder / Stored("a.sdt", record));
    const Configuration& current = document.CurrentConfiguration;
    EXPECT_EQ(current.Values.size() + current.TargetAddresses.size(), 2 * 218U);
    EXPECT_EQ(current.NodeDescriptions.size(), 3U) << "these keep their size";
    EXPECT_FALSE(document.Changed());
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

TEST_F(FileCommandsTest, WhatIsNoTextFileIsNeverImportedAndNeverAdvised) {
    const std::string header = "a,b,c,500,e,f,g,h,i\n";
    const std::string record = FileText(folder / Stored("plant.sdt", DefaultRecord("VANTREL_R1.0.0", {})));
    // What is said of them; nothing: they are imported.
    const std::vector<std::pair<std::string, const char*>> cases = {
        // clang-format off
        {header + "N2\n", ""}, {header + "%\nN3,Dx\x1A", ""}, {"a,b,c,500", ""}, {"a,b,c,V500,e,f,g,h,i\nN2\n", ""},
        {"a,b,\"c\",\" 500\",,,,,\nN2\n", ""}, {"a,b,c,,e,f,g,h,i\nN2\n", ""},
        {header + "N2,Dx\x1A" + std::string(3, '\0'), ""},
        {"", "it is empty"}, {" \r\n\x1A" + header, "it is empty"},
        {"N2,Dx,1,200,32,20,64,300,WW\nN3,Dy\n", "header"}, {"\xEF\xBB\xBFN2,Dx\n", "header"},
        {header + "N2,D" + std::string(1, '\0'), "no text"}, {record.substr(0, record.size() / 2), "no text"},
        // clang-format on
    };
    for (const auto& [bytes, said] : cases) {
        WriteText(folder / "old.vtl", bytes);
        document.New();
        Answer({});
        EXPECT_EQ(files.OpenPath(folder / "old.vtl") == Outcome::Done, *said == '\0') << bytes;
        EXPECT_EQ(dialogs.boxes.shown.empty(), *said == '\0') << bytes;
        EXPECT_NE((dialogs.boxes.shown.empty() ? "" : LastText()).find(said), std::string::npos) << bytes;
    }
    for (const std::string& bytes : {record.substr(0, record.size() / 2), header}) {
        WriteText(folder / "bad.sdt", bytes);
        EXPECT_EQ(files.OpenPath(folder / "bad.sdt"), Outcome::Failed);
        EXPECT_EQ(LastText().find("older format") != std::string::npos, bytes == header) << LastText();
    }
}

TEST_F(FileCommandsTest, AFileOfAnotherVersionIsTakenOverOnlyAfterYes) {
    using enum MessageAnswer;
    Choose(Stored("old.sdt", DefaultRecord("VANTREL_R0.9.0", {})));
    for (const MessageAnswer answer : {No, Cancel, Yes}) {
        document.New();
        Answer({answer});
        EXPECT_EQ(files.Open(), answer == Yes ? Outcome::Done : Outcome::Cancelled);
        EXPECT_EQ(dialogs.trace, answer == Yes ? "open;ANCNF;[old.sdt];" : "open;ANCNF;");
        EXPECT_EQ(LastText(), "File created by set-up program version: VANTREL_R0.9.0\n"
                              "Data tables may not be properly aligned.\n\nDo you wish to continue?");
        EXPECT_EQ(document.IsUnnamed, answer != Yes);
        EXPECT_EQ(document.FilePath, folder / "old.sdt") << "the path moves all the same";
    }
    document.New();
    ASSERT_EQ(files.OpenPath(folder / Stored("own.sdt", DefaultRecord("VANTREL_R1.0.0", {}))), Outcome::Done);
    Answer({No, No});
    EXPECT_EQ(files.Open(), Outcome::Cancelled);
    EXPECT_EQ(files.Save(), Outcome::Cancelled) << "what was declined is not the document's file";
    EXPECT_EQ(dialogs.trace, "open;ANCNF;Save;");
}

TEST_F(FileCommandsTest, ValuesThatNoDownloadCanCarryAreNamedOnOpening) {
    Configuration record = DefaultRecord("VANTREL_R1.0.0", {});
    for (std::size_t i = 0; i < 13; ++i)
        record.SetValue(i, i % 2 == 0 ? -1 : 65536);
    files.OpenPath(folder / Stored("odd.sdt", record));
    ASSERT_EQ(dialogs.boxes.shown.size(), 1U);
    EXPECT_NE(LastText().find("\nstatus stack address: -1\nsequence 0, Node #: 65536\n"), std::string::npos);
    EXPECT_NE(LastText().find("\nand 3 more"), std::string::npos) << LastText();
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
        document.New();
        document.CurrentConfiguration.SetValue(1, 7);
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
        document.New();
        document.CurrentConfiguration.SetValue(1, 7);
        Answer({answer});
        EXPECT_EQ(files.Save(), answer == MessageAnswer::Yes ? Outcome::Done : Outcome::Failed);
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

TEST_F(FileCommandsTest, TheDateSaysWhatItIsTheDateOfAndWhetherThatIsStillSo) {
    const auto said = [&] { return document.DateText("D"); };
    document.New();
    EXPECT_EQ(said(), "");
    document.CurrentConfiguration.SetAddressType(4, "H");
    EXPECT_EQ(said(), "Not saved");
    files.OpenPath(folder / Stored("plant.sdt", document.DefaultConfiguration));
    EXPECT_EQ(said(), "Saved D");
    document.CurrentConfiguration.SetAddressType(4, "H");
    EXPECT_EQ(said(), "Saved D, changed since");
    clock.Advance(std::chrono::hours(1));
    document.CurrentConfiguration.SavedDate = OleDate::FromLocal(clock.LocalNow());
    document.FromBoard = true;
    EXPECT_EQ(said(), "Upload of D, not saved");
    WriteText(folder / "old.vtl", "a,b,c,500,e,f,g,h,i\nN2\n");
    files.OpenPath(folder / "old.vtl");
    EXPECT_EQ(said(), "Import of D, not saved");
    document.TakeUnsaved(document.DefaultConfiguration, {});
    EXPECT_EQ(said(), "Recovered, not saved");
}

} // namespace
} // namespace vantrel
