// The File menu's commands as a user meets them: which questions come in which order, and what each answer leaves.
#include "document/FileCommands.h"

#include "document/SetupFile.h"
#include "simulator/SimulatedPort.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/VirtualClock.h"

#include <gtest/gtest.h>

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
                                       const std::string& initialText) override {
        trace += title + ";";
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
    std::string trace, prompt, initial;
    FileQuestion asked;
};

class FileCommandsTest : public testing::Test {
protected:
    FileCommandsTest() { document.InitDefaults(); }

    void GoOnline() {
        turns.RunToEnd(link.OpenRSComm(port));
        ASSERT_TRUE(link.OnlineMode());
    }
    void Answer(std::deque<MessageAnswer> answers) {
        person.trace.clear();
        person.boxes.shown.clear();
        person.boxes.answers = std::move(answers);
    }
    void Choose(const std::string& name, std::size_t filter = 0) { person.choice = FileChoice{folder / name, filter}; }
    std::string Stored(const std::string& name, const Configuration& record) const {
        const auto bytes = SetupFileBytes(record);
        WriteText(folder / name, std::string(bytes.begin(), bytes.end()));
        return name;
    }
    [[nodiscard]] std::string LastText() const { return person.boxes.shown.back().text; }

    TemporaryFolder folder;
    VirtualClock clock;
    Person person;
    SimulatedBoard board;
    SimulatedPort port{board, clock, LinePacing::None};
    TurnQueue turns{clock};
    RSComm link{folder / "RSPort.cfg", {1, 4}, clock, person, turns};
    Document document{"VANTREL_R1.0.0", clock};
    bool fetchSucceeds = true;
    int fetches = 0;
    std::string dates; ///< What the document date showed, one line each time.
    FileCommands files{
        document,
        link,
        person,
        clock,
        {.uploadData =
             [this] {
                 ++fetches;
                 document.CurrentConfiguration.SetValue(2, 99);
                 return fetchSucceeds;
             },
         .showDocumentDate =
             [this] { dates += document.IsUnnamed ? "-\n" : IsoText(document.CurrentConfiguration.SavedDate) + "\n"; },
         .showCaption = [this] { person.trace += document.BracketName + ";"; },
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
            person.choice.reset();
            if (one.saveAs) Choose(one.saveAs);
            fs::remove(folder / "plant.sdt");
            command();
            return person.trace;
        };
        EXPECT_EQ(after([&] { files.New(); }), one.trace + std::string(one.goesOn ? "[unnamed];" : ""));
        EXPECT_EQ(document.CurrentConfiguration.Value(1), one.goesOn ? 0 : 7);
        EXPECT_EQ(after([&] { files.Open(); }).find("open;") != std::string::npos, one.goesOn) << one.trace;
        EXPECT_EQ(after([&] { EXPECT_EQ(files.MayClose(), one.ends); }), one.trace);
        EXPECT_EQ(person.boxes.shown[0].text, "Save Changes to File?");
        EXPECT_EQ(person.boxes.shown[0].icon, MessageIcon::Exclamation);
        EXPECT_EQ(person.boxes.shown[0].buttons, MessageButtons::YesNoCancel);
        EXPECT_EQ(document.IsUnnamed, !one.saveAs || !one.ends) << "a name that nothing was written under is none";
    }
    EXPECT_EQ(FileText(folder / "taken.sdt"), "precious");
    document.New();
    Answer({});
    EXPECT_TRUE(files.MayClose());
    EXPECT_EQ(person.trace, "") << "nothing has changed";
}

TEST_F(FileCommandsTest, TheStackAddressIsAskedForByNewAndWrittenThroughWhileOnline) {
    GoOnline();
    board.PokeWord(6400, 77);
    person.answer = "v500";
    files.New();
    turns.RunToEnd(files.AskStatusStackAddress());
    EXPECT_EQ(person.trace, "[unnamed];TI Status Stack Address;");
    EXPECT_EQ(dates, "-\n");
    EXPECT_EQ(person.initial, "V77") << "what the board holds";
    EXPECT_EQ(person.prompt, "The TI-505 Communications Status Stack Address is the starting address of 32 consecutive "
                             "V memory locations. \n\nThe first V memory location is a Watchdog toggle from the "
                             "K5216-505. The remainder are the communication status of the respective 31 Comm "
                             "sequences (0 through 30). \n\nThe Status stack can be located anywhere within the V "
                             "memory space (V1 to V34463).\n\nTI-505 Communications Status Stack Address V:");
    EXPECT_EQ(document.CurrentConfiguration.Value(0), 500);
    EXPECT_EQ(board.PeekWord(6400, clock.Now()), 500);
    EXPECT_EQ(board.Peek(105, clock.Now()), 0);

    board.AddFault({.kind = FaultKind::WrongEcho});
    person.answer = "V500";
    turns.RunToEnd(files.AskStatusStackAddress());
    EXPECT_TRUE(LastText().starts_with("The board did not confirm the address V500")) << LastText();
    board.ClearFaults();

    turns.RunToEnd(link.CloseRSComm());
    for (const char* refused : {"0", "34464", "X5", "V", "12.5", "1e3", "-5", "5V", " ", "99999999999"}) {
        Answer({});
        person.answer = refused;
        turns.RunToEnd(files.AskStatusStackAddress());
        EXPECT_EQ(person.initial, "V500") << "OFFLINE the record's own";
        EXPECT_EQ(person.trace, "TI Status Stack Address;TI Status Stack Address;") << refused;
        EXPECT_EQ(LastText(), "Only a V Memory Space Address Between 1 and 34463 can be Entered");
    }
    Answer({});
    person.answer = "";
    turns.RunToEnd(files.AskStatusStackAddress());
    EXPECT_TRUE(person.boxes.shown.empty());
    EXPECT_EQ(StackAddressIn(" 34463 "), 34463);
    EXPECT_EQ(StackAddressIn("V 1"), 1);
    EXPECT_EQ(document.CurrentConfiguration.Value(0), 500);
    EXPECT_EQ(board.PeekWord(6400, clock.Now()), 500);
}

TEST_F(FileCommandsTest, OpenTellsSetupFilesFromTextFilesByTheFilterAndDroppedOnesByTheirName) {
    document.FilePath = folder / "*.sdt";
    Choose(Stored("plant.sdt", DefaultRecord("VANTREL_R1.0.0", {46000.5})));
    EXPECT_EQ(files.Open(), Outcome::Done);
    EXPECT_EQ(person.asked.initial, folder / "*.sdt");
    ASSERT_EQ(person.asked.filters.size(), 2U);
    EXPECT_EQ(person.asked.filters[0].name + person.asked.filters[0].pattern, "Setup Files(*.sdt)*.sdt");
    EXPECT_EQ(person.asked.filters[1].name + person.asked.filters[1].pattern, "Vantrel Files(*.vtl)*.vtl");
    EXPECT_EQ(person.trace, "open;[plant.sdt];");
    EXPECT_EQ(dates, "2025-12-09T12:00:00\n") << "the date of the file";

    WriteText(folder / "OLD.VTL", "a,b,c,500,e,f,g,h,i\nN2,DPump\n");
    EXPECT_EQ(files.OpenPath(folder / "OLD.VTL"), Outcome::Done);
    EXPECT_EQ(document.BracketName, "[OLD.VTL]");
    document.New();
    Choose("plant.sdt", 1);
    Answer({});
    EXPECT_EQ(files.Open(), Outcome::Failed) << "a set-up file is no text file";
    EXPECT_EQ(files.OpenPath(folder / "none.sdt"), Outcome::Failed);
    EXPECT_EQ(person.trace, "open;MDIMain FileOpen;MDIMain FileOpen;");
    EXPECT_EQ(LastText().substr(0, 18), "Error Number = 53\n");
    EXPECT_TRUE(document.IsUnnamed);
    EXPECT_EQ(document.FilePath, folder / "OLD.VTL");
    files.Open();
    EXPECT_EQ(person.asked.filter, 1U) << "the name in the dialog is the imported file's";
}

TEST_F(FileCommandsTest, WhatIsNoTextFileIsNeverImportedAndNeverAdvised) {
    const std::string header = "a,b,c,500,e,f,g,h,i\n";
    const std::string record = FileText(folder / Stored("plant.sdt", DefaultRecord("VANTREL_R1.0.0", {})));
    struct Case {
        std::string bytes;
        const char* said; ///< Nothing: it is imported.
    };
    const std::vector<Case> cases = {{header + "N2\n", ""},
                                     {header + "%\nN3,Dx\x1A", ""},
                                     {"", "it is empty"},
                                     {" \r\n\x1A" + header, "it is empty"},
                                     {header, ""},
                                     {"a,b,c,500", ""},
                                     {"N2,Dx,1,200,32,20,64,300,WW\nN3,Dy\n", "header"},
                                     {"\xEF\xBB\xBFN2,Dx\n", "header"},
                                     {"a,b,c,V500,e,f,g,h,i\nN2\n", ""},
                                     {"a,b,\"c\",\" 500\",,,,,\nN2\n", ""},
                                     {"a,b,c,,e,f,g,h,i\nN2\n", ""},
                                     {"a,b", ""},
                                     {header + "N2,Dx\x1A" + std::string(3, '\0'), ""},
                                     {header + "N2,D" + std::string(1, '\0'), "no text"},
                                     {record.substr(0, record.size() / 2), "no text"}};
    for (const Case& each : cases) {
        WriteText(folder / "old.vtl", each.bytes);
        document.New();
        const bool imported = files.OpenPath(folder / "old.vtl") == Outcome::Done;
        EXPECT_EQ(imported, *each.said == '\0') << each.bytes;
        const std::string told = imported ? "" : LastText();
        EXPECT_NE(told.find(each.said), std::string::npos) << each.bytes << "\n" << told;
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
        EXPECT_EQ(person.trace, answer == Yes ? "open;ANCNF;[old.sdt];" : "open;ANCNF;");
        EXPECT_EQ(LastText(), document.OtherVersionText());
        EXPECT_EQ(person.boxes.shown.back().icon, MessageIcon::Information);
        EXPECT_EQ(person.boxes.shown.back().buttons, MessageButtons::YesNoCancel);
        EXPECT_EQ(document.IsUnnamed, answer != Yes);
        EXPECT_EQ(document.FilePath, folder / "old.sdt") << "the path moves all the same";
    }
    document.New();
    ASSERT_EQ(files.OpenPath(folder / Stored("own.sdt", DefaultRecord("VANTREL_R1.0.0", {}))), Outcome::Done);
    Answer({No, No});
    EXPECT_EQ(files.Open(), Outcome::Cancelled);
    EXPECT_EQ(files.Save(), Outcome::Cancelled) << "what was declined is not the document's file";
    EXPECT_EQ(person.trace, "open;ANCNF;Save;");
}

TEST_F(FileCommandsTest, ValuesThatNoDownloadCanCarryAreNamedOnOpening) {
    Configuration record = DefaultRecord("VANTREL_R1.0.0", {});
    for (std::size_t i = 0; i < 13; ++i)
        record.SetValue(i, i % 2 == 0 ? -1 : 65536);
    files.OpenPath(folder / Stored("odd.sdt", record));
    ASSERT_EQ(person.boxes.shown.size(), 1U);
    for (const char* part : {"\nstatus stack address: -1\n", "\nsequence 0, Node #: 65536\n", "\nand 3 more"}) {
        EXPECT_NE(LastText().find(part), std::string::npos) << part << " in\n" << LastText();
    }
    EXPECT_EQ(LastText().find("sequence 1, To Node"), std::string::npos);
}

TEST_F(FileCommandsTest, TheFirstSaveWhileOnlineStoresWhatTheBoardHoldsOrNothing) {
    GoOnline();
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
    GoOnline();
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
    EXPECT_EQ(person.trace, "[plant.sdt];[plant.sdt];") << "nobody's work is lost";
}

TEST_F(FileCommandsTest, TheUserIsToldWhereTheForcedExtensionLeads) {
    fs::create_directory(folder / "my.dir");
    Choose("my.dir/plant");
    EXPECT_EQ(files.SaveAs(), Outcome::Done);
    EXPECT_TRUE(person.asked.initial.empty());
    EXPECT_EQ(person.asked.filters.size(), 1U);
    EXPECT_EQ(person.trace, "save as;VANTREL;[plant.sdt];");
    EXPECT_NE(LastText().find((folder / "my.sdt").string()), std::string::npos);

    WriteText(folder / "old.vtl", "a,b,c,500,e,f,g,h,i\nN2\n");
    WriteText(folder / "old.sdt", "precious");
    files.OpenPath(folder / "old.vtl");
    for (const MessageAnswer answer : {MessageAnswer::No, MessageAnswer::Yes}) {
        Answer({answer});
        EXPECT_EQ(files.Save(), answer == MessageAnswer::Yes ? Outcome::Done : Outcome::Cancelled);
        EXPECT_EQ(FileText(folder / "old.sdt") == "precious", answer == MessageAnswer::No);
    }
    Answer({});
    EXPECT_EQ(files.Save(), Outcome::Done);
    EXPECT_EQ(person.trace, "[old.sdt];") << "the document's own file needs no question";
    files.Open();
    EXPECT_EQ(person.asked.filter, 0U) << "the imported file is a set-up file now";
}

} // namespace
} // namespace vantrel
