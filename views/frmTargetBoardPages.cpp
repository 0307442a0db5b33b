// The target board view's controls and what stands where on its four pages.
#include "views/frmTargetBoard.h"

#include "platform/QtScreen.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QTabBar>
#include <QVBoxLayout>
#include <QtMath>

#include <initializer_list>
#include <string_view>

namespace vantrel {

namespace {

constexpr int PagesTwips = 9600;
constexpr int SetupBoxTwips = 560;
constexpr int GapTwips = 240;

constexpr std::size_t AdviceBox = IndexOf(BoardCode::Advice);
constexpr std::size_t SlotBox = IndexOf(BoardCode::CoCpuSlot);

constexpr std::array<const char*, 4> PageCaptions{"&Fault Codes / Status", "&Program Ident/Revision",
                                                  "&Set Network Address", "S&et Time && Date"};
/// The access key of each set-up field; unique in the window, the captions above and the buttons included.
constexpr std::array<char, SetupFieldCount> FieldKeys{'w', 'C', 'H', 'i', 'n', 'M', 'a', 'Y'};
/// What stands above a box until the board has told its code.
constexpr std::array<const char*, BoardCodeCount> FaultCaptions{
    "Current Fault:", "Last Fault:", "CO-CPU Slot:", "", "Current Comm Error:", "Last Comm Error:"};

QString Numbered(const char* name, std::size_t index) {
    return QLatin1String(name) + QString::number(static_cast<int>(index));
}

QString FieldCaption(std::size_t field) {
    QString caption = QString::fromStdString(std::string(SetupFields[field].description));
    return caption.insert(caption.indexOf(QLatin1Char(FieldKeys[field])), u'&');
}

template <typename Control> Control* Named(Control* control, const QString& name) {
    control->setObjectName(name);
    return control;
}

QLabel* AddLabel(QWidget* parent, const QString& name, const QString& text = {}) {
    auto* label = Named(new QLabel(text, parent), name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

/// A label whose text is data: it can be selected and read aloud.
QLabel* AddValue(QWidget* parent, const QString& name, const QString& what) {
    QLabel* label = AddLabel(parent, name, QStringLiteral("-"));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // Not as its name, which would be read aloud in the place of the text.
    label->setAccessibleDescription(what);
    return label;
}

void MakeBold(QLabel* label) {
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
}

QtEntryField::Rules RulesOf(std::size_t field) {
    return {.value = [field](std::string_view entry) { return SetupEntry(field, entry); },
            .shown = [](std::string_view value) { return SetupBoxText(value); },
            .stepped = [field](std::string_view from, int direction) { return SteppedSetup(field, from, direction); }};
}

void ShowLines(QPlainTextEdit& box, int lines) {
    // The box holds the lower margin back once more, and a pixel, before it does without a scroll bar.
    const int border = 2 * box.frameWidth() + qRound(3 * box.document()->documentMargin()) + 1;
    // A fraction of a pixel of each line counts on a scaled screen.
    box.setFixedHeight(lines * qCeil(QFontMetricsF(box.font(), &box).lineSpacing()) + border);
}

} // namespace

void frmTargetBoard::BuildTabs() {
    tabTargetBoard = Named(new QTabWidget(this), QStringLiteral("tabTargetBoard"));
    tabTargetBoard->tabBar()->setAccessibleName(tr("Pages"));
    for (std::size_t i = 0; i < fraTargetBoard.size(); ++i) {
        fraTargetBoard[i] = Named(new QFrame, Numbered("fraTargetBoard", i));
        fraTargetBoard[i]->setFrameShape(QFrame::NoFrame);
        tabTargetBoard->addTab(fraTargetBoard[i], QLatin1String(PageCaptions[i]));
    }
    connect(tabTargetBoard, &QTabWidget::currentChanged, this, &frmTargetBoard::PageChanged);
}

void frmTargetBoard::BuildFaultPage() {
    QFrame* page = fraTargetBoard[0];
    for (std::size_t i = 0; i < txtTargetBoard.size(); ++i) {
        lblTargetBoard[i] = AddLabel(page, Numbered("lblTargetBoard", i), QLatin1String(FaultCaptions[i]));
        txtTargetBoard[i] = Named(new QPlainTextEdit(page), Numbered("txtTargetBoard", i));
        txtTargetBoard[i]->setReadOnly(true);
        txtTargetBoard[i]->setTabChangesFocus(true);
        txtTargetBoard[i]->setAccessibleName(lblTargetBoard[i]->text());
        ShowLines(*txtTargetBoard[i], i == AdviceBox ? AdviceLines : DescriptionLines);
    }
    txtTargetBoard[AdviceBox]->setAccessibleName(tr("Advice"));
    // The slot is a number only, the advice a text only.
    txtTargetBoard[SlotBox]->hide();
    lblTargetBoard[AdviceBox]->hide();
    cmdResetFaults = Named(new QPushButton(tr("&Reset Fault Codes"), page), QStringLiteral("cmdResetFaults"));
    connect(cmdResetFaults, &QPushButton::clicked, this, &frmTargetBoard::ResetFaults);
    LayOutFaultPage();
}

void frmTargetBoard::LayOutFaultPage() {
    QFrame* page = fraTargetBoard[0];
    auto* codes = new QGridLayout;
    const auto add = [&](std::size_t i, int row, int column) {
        codes->addWidget(lblTargetBoard[i], row, column);
        codes->addWidget(txtTargetBoard[i], row + 1, column);
    };
    add(0, 0, 0);
    add(1, 0, 1);
    add(4, 2, 0);
    add(5, 2, 1);
    auto* foot = new QHBoxLayout;
    foot->addWidget(lblTargetBoard[SlotBox]);
    foot->addStretch();
    foot->addWidget(cmdResetFaults);
    auto* column = new QVBoxLayout(page);
    column->addLayout(codes);
    column->addWidget(new QLabel(tr("Advice for the last fault:"), page));
    column->addWidget(txtTargetBoard[AdviceBox]);
    column->addStretch();
    column->addLayout(foot);
}

void frmTargetBoard::BuildIdentPage() {
    QFrame* page = fraTargetBoard[1];
    auto* cells = new QGridLayout;
    cells->setHorizontalSpacing(PixelsOfTwips(3 * GapTwips, *this));
    cells->setVerticalSpacing(PixelsOfTwips(GapTwips, *this) / 2);
    const std::array<QString, 2> heads{tr("Target Board"), tr("Disk")};
    const std::array<QString, 3> rows{tr("Program Ident:"), tr("First Revision Number:"),
                                      tr("Second Revision Number:")};
    for (int side = 0; side < 2; ++side) {
        auto* head = new QLabel(heads[static_cast<std::size_t>(side)], page);
        MakeBold(head);
        cells->addWidget(head, 0, side + 1);
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const int row = static_cast<int>(i) + 1;
        lblRevIdentInPLC[i] = AddValue(page, Numbered("lblRevIdentInPLC", i), rows[i] + u' ' + heads[0]);
        QLabel*& disk = i == 0 ? lblRevIdentOnDisk : lblRevNumberOnDisk[i - 1];
        disk = AddValue(page, i == 0 ? QStringLiteral("lblRevIdentOnDisk") : Numbered("lblRevNumberOnDisk", i - 1),
                        rows[i] + u' ' + heads[1]);
        cells->addWidget(new QLabel(rows[i], page), row, 0);
        cells->addWidget(lblRevIdentInPLC[i], row, 1);
        cells->addWidget(disk, row, 2);
    }
    cells->setColumnStretch(3, 1);
    lblRevComparison = AddLabel(page, QStringLiteral("lblRevComparison"));
    lblRevComparison->setWordWrap(true);
    auto* column = new QVBoxLayout(page);
    column->addLayout(cells);
    column->addSpacing(PixelsOfTwips(GapTwips, *this));
    column->addWidget(lblRevComparison);
    column->addStretch();
}

void frmTargetBoard::BuildSetupField(std::size_t index, QWidget* page) {
    SetupControls& controls = Setup[index];
    controls.entry = new QtEntryField(RulesOf(index), page);
    Add(*controls.entry);
    controls.entry->SetHabits({.mayStep = [this] { return Idle(); },
                               // A step is taken when the box is left.
                               .stepped = [box = &controls.entry->box] { box->setFocus(); },
                               .entered = [this] { focusNextChild(); },
                               .escaped = [this] { tabTargetBoard->tabBar()->setFocus(); }});
    controls.txtSetup = Named(&controls.entry->box, Numbered("txtSetup", index));
    controls.updSetup = Named(&controls.entry->arrows, Numbered("updSetup", index));
    controls.txtSetup->setFixedWidth(EntryWidth(SetupBoxTwips, *controls.txtSetup, QStringLiteral("000")));
    controls.txtSetup->setAlignment(Qt::AlignRight);
    controls.txtSetup->setAccessibleName(QString::fromStdString(std::string(SetupFields[index].description)));
    controls.lblSetupDesc = AddLabel(page, Numbered("lblSetupDesc", index), FieldCaption(index));
    controls.lblSetupDesc->setBuddy(controls.txtSetup);
    controls.lblSetupMark = AddLabel(page, Numbered("lblSetupMark", index));
    MakeBold(controls.lblSetupMark);
}

void frmTargetBoard::BuildAddressPage() {
    QFrame* page = fraTargetBoard[2];
    auto* cells = new QGridLayout;
    cells->setHorizontalSpacing(PixelsOfTwips(GapTwips, *this));
    for (std::size_t i = 0; i < 2; ++i) {
        BuildSetupField(i, page);
        const int row = static_cast<int>(i);
        cells->addWidget(Setup[i].lblSetupDesc, row, 0);
        cells->addWidget(Setup[i].entry, row, 1);
        cells->addWidget(Setup[i].lblSetupMark, row, 2);
    }
    cells->setColumnStretch(3, 1);
    lblNetworkAddComment =
        AddLabel(page, QStringLiteral("lblNetworkAddComment"), QString::fromStdString(NetworkAddressComment()));
    lblNetworkAddComment->setWordWrap(true);
    auto* column = new QVBoxLayout(page);
    column->addLayout(cells);
    column->addSpacing(PixelsOfTwips(GapTwips, *this));
    column->addWidget(lblNetworkAddComment);
    column->addStretch();
}

void frmTargetBoard::BuildClockPage() {
    QFrame* page = fraTargetBoard[3];
    lblCurrTime = AddValue(page, QStringLiteral("lblCurrTime"), tr("Computer Time"));
    lblCurrDate = AddValue(page, QStringLiteral("lblCurrDate"), tr("Computer Date"));
    lblTargetBoardTime = AddLabel(page, QStringLiteral("lblTargetBoardTime"), tr("Target Board:"));
    lblTargetBoardDate = AddLabel(page, QStringLiteral("lblTargetBoardDate"), tr("Target Board:"));
    cmdSetToCurrTime = Named(new QPushButton(tr("Set to Current &Time"), page), QStringLiteral("cmdSetToCurrTime"));
    cmdSetToCurrDate = Named(new QPushButton(tr("Set to Current &Date"), page), QStringLiteral("cmdSetToCurrDate"));
    connect(cmdSetToCurrTime, &QPushButton::clicked, this,
            [this] { SetClock(Command::Time, &BoardMonitor::SetToCurrTime); });
    connect(cmdSetToCurrDate, &QPushButton::clicked, this,
            [this] { SetClock(Command::Date, &BoardMonitor::SetToCurrDate); });

    QWidget* time = ClockFrame(tr("Time"), {lblCurrTime, lblTargetBoardTime, cmdSetToCurrTime}, 2);
    QWidget* date = ClockFrame(tr("Date"), {lblCurrDate, lblTargetBoardDate, cmdSetToCurrDate}, 5);
    int widest = 0;
    for (std::size_t i = FirstClockField; i < SetupFieldCount; ++i)
        widest = qMax(widest, Setup[i].lblSetupDesc->sizeHint().width());
    for (std::size_t i = FirstClockField; i < SetupFieldCount; ++i)
        Setup[i].lblSetupDesc->setMinimumWidth(widest);
    auto* column = new QVBoxLayout(page);
    column->addWidget(time);
    column->addWidget(date);
    lblClockOff = AddLabel(page, QStringLiteral("lblClockOff"));
    lblClockOff->setWordWrap(true);
    lblClockOff->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column->addWidget(lblClockOff);
    column->addStretch();
}

QWidget* frmTargetBoard::ClockFrame(const QString& title, const ClockControls& controls, std::size_t firstField) {
    auto* frame = new QGroupBox(title, fraTargetBoard[3]);
    auto* cells = new QGridLayout(frame);
    cells->setHorizontalSpacing(PixelsOfTwips(GapTwips, *this));
    cells->addWidget(new QLabel(tr("Computer:"), frame), 0, 0);
    cells->addWidget(controls.computer, 0, 1, 1, 6);
    cells->addWidget(controls.board, 1, 0);
    for (std::size_t i = 0; i < 3; ++i) {
        BuildSetupField(firstField + i, frame);
        const SetupControls& field = Setup[firstField + i];
        const int column = static_cast<int>(i) + 1;
        auto* pair = new QHBoxLayout;
        pair->setSpacing(PixelsOfTwips(GapTwips, *this) / 3);
        field.lblSetupDesc->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        pair->addWidget(field.lblSetupDesc);
        pair->addWidget(field.entry);
        cells->addLayout(pair, 1, column);
        cells->addWidget(field.lblSetupMark, 2, column, Qt::AlignRight);
    }
    cells->addWidget(controls.button, 1, 5);
    cells->setColumnStretch(4, 1);
    return frame;
}

void frmTargetBoard::BuildButtons() {
    for (QPushButton* button : {cmdResetFaults, cmdSetToCurrTime, cmdSetToCurrDate, &cmdGoOnline, &cmdOk}) {
        button->setAutoDefault(false);
        // A click decides with the focus still in the box: each command checks the open entry for itself.
        button->setFocusPolicy(Qt::TabFocus);
    }
    cmdOk.setDefault(true);
}

void frmTargetBoard::OrderTabs() {
    QWidget* before = tabTargetBoard->tabBar();
    for (QWidget* next : std::initializer_list<QWidget*>{
             txtTargetBoard[0], txtTargetBoard[1], txtTargetBoard[4], txtTargetBoard[5], txtTargetBoard[AdviceBox],
             cmdResetFaults, Setup[0].txtSetup, Setup[1].txtSetup, Setup[2].txtSetup, Setup[3].txtSetup,
             Setup[4].txtSetup, cmdSetToCurrTime, Setup[5].txtSetup, Setup[6].txtSetup, Setup[7].txtSetup,
             cmdSetToCurrDate, &cmdGoOnline, &cmdOk}) {
        setTabOrder(before, next);
        before = next;
    }
}

void frmTargetBoard::LayOut() {
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(&cmdGoOnline);
    buttons->addWidget(&lblNotRefreshed, 1);
    buttons->addWidget(&cmdOk);
    auto* all = new QVBoxLayout(this);
    all->addWidget(tabTargetBoard);
    all->addLayout(buttons);
    setMinimumWidth(qMax(PixelsOfTwips(PagesTwips, *this), minimumSizeHint().width()));
}

} // namespace vantrel
