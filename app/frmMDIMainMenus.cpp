// The main frame's menus, tool bar and status bar.
#include "app/frmMDIMain.h"

#include "widgets/QtIcons.h"

#include <QHBoxLayout>
#include <QKeySequence>
#include <QMenuBar>
#include <QSizePolicy>
#include <QWidget>

namespace vantrel {

QMenu* frmMDIMain::AddMenu(const char* name, const char* caption) {
    QMenu* menu = menuBar()->addMenu(QString::fromLatin1(caption));
    menu->setObjectName(QString::fromLatin1(name));
    return menu;
}

QAction* frmMDIMain::AddEntry(QMenu* menu, const char* name, const char* caption, void (frmMDIMain::*command)()) {
    QAction* entry = menu->addAction(QString::fromLatin1(caption));
    entry->setObjectName(QString::fromLatin1(name));
    // A toolkit would move entries named like this to another menu on some hosts.
    entry->setMenuRole(QAction::NoRole);
    connect(entry, &QAction::triggered, this, [this, command] { (this->*command)(); });
    return entry;
}

void frmMDIMain::BuildToolsMenu() {
    using Frame = frmMDIMain;
    mnuTools = AddMenu("mnuTools", "&Tools");
    mnuToolsCompareBoard =
        AddEntry(mnuTools, "mnuToolsCompareBoard", "Compare With &Board...", &Frame::ToolsCompareBoard);
    mnuToolsCompareFile = AddEntry(mnuTools, "mnuToolsCompareFile", "Compare With &File...", &Frame::ToolsCompareFile);
    mnuTools->addSeparator();
    mnuToolsCheck = AddEntry(mnuTools, "mnuToolsCheck", "Check &Set-up", &Frame::ToolsCheck);
    mnuToolsCheckConnection =
        AddEntry(mnuTools, "mnuToolsCheckConnection", "Check Co&nnection...", &Frame::ToolsCheckConnection);
    mnuToolsLineMonitor = AddEntry(mnuTools, "mnuToolsLineMonitor", "&Line Monitor", &Frame::ToolsLineMonitor);
    mnuTools->addSeparator();
    mnuToolsBackUp = AddEntry(mnuTools, "mnuToolsBackUp", "Back &Up Before Download", &Frame::ToolsBackUp);
    mnuToolsBackups = AddEntry(mnuTools, "mnuToolsBackups", "B&ackups...", &Frame::ToolsBackups);
}

void frmMDIMain::BuildMenus() {
    using Frame = frmMDIMain;
    mnuFile = AddMenu("mnuFile", "&File");
    mnuFileNew = AddEntry(mnuFile, "mnuFileNew", "&New...", &Frame::FileNew);
    mnuFileOpen = AddEntry(mnuFile, "mnuFileOpen", "&Open...", &Frame::FileOpen);
    mnuFileSave = AddEntry(mnuFile, "mnuFileSave", "&Save", &Frame::FileSave);
    mnuFileSaveAs = AddEntry(mnuFile, "mnuFileSaveAs", "Save &As...", &Frame::FileSaveAs);
    mnuFile->addSeparator();
    mnuFileUpload = AddEntry(mnuFile, "mnuFileUpload", "&Upload (save) Settings", &Frame::FileUpload);
    mnuFileDownloadProgram =
        AddEntry(mnuFile, "mnuFileDownloadProgram", "Download P&rogram", &Frame::FileDownloadProgram);
    mnuFileDownload = AddEntry(mnuFile, "mnuFileDownload", "&Download (restore) Settings", &Frame::FileDownload);
    mnuFile->addSeparator();
    mnuFilePrint = AddEntry(mnuFile, "mnuFilePrint", "&Print Report...", &Frame::FilePrint);
    mnuFile->addSeparator();
    mnuFileReportPdf = AddEntry(mnuFile, "mnuFileReportPdf", "Report to PD&F File...", &Frame::FileReportPdf);
    mnuFile->addSeparator();
    connect(mnuFile, &QMenu::aboutToShow, this, [this] { ShowRecent(); });
    mnuFileExit = AddEntry(mnuFile, "mnuFileExit", "E&xit", &Frame::FileExit);

    mnuEdit = AddMenu("mnuEdit", "&Edit");
    mnuEditOfflineEditing =
        AddEntry(mnuEdit, "mnuEditOfflineEditing", "Enable &Offline Editing", &Frame::EditOfflineEditing);
    mnuEdit->addSeparator();
    mnuEditCommPort = AddEntry(mnuEdit, "mnuEditCommPort", "Co&mm Port", &Frame::EditCommPort);
    mnuEdit->addSeparator();
    mnuEditStackAdd = AddEntry(mnuEdit, "mnuEditStackAdd", "TI Status Stack &Address", &Frame::EditStackAdd);

    mnuView = AddMenu("mnuView", "&View");
    mnuViewOnline = AddEntry(mnuView, "mnuViewOnline", "O&nline Data", &Frame::ViewOnline);
    mnuViewOffline = AddEntry(mnuView, "mnuViewOffline", "O&ffline Data", &Frame::ViewOffline);
    mnuView->addSeparator();
    mnuViewTargetBoardStatus =
        AddEntry(mnuView, "mnuViewTargetBoardStatus", "&Target Board Interface", &Frame::ViewTargetBoardStatus);
    mnuView->addSeparator();
    mnuViewCommStatus = AddEntry(mnuView, "mnuViewCommStatus", "&Communication Interface", &Frame::ViewCommStatus);
    mnuView->addSeparator();
    mnuViewMainDisplay = AddEntry(mnuView, "mnuViewMainDisplay", "&Main Display", &Frame::ViewMainDisplay);
    mnuView->addSeparator();
    mnuViewEventLog = AddEntry(mnuView, "mnuViewEventLog", "&Event Log", &Frame::ViewEventLog);

    BuildToolsMenu();

    mnuHelp = AddMenu("mnuHelp", "&Help");
    mnuHelpHelpTopics = AddEntry(mnuHelp, "mnuHelpHelpTopics", "&Help Topics", &Frame::HelpHelpTopics);
    mnuHelp->addSeparator();
    mnuHelpSupport = AddEntry(mnuHelp, "mnuHelpSupport", "&Save Report for Support...", &Frame::HelpSupport);
    mnuHelp->addSeparator();
    mnuHelpAbout = AddEntry(mnuHelp, "mnuHelpAbout", "&About VANTREL", &Frame::HelpAbout);

    for (QAction* entry : {mnuEditOfflineEditing, mnuViewOnline, mnuViewOffline, mnuToolsBackUp})
        entry->setCheckable(true);
    BuildShortcuts();
}

void frmMDIMain::BuildShortcuts() {
    mnuFileNew->setShortcut(QKeySequence::New);
    mnuFileOpen->setShortcut(QKeySequence::Open);
    mnuFileSave->setShortcut(QKeySequence::Save);
    mnuFilePrint->setShortcut(QKeySequence::Print);
    mnuHelpHelpTopics->setShortcut(QKeySequence(Qt::Key_F1));
}

void frmMDIMain::BuildToolbar() {
    Toolbar1 = addToolBar(QStringLiteral("Toolbar"));
    Toolbar1->setObjectName(QStringLiteral("Toolbar1"));
    Toolbar1->setMovable(false);
    Toolbar1->setContextMenuPolicy(Qt::PreventContextMenu);

    auto* placeHolder = new QWidget;
    placeHolder->setFixedWidth(4);
    Toolbar1->addWidget(placeHolder);
    const auto add = [this](QAction* entry, ProgramIcon icon, const char* toolTip) {
        entry->setIcon(IconOf(icon));
        entry->setIconVisibleInMenu(false);
        entry->setToolTip(QString::fromLatin1(toolTip));
        Toolbar1->addAction(entry);
    };
    add(mnuFileNew, ProgramIcon::New, "New...");
    add(mnuFileOpen, ProgramIcon::Open, "Open...");
    add(mnuFileSave, ProgramIcon::Save, "Save");
    Toolbar1->addSeparator();
    add(mnuFilePrint, ProgramIcon::Print, "Print");
    Toolbar1->addSeparator();
    add(mnuEditOfflineEditing, ProgramIcon::OfflineEdit, "Offline Edit");
    Toolbar1->addSeparator();
    add(mnuFileUpload, ProgramIcon::Upload, "Upload (save) Settings");
    add(mnuFileDownload, ProgramIcon::Download, "Download (restore) Settings");
    Toolbar1->addSeparator();
    add(mnuViewTargetBoardStatus, ProgramIcon::TargetBoard, "Target Board Interface");
    add(mnuViewCommStatus, ProgramIcon::Communication, "Communication Interface");

    auto* space = new QWidget;
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    Toolbar1->addWidget(space);
    lblDocumentDate = new QLabel;
    lblDocumentDate->setObjectName(QStringLiteral("lblDocumentDate"));
    lblDocumentDate->setToolTip(QStringLiteral("When the settings were last saved or uploaded"));
    lblDocumentDate->setAccessibleName(QStringLiteral("Document date"));
    lblDocumentDate->setContentsMargins(8, 0, 8, 0);
    Toolbar1->addWidget(lblDocumentDate);
}

void frmMDIMain::BuildStatusBar() {
    sbrMain = statusBar();
    sbrMain->setObjectName(QStringLiteral("sbrMain"));
    constexpr std::array names{"System message", "Mode", "Date", "Time"};
    for (std::size_t i = 0; i < sbrMainPanels.size(); ++i) {
        auto* panel = new QLabel;
        panel->setObjectName(QStringLiteral("sbrMainPanel%1").arg(i + 1));
        // Not as its name, which would be read aloud in the place of the text.
        panel->setAccessibleDescription(QString::fromLatin1(names.at(i)));
        panel->setContentsMargins(6, 0, 6, 0);
        if (i > 0) panel->setAlignment(Qt::AlignCenter);
        // Permanent, so that no passing hint ever covers a panel.
        sbrMain->addPermanentWidget(panel, i == 0 ? 1 : 0);
        sbrMainPanels.at(i) = panel;
    }
    // However long the message is, the window keeps its size.
    sbrMainPanels[0]->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    ShowPanel(QStringLiteral("System Message:"));
    QLabel* mode = sbrMainPanels[1];
    mode->setMinimumWidth(mode->fontMetrics().horizontalAdvance(QStringLiteral("  OFFLINE  ")) + 12);
    mode->setToolTip(QStringLiteral("Click to switch between ONLINE and OFFLINE"));
    mode->setCursor(Qt::PointingHandCursor);
}

} // namespace vantrel
