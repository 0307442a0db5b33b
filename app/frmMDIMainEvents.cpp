// The main frame's event log and line monitor: the windows, and the files that are asked for.
#include "app/frmMDIMain.h"
#include "document/DocumentFiles.h"
#include "document/FileQuestions.h"
#include "document/frmMain.h"
#include "link/frmLineMonitor.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "text/PathText.h"
#include "views/HistoryTexts.h"
#include "views/frmEventLog.h"

#include <cstdint>
#include <span>
#include <string>

namespace vantrel {

void frmMDIMain::ViewEventLog() {
    if (!eventLog_) {
        eventLog_ = new frmEventLog(
            history_, [this](std::optional<std::size_t> sequence) { SaveEvents(sequence); }, this);
        eventLog_->show();
    }
    eventLog_->raise();
    eventLog_->activateWindow();
}

void frmMDIMain::SaveEvents(std::optional<std::size_t> sequence) {
    // As it is then, not when the dialog comes up.
    SaveTextAs({.filters = {{.name = "Table(*.csv)", .pattern = "*.csv"}},
                .initial = NameAbout(program_.document, "event log.csv"),
                .title = "Save Event Log As"},
               ".csv", [this, sequence] { return HistoryCsv(history_, sequence); });
}

void frmMDIMain::ToolsLineMonitor() {
    if (!editor_->FinishEntry()) return;
    if (!lineMonitor_) {
        lineMonitor_ = new frmLineMonitor(
            line_,
            [this](const std::string& text) {
                SaveTextAs({.filters = {{.name = "Text(*.txt)", .pattern = "*.txt"}},
                            .initial = NameAbout(program_.document, "line.txt"),
                            .title = "Save Lines As"},
                           ".txt", [&text] { return text; });
            },
            this);
        lineMonitor_->show();
    }
    lineMonitor_->raise();
    lineMonitor_->activateWindow();
}

void frmMDIMain::SaveTextAs(const FileQuestion& question, const char* extension,
                            const std::function<std::string()>& text) {
    const auto choice = dialogs_.SaveFile(question);
    if (!choice) return;
    std::filesystem::path file = choice->path;
    if (!file.has_extension()) file += extension;
    if (file != choice->path && !MayReplace(file, dialogs_)) return;
    const std::string all = text();
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(all.data()); // NOLINT(*-reinterpret-cast)
    try {
        ReplaceFile(file, {bytes, all.size()}, OldTail::Drop, [this](const std::string& warning) { Warn(warning); });
        Notice(QStringLiteral("Saved ") + QString::fromStdString(Utf8FromPath(file)), LongNotice);
    } catch (const RuntimeError& failure) {
        Warn(QuotedPath(file) + ": " + failure.Description());
    }
}

} // namespace vantrel
