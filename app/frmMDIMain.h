// The main frame: menus, tool bar, status bar, the ONLINE/OFFLINE mode, the document's commands, shut-down. Owns the
// program's state and its one link; every other window borrows them.
#pragma once

#include "app/BackgroundUpdate.h"
#include "app/KnownBoards.h"
#include "app/Program.h"
#include "app/RecentFiles.h"
#include "app/SupportReport.h"
#include "app/frmProcessing.h"
#include "document/Backups.h"
#include "document/Comparison.h"
#include "document/FileCommands.h"
#include "link/LineRecorder.h"
#include "link/PortSettingsEditor.h"
#include "link/RSComm.h"
#include "platform/Printer.h"
#include "platform/QtDialogs.h"
#include "platform/QtTurnQueue.h"
#include "platform/Task.h"
#include "views/DataWords.h"
#include "views/History.h"

#include <QAction>
#include <QLabel>
#include <QList>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPointer>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

#include <array>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace vantrel {

class frmCheck;
class frmCompare;
class frmEventLog;
class frmLineMonitor;
class frmHelp;
class frmMain;

class frmMDIMain final : public QMainWindow {
public:
    /// `port` is the serial port that the link opens; clock and port must outlive the frame.
    /// `fixedDevice`: what to call a port that stands for one thing whatever its number says; empty for the host's
    /// ports.
    frmMDIMain(ProgramFolder folder, Clock& clock, SerialPort& port, std::string fixedDevice = {});
    ~frmMDIMain() override;

    /// Opens a file that was dropped or named on the command line. Refuses politely while a modal window is up.
    void OpenFile(const std::filesystem::path& path);
    /// Offers what a program had no time to save, otherwise opens the file that was named on the command line (empty:
    /// none). Once, when the window is shown.
    void OpenAtStart(const std::filesystem::path& file);
    /// Shows what no procedure trapped; call from inside a catch clause. The program goes on.
    void ShowUntrappedError();

    /// The line is traced in this file; `flush` brings what was traced so far to the disk. Of several runs the last
    /// one's trace goes into a report for support.
    void SetTrace(const std::filesystem::path& file, std::function<void()> flush);

    [[nodiscard]] RSComm& Link() { return link_; }
    [[nodiscard]] Program& State() { return program_; }
    [[nodiscard]] const TurnQueue& Turns() const { return turns_; }
    [[nodiscard]] QtDialogs& Boxes() { return dialogs_; }

    // Controls, by their names.
    QMenu* mnuFile = nullptr;
    QAction* mnuFileNew = nullptr;
    QAction* mnuFileOpen = nullptr;
    QAction* mnuFileSave = nullptr;
    QAction* mnuFileSaveAs = nullptr;
    QAction* mnuFileUpload = nullptr;
    QAction* mnuFileDownloadProgram = nullptr;
    QAction* mnuFileDownload = nullptr;
    QAction* mnuFilePrint = nullptr;
    QAction* mnuFileReportPdf = nullptr;
    QAction* mnuFileExit = nullptr;
    QMenu* mnuEdit = nullptr;
    QAction* mnuEditOfflineEditing = nullptr;
    QAction* mnuEditCommPort = nullptr;
    QAction* mnuEditStackAdd = nullptr;
    QMenu* mnuView = nullptr;
    QAction* mnuViewOnline = nullptr;
    QAction* mnuViewOffline = nullptr;
    QAction* mnuViewTargetBoardStatus = nullptr;
    QAction* mnuViewCommStatus = nullptr;
    QAction* mnuViewMainDisplay = nullptr;
    QAction* mnuViewEventLog = nullptr;
    QMenu* mnuTools = nullptr;
    QAction* mnuToolsCompareBoard = nullptr;
    QAction* mnuToolsCompareFile = nullptr;
    QAction* mnuToolsCheck = nullptr;
    QAction* mnuToolsCheckConnection = nullptr;
    QAction* mnuToolsLineMonitor = nullptr;
    QAction* mnuToolsBackUp = nullptr;
    QAction* mnuToolsBackups = nullptr;
    QMenu* mnuHelp = nullptr;
    QAction* mnuHelpHelpTopics = nullptr;
    QAction* mnuHelpSupport = nullptr;
    QAction* mnuHelpAbout = nullptr;
    QToolBar* Toolbar1 = nullptr;
    QLabel* lblDocumentDate = nullptr;
    QStatusBar* sbrMain = nullptr;
    std::array<QLabel*, 4> sbrMainPanels{}; ///< System message, mode, date, time.
    QTimer tmrBackgroungUpdate;

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Building (frmMDIMainMenus.cpp)
    QAction* AddEntry(QMenu* menu, const char* name, const char* caption, void (frmMDIMain::*command)());
    QMenu* AddMenu(const char* name, const char* caption);
    void BuildMenus();
    void BuildToolsMenu();
    void BuildShortcuts();
    void BuildToolbar();
    void BuildStatusBar();

    // Start-up and what is shown (frmMDIMain.cpp)
    void StartUp();
    void ShowChild(int index);
    void FitToChild();
    /// A passing word to the user in the first panel, which the system message gives way to for a while.
    void Notice(const QString& text, MonotonicTime time = std::chrono::seconds(5));
    /// Time enough to read the name of a file.
    static constexpr MonotonicTime LongNotice = std::chrono::seconds(20);
    void ShowPanel(const QString& text);
    /// The status bar's room is the message's first; date and time give way to it.
    void FitPanels();
    void ShowCaption();
    void ShowDocumentDate();
    void ShowDateAndTime();

    // Mode, tick, shut-down (frmMDIMainMode.cpp)
    /// Begins to bring port and look to the link's `OnlineMode`. OFFLINE is shown at once; ONLINE, and the link's
    /// `OnlineMode` with it, when the board has answered.
    void ApplyMode();
    Task SwitchMode();
    /// Devices come and go with their plugs.
    PortRange FindPorts();
    void ShowMode(bool online);
    /// Which commands can be given now: one that waits for the board is not begun a second time.
    void ShowCommands();
    /// The one place that falls back to OFFLINE: the look and the link are brought to agree, when nothing runs.
    void FollowLink();
    void Tick();
    Task TickTask();
    /// Whether ONLINE has begun or ended, for the event log.
    void NoteMode(bool online);
    void KeepUnsaved();
    void ShowSystemMessage();
    /// No code of a task and no box is on the stack. A task may wait for the board all the same.
    [[nodiscard]] bool Idle() const;
    Task CloseWhenWritten();
    /// Says goodbye to the board, if it answers, without showing anything any more.
    void SayGoodbye() noexcept;

    // The report (frmMDIMainReport.cpp)
    /// Where a report goes, and what to say when it has gone there; no printer when the user cancelled.
    struct Target {
        std::unique_ptr<Printer> printer{};
        std::string done{};
    };
    void PrintTo(const std::function<Target(const std::string& title)>& ask);
    /// The default printer; where none is, the user chooses among those that there are.
    Target AskPrinter(const std::string& title);
    /// A PDF file of the user's choice; `asked` titles the question.
    Target AskPdf(const std::string& title, const std::string& asked);
    Task ReportJob(Printer& printer, bool& printed);

    // Help (frmMDIMainHelp.cpp)
    [[nodiscard]] SupportSources SourcesForSupport() const;
    void ShowHelp(const std::string& topic);
    /// Opens the help on the modal window in front, if that is what the event asks for.
    bool HelpKey(const QEvent& event);

    // What the window remembers from one run to the next (frmMDIMainPlace.cpp)
    [[nodiscard]] std::unique_ptr<QSettings> Settings() const;
    [[nodiscard]] static std::filesystem::path DocumentsFolder();
    void RestorePlace();
    void SavePlace();
    [[nodiscard]] WordNotation RememberedNotation() const;
    void RememberNotation(WordNotation notation);

    // Recent files (frmMDIMainRecent.cpp)
    [[nodiscard]] RecentFiles RememberedFiles() const;
    /// The document's file is the one opened or saved last.
    void NoteRecent();
    /// Makes the entries anew, as the menu opens.
    void ShowRecent();

    // Commands (frmMDIMainCommands.cpp)
    void FileNew();
    void FileOpen();
    void FileSave();
    void FileSaveAs();
    void FileUpload();
    void FileDownloadProgram();
    void FileDownload();
    void FilePrint();
    void FileReportPdf();
    void FileExit();
    void EditOfflineEditing();
    void EditCommPort();
    void EditStackAdd();
    void ViewOnline();
    void ViewOffline();
    void ToggleMode();
    void ViewTargetBoardStatus();
    /// Shows one of the views until it is closed; it hears of every change of the mode.
    template <typename View, typename Show> void ShowView(View& view, Show show);
    void ViewCommStatus();
    void ViewMainDisplay();
    void ViewEventLog();
    void HelpHelpTopics();
    void HelpSupport();
    void HelpAbout();
    void AfterFileCommand();
    void RefreshOfflineEditing();
    void AskStackAddress();
    Task StackAddressTask();
    Task FinishPortChange();

    // Transfers (frmMDIMainTransfer.cpp)
    /// OFFLINE, when the user agrees, the job begins when the board has answered, or has not.
    void RunOnline(std::function<void()> job);
    void StartPendingJob();
    /// With the questions and steps around it.
    void Transfer(TransferMode mode);
    /// The progress window itself, and what the user has to know of single values.
    frmProcessing::Result TransferInWindow(TransferMode mode, std::vector<std::size_t> indices = EveryIndex());
    /// Every value was transferred and can be relied on.
    [[nodiscard]] static bool IsReliable(const frmProcessing::Result& result);
    [[nodiscard]] bool CanStartTransfer() const;
    void ShowResult(TransferMode mode, const frmProcessing::Result& result);
    /// After one that broke off: which values it reached.
    void ShowHowFar(TransferMode mode, const frmProcessing::Result& result);
    void Warn(const std::string& text);

    // Tools (frmMDIMainTools.cpp)
    void BuildTools();
    /// Leads to what a list names: a cell, or the question for the status stack address.
    void GoTo(std::size_t sequence, std::optional<std::size_t> index);
    void ToolsCheck();
    /// Says before a download, once, that the check found errors; true when the user wants to see them first.
    bool WantsToSeeErrors();
    void ToolsCompareBoard();
    void ToolsCheckConnection();
    void ToolsCompareFile();
    frmCompare& OpenComparison(bool withBoard, std::function<void()> repeat);
    void CompareWithBoard();
    /// Like a transfer, the walk has the board to itself, however it ends.
    const BoardComparison& RunComparing(frmComparing& window);
    void CompareWithFile(const std::filesystem::path& file);
    void FollowComparison();
    void SendValues(const std::vector<std::size_t>& indices);
    /// What the board holds of these values, read once more; tells what is not there.
    void ReadBack(const std::vector<std::size_t>& indices);
    void TakeDifferences(const std::vector<Difference>& differences);
    void SaveBoardValues();
    void SaveComparison();
    void PrintComparison();

    // The event log and the line monitor (frmMDIMainEvents.cpp)
    void SaveEvents(std::optional<std::size_t> sequence);
    void ToolsLineMonitor();
    /// Where the user chooses, what `text` gives then.
    void SaveTextAs(const FileQuestion& question, const char* extension, const std::function<std::string()>& text);

    // Safety copies, and which board it is (frmMDIMainBackups.cpp)
    void ToolsBackUp();
    void ToolsBackups();
    /// The questions of a download whose answers take the board; false when it is not to begin.
    [[nodiscard]] bool MayDownload();
    /// The same for a few values: only which board it is, and once for each opening of the port.
    [[nodiscard]] bool MaySendValues();
    /// Nothing for a board that could not be read clearly. False when the user cancelled.
    [[nodiscard]] bool Identify(std::optional<BoardIdentity>& board);
    [[nodiscard]] bool AcceptsBoard(const std::optional<BoardIdentity>& board);
    /// Keeps the values of the board whose identity was asked at that opening of the port, or asks the user to do
    /// without.
    [[nodiscard]] bool BackUpBoard(const std::optional<BoardIdentity>& board, int opened);
    /// Why the copy could not be kept; empty when it was.
    [[nodiscard]] std::string KeepBackup(const BoardComparison& values, const std::string& board, int opened);
    /// The file that the document's board is remembered for; empty for none.
    [[nodiscard]] std::filesystem::path BoardFile() const;
    /// Where the document's values were last sent to or fetched from.
    [[nodiscard]] std::optional<BoardIdentity> KnownBoard() const;
    /// The document has just been sent to that board or fetched from it.
    void NoteBoard(const std::optional<BoardIdentity>& board);
    /// Remembers that for the document's file, as soon as it has one.
    void RememberBoard();

    Clock& clock_;
    SerialPort& port_;
    Program program_;
    QtDialogs dialogs_;
    QtTurnQueue turns_;
    LineRecorder line_{clock_}; ///< What the line monitor shows.
    RSComm link_;
    FileCommands files_;
    UnsavedCopy unsaved_;
    BackgroundUpdate background_;
    Backups backups_;
    KnownBoards knownBoards_;
    std::optional<BoardIdentity> lastBoard_; ///< Of the document's values,
    int lastBoardOf_ = 0; ///< which is the one of that generation.
    std::pair<int, int> boardAsked_{}; ///< RSComm::Opened() and document of the values that may be sent.
    std::string fixedDevice_;
    QString captionPrefix_;
    History history_;
    QPointer<frmEventLog> eventLog_;
    QPointer<frmLineMonitor> lineMonitor_;
    QMdiArea* children_ = nullptr;
    frmMain* editor_ = nullptr;
    std::function<void()> flushTrace_;
    QPointer<frmHelp> help_;
    QPointer<frmCheck> check_;
    std::string errorsTold_; ///< Of the check, before a download.
    QPointer<frmCompare> compare_;
    Configuration comparedHere_; ///< The set-up as it was compared,
    Configuration comparedThere_; ///< and what it was compared with.
    std::optional<int> comparedLink_; ///< RSComm::Opened() then; none for a file.
    std::array<QMdiSubWindow*, 1> childWindows_{};
    int currentChild_ = -1;
    std::function<void()> modeChanged_; ///< Of the view that is open.
    QList<QAction*> recentEntries_; ///< And the separator behind them.
    std::filesystem::path recentNoted_;
    MonotonicTime noticeUntil_{};
    bool shownOnline_ = false;
    bool wantOnline_ = false; ///< What the mode is on its way to.
    int wishes_ = 0; ///< How often that has changed.
    bool transferring_ = false;
    std::function<void()> pendingJob_; ///< Begins when the mode has been applied.
    bool askingStackAddress_ = false;
    bool changingPort_ = false;
    bool closeWanted_ = false;
    std::unique_ptr<PortSettingsEditor> portEditor_; ///< Of the port dialog, and of what is left to do behind it.
    Task mode_;
    Task tick_;
    Task stackAddress_;
    Task portChange_;
    Task leaving_;
};

} // namespace vantrel
