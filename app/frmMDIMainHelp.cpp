// The main frame's help: which topic belongs to which window, and the windows of the Help menu.
#include "app/frmMDIMain.h"

#include "app/frmAbout.h"
#include "app/frmHelp.h"
#include "platform/RuntimeError.h"
#include "views/frmEventLog.h"

#include <QApplication>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMessageBox>

#include <array>
#include <utility>

namespace vantrel {

namespace {

constexpr const char* MainTopic = "main-display";

/// The help topic of a modal window.
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
                                std::pair{"frmEventLog", "glance"},
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
    if (!modal && eventLog_ && QApplication::activeWindow() == eventLog_) {
        ShowHelp(TopicOf(*eventLog_));
        return true;
    }
    // Without a modal window the key is the menu entry's.
    if (!modal || QApplication::activeWindow() != modal) return false;
    // The help's own print dialog: its owner must not be replaced under it.
    for (const QObject* owner = modal; owner; owner = owner->parent()) {
        if (help_ == owner) return false;
    }
    const auto* box = qobject_cast<const QMessageBox*>(modal);
    const std::string message = box ? (box->windowTitle() + ": " + box->text()).toStdString() : "";
    ShowHelp(TopicOf(*modal));
    if (box && help_) help_->ShowMessage(message);
    return true;
}

} // namespace vantrel
