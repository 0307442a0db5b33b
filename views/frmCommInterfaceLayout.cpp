// The communication interface view's controls and where they stand.
#include "views/frmCommInterface.h"

#include "link/TargetMap.h"
#include "platform/QtScreen.h"
#include "widgets/QtScrolledContent.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QVBoxLayout>

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace vantrel {

namespace {

// Widths on the screen, in twips.
constexpr int EntryTwips = 720;
constexpr int SettingsWidth = 4600;
constexpr int SettingsNameWidth = 1000;
constexpr int DataWidth = 5000;
constexpr int WordWidth = 800;
constexpr int WordColumnMargin = 95;
constexpr int NodeGap = 360;

constexpr int SettingsRows = 4;
constexpr int DataRows = DataWordCount + 1;
// The heading row included.
constexpr int DataRowsShown = 17;
constexpr int LeastDataRows = 5;
constexpr int FadeMilliseconds = 100;

constexpr std::array SettingLabels{"Node Number:", "Description:", "Status:"};

/// A word of the board, whatever it is taken for.
constexpr const char* WidestWord = WidestWordText.data();
constexpr const char* WidestSetting = "W65535";
constexpr const char* WidestSetUp = "\u2260 W65535";

void LayOutSettings(QtFormatGrid& grid, const char* format, const std::array<const char*, 3>& names) {
    grid.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    grid.LayOut({.format = format,
                 .columnWidths = {SettingsNameWidth, 0, 0},
                 .rows = SettingsRows,
                 .rowsShown = SettingsRows,
                 .width = SettingsWidth,
                 .widestTexts = {std::string(), WidestSetting, WidestSetUp}});
    for (std::size_t i = 0; i < names.size(); ++i)
        grid.SetText(static_cast<int>(i) + 1, 0, QString::fromLatin1(names.at(i)));
    // The names came after the widths, and the host's font may need more than was planned.
    QHeaderView& nameColumn = *grid.verticalHeader();
    nameColumn.setFixedWidth(std::max(nameColumn.minimumWidth(), nameColumn.sizeHint().width()));
    grid.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    grid.setFixedHeight(grid.minimumHeight());
}

} // namespace

QtEntryField::Rules frmCommInterface::EntryRules() const {
    return {.value =
                [](std::string_view entry) {
                    const auto sequence = SequenceEntry(entry);
                    return sequence ? std::optional(std::to_string(*sequence)) : std::nullopt;
                },
            .shown = [](std::string_view value) { return std::string(value); },
            .stepped =
                [this](std::string_view from, int direction) {
                    return std::to_string(SteppedSequence(from, direction, SelectedSequence));
                }};
}

void frmCommInterface::BuildEntry() {
    Add(Entry);
    Entry.SetHabits({.mayStep = [this] { return Idle(); },
                     .stepped = [this] { TakeStep(); },
                     .entered = [this] { cmdDefault.setFocus(); },
                     .escaped = [this] { cmdDefault.setFocus(); }});
    txtSetup.setObjectName(QStringLiteral("txtSetup"));
    txtSetup.setAccessibleName(QStringLiteral("Sequence Number"));
    txtSetup.setFixedWidth(EntryWidth(EntryTwips, txtSetup, QStringLiteral("00")));
    updSetup.setObjectName(QStringLiteral("updSetup"));
    // A step moves the focus off the box; the next key still steps.
    cmdDefault.installEventFilter(&updSetup);
}

void frmCommInterface::BuildLabels() {
    for (std::size_t i = 0; i < lblSetting.size(); ++i) {
        QLabel& label = lblSetting.at(i);
        label.setObjectName(QStringLiteral("lblSetting%1").arg(i));
        label.setTextFormat(Qt::PlainText);
        label.setTextInteractionFlags(Qt::TextSelectableByMouse);
        label.setText(QStringLiteral("-"));
        label.setAccessibleDescription(QString::fromLatin1(SettingLabels.at(i)));
    }
    QLabel& description = lblSetting[1];
    description.setWordWrap(true);
    description.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    // However long it is, the window keeps its shape; the tool tip has it all.
    description.setFixedHeight(DescriptionLines * description.fontMetrics().lineSpacing());
    description.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    lblAdvice.setObjectName(QStringLiteral("lblAdvice"));
    lblAdvice.setAccessibleName(QStringLiteral("Cause and remedy"));
    lblAdvice.setTextFormat(Qt::PlainText);
    lblAdvice.setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblAdvice.setWordWrap(true);
    lblAdvice.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lblAdvice.setFixedHeight(AdviceLines * lblAdvice.fontMetrics().lineSpacing());
    lblAdvice.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void frmCommInterface::LayOutGrids() {
    LayOutSettings(fgSettings[0], "<Send|^Setting|^Set-up", {"# Words", "From TI", "To Node"});
    LayOutSettings(fgSettings[1], "<Receive|^Setting|^Set-up", {"# Words", "From Node", "To TI"});
    constexpr int dataColumn = (DataWidth - WordWidth) / 2 - WordColumnMargin;
    fgSettings[2].LayOut({.format = "^Word|^Send Data|^Receive Data",
                          .columnWidths = {WordWidth, dataColumn, dataColumn},
                          .rows = DataRows,
                          .rowsShown = DataRowsShown,
                          .leastRows = LeastDataRows,
                          .width = DataWidth,
                          .widestTexts = {std::to_string(DataWordCount), WidestWord, WidestWord}});
    for (int row = 1; row < DataRows; ++row)
        fgSettings[2].SetText(row, 0, QString::number(row));
    const std::array names{"Send settings", "Receive settings", "Data words"};
    for (std::size_t i = 0; i < fgSettings.size(); ++i) {
        fgSettings.at(i).setObjectName(QStringLiteral("fgSettings%1").arg(i));
        fgSettings.at(i).setAccessibleName(QString::fromLatin1(names.at(i)));
    }
}

void frmCommInterface::BuildNotation() {
    cboNotation.setObjectName(QStringLiteral("cboNotation"));
    for (const WordNotation notation : WordNotations)
        cboNotation.addItem(QString::fromStdString(std::string(WordNotationName(notation))));
    connect(&cboNotation, &QComboBox::activated, this, [this](int index) {
        SetNotation(WordNotations.at(static_cast<std::size_t>(index)));
        if (notationChosen_) notationChosen_(notation_);
    });
    cmdPlot.setObjectName(QStringLiteral("cmdPlot"));
    cmdPlot.setText(tr("&Plot..."));
    cmdPlot.setToolTip(tr("Shows the selected words, up to four, over time"));
    cmdPlot.setAutoDefault(false);
    connect(&cmdPlot, &QPushButton::clicked, this, [this] { Plot(); });
    tmrFade.setObjectName(QStringLiteral("tmrFade"));
    tmrFade.setInterval(FadeMilliseconds);
    tmrFade.callOnTimeout(this, [this] { FadeChanges(); });
}

void frmCommInterface::BuildButtons() {
    cmdDefault.setObjectName(QStringLiteral("cmdDefault"));
    cmdDefault.setAccessibleName(windowTitle());
    // Without a size it is seen by nobody and yet takes the focus, which a hidden button would not. As the default
    // button it makes Enter do nothing wherever it has no meaning of its own.
    cmdDefault.setParent(this);
    cmdDefault.setGeometry(0, 0, 0, 0);
    cmdDefault.setDefault(true);
}

void frmCommInterface::LayOutForm(QFormLayout& form) {
    auto* number = new QLabel(QStringLiteral("&Sequence Number:"), this);
    number->setBuddy(&txtSetup);
    form.addRow(number, &Entry);
    for (std::size_t i = 0; i < lblSetting.size(); ++i) {
        auto* name = new QLabel(QString::fromLatin1(SettingLabels.at(i)), this);
        name->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        if (i > 0) {
            form.addRow(name, &lblSetting.at(i));
            continue;
        }
        auto* node = new QHBoxLayout;
        node->addWidget(&lblSetting.at(i));
        node->addSpacing(PixelsOfTwips(NodeGap, *this));
        node->addWidget(&lblSetUpNode);
        node->addStretch();
        form.addRow(name, node);
    }
    lblSetUpNode.setObjectName(QStringLiteral("lblSetUpNode"));
    lblSetUpNode.setTextFormat(Qt::PlainText);
    form.addRow(&lblAdvice);
}

void frmCommInterface::LayOutWindow() {
    fraSettngs[0].setTitle(QStringLiteral("Comm Data"));
    fraSettngs[1].setTitle(QStringLiteral("Settings:"));
    for (std::size_t i = 0; i < fraSettngs.size(); ++i)
        fraSettngs.at(i).setObjectName(QStringLiteral("fraSettngs%1").arg(i));
    auto* words = new QVBoxLayout(&fraSettngs[0]);
    auto* shown = new QHBoxLayout;
    auto* format = new QLabel(tr("&Format:"), this);
    format->setBuddy(&cboNotation);
    shown->addWidget(format);
    shown->addWidget(&cboNotation);
    shown->addStretch();
    shown->addWidget(&cmdPlot);
    words->addLayout(shown);
    words->addWidget(&fgSettings[2]);
    auto* settings = new QVBoxLayout(&fraSettngs[1]);
    settings->addWidget(&fgSettings[0]);
    settings->addWidget(&fgSettings[1]);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(&lblNotRefreshed, 1);
    buttons->addWidget(&cmdGoOnline);
    buttons->addWidget(&cmdOk);
    auto* form = new QFormLayout;
    LayOutForm(*form);
    auto* sequence = new QVBoxLayout;
    sequence->addLayout(form);
    sequence->addWidget(&fraSettngs[1]);
    sequence->addStretch();
    auto* columns = new QHBoxLayout;
    columns->addLayout(sequence);
    columns->addWidget(&fraSettngs[0], 1);
    auto* all = new QVBoxLayout(this);
    all->addWidget(new QtScrolledContent(columns, this), 1);
    all->addLayout(buttons);
    setSizeGripEnabled(true);
}

void frmCommInterface::OrderTabs() {
    QWidget* before = &cmdDefault;
    for (QWidget* next : std::initializer_list<QWidget*>{&txtSetup, &fgSettings[0], &fgSettings[1], &cboNotation,
                                                         &cmdPlot, &fgSettings[2], &cmdGoOnline, &cmdOk}) {
        setTabOrder(before, next);
        before = next;
    }
    // Tab leads from it into the box; to it only the program leads.
    cmdDefault.setFocusPolicy(Qt::NoFocus);
}

void frmCommInterface::PlaceOnScreen() { CentreOnScreen(*this); }

} // namespace vantrel
