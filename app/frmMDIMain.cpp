// The main frame's start-up, and what it shows of the document and the time.
#include "app/frmMDIMain.h"

#include "app/frmHelp.h"
#include "document/frmMain.h"
#include "link/frmLineMonitor.h"
#include "platform/RuntimeError.h"
#include "text/PathText.h"
#include "widgets/QtIcons.h"

#include <QApplication>
#include <QDateTime>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLocale>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QMouseEvent>
#include <QScreen>
#include <QUrl>

#include <exception>
#include <utility>

namespace vantrel {

namespace {

constexpr const char* FrameCaption = "VANTREL ";

QString DateText(std::chrono::local_seconds time) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const QDate shown(int{date.year()}, static_cast<int>(unsigned{date.month()}),
                      static_cast<int>(unsigned{date.day()}));
    return QLocale::system().toString(shown, QLocale::ShortFormat);
}

QString TimeText(std::chrono::local_seconds time) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const QTime shown = QTime(0, 0).addSecs(static_cast<int>((time - day).count()));
    return QLocale::system().toString(shown, QLocale::ShortFormat);
}

std::string DateAndTime(OleDate date) {
    const auto time = date.ToLocal();
    return time ? (DateText(*time) + QLatin1Char(' ') + TimeText(*time)).toStdString() : "";
}

/// Some programs delete what they hear has been moved.
void TakeAsCopy(QDropEvent& event) {
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

} // namespace

frmMDIMain::frmMDIMain(ProgramFolder folder, Clock& clock, SerialPort& port, std::string fixedDevice)
    : clock_(clock), port_(port), program_(std::move(folder), clock),
      turns_(
          clock, [this] { return !dialogs_.BoxUp(); }, [this] { ShowUntrappedError(); }),
      link_(program_.CommSettingsFile(), PortRangeOf(program_.folder.SupportFolder()), clock, dialogs_, turns_),
      files_(program_.document, link_, dialogs_, clock,
             {.uploadData = [this] { return IsReliable(TransferInWindow(TransferMode::UploadData)); },
              .uploaded =
                  [this](const Configuration& before) {
                      editor_->Remember({"Upload", EditsBetween(before, program_.document.CurrentConfiguration)});
                  },
              .showDocumentDate = [this] { ShowDocumentDate(); },
              .showCaption = [this] { ShowCaption(); },
              .documentsFolder = [] { return DocumentsFolder(); },
              .dateText = [](OleDate date) { return DateAndTime(date); },
              .notice = [this](const std::string& text) { Notice(QString::fromStdString(text), LongNotice); }}),
      unsaved_(program_.folder.UserFolder() / "Unsaved", program_.document, clock), background_(program_, link_, clock),
      backups_(program_.folder.UserFolder() / "Backups"), knownBoards_(program_.folder.UserFolder() / "Boards.txt"),
      fixedDevice_(std::move(fixedDevice)), history_(clock) {
    setObjectName(QStringLiteral("frmMDIMain"));
    setWindowIcon(IconOf(ProgramIcon::Program));
    setAcceptDrops(true);
    dialogs_.SetOwner(this);
    dialogs_.SetOnClosed([this] { turns_.Poke(); });
    children_ = new QMdiArea;
    children_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    children_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(children_);
    BuildMenus();
    BuildToolbar();
    BuildStatusBar();
    StartUp();
}

frmMDIMain::~frmMDIMain() {
    SayGoodbye();
    leaving_.Stop();
    // The children hold tasks, which have to withdraw from the queue while there is one.
    delete children_;
    delete lineMonitor_.data(); // It looks at a member.
}

void frmMDIMain::StartUp() {
    program_.helpFile = program_.folder.File("Help", "VANTREL.hlp");
    link_.Logs().Add(line_);
    link_.SetFaultFile(program_.folder.SupportFile("FaultErrCodes.txt"));
    editor_ = new frmMain(program_.document, link_, turns_, dialogs_, history_, program_.SelectedSequence);
    // Without a close button: the editor stays as long as the frame does.
    childWindows_[0] = children_->addSubWindow(editor_, Qt::SubWindow | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                                            Qt::WindowMinMaxButtonsHint);
    BuildTools();
    program_.document.BracketName = "[unnamed]";
    captionPrefix_ = QString::fromLatin1(FrameCaption);
    ShowChild(0);
    program_.InitDefaults();
    files_.New();
    AfterFileCommand();
    ShowMode(false);
    RefreshOfflineEditing();
    tmrBackgroungUpdate.setInterval(BackgroundUpdate::TickMilliseconds);
    // Queued: a box inside a tick would otherwise hold up the timer that it came from.
    editor_->SetOnSequenceChosen([this] {
        // From the event loop: the view must not open inside the click.
        QMetaObject::invokeMethod(mnuViewCommStatus, &QAction::trigger, Qt::QueuedConnection);
    });
    const auto tick = [this] {
        QMetaObject::invokeMethod(
            this, [this] { Tick(); }, Qt::QueuedConnection);
    };
    tmrBackgroungUpdate.callOnTimeout(this, tick);
    tmrBackgroungUpdate.start();
    ShowDateAndTime();
    RestorePlace();
    qApp->installEventFilter(this);
}

void frmMDIMain::FitToChild() {
    // The first child fits in without a scroll bar, as far as the screen allows.
    constexpr int margin = 24;
    const QSize bars(0, menuBar()->sizeHint().height() + Toolbar1->sizeHint().height() + sbrMain->sizeHint().height());
    const QSize wanted =
        childWindows_[0]->sizeHint().expandedTo(childWindows_[0]->size()) + bars + QSize(2 * margin, 2 * margin);
    resize(wanted.boundedTo(screen()->availableSize() - QSize(margin, 2 * margin)));
}

void frmMDIMain::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    // On a small screen, or with a large font, the first child is as small as it can be.
    QMdiSubWindow& child = *childWindows_[0];
    if (child.isMaximized() || child.isMinimized()) return;
    const QSize room = children_->viewport()->size();
    // Where it would lose rows by the dozen, its frame goes as well.
    constexpr double share = 0.75;
    if (!event->spontaneous() && room.height() < child.sizeHint().height() * share) {
        child.showMaximized();
        return;
    }
    child.resize(child.size().boundedTo(room).expandedTo(child.minimumSizeHint()));
}

void frmMDIMain::ShowChild(int index) {
    if (index == currentChild_) return;
    currentChild_ = index;
    childWindows_.at(static_cast<std::size_t>(index))->show();
}

void frmMDIMain::Notice(const QString& text, MonotonicTime time) {
    ShowPanel(QStringLiteral("System Message:  ") + text);
    noticeUntil_ = clock_.Now() + time;
}

void frmMDIMain::ShowPanel(const QString& text) {
    if (sbrMainPanels[0]->text() == text) return;
    sbrMainPanels[0]->setText(text);
    sbrMainPanels[0]->setToolTip(text);
    FitPanels();
}

void frmMDIMain::FitPanels() {
    // Also behind its panels the bar needs some room: gaps, and the corner to resize the window with.
    constexpr int gap = 8;
    const QLabel& message = *sbrMainPanels[0];
    int room = sbrMain->width() - sbrMain->height() - sbrMainPanels[1]->sizeHint().width();
    room -= message.sizeHint().width() + 2 * gap;
    for (QLabel* panel : {sbrMainPanels[3], sbrMainPanels[2]}) {
        room -= panel->sizeHint().width() + gap;
        panel->setVisible(room >= 0);
    }
}

void frmMDIMain::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    FitPanels();
}

void frmMDIMain::ShowDateAndTime() {
    const std::chrono::local_seconds now = clock_.LocalNow();
    sbrMainPanels[2]->setText(DateText(now));
    sbrMainPanels[3]->setText(TimeText(now));
}

void frmMDIMain::ShowCaption() {
    setWindowTitle(captionPrefix_ + QString::fromStdString(program_.document.BracketName));
}

void frmMDIMain::ShowDocumentDate() {
    const Document& document = program_.document;
    const std::string date = DateAndTime(document.CurrentConfiguration.SavedDate);
    lblDocumentDate->setText(QString::fromStdString(document.DateText(date)));
}

void frmMDIMain::ShowUntrappedError() {
    try {
        throw;
    } catch (const RuntimeError& error) {
        ReportRuntimeError(dialogs_, "VANTREL", error);
    } catch (const std::exception& error) {
        ReportRuntimeError(dialogs_, "VANTREL", RuntimeError(ErrorNumber::InvalidProcedureCall, error.what()));
    }
}

void frmMDIMain::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && children_) children_->setBackground(palette().brush(QPalette::Dark));
    // A maximised child would add its own caption.
    const QString caption = captionPrefix_ + QString::fromStdString(program_.document.BracketName);
    if (event->type() == QEvent::WindowTitleChange && windowTitle() != caption) setWindowTitle(caption);
}

void frmMDIMain::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) TakeAsCopy(*event);
}

void frmMDIMain::dropEvent(QDropEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.isEmpty() || !urls.front().isLocalFile()) return;
    TakeAsCopy(*event);
    const std::filesystem::path path = PathFromUtf8(urls.front().toLocalFile().toStdString());
    // The program that the file was dragged from waits until the drop has ended, so no box may come up inside it.
    QTimer::singleShot(0, this, [this, path] { OpenFile(path); });
}

bool frmMDIMain::eventFilter(QObject* watched, QEvent* event) {
    if (watched == sbrMainPanels[1] && event->type() == QEvent::MouseButtonPress &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        ToggleMode();
        return true;
    }
    if (watched->isWidgetType() && HelpKey(*event)) return true;
    return QMainWindow::eventFilter(watched, event);
}

} // namespace vantrel
