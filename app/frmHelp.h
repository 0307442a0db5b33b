// The help window: contents, search, back, print. Shows the topics of the help file; knows nothing of what they are
// about.
#pragma once

#include "app/HelpFile.h"

#include <QAction>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QTextBrowser>

#include <optional>
#include <string>
#include <vector>

namespace vantrel {

/// Not modal; deletes itself when it is closed. A window that belongs to a modal dialog can be used beside it.
class frmHelp final : public QDialog {
public:
    frmHelp(HelpFile help, QWidget* parent);

    /// Brings a topic up; the first one when there is none of that name.
    void ShowTopic(const std::string& name);
    /// Brings up the row that explains a message, whose text may have the title of its box in front; false, and nothing
    /// happens, when there is none.
    bool ShowMessage(const std::string& message);

    // Controls.
    QListWidget* lstContents = nullptr;
    QLineEdit* txtSearch = nullptr;
    QTextBrowser* txtTopic = nullptr;
    QAction* cmdBack = nullptr;
    QAction* cmdNext = nullptr;
    QAction* cmdPrint = nullptr;

private:
    void BuildTools();
    void BuildPages();
    void Fill();
    [[nodiscard]] std::size_t BestListed(const std::string& words) const;
    void Go(std::size_t topic);
    void Display(std::size_t topic);
    void Draw(std::size_t topic);
    void Back();
    void Next();
    void Follow(const QUrl& link);
    void Mark();
    void Print();

    HelpFile help_;
    std::vector<std::size_t> listed_; ///< Topic of each line of the contents.
    std::vector<std::size_t> visited_; ///< The topic shown is the last one.
    std::optional<std::size_t> drawn_; ///< The topic in the text window; drawing a long one takes its time.
    std::optional<std::size_t> row_; ///< The row of it that the search has come to.
};

} // namespace vantrel
