// What stands beside the status of the sequences: a lamp and the last minutes in each row, the columns behind the given
// ones, and above the grid how many are OK.
#include "document/frmMain.h"

#include "document/StatusTexts.h"
#include "platform/QtText.h"
#include "widgets/QtIcons.h"

#include <QHBoxLayout>

#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

namespace {

constexpr int StatusColumn = 2;

constexpr std::array Lamps{ProgramIcon::LampGood, ProgramIcon::LampBad, ProgramIcon::LampOff, ProgramIcon::LampUnknown};

constexpr ProgramIcon LampOf(SequenceHealth health) { return Lamps.at(static_cast<std::size_t>(health)); }

/// The same one for every row: a cell knows by it whether it has changed.
const QIcon& LampIcon(SequenceHealth health) {
    static const std::array icons{IconOf(Lamps[0]), IconOf(Lamps[1]), IconOf(Lamps[2]), IconOf(Lamps[3])};
    return icons.at(static_cast<std::size_t>(health));
}

/// As rich text, which the host breaks into lines.
QString Hint(const std::string& text) {
    return QStringLiteral("<qt>") + Text(text).toHtmlEscaped().replace(QLatin1Char('\n'), QStringLiteral("<br>")) +
           QStringLiteral("</qt>");
}

constexpr const char* StripHint = "\n\nAt the right: the last 3 minutes, a tick for each reading; now is at the right "
                                  "end. High ticks are failures.";

} // namespace

void frmMain::LayOutStatusGrid() {
    QtFormatGrid& grid = fgComm[IndexOf(EditorTab::CommStatus)];
    grid.setItemDelegateForColumn(StatusColumn - 1,
                                  new QtStripDelegate([this](int row) { return TicksOf(row + 1); },
                                                      Text(EditorWidestTexts(EditorTab::CommStatus).back()), &grid));
    grid.SetOnHint([this](int row, int column) {
        const std::size_t sequence = static_cast<std::size_t>(row) - 1;
        std::string hint = StatusHint(statusLog_.Of(sequence), sequence, statusLog_.LocalNow());
        if (column == StatusColumn) hint += StripHint;
        return Hint(hint);
    });
}

QWidget* frmMain::BuildHealthBar() {
    auto* bar = new QWidget(this);
    auto* line = new QHBoxLayout(bar);
    line->setContentsMargins(0, 0, 0, 0);
    for (const SequenceHealth health : SequenceHealths) {
        QToolButton& button = cmdHealth.at(static_cast<std::size_t>(health));
        button.setObjectName(QStringLiteral("cmdHealth%1").arg(static_cast<int>(health)));
        button.setIcon(LampIcon(health));
        button.setIconSize(LampSize(button));
        button.setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button.setCheckable(true);
        button.setAutoRaise(true);
        button.setToolTip(QStringLiteral("Show these sequences alone; once more: all of them"));
        connect(&button, &QToolButton::clicked, this, [this, health](bool chosen) { ChooseHealth(health, chosen); });
        line->addWidget(&button);
    }
    line->addStretch();
    // What is below stays where it is while there is nothing to count.
    bar->setFixedHeight(cmdHealth.front().sizeHint().height());
    return bar;
}

void frmMain::ShowRecord(int row) {
    QtFormatGrid& grid = fgComm[IndexOf(EditorTab::CommStatus)];
    const std::size_t sequence = static_cast<std::size_t>(row) - 1;
    const SequenceRecord& record = statusLog_.Of(sequence);
    grid.SetIcon(row, StatusColumn, LampIcon(record.health));
    const auto texts =
        StatusColumnsTexts(record, document_.CurrentConfiguration.NodeDescription(sequence), statusLog_.LocalNow());
    for (std::size_t i = 0; i < texts.size(); ++i)
        grid.SetText(row, StatusColumn + 1 + static_cast<int>(i), Text(texts[i]));
    // The strip moves on although no text has changed.
    grid.viewport()->update(grid.CellRect(row, StatusColumn).translated(-grid.viewport()->pos()));
}

void frmMain::ShowHealth() {
    const bool live = CurrentTab == EditorTab::CommStatus && link_.OnlineMode();
    const HealthCounts counts = CountHealths(statusLog_);
    for (const SequenceHealth health : SequenceHealths) {
        QToolButton& button = cmdHealth.at(static_cast<std::size_t>(health));
        const std::size_t count = counts.at(static_cast<std::size_t>(health));
        button.setText(QString::number(count) + QLatin1Char(' ') + Text(HealthName(health)));
        button.setVisible(live && (count > 0 || healthShown_ == health));
    }
    if (!live && !link_.OnlineMode()) healthShown_.reset();
    QtFormatGrid& grid = fgComm[IndexOf(EditorTab::CommStatus)];
    for (int row = 1; row < EditorRowCount; ++row) {
        const SequenceHealth health = statusLog_.Of(static_cast<std::size_t>(row) - 1).health;
        grid.ShowRow(row, !healthShown_ || health == healthShown_);
    }
    for (const SequenceHealth health : SequenceHealths)
        cmdHealth.at(static_cast<std::size_t>(health)).setChecked(healthShown_ == health);
}

void frmMain::ChooseHealth(SequenceHealth health, bool chosen) {
    healthShown_ = chosen ? std::optional(health) : std::nullopt;
    ShowHealth();
}

void frmMain::ShowRowOf(int sequence) {
    const bool leftOut = healthShown_ && statusLog_.Of(static_cast<std::size_t>(sequence)).health != healthShown_;
    if (CurrentTab == EditorTab::CommStatus && leftOut) ChooseHealth(*healthShown_, false);
}

std::vector<StripTick> frmMain::TicksOf(int row) const {
    const MonotonicTime now = statusLog_.Now();
    std::vector<StripTick> ticks;
    for (const SequenceRecord::Look& look : statusLog_.Of(static_cast<std::size_t>(row) - 1).latest)
        ticks.push_back({std::chrono::duration<double>(now - look.at).count(), LampOf(look.health)});
    return ticks;
}

} // namespace vantrel
