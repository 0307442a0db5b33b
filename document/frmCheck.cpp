#include "document/frmCheck.h"

#include "document/Edit.h"
#include "document/MemoryMap.h"
#include "platform/QtScreen.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QScrollBar>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace vantrel {

namespace {

constexpr int MostStripTwips = 3600;

QIcon IconOf(Severity severity, const QWidget& window) {
    constexpr std::array icons{QStyle::SP_MessageBoxCritical, QStyle::SP_MessageBoxWarning,
                               QStyle::SP_MessageBoxInformation};
    return window.style()->standardIcon(icons.at(static_cast<std::size_t>(severity)));
}

QString Counted(std::ptrdiff_t count, const char* one) {
    return QString::number(count) + QLatin1Char(' ') + QString::fromLatin1(one) + (count == 1 ? "" : "s");
}

QString SummaryOf(const std::vector<Finding>& findings) {
    if (findings.empty())
        return QStringLiteral("Nothing was found. The rules see the set-up only, not the machine that it is for.");
    const auto count = [&](Severity severity) { return std::ranges::count(findings, severity, &Finding::severity); };
    return Counted(count(Severity::Error), "error") + QStringLiteral(", ") +
           Counted(count(Severity::Warning), "warning") + QStringLiteral(", ") +
           Counted(count(Severity::Note), "note") + QStringLiteral(". A click leads to the cell.");
}

QString HintOf(const MemoryBlock& block) {
    const QString words = QString::fromStdString(block.Text());
    if (block.kind == MemoryBlock::Kind::StatusStack) return QStringLiteral("Status stack: ") + words;
    const bool send = block.kind == MemoryBlock::Kind::Send;
    return QStringLiteral("Sequence %1 %2 %3")
        .arg(SequenceOf(block.index))
        .arg(send ? QStringLiteral("sends") : QStringLiteral("receives into"), words);
}

} // namespace

frmCheck::frmCheck(const Document& document, GoTo goTo, QWidget* parent)
    : QDialog(parent), document_(document), goTo_(std::move(goTo)) {
    setObjectName(QStringLiteral("frmCheck"));
    setWindowTitle(QStringLiteral("Check Set-up"));
    setWindowFlag(Qt::WindowMinMaxButtonsHint);
    setAttribute(Qt::WA_DeleteOnClose);
    BuildControls();
    resize(SizeOnScreen({.width = 12000, .height = 8000}, *this));
    Follow();
    tmrFollow.setInterval(std::chrono::milliseconds(500));
    tmrFollow.callOnTimeout(this, [this] { Follow(); });
    tmrFollow.start();
}

void frmCheck::BuildControls() {
    lblSummary = new QLabel(this);
    lblSummary->setWordWrap(true);
    stpMemory = new QtBlockStrip(this);
    stpMemory->setAccessibleName(QStringLiteral("V memory"));
    stpMemory->SetOnPicked([this](std::size_t block) {
        const std::size_t index = blockIndices_.at(block);
        goTo_(SequenceAt(index), index);
    });
    scrMemory = new QScrollArea(this);
    scrMemory->setWidget(stpMemory);
    scrMemory->setWidgetResizable(true);
    scrMemory->setFrameShape(QFrame::StyledPanel);
    scrMemory->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);

    lstFindings = new QTreeWidget(this);
    lstFindings->setObjectName(QStringLiteral("lstFindings"));
    lstFindings->setAccessibleName(QStringLiteral("Findings"));
    lstFindings->setHeaderLabels({QStringLiteral("Severity"), QStringLiteral("Where"), QStringLiteral("What to do")});
    lstFindings->setRootIsDecorated(false);
    const auto goThere = [this](QTreeWidgetItem* item) {
        const Finding& finding = findings_.at(static_cast<std::size_t>(lstFindings->indexOfTopLevelItem(item)));
        goTo_(finding.sequence, finding.index);
    };
    connect(lstFindings, &QTreeWidget::itemClicked, this, goThere);
    connect(lstFindings, &QTreeWidget::itemActivated, this, goThere);

    lblAdvice = new QLabel(this);
    lblAdvice->setWordWrap(true);
    lblAdvice->setMinimumHeight(2 * lblAdvice->fontMetrics().lineSpacing());
    lblAdvice->setAlignment(Qt::AlignTop);
    connect(lstFindings, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* item) {
        lblAdvice->setText(item ? item->text(2) : QString());
        // Queued: a picture that has just been drawn is laid out first.
        QTimer::singleShot(0, this, [this] { ShowBlockOfFinding(); });
    });

    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto* all = new QVBoxLayout(this);
    all->addWidget(lblSummary);
    all->addWidget(scrMemory);
    all->addWidget(lstFindings, 1);
    all->addWidget(lblAdvice);
    all->addWidget(close);
}

void frmCheck::Follow() {
    const Configuration& now = document_.CurrentConfiguration;
    // A letter alone changes a notation, and with it a limit.
    const bool first = shown_.Values.empty();
    if (!first && EditsBetween(shown_, now).empty()) return;
    shown_ = now;
    findings_ = CheckSetup(shown_);
    ShowFindings();
    ShowMemory();
}

void frmCheck::ShowFindings() {
    lblSummary->setText(SummaryOf(findings_));
    lstFindings->clear();
    for (const Finding& finding : findings_) {
        const std::string_view severity = SeverityName(finding.severity);
        auto* item = new QTreeWidgetItem(
            lstFindings, {QString::fromLatin1(severity.data(), static_cast<qsizetype>(severity.size())),
                          QString::fromStdString(finding.Place()), QString::fromStdString(finding.text)});
        item->setIcon(0, IconOf(finding.severity, *this));
        item->setToolTip(2, item->text(2));
    }
    FitColumns(*lstFindings);
    lstFindings->setCurrentItem(lstFindings->topLevelItem(0));
}

void frmCheck::ShowMemory() {
    const std::vector<MemoryBlock> blocks = VBlocks(shown_);
    std::vector<StripBlock> shown;
    blockIndices_.clear();
    for (const MemoryBlock& block : blocks) {
        const auto about = [&](const Finding& finding) {
            return finding.severity == Severity::Error && finding.index == block.index;
        };
        const auto destroys = [&](const MemoryBlock& other) { return other.Destroys(block) || block.Destroys(other); };
        const bool stack = block.kind == MemoryBlock::Kind::StatusStack;
        shown.push_back({.lane = static_cast<std::size_t>(block.kind),
                         .first = block.first,
                         .last = block.last,
                         .label = stack ? QStringLiteral("Stack") : QString::number(SequenceOf(block.index)),
                         .hint = HintOf(block),
                         .wrong = std::ranges::any_of(findings_, about) || std::ranges::any_of(blocks, destroys)});
        blockIndices_.push_back(block.index);
    }
    stpMemory->Show(std::move(shown),
                    {QStringLiteral("Status stack"), QStringLiteral("Sent"), QStringLiteral("Received")},
                    QStringLiteral("V"));
    // However many blocks lie upon each other, the list keeps its room.
    const int frame = 2 * scrMemory->frameWidth() + scrMemory->horizontalScrollBar()->sizeHint().height();
    scrMemory->setFixedHeight(std::min(stpMemory->sizeHint().height() + frame, PixelsOfTwips(MostStripTwips, *this)));
}

void frmCheck::ShowBlockOfFinding() {
    const int row = lstFindings->indexOfTopLevelItem(lstFindings->currentItem());
    if (row < 0) return;
    const auto index = findings_.at(static_cast<std::size_t>(row)).index;
    const auto block = std::ranges::find_if(blockIndices_, [&](std::size_t one) { return one == index; });
    if (block == blockIndices_.end()) return;
    const QPoint middle =
        stpMemory->BlockRect(static_cast<std::size_t>(block - blockIndices_.begin())).center().toPoint();
    scrMemory->ensureVisible(middle.x(), middle.y(), scrMemory->viewport()->width() / 2, stpMemory->height() / 4);
}

} // namespace vantrel
