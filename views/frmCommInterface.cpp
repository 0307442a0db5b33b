// The two looks, and the entry of the sequence number.
#include "views/frmCommInterface.h"

#include "link/StatusAdvice.h"
#include "link/TargetMap.h"
#include "platform/QtText.h"
#include "text/NumberText.h"

#include <QEvent>

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

constexpr QColor OnlineColor(0, 0, 255);
/// The same blue where the ground is dark.
constexpr QColor OnlineColorOnDark(122, 170, 255);

MessageBox SequenceRefusal() {
    return {.title = "Sequence Number",
            .text = "Only a Number Between 0 and " + std::to_string(HighestSequence) + " can be Entered",
            .icon = MessageIcon::Information,
            .buttons = MessageButtons::Ok};
}

} // namespace

frmCommInterface::frmCommInterface(Document& document, RSComm& link, TurnQueue& turns, DocumentDialogs& dialogs,
                                   const Clock& clock, std::int16_t& selectedSequence, std::function<void()> applyMode,
                                   QWidget* parent)
    : frmLiveView(link, turns, dialogs, clock, std::move(applyMode), parent), Entry(EntryRules()), document_(document),
      SelectedSequence(selectedSequence), passes_(document.CurrentConfiguration, link, turns, selectedSequence, *this),
      recorder_(clock.Now(), clock.LocalNow()), fileDialogs_(dialogs) {
    setObjectName(QStringLiteral("frmCommInterface"));
    setWindowTitle(QStringLiteral("Communication Interface"));
    SelectedSequence = std::clamp<std::int16_t>(SelectedSequence, 0, HighestSequence);
    SettingsBase = SettingsBaseOf(SelectedSequence);
    BuildEntry();
    BuildLabels();
    LayOutGrids();
    BuildNotation();
    BuildButtons();
    LayOutWindow();
    OrderTabs();
    Entry.Give(std::to_string(SelectedSequence));
}

void frmCommInterface::InitializeForm() {
    PlaceOnScreen();
    tmrFade.start();
    RunModal();
    tmrFade.stop();
    settingsPass_.Stop();
}

Task frmCommInterface::Refresh() {
    if (passes_.Outdated()) StartSettings();
    co_await passes_.RefreshStatusAndData();
}

void frmCommInterface::ShowOnlineLook() {
    ColourGrids();
    Entry.setEnabled(true);
    // Whoever pressed the button goes on with the number.
    if (!focusWidget() || focusWidget() == &cmdGoOnline) txtSetup.setFocus();
    cmdGoOnline.hide();
    ShowStatus("-");
    StartSettings();
}

void frmCommInterface::ShowOfflineLook() {
    ColourGrids();
    // An open entry is not taken: the number stays that of the sequence that the grids show.
    DropEntries();
    // The description needs no board.
    StartSettings();
    cmdGoOnline.show();
    const QWidget* focus = focusWidget();
    if (!focus || focus == &txtSetup || focus == &cmdDefault) cmdGoOnline.setFocus();
    Entry.setEnabled(false);
    ShowStatus("Offline");
}

void frmCommInterface::ColourGrids() {
    const bool dark = palette().color(QPalette::Base).lightness() < 128;
    const QColor online = dark ? OnlineColorOnDark : OnlineColor;
    const QColor grey = palette().color(QPalette::Disabled, QPalette::Text);
    for (QtFormatGrid& grid : fgSettings)
        grid.SetLook(OnlineLookShown ? online : grey, !OnlineLookShown);
    ColourSetUp();
    ShowWords();
}

void frmCommInterface::changeEvent(QEvent* event) {
    frmLiveView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && (OnlineLookShown || OfflineLookShown)) ColourGrids();
}

void frmCommInterface::StartSettings() {
    settingsPass_ = passes_.RefreshSettings(SettingsBase);
    settingsPass_.Start();
}

TaskOf<bool> frmCommInterface::Take(QtEntryField& field) {
    const auto entry = field.Entry();
    if (!entry) {
        dialogs_.Show(SequenceRefusal());
        field.Refuse();
        co_return false;
    }
    field.Send();
    TakeSequence(static_cast<std::int16_t>(std::stoi(*entry)));
    field.Shut();
    co_return true;
}

void frmCommInterface::TakeStep() {
    // The number is taken here and now.
    cmdDefault.setFocus();
    const std::int16_t stepped = static_cast<std::int16_t>(std::stoi(*Entry.Entry()));
    Entry.Send();
    if (stepped != SelectedSequence) TakeSequence(stepped);
    Entry.Shut();
}

void frmCommInterface::TakeSequence(std::int16_t sequence) {
    SelectedSequence = sequence;
    SettingsBase = SettingsBaseOf(sequence);
    Entry.Give(std::to_string(sequence));
    StartSettings();
}

bool frmCommInterface::RowVisible(int row) const { return fgSettings[2].VisibleRows().Contains(row); }

void frmCommInterface::ShowDescription(const std::string& text) {
    lblSetting[1].setText(Text(text));
    lblSetting[1].setToolTip(Text(text));
}

void frmCommInterface::ShowNodeNumber(const std::string& text) { lblSetting[0].setText(Text(text)); }

void frmCommInterface::ShowSetting(SettingsGrid grid, int row, const std::string& text) {
    fgSettings.at(static_cast<std::size_t>(grid)).SetText(row, 1, Text(text));
    if (row != 1) return;
    words_.SetCount(grid == SettingsGrid::Send ? DataDirection::Send : DataDirection::Receive, WholeNumber(text));
    ShowWords();
}

void frmCommInterface::ShowStatus(const std::string& text) {
    lblSetting[2].setText(Text(text));
    const auto code = LeadingHexNumber(text);
    lblAdvice.setText(code ? Text(AdviceText(*code)) : QString());
    lblAdvice.setToolTip(lblAdvice.text());
}

} // namespace vantrel
