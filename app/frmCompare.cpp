#include "app/frmCompare.h"

#include "platform/QtScreen.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

enum Column { Field, Here, There };

QString SequenceCaption(const Difference& difference) {
    return difference.index == StatusStackIndex ? QStringLiteral("Set-up")
                                                : QStringLiteral("Sequence %1").arg(difference.sequence);
}

bool SamePlace(const Difference& one, const Difference& other) {
    return one.index == other.index && one.sequence == other.sequence;
}

QString StateOf(const ComparisonReport& report) {
    const auto doubtful = std::ranges::count(report.differences, true, &Difference::doubtful);
    const auto different = static_cast<std::ptrdiff_t>(report.differences.size()) - doubtful;
    QString text =
        different == 0 && doubtful == 0 && report.remark.empty()
            ? QStringLiteral("No differences.")
            : (different == 1 ? QStringLiteral("1 difference.") : QStringLiteral("%1 differences.").arg(different));
    if (doubtful > 0) text += QStringLiteral(" %1 not read clearly: they may differ or not.").arg(doubtful);
    if (!report.remark.empty()) text += QLatin1Char(' ') + QString::fromStdString(report.remark);
    return text;
}

} // namespace

frmCompare::frmCompare(Commands commands, QWidget* parent) : QDialog(parent), commands_(std::move(commands)) {
    setObjectName(QStringLiteral("frmCompare"));
    setWindowTitle(commands_.send ? QStringLiteral("Compare With Board") : QStringLiteral("Compare With File"));
    setWindowFlag(Qt::WindowMinMaxButtonsHint);
    setAttribute(Qt::WA_DeleteOnClose);
    BuildControls();
    resize(SizeOnScreen({.width = 10500, .height = 8000}, *this));
}

QPushButton* frmCompare::AddButton(const char* name, const QString& caption, const std::function<void()>& command) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, command);
    return button;
}

void frmCompare::BuildControls() {
    lblSides = new QLabel(this);
    lblSides->setWordWrap(true);
    lblState = new QLabel(this);
    lblState->setWordWrap(true);
    lstDifferences = new QTreeWidget(this);
    lstDifferences->setObjectName(QStringLiteral("lstDifferences"));
    lstDifferences->setAccessibleName(QStringLiteral("Differences"));
    lstDifferences->setHeaderLabels({QStringLiteral("Field"), QStringLiteral("Here"), QStringLiteral("There")});
    lstDifferences->setExpandsOnDoubleClick(false);
    connect(lstDifferences, &QTreeWidget::itemChanged, this, [this] { ShowButtons(); });
    connect(lstDifferences, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) {
        const auto row = std::ranges::find(rows_, item);
        if (row == rows_.end()) return;
        const Difference& difference = report_.differences.at(static_cast<std::size_t>(row - rows_.begin()));
        commands_.goTo(difference.sequence, difference.index);
    });

    cmdSend = AddButton("cmdSend", tr("&Send Ticked to Board"), [this] { commands_.send(TickedValues()); });
    cmdTake = AddButton("cmdTake", tr("&Take Ticked into Set-up"), [this] { commands_.take(Ticked()); });
    cmdSaveBoard = AddButton("cmdSaveBoard", tr("Save &Board's Values As..."), [this] { commands_.saveBoard(); });
    cmdRepeat = AddButton("cmdRepeat", tr("&Compare Again"), [this] { commands_.repeat(); });
    cmdPrint = AddButton("cmdPrint", tr("&Print..."), [this] { commands_.print(); });
    cmdSaveList = AddButton("cmdSaveList", tr("Save &List As..."), [this] { commands_.saveList(); });
    cmdSend->setVisible(static_cast<bool>(commands_.send));
    cmdSaveBoard->setVisible(static_cast<bool>(commands_.saveBoard));

    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto* actions = new QHBoxLayout;
    for (QPushButton* button : {cmdSend, cmdTake, cmdSaveBoard})
        actions->addWidget(button);
    actions->addStretch();
    auto* lower = new QHBoxLayout;
    for (QPushButton* button : {cmdRepeat, cmdPrint, cmdSaveList})
        lower->addWidget(button);
    lower->addStretch();
    lower->addWidget(close);
    auto* all = new QVBoxLayout(this);
    all->addWidget(lblSides);
    all->addWidget(lblState);
    all->addWidget(lstDifferences, 1);
    all->addLayout(actions);
    all->addLayout(lower);
}

void frmCompare::Show(ComparisonReport report) {
    const std::vector<Difference> wereUnticked = [&] {
        std::vector<Difference> unticked;
        for (std::size_t row = 0; row < rows_.size(); ++row) {
            if (rows_[row]->checkState(Field) != Qt::Checked) unticked.push_back(report_.differences[row]);
        }
        return unticked;
    }();
    report_ = std::move(report);
    old_ = false;
    lblSides->setText(QStringLiteral("Here: %1\nThere: %2\n%3")
                          .arg(QString::fromStdString(report_.here), QString::fromStdString(report_.there),
                               QString::fromStdString(report_.date)));
    state_ = StateOf(report_);
    Fill();
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        const auto same = [&](const Difference& one) { return SamePlace(one, report_.differences[row]); };
        if (std::ranges::any_of(wereUnticked, same)) rows_[row]->setCheckState(Field, Qt::Unchecked);
    }
    ShowButtons();
}

void frmCompare::Fill() {
    const QSignalBlocker quiet(lstDifferences);
    lstDifferences->clear();
    rows_.clear();
    QTreeWidgetItem* sequence = nullptr;
    for (const Difference& difference : report_.differences) {
        const QString caption = SequenceCaption(difference);
        if (!sequence || sequence->text(Field) != caption) {
            sequence = new QTreeWidgetItem(lstDifferences, {caption});
            sequence->setFlags(sequence->flags() | Qt::ItemIsAutoTristate | Qt::ItemIsUserCheckable);
        }
        const QString there =
            difference.doubtful ? QStringLiteral("not read clearly") : QString::fromStdString(difference.there);
        auto* item = new QTreeWidgetItem(
            sequence, {QString::fromStdString(difference.Field()), QString::fromStdString(difference.here), there});
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Field, Qt::Checked);
        rows_.push_back(item);
    }
    lstDifferences->expandAll();
    FitColumns(*lstDifferences);
}

void frmCompare::MarkOld(const std::string& why) {
    old_ = true;
    state_ = QString::fromStdString(why) + QStringLiteral(" The list may not be true any more: compare again.");
    ShowButtons();
}

void frmCompare::SetOnline(bool online) {
    online_ = online;
    ShowButtons();
}

std::vector<Difference> frmCompare::Ticked() const {
    std::vector<Difference> ticked;
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        if (rows_[row]->checkState(Field) == Qt::Checked) ticked.push_back(report_.differences[row]);
    }
    return ticked;
}

std::vector<std::size_t> frmCompare::TickedValues() const {
    std::vector<std::size_t> indices;
    for (const Difference& difference : Ticked()) {
        if (difference.index) indices.push_back(*difference.index);
    }
    return indices;
}

void frmCompare::ShowButtons() {
    const std::vector<Difference> ticked = Ticked();
    const bool clear = std::ranges::any_of(ticked, [](const Difference& one) { return !one.doubtful; });
    cmdSend->setEnabled(online_ && !old_ && !TickedValues().empty());
    cmdTake->setEnabled(!old_ && clear);
    // A copy of the board is whole, or it is none.
    const bool whole = report_.remark.empty() && std::ranges::none_of(report_.differences, &Difference::doubtful);
    cmdSaveBoard->setEnabled(!old_ && whole);
    const bool offline = commands_.send && !online_;
    lblState->setText(offline ? state_ + QStringLiteral(" OFFLINE nothing can be sent.") : state_);
}

} // namespace vantrel
