#include "app/frmHelp.h"

#include "platform/QtScreen.h"
#include "widgets/QtIcons.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QScrollBar>
#include <QSplitter>
#include <QStyle>
#include <QTextEdit>
#include <QTextTable>
#include <QToolBar>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>
#include <utility>

namespace vantrel {

namespace {

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

QTextEdit::ExtraSelection MarkOf(const QTextCursor& text, const QColor& background) {
    QTextEdit::ExtraSelection mark;
    mark.cursor = text;
    mark.format.setBackground(background);
    return mark;
}

/// One mark a cell of the row, which is counted over all tables of the text.
QList<QTextEdit::ExtraSelection> RowMarks(const QTextBrowser& text, std::size_t row) {
    constexpr int faint = 60;
    QColor colour = text.palette().highlight().color();
    colour.setAlpha(faint);
    QList<QTextEdit::ExtraSelection> marks;
    auto left = static_cast<int>(row);
    for (QTextFrame* frame : text.document()->rootFrame()->childFrames()) {
        const auto* table = qobject_cast<QTextTable*>(frame);
        if (!table) continue;
        for (int column = 0; left < table->rows() && column < table->columns(); ++column) {
            QTextCursor cell = table->cellAt(left, column).firstCursorPosition();
            cell.setPosition(table->cellAt(left, column).lastPosition(), QTextCursor::KeepAnchor);
            marks.push_back(MarkOf(cell, colour));
        }
        left -= table->rows();
        if (left < 0) break;
    }
    return marks;
}

/// A letter or two stand everywhere: so many marks say enough.
void AddWordMarks(QList<QTextEdit::ExtraSelection>& marks, const QTextBrowser& text, const QString& word) {
    constexpr int most = 200;
    QTextCursor found(text.document());
    for (int count = 0; count < most; ++count) {
        found = text.document()->find(word, found);
        if (found.isNull()) return;
        QTextEdit::ExtraSelection mark = MarkOf(found, text.palette().highlight().color());
        mark.format.setForeground(text.palette().highlightedText());
        marks.push_back(mark);
    }
}

} // namespace

frmHelp::frmHelp(HelpFile help, QWidget* parent) : QDialog(parent), help_(std::move(help)) {
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(QStringLiteral("VANTREL Help"));
    setWindowFlag(Qt::WindowMinMaxButtonsHint);
    setAttribute(Qt::WA_DeleteOnClose);
    resize(SizeOnScreen({.width = 12000, .height = 9000}, *this));
    BuildTools();
    BuildPages();
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
    cmdNext = tools->addAction(style()->standardIcon(QStyle::SP_ArrowDown), tr("&Next"), this, [this] { Next(); });
    cmdNext->setObjectName(QStringLiteral("cmdNext"));
    cmdNext->setShortcut(QKeySequence::FindNext);
    for (QAction* action : {cmdBack, cmdPrint, cmdNext}) {
        // A tool button drops the access key of its action.
        auto* button = qobject_cast<QToolButton*>(tools->widgetForAction(action));
        button->setText(action->text());
        button->setFocusPolicy(Qt::TabFocus);
    }
    tools->insertSeparator(cmdNext);
    auto* label = new QLabel(tr("&Search: "), tools);
    txtSearch = new QLineEdit(tools);
    txtSearch->setObjectName(QStringLiteral("txtSearch"));
    txtSearch->setAccessibleName(tr("Search"));
    txtSearch->setPlaceholderText(tr("words that a topic must hold"));
    txtSearch->setClearButtonEnabled(true);
    SelectAllOnFocus(*txtSearch);
    label->setBuddy(txtSearch);
    tools->insertWidget(cmdNext, label);
    tools->insertWidget(cmdNext, txtSearch);
    connect(txtSearch, &QLineEdit::textChanged, this, [this] { Fill(); });
    connect(txtSearch, &QLineEdit::returnPressed, this, [this] { Next(); });
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
    split->setSizes({contents, width() - contents});
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
        cmdNext->setEnabled(false);
        lstContents->addItem(tr("No topic holds these words"));
        lstContents->item(0)->setFlags(Qt::NoItemFlags);
        return;
    }
    cmdNext->setEnabled(!SearchWords(words).empty());
    const std::size_t topic = BestListed(words);
    lstContents->setCurrentRow(static_cast<int>(std::ranges::find(listed_, topic) - listed_.begin()));
    // While the words are typed no topic on the way is worth going back to.
    if (visited_.empty()) visited_.push_back(topic);
    visited_.back() = topic;
    Display(topic);
}

std::size_t frmHelp::BestListed(const std::string& words) const {
    const auto holdsRow = [&](std::size_t topic) { return help_.FindRow(topic, words).has_value(); };
    const bool shownListed = !visited_.empty() && std::ranges::count(listed_, visited_.back()) > 0;
    if (shownListed && (SearchWords(words).empty() || holdsRow(visited_.back()))) return visited_.back();
    const auto found = std::ranges::find_if(listed_, holdsRow);
    if (found != listed_.end()) return *found;
    return shownListed ? visited_.back() : listed_.front();
}

void frmHelp::ShowTopic(const std::string& name) {
    txtSearch->clear();
    // A window that comes up has nothing to go back to.
    if (!isVisible()) visited_.clear();
    Go(help_.Find(name).value_or(0));
}

bool frmHelp::ShowMessage(const std::string& message) {
    const auto place = help_.FindMessage(message);
    if (!place) return false;
    txtSearch->clear();
    if (!isVisible()) visited_.clear();
    Go(place->topic);
    row_ = place->row;
    Mark();
    return true;
}

void frmHelp::Go(std::size_t topic) {
    if (visited_.empty() || visited_.back() != topic) visited_.push_back(topic);
    Display(topic);
}

void frmHelp::Display(std::size_t topic) {
    Draw(topic);
    cmdBack->setEnabled(visited_.size() > 1);
    const QSignalBlocker quiet(lstContents);
    const auto listed = std::ranges::find(listed_, topic);
    if (listed != listed_.end()) lstContents->setCurrentRow(static_cast<int>(listed - listed_.begin()));
    row_ = help_.FindRow(topic, txtSearch->text().toStdString());
    Mark();
}

void frmHelp::Draw(std::size_t topic) {
    txtTopic->moveCursor(QTextCursor::Start);
    if (drawn_ == topic) return;
    txtTopic->setMarkdown(QString::fromStdString(help_.Topics()[topic].text));
    GiveTablesRoom(*txtTopic->document(), txtTopic->palette());
    drawn_ = topic;
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

void frmHelp::Next() {
    const std::string words = txtSearch->text().toStdString();
    if (listed_.empty() || visited_.empty() || SearchWords(words).empty()) return;
    const std::size_t shown = visited_.back();
    if (row_) {
        if (const auto row = help_.FindRow(shown, words, *row_ + 1)) {
            row_ = row;
            Mark();
            return;
        }
    }
    const auto at = std::ranges::find(listed_, shown);
    const bool last = at == listed_.end() || at + 1 == listed_.end();
    Go(last ? listed_.front() : *(at + 1));
}

void frmHelp::Mark() {
    QList<QTextEdit::ExtraSelection> marks;
    if (row_) marks = RowMarks(*txtTopic, *row_);
    const qsizetype words = marks.size();
    for (const std::string& word : SearchWords(txtSearch->text().toStdString()))
        AddWordMarks(marks, *txtTopic, QString::fromStdString(word));
    txtTopic->setExtraSelections(marks);
    if (marks.isEmpty()) return;
    QTextCursor first = marks.at(row_ ? 0 : words).cursor;
    first.setPosition(first.selectionStart());
    txtTopic->setTextCursor(first);
    // A little below the top, so that the headings before it can be read.
    QScrollBar* bar = txtTopic->verticalScrollBar();
    bar->setValue(bar->value() + txtTopic->cursorRect(first).top() - txtTopic->viewport()->height() / 4);
}

void frmHelp::Print() {
    // Goes with this window, and this window with its owner: neither may be on the stack when that happens.
    const auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
    auto* dialog = new QPrintDialog(printer.get(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(tr("Print Topic"));
    connect(dialog, &QDialog::accepted, txtTopic, [this, printer] { txtTopic->print(printer.get()); });
    dialog->open();
}

} // namespace vantrel
