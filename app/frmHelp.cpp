#include "app/frmHelp.h"

#include "platform/QtScreen.h"
#include "widgets/QtIcons.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QSplitter>
#include <QStyle>
#include <QTextTable>
#include <QToolBar>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

constexpr int WidthTwips = 12000;
constexpr int HeightTwips = 9000;
constexpr int ContentsTwips = 3200;

void GiveTablesRoom(QTextDocument& text, const QPalette& colours) {
    constexpr double margin = 12;
    constexpr double padding = 4;
    text.setDocumentMargin(margin);
    for (QTextFrame* frame : text.rootFrame()->childFrames()) {
        auto* table = qobject_cast<QTextTable*>(frame);
        if (!table) continue;
        QTextTableFormat format = table->format();
        format.setCellPadding(padding);
        format.setCellSpacing(0);
        format.setBorderCollapse(true);
        format.setBorder(1);
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderBrush(colours.mid());
        format.setTopMargin(padding);
        format.setBottomMargin(padding);
        table->setFormat(format);
    }
}

} // namespace

frmHelp::frmHelp(HelpFile help, QWidget* parent) : QDialog(parent), help_(std::move(help)) {
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(QStringLiteral("VANTREL Help"));
    setWindowFlag(Qt::WindowMinMaxButtonsHint);
    setAttribute(Qt::WA_DeleteOnClose);
    BuildTools();
    BuildPages();
    resize(PixelsOfTwips(WidthTwips, *this), PixelsOfTwips(HeightTwips, *this));
    Fill();
}

void frmHelp::BuildTools() {
    auto* tools = new QToolBar(this);
    tools->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    cmdBack = tools->addAction(style()->standardIcon(QStyle::SP_ArrowBack), tr("&Back"), this, [this] { Back(); });
    cmdBack->setObjectName(QStringLiteral("cmdBack"));
    cmdBack->setShortcut(QKeySequence::Back);
    cmdPrint = tools->addAction(IconOf(ProgramIcon::Print), tr("&Print..."), this, [this] { Print(); });
    cmdPrint->setObjectName(QStringLiteral("cmdPrint"));
    cmdPrint->setShortcut(QKeySequence::Print);
    for (QAction* action : {cmdBack, cmdPrint}) {
        // A tool button drops the access key of its action.
        auto* button = qobject_cast<QToolButton*>(tools->widgetForAction(action));
        button->setText(action->text());
        button->setFocusPolicy(Qt::TabFocus);
    }
    tools->addSeparator();
    auto* label = new QLabel(tr("&Search: "), tools);
    txtSearch = new QLineEdit(tools);
    txtSearch->setObjectName(QStringLiteral("txtSearch"));
    txtSearch->setAccessibleName(tr("Search"));
    txtSearch->setPlaceholderText(tr("words that a topic must hold"));
    txtSearch->setClearButtonEnabled(true);
    SelectAllOnFocus(*txtSearch);
    label->setBuddy(txtSearch);
    tools->addWidget(label);
    tools->addWidget(txtSearch);
    connect(txtSearch, &QLineEdit::textChanged, this, [this] { Fill(); });
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(tools);
}

void frmHelp::BuildPages() {
    auto* split = new QSplitter(this);
    lstContents = new QListWidget(split);
    lstContents->setObjectName(QStringLiteral("lstContents"));
    lstContents->setAccessibleName(tr("Contents"));
    lstContents->setSpacing(1);
    txtTopic = new QTextBrowser(split);
    txtTopic->setObjectName(QStringLiteral("txtTopic"));
    txtTopic->setAccessibleName(tr("Topic"));
    txtTopic->setOpenLinks(false);
    const int contents = PixelsOfTwips(ContentsTwips, *this);
    split->setSizes({contents, PixelsOfTwips(WidthTwips, *this) - contents});
    split->setStretchFactor(1, 1);
    split->setChildrenCollapsible(false);
    layout()->addWidget(split);
    connect(lstContents, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0) Go(listed_.at(static_cast<std::size_t>(row)));
    });
    connect(txtTopic, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) { Follow(link); });
}

void frmHelp::Fill() {
    const std::string words = txtSearch->text().toStdString();
    listed_ = help_.Search(words);
    const QSignalBlocker quiet(lstContents);
    lstContents->clear();
    for (const std::size_t topic : listed_)
        lstContents->addItem(QString::fromStdString(help_.Topics()[topic].title));
    if (listed_.empty()) {
        lstContents->addItem(tr("No topic holds these words"));
        lstContents->item(0)->setFlags(Qt::NoItemFlags);
        return;
    }
    const bool shownStays = !visited_.empty() && std::ranges::count(listed_, visited_.back()) > 0;
    const std::size_t topic = shownStays ? visited_.back() : listed_.front();
    lstContents->setCurrentRow(static_cast<int>(std::ranges::find(listed_, topic) - listed_.begin()));
    // While the words are typed no topic on the way is worth going back to.
    if (visited_.empty()) visited_.push_back(topic);
    visited_.back() = topic;
    Display(topic);
}

void frmHelp::ShowTopic(const std::string& name) {
    txtSearch->clear();
    // A window that comes up has nothing to go back to.
    if (!isVisible()) visited_.clear();
    Go(help_.Find(name).value_or(0));
}

void frmHelp::Go(std::size_t topic) {
    if (visited_.empty() || visited_.back() != topic) visited_.push_back(topic);
    Display(topic);
}

void frmHelp::Display(std::size_t topic) {
    txtTopic->setMarkdown(QString::fromStdString(help_.Topics()[topic].text));
    GiveTablesRoom(*txtTopic->document(), txtTopic->palette());
    cmdBack->setEnabled(visited_.size() > 1);
    const QSignalBlocker quiet(lstContents);
    const auto row = std::ranges::find(listed_, topic);
    if (row != listed_.end()) lstContents->setCurrentRow(static_cast<int>(row - listed_.begin()));
    MarkFound();
}

void frmHelp::Back() {
    if (visited_.size() < 2) return;
    visited_.pop_back();
    Display(visited_.back());
}

void frmHelp::Follow(const QUrl& link) {
    if (link.isRelative()) {
        if (const auto topic = help_.Find(link.fragment().toStdString())) Go(*topic);
    } else {
        QDesktopServices::openUrl(link);
    }
}

void frmHelp::MarkFound() {
    QList<QTextEdit::ExtraSelection> marks;
    for (const std::string& word : SearchWords(txtSearch->text().toStdString())) {
        const QString wanted = QString::fromStdString(word);
        QTextCursor found(txtTopic->document());
        while (!(found = txtTopic->document()->find(wanted, found)).isNull()) {
            QTextEdit::ExtraSelection mark;
            mark.cursor = found;
            mark.format.setBackground(palette().highlight());
            mark.format.setForeground(palette().highlightedText());
            marks.push_back(mark);
        }
    }
    txtTopic->setExtraSelections(marks);
    if (marks.isEmpty()) return;
    QTextCursor first = marks.front().cursor;
    first.clearSelection();
    txtTopic->setTextCursor(first);
    txtTopic->ensureCursorVisible();
}

void frmHelp::Print() {
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, this);
    dialog.setWindowTitle(tr("Print Topic"));
    if (dialog.exec() == QDialog::Accepted) txtTopic->print(&printer);
}

} // namespace vantrel
