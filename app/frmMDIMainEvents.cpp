// The main frame's event log: the window, and the file that is asked for.
#include "app/frmMDIMain.h"
#include "document/FileQuestions.h"
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
    const auto choice = dialogs_.SaveFile(
        {.filters = {{.name = "Table(*.csv)", .pattern = "*.csv"}}, .initial = {}, .title = "Save Event Log As"});
    if (!choice) return;
    std::filesystem::path file = choice->path;
    if (!file.has_extension()) file += ".csv";
    if (file != choice->path && !MayReplace(file, dialogs_)) return;
    // As it is now, not when the dialog came up.
    const std::string table = HistoryCsv(history_, sequence);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(table.data()); // NOLINT(*-reinterpret-cast)
    try {
        ReplaceFile(file, {bytes, table.size()}, OldTail::Drop, [this](const std::string& text) { Warn(text); });
        Notice(QStringLiteral("Saved ") + QString::fromStdString(Utf8FromPath(file)), LongNotice);
    } catch (const RuntimeError& failure) {
        Warn(QuotedPath(file) + ": " + failure.Description());
    }
}

} // namespace vantrel
