// The sequence editor's layout.
#include "document/frmMain.h"

#include "document/StatusTexts.h"
#include "platform/QtScreen.h"

#include <QCloseEvent>
#include <QHeaderView>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <chrono>
#include <initializer_list>
#include <iterator>
#include <utility>

namespace vantrel {

namespace {

constexpr const char* GridFontFamily = "MS Sans Serif";
/// The same face with outlines, for hosts where the other one is a bitmap or missing.
constexpr const char* GridFontFallback = "Microsoft Sans Serif";
constexpr int LeastRows = 3; ///< Of a grid on a small screen, the heading row included.
constexpr int LeastColumns = 2; ///< Likewise, the fixed one included.
constexpr int GridStretch = 6; ///< What the gaps give way first by.
constexpr int MessageLines = 4;
constexpr int LeastMessageLines = 2; ///< On a small screen with a large font.
constexpr int MessagesGiveWayRows = 8; ///< With less rows of the grid than these the messages get shorter.
constexpr int MessageGap = 180; ///< Twips above and below the messages.
constexpr auto StatusPeriod = std::chrono::milliseconds(250);
constexpr double HeadingScale = 1.5; ///< Of the host's font.

QFont GridFont(const QFont& host) {
    QFont font(host);
    font.setFamilies(QStringList{QString::fromLatin1(GridFontFamily), QString::fromLatin1(GridFontFallback)} +
                     host.families());
    return font;
}

/// What takes keys and clicks.
std::array<QWidget*, 4> PartsOf(QtFormatGrid& grid) {
    return {&grid, grid.viewport(), grid.horizontalHeader()->viewport(), grid.verticalHeader()->viewport()};
}

/// Behind those that are given.
void AddStatusColumns(GridPlan& plan) {
    plan.columnsInSight = static_cast<int>(plan.columnWidths.size());
    plan.format += StatusColumnsFormat();
    std::ranges::copy(StatusColumnsWidths(), std::back_inserter(plan.columnWidths));
    std::ranges::copy(StatusColumnsWidestTexts(), std::back_inserter(plan.widestTexts));
}

} // namespace

frmMain::frmMain(Document& document, RSComm& link, TurnQueue& turns, Dialogs& dialogs, StatusLog& statusLog,
                 std::int16_t& selectedSequence, QWidget* parent)
    : QWidget(parent), document_(document), link_(link), turns_(turns), dialogs_(dialogs), statusLog_(statusLog),
      selectedSequence_(selectedSequence), grids_(new QStackedLayout),
      edits_(document.CurrentConfiguration, link, turns, [this](const LandedEdit& landed) { Landed(landed); }) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Main Display"));
    BuildTabs();
    LayOutGrids();
    BuildMessages();
    LayOutWindow();
    BuildDefaultButton();
    BuildEntryBox();
    BuildUndo();
    BuildBlockCommands();
    tmrStatusTab.setInterval(StatusPeriod);
    tmrStatusTab.setSingleShot(true);
    tmrStatusTab.callOnTimeout(this, [this] { periodOver_.Raise(); });
    ChangeTab();
    // Who starts the program is in the grid; no cell is the current one yet.
    VisibleGrid().setFocus(Qt::ActiveWindowFocusReason);
}

frmMain::~frmMain() {
    // While the grids go one by one, what the rest of them do is no event any more.
    for (QObject* part : std::initializer_list<QObject*>{&tbsComm, &txtEntry, &cmdDefault})
        part->removeEventFilter(this);
    for (QtFormatGrid& grid : fgComm) {
        for (QWidget* part : PartsOf(grid))
            part->removeEventFilter(this);
        grid.SetOnCellsMoved(nullptr);
        grid.selectionModel()->disconnect(this);
    }
}

void frmMain::BuildTabs() {
    tbsComm.setObjectName(QStringLiteral("tbsComm"));
    tbsComm.setAccessibleName(QStringLiteral("What the grid shows"));
    tbsComm.setExpanding(false);
    for (const EditorTab tab : EditorTabs)
        tbsComm.addTab(QString::fromStdString(EditorTabCaption(tab)));
    tbsComm.installEventFilter(this);
    connect(&tbsComm, &QTabBar::currentChanged, this, [this] { ChangeTab(); });
}

void frmMain::LayOutGrids() {
    for (const EditorTab tab : EditorTabs) {
        const std::size_t index = IndexOf(tab);
        QtFormatGrid& grid = fgComm.at(index);
        grid.setObjectName(QStringLiteral("fgComm%1").arg(index));
        grid.setAccessibleName(QString::fromStdString(EditorTabCaption(tab)).remove(QLatin1Char('&')));
        grid.setFont(GridFont(font()));
        GridPlan plan{.format = EditorGridFormat(tab),
                      .columnWidths = EditorColumnWidths(tab),
                      .rows = EditorRowCount,
                      .rowsShown = EditorRowsShown,
                      .leastRows = LeastRows,
                      .leastColumns = LeastColumns,
                      .width = EditorGridWidth,
                      .widestTexts = EditorWidestTexts(tab),
                      .firstStretchingColumn = 2};
        if (tab == EditorTab::CommStatus) AddStatusColumns(plan);
        grid.LayOut(plan);
        WatchGrid(grid);
    }
    LayOutStatusGrid();
    SequenceRowHeight = static_cast<std::int16_t>(fgComm[1].RowHeight());
}

void frmMain::WatchGrid(QtFormatGrid& grid) {
    for (QWidget* part : PartsOf(grid))
        part->installEventFilter(this);
    grid.SetOnCellsMoved([this] { PlaceEntryBox(); });
    connect(&grid, &QTableView::clicked, this, [this, &grid] { CellClicked(grid); });
    connect(&grid, &QTableView::doubleClicked, this, [this] { ChooseSequence(); });
    // As shortcuts, so that they come before those of the frame's area of child windows.
    for (const bool forward : {true, false}) {
        const auto keys = QKeySequence(forward ? Qt::CTRL | Qt::Key_Tab : Qt::CTRL | Qt::SHIFT | Qt::Key_Tab);
        auto* leave = new QShortcut(keys, &grid);
        leave->setContext(Qt::WidgetWithChildrenShortcut);
        connect(leave, &QShortcut::activated, this, [this, forward] { LeaveGrid(forward); });
    }
    // A cell becomes the current one before or after it is selected, by key or by mouse.
    const auto note = [this, &grid] { NoteSelection(grid); };
    connect(grid.selectionModel(), &QItemSelectionModel::currentChanged, this, note);
    connect(grid.selectionModel(), &QItemSelectionModel::selectionChanged, this, note);
}

void frmMain::BuildMessages() {
    fraMessageDisplay.setObjectName(QStringLiteral("fraMessageDisplay"));
    fraMessageDisplay.setTitle(QStringLiteral("Messages"));
    txtMessageDisplay.setObjectName(QStringLiteral("txtMessageDisplay"));
    txtMessageDisplay.setAccessibleName(QStringLiteral("System messages"));
    txtMessageDisplay.setReadOnly(true);
    txtMessageDisplay.setTabChangesFocus(true);
    txtMessageDisplay.setMinimumHeight(MessagesHeight(LeastMessageLines));
    // Room to spare is the grids'.
    txtMessageDisplay.setMaximumHeight(MessagesHeight(MessageLines));
    auto* inside = new QVBoxLayout(&fraMessageDisplay);
    inside->addWidget(&txtMessageDisplay);
}

int frmMain::MessagesHeight(int lines) const {
    const int border = 2 * (txtMessageDisplay.frameWidth() + qRound(txtMessageDisplay.document()->documentMargin()));
    return lines * txtMessageDisplay.fontMetrics().lineSpacing() + border;
}

void frmMain::FitMessages() {
    const int others =
        layout()->minimumSize().height() - grids_->minimumSize().height() - txtMessageDisplay.minimumHeight();
    const int wanted = (MessagesGiveWayRows - LeastRows) * fgComm[0].RowHeight() + grids_->minimumSize().height();
    const int room =
        std::clamp(height() - others - wanted, txtMessageDisplay.minimumHeight(), MessagesHeight(MessageLines));
    if (txtMessageDisplay.maximumHeight() != room) txtMessageDisplay.setMaximumHeight(room);
}

void frmMain::BuildDefaultButton() {
    cmdDefault.setObjectName(QStringLiteral("cmdDefault"));
    cmdDefault.setAccessibleName(windowTitle());
    // Without a size it is seen by nobody and yet takes the focus, which a hidden button would not.
    cmdDefault.setParent(this);
    cmdDefault.setGeometry(0, 0, 0, 0);
    // Tab leads from it into the grid; to it only the program leads.
    QWidget* before = &cmdHealth[0];
    for (QWidget* next :
         std::initializer_list<QWidget*>{&cmdHealth[1], &cmdHealth[2], &cmdHealth[3], &tbsComm, &cmdDefault, &fgComm[0],
                                         &fgComm[1], &fgComm[2], &txtMessageDisplay}) {
        setTabOrder(before, next);
        before = next;
    }
    cmdDefault.setFocusPolicy(Qt::NoFocus);
    cmdDefault.installEventFilter(this);
}

void frmMain::BuildEntryBox() {
    txtEntry.setObjectName(QStringLiteral("txtEntry"));
    txtEntry.setParent(fgComm[1].viewport());
    txtEntry.setFont(fgComm[1].font());
    // What the box would cut off would be lost to whoever only walks over it: all that a set-up file holds of a text.
    txtEntry.setMaxLength(0xFFFF);
    // The program leads to it, and Tab leads out of it by way of its grid.
    txtEntry.setFocusPolicy(Qt::ClickFocus);
    txtEntry.hide();
    txtEntry.installEventFilter(this);
    connect(&txtEntry, &QLineEdit::textEdited, this, [this] { EntryChanged = true; });
}

void frmMain::LayOutWindow() {
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * HeadingScale);
    heading_.setFont(large);
    heading_.setText(QStringLiteral("Communication Sequences"));

    hint_.setWordWrap(true);
    QWidget* health = BuildHealthBar();
    // The gaps give way first on a small screen, with the grids: they all have a stretch, which counts only with the
    // least that they need.
    const int side = PixelsOfTwips(EditorGridLeft, *this);
    const int gap = PixelsOfTwips(MessageGap, *this);
    const int lines = heading_.sizeHint().height() + hint_.fontMetrics().lineSpacing() + health->sizeHint().height();
    const int spare = std::max(PixelsOfTwips(EditorGridTop, *this) - tbsComm.sizeHint().height() - lines, 0);
    auto* all = new QVBoxLayout(this);
    const auto addGap = [all](int height) {
        all->addSpacerItem(new QSpacerItem(0, height, QSizePolicy::Minimum, QSizePolicy::Maximum));
        all->setStretch(all->count() - 1, 1);
    };
    all->setContentsMargins(side, 0, side, gap / 2);
    all->setSpacing(0);
    addGap(spare / 2);
    all->addWidget(&heading_);
    addGap(gap / 2);
    all->addWidget(&hint_);
    addGap(spare / 2);
    all->addWidget(health);
    all->addWidget(&tbsComm);
    for (QtFormatGrid& grid : fgComm)
        grids_->addWidget(&grid);
    all->addLayout(grids_, GridStretch);
    addGap(gap);
    all->addWidget(&fraMessageDisplay);
    addGap(gap / 2);
}

void frmMain::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    // The layout counts with one line of what wraps.
    const int lines = hint_.heightForWidth(contentsRect().width() - 2 * layout()->contentsMargins().left());
    if (hint_.minimumHeight() != lines) hint_.setMinimumHeight(lines);
    FitMessages();
}

void frmMain::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // Back from a change of the child window's state, which had hidden it for a moment.
    if (EntryOpen()) txtEntry.setFocus();
}

void frmMain::closeEvent(QCloseEvent* event) { event->ignore(); }

} // namespace vantrel
