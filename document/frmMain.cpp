// The sequence editor's layout, its tabs, and the filling of its grids.
#include "document/frmMain.h"

#include "platform/QtScreen.h"

#include <QCloseEvent>
#include <QVBoxLayout>

#include <initializer_list>

namespace vantrel {

namespace {

constexpr const char* GridFontFamily = "MS Sans Serif";
/// The same face with outlines, for hosts where the other one is a bitmap or missing.
constexpr const char* GridFontFallback = "Microsoft Sans Serif";
constexpr int MessageLines = 4;
constexpr int MessageGap = 180; ///< Twips above and below the messages.
constexpr double HeadingScale = 1.5; ///< Of the host's font.

std::size_t IndexOf(EditorTab tab) { return static_cast<std::size_t>(tab) - 1; }

QFont GridFont(const QFont& host) {
    QFont font(host);
    font.setFamilies(QStringList{QString::fromLatin1(GridFontFamily), QString::fromLatin1(GridFontFallback)} +
                     host.families());
    return font;
}

} // namespace

frmMain::frmMain(Document& document, RSComm& link, TurnQueue& turns, QWidget* parent)
    : QWidget(parent), document_(document), link_(link), turns_(turns), grids_(new QStackedLayout) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Main Display"));
    BuildTabs();
    LayOutGrids();
    BuildMessages();
    LayOutWindow();
    BuildDefaultButton();
    ChangeTab();
}

void frmMain::BuildTabs() {
    tbsComm.setObjectName(QStringLiteral("tbsComm"));
    tbsComm.setAccessibleName(QStringLiteral("What the grid shows"));
    tbsComm.setExpanding(false);
    for (const EditorTab tab : EditorTabs)
        tbsComm.addTab(QString::fromStdString(EditorTabCaption(tab)));
    connect(&tbsComm, &QTabBar::currentChanged, this, [this] { ChangeTab(); });
}

void frmMain::LayOutGrids() {
    for (const EditorTab tab : EditorTabs) {
        QtFormatGrid& grid = fgComm.at(IndexOf(tab));
        grid.setObjectName(QStringLiteral("fgComm%1").arg(IndexOf(tab)));
        grid.setAccessibleName(QString::fromStdString(EditorTabCaption(tab)).remove(QLatin1Char('&')));
        grid.setFont(GridFont(font()));
        grid.LayOut({.format = EditorGridFormat(tab),
                     .columnWidths = EditorColumnWidths(tab),
                     .rows = EditorRowCount,
                     .rowsShown = EditorRowsShown,
                     .width = EditorGridWidth,
                     .firstStretchingColumn = 2});
    }
}

void frmMain::BuildMessages() {
    fraMessageDisplay.setObjectName(QStringLiteral("fraMessageDisplay"));
    fraMessageDisplay.setTitle(QStringLiteral("Messages"));
    txtMessageDisplay.setObjectName(QStringLiteral("txtMessageDisplay"));
    txtMessageDisplay.setAccessibleName(QStringLiteral("System messages"));
    txtMessageDisplay.setReadOnly(true);
    txtMessageDisplay.setTabChangesFocus(true);
    const int border = 2 * (txtMessageDisplay.frameWidth() + qRound(txtMessageDisplay.document()->documentMargin()));
    txtMessageDisplay.setMinimumHeight(MessageLines * txtMessageDisplay.fontMetrics().lineSpacing() + border);
    // Room to spare is the grids'.
    txtMessageDisplay.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    auto* inside = new QVBoxLayout(&fraMessageDisplay);
    inside->addWidget(&txtMessageDisplay);
}

void frmMain::BuildDefaultButton() {
    cmdDefault.setObjectName(QStringLiteral("cmdDefault"));
    cmdDefault.setAccessibleName(windowTitle());
    // Without a size it is seen by nobody and yet takes the focus, which a hidden button would not.
    cmdDefault.setParent(this);
    cmdDefault.setGeometry(0, 0, 0, 0);
    // Tab leads from it into the grid; to it only the program leads.
    QWidget* before = &tbsComm;
    for (QWidget* next :
         std::initializer_list<QWidget*>{&cmdDefault, &fgComm[0], &fgComm[1], &fgComm[2], &txtMessageDisplay}) {
        setTabOrder(before, next);
        before = next;
    }
    cmdDefault.setFocusPolicy(Qt::NoFocus);
}

void frmMain::LayOutWindow() {
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * HeadingScale);
    heading_.setFont(large);
    heading_.setText(QStringLiteral("Communication Sequences"));

    auto* head = new QWidget(this);
    head->setMinimumHeight(PixelsOfTwips(EditorGridTop, *this) - tbsComm.sizeHint().height());
    head->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto* headLines = new QVBoxLayout(head);
    headLines->setContentsMargins(0, 0, 0, 0);
    headLines->addStretch();
    headLines->addWidget(&heading_);
    headLines->addWidget(&hint_);
    headLines->addStretch();

    for (QtFormatGrid& grid : fgComm)
        grids_->addWidget(&grid);

    auto* all = new QVBoxLayout(this);
    const int side = PixelsOfTwips(EditorGridLeft, *this);
    const int gap = PixelsOfTwips(MessageGap, *this);
    all->setContentsMargins(side, 0, side, gap);
    all->setSpacing(0);
    all->addWidget(head);
    all->addWidget(&tbsComm);
    all->addLayout(grids_, 1);
    all->addSpacing(gap);
    all->addWidget(&fraMessageDisplay);
}

void frmMain::ChangeTab() {
    CurrentTab = EditorTabs.at(static_cast<std::size_t>(tbsComm.currentIndex()));
    for (QtFormatGrid& grid : fgComm)
        grid.SetCurrentCell(0, 0);
    grids_->setCurrentWidget(&VisibleGrid());
    hint_.setText(QString::fromStdString(EditorTabHint(CurrentTab)));
    StartFill();
}

QtFormatGrid& frmMain::VisibleGrid() { return fgComm.at(IndexOf(CurrentTab)); }

void frmMain::RefillIfAsked() {
    if (!document_.ReloadDisplay) return;
    document_.ReloadDisplay = false;
    StartFill();
}

void frmMain::ShowOffline() {
    if (CurrentTab == EditorTab::CommStatus && !link_.OnlineMode()) StartFill();
}

void frmMain::StartFill() {
    fill_ = Fill();
    fill_.Start();
}

Task frmMain::Fill() {
    for (int row = 1; row < EditorRowCount; ++row) {
        co_await turns_.Next();
        FillRow(row);
    }
}

void frmMain::FillRow(int row) {
    const auto texts = EditorRowTexts(document_.CurrentConfiguration, CurrentTab, static_cast<std::size_t>(row) - 1);
    for (std::size_t column = 0; column < texts.size(); ++column)
        VisibleGrid().SetText(row, static_cast<int>(column), QString::fromStdString(texts[column]));
}

void frmMain::SetSystemMessage(const std::string& text) {
    const QString message = QString::fromStdString(text);
    if (txtMessageDisplay.toPlainText() != message) txtMessageDisplay.setPlainText(message);
}

void frmMain::closeEvent(QCloseEvent* event) { event->ignore(); }

} // namespace vantrel
