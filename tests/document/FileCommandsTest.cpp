// The File menu's commands as a user meets them: which questions come in which order, and what each answer leaves.
#include "tests/document/FileCommandsFixture.h"

namespace vantrel {
namespace {

TEST_F(FileCommandsTest, NewAndOpenAndExitObeyTheAnswerToTheSaveQuestion) {
    using enum MessageAnswer;
    struct Case {
        std::deque<MessageAnswer> answers;
        const char* saveAs; ///< None: the save dialog is cancelled. There is no folder "none".
        const char* trace;
        bool goesOn, ends;
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
            NewAndChanged();
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
