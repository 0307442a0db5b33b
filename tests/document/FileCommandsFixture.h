// The File menu's commands in front of a person who answers from lists; the simulated board is on the port.
#pragma once

#include "document/FileCommands.h"
#include "document/SetupFile.h"
#include "tests/support/BoardLink.h"

#include <deque>
#include <filesystem>
#include <optional>
#include <string>

namespace vantrel {

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
    std::optional<FileChoice> OpenFile(const FileQuestion& question) override { return Choice("open;", question); }
    std::optional<FileChoice> SaveFile(const FileQuestion& question) override { return Choice("save as;", question); }

    ScriptedDialogs boxes;
    std::optional<std::string> answer;
    std::optional<FileChoice> choice;
    std::string trace, prompt, initial, whose;
    FileQuestion asked;

private:
    std::optional<FileChoice> Choice(const char* kind, const FileQuestion& question) {
        trace += kind;
        asked = question;
        return choice;
    }
};

class FileCommandsTest : public BoardLink<Person> {
protected:
    FileCommandsTest() { document.InitDefaults(); }

    /// A new document with a change that nobody has saved.
    void NewAndChanged() { document.New(), document.CurrentConfiguration.SetValue(1, 7); }
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
         .uploaded = [this](const Configuration& before) { fetchedOver = before.Value(2); },
         .showDocumentDate =
             [this] { dates += document.IsUnnamed ? "-\n" : IsoText(document.CurrentConfiguration.SavedDate) + "\n"; },
         .showCaption = [this] { dialogs.trace += document.BracketName + ";"; },
         .documentsFolder = [this] { return folder / "documents"; },
         .dateText = [](OleDate date) { return IsoText(date); },
         .notice = [this](const std::string& text) { notice = text; }}};
    std::string notice;
    std::optional<std::int32_t> fetchedOver; ///< A value before the fetch that stays.
};

} // namespace vantrel
