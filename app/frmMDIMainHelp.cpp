// The main frame's help: which topic belongs to which window, and the windows of the Help menu.
#include "app/frmMDIMain.h"

#include "app/frmAbout.h"
#include "app/frmHelp.h"
#include "app/frmSupport.h"
#include "document/FileQuestions.h"
#include "document/frmMain.h"
#include "link/frmLineMonitor.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "text/PathText.h"
#include "views/HistoryTexts.h"
#include "views/frmEventLog.h"

#include <QApplication>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QSettings>

#include <array>
#include <utility>

namespace vantrel {

namespace {

constexpr const char* MainTopic = "main-display";

constexpr const char* TraceKey = "Trace/Last";

/// The help topic of a window beside the frame.
std::string TopicOf(const QWidget& window) {
    constexpr std::array topics{std::pair{"frmCommInterface", "communication-interface"},
                                std::pair{"frmTargetBoard", "target-board-interface"},
                                std::pair{"frmSetupComm", "comm-port"},
                                std::pair{"frmProcessing", "transfer"},
                                std::pair{"frmComparing", "compare"},
                                std::pair{"frmWaitDisplay", "report"},
                                std::pair{"frmComparing", "transfer"},
                                std::pair{"frmIdentifying", "backups"},
                                std::pair{"frmBackups", "backups"},
                                std::pair{"frmPlot", "communication-interface"},
                                std::pair{"frmSupport", "support"},
                                std::pair{"frmEventLog", "glance"},
                                std::pair{"frmCheckConnection", "check-connection"},
                                std::pair{"frmLineMonitor", "check-connection"},
                                std::pair{"frmAbout", "first-steps"}};
    for (const auto& [name, topic] : topics) {
        if (window.objectName() == QLatin1String(name)) return topic;
    }
    if (qobject_cast<const QMessageBox*>(&window)) return "messages";
    if (qobject_cast<const QFileDialog*>(&window)) return "files";
    if (window.objectName() == QLatin1String("AskText")) return "status-stack";
    return MainTopic;
}

} // namespace

void frmMDIMain::HelpHelpTopics() { ShowHelp(MainTopic); }

void frmMDIMain::SetTrace(const std::filesystem::path& file, std::function<void()> flush) {
    flushTrace_ = std::move(flush);
    std::error_code error;
    Settings()->setValue(QLatin1String(TraceKey),
                         QString::fromStdString(Utf8FromPath(std::filesystem::absolute(file, error))));
}

SupportSources frmMDIMain::SourcesForSupport() const {
    SupportSources sources{.program = "vantrel", .toolkit = std::string("Qt ") + qVersion()};
    const std::string trace = Settings()->value(QLatin1String(TraceKey)).toString().toStdString();
    std::error_code error;
    if (!trace.empty() && std::filesystem::is_regular_file(PathFromUtf8(trace), error))
        sources.trace = PathFromUtf8(trace);
    sources.texts.push_back({"events.csv", "the event log", HistoryCsv(history_)});
    return sources;
}

void frmMDIMain::HelpSupport() {
    if (!editor_->FinishEntry()) return;
    if (flushTrace_) flushTrace_();
    const SupportReport report(program_, SourcesForSupport(), clock_.LocalNow());
    if (frmSupport(report, this).exec() != QDialog::Accepted) return;
    const auto choice = dialogs_.SaveFile({.filters = {{.name = "Archive(*.zip)", .pattern = "*.zip"}},
                                           .initial = NameAbout(program_.document, "support.zip"),
                                           .title = "Save Report for Support As"});
    if (!choice) return;
    std::filesystem::path file = choice->path;
    if (!HasExtension(file, ".zip")) file += ".zip";
    if (file != choice->path && !MayReplace(file, dialogs_)) return;
    try {
        ReplaceFile(file, report.Archive(), OldTail::Drop, [this](const std::string& warning) { Warn(warning); });
        Notice(QStringLiteral("Saved ") + QString::fromStdString(Utf8FromPath(file)), LongNotice);
    } catch (const RuntimeError& failure) {
        Warn(QuotedPath(file) + ": " + failure.Description());
    }
}

void frmMDIMain::HelpAbout() {
    frmAbout window(QtSystemInfoHost(), dialogs_, this);
    window.exec();
}

void frmMDIMain::ShowHelp(const std::string& topic) {
    // A window of the modal one is not blocked by it.
    QWidget* modal = QApplication::activeModalWidget();
    QWidget* owner = modal ? modal : this;
    if (!help_ || help_->parentWidget() != owner) {
        try {
            auto* window = new frmHelp(HelpFile::Read(program_.helpFile), owner);
            delete help_.data();
            help_ = window;
        } catch (const RuntimeError& error) {
            dialogs_.Show({.title = "VANTREL",
                           .text = error.Description(),
                           .icon = MessageIcon::Exclamation,
                           .buttons = MessageButtons::Ok});
            return;
        }
    }
    help_->ShowTopic(topic);
    help_->show();
    help_->raise();
    help_->activateWindow();
}

bool frmMDIMain::HelpKey(const QEvent& event) {
    if (event.type() != QEvent::KeyPress || static_cast<const QKeyEvent&>(event).key() != Qt::Key_F1) return false;
    const QWidget* modal = QApplication::activeModalWidget();
    const QWidget* front = QApplication::activeWindow();
    if (!modal && front && (front == eventLog_ || front == lineMonitor_)) {
        ShowHelp(TopicOf(*front));
        return true;
    }
    // Without a modal window the key is the menu entry's.
    const bool beside = front && front != help_ && front->parentWidget() == modal;
    if (!modal || (front != modal && !beside)) return false;
    // The help's own print dialog: its owner must not be replaced under it.
    for (const QObject* owner = modal; owner; owner = owner->parent()) {
        if (help_ == owner) return false;
    }
    const auto* box = qobject_cast<const QMessageBox*>(modal);
    const std::string message = box ? (box->windowTitle() + ": " + box->text()).toStdString() : "";
    ShowHelp(TopicOf(*front));
    if (box && help_) help_->ShowMessage(message);
    return true;
}

} // namespace vantrel
