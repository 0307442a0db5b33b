// Message boxes, text questions and file dialogs on Qt. They belong to the main frame, never to a window that may go
// away under them.
#pragma once

#include "platform/DocumentDialogs.h"

#include <QFileDialog>
#include <QWidget>

#include <chrono>
#include <filesystem>
#include <functional>
#include <utility>

namespace vantrel {

class QtDialogs final : public DocumentDialogs {
public:
    /// The window that boxes belong to; until there is one they stand alone.
    void SetOwner(QWidget* owner) { owner_ = owner; }
    /// Called whenever the last open box has been closed.
    void SetOnClosed(std::function<void()> onClosed) { onClosed_ = std::move(onClosed); }
    /// Where file dialogs begin when the question names no file; empty: where the host begins. Follows the user's
    /// choices.
    void SetLastFolder(std::filesystem::path folder) { lastFolder_ = std::move(folder); }
    /// A folder that every file dialog of the toolkit's own offers at its side; opening begins there as long as there
    /// is no last folder.
    void SetSamplesFolder(std::filesystem::path folder) { samples_ = std::move(folder); }
    [[nodiscard]] const std::filesystem::path& LastFolder() const { return lastFolder_; }
    /// A box of the program is on the screen.
    [[nodiscard]] bool BoxUp() const { return open_ > 0; }
    /// How long a box that nobody has asked for takes no key and no click, in real time.
    void SetQuietTime(std::chrono::milliseconds quiet) { quietTime_ = quiet; }
    /// Asks for files in the place of the toolkit's dialog, as `AskFile` does: for whoever must not meet that one.
    void SetFilePicker(std::function<std::optional<FileChoice>(const FileQuestion&, bool saving)> picker) {
        picker_ = std::move(picker);
    }
    /// From now on nothing is shown: every question is answered as if it had been closed. For the end of the program.
    void Silence() { silent_ = true; }

    MessageAnswer Show(const MessageBox& box) override;
    std::optional<std::string> AskText(const std::string& title, const std::string& prompt, const std::string& initial,
                                       const std::string& note) override;
    /// One of the texts, by its place; nothing when the user cancelled.
    std::optional<std::size_t> Choose(const std::string& title, const std::string& prompt,
                                      const std::vector<std::string>& texts);
    std::optional<FileChoice> OpenFile(const FileQuestion& question) override;
    std::optional<FileChoice> SaveFile(const FileQuestion& question) override;

private:
    class Up;
    std::optional<FileChoice> AskFile(const FileQuestion& question, bool saving);
    /// Where a question that names no file begins; empty: where the host does.
    [[nodiscard]] std::filesystem::path StartFolder(const FileQuestion& question, bool saving) const;
    int RunWithSamples(QFileDialog& window) const;

    QWidget* owner_ = nullptr;
    std::function<void()> onClosed_;
    std::function<std::optional<FileChoice>(const FileQuestion&, bool saving)> picker_;
    std::filesystem::path lastFolder_;
    std::filesystem::path samples_;
    std::chrono::milliseconds quietTime_{300};
    bool silent_ = false;
    int open_ = 0;
};

} // namespace vantrel
