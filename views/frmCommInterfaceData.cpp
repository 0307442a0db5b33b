// The communication interface view's data words in their notation, and what the open document says of the settings.
#include "platform/QtText.h"
#include "views/frmCommInterface.h"

#include "platform/QtScreen.h"
#include "text/NumberText.h"
#include "views/frmPlot.h"

#include <QItemSelectionModel>

#include <algorithm>
#include <cstddef>

namespace vantrel {

namespace {

constexpr QColor DiffersColor(176, 0, 0);
constexpr QColor DiffersColorOnDark(255, 138, 128);
/// Of the ground of a changed word, between the theme's own and that of a selection.
constexpr float ChangedShade = 0.25F;

bool IsDark(const QPalette& palette) { return palette.color(QPalette::Base).lightness() < 128; }

QColor Between(const QColor& from, const QColor& to, float share) {
    const auto mixed = [share](float one, float other) { return one + share * (other - one); };
    return QColor::fromRgbF(mixed(from.redF(), to.redF()), mixed(from.greenF(), to.greenF()),
                            mixed(from.blueF(), to.blueF()));
}

constexpr int SetUpColumn = 2;
constexpr std::size_t RowsOfGrid = 3;

/// Where a field other than the node number stands in the two settings grids.
struct SettingCell {
    std::size_t grid;
    int row;
};
SettingCell CellOf(std::size_t field) {
    return {(field - 1) / RowsOfGrid, static_cast<int>((field - 1) % RowsOfGrid) + 1};
}

} // namespace

void frmCommInterface::ShowSetUp(SequenceField field, const std::string& text, bool differs) {
    // A sign as well as a colour, for eyes that see none, and for what is copied.
    const QString shown = (differs ? QStringLiteral("\u2260 ") : QString()) + Text(text);
    const auto place = static_cast<std::size_t>(field);
    differs_.at(place) = differs;
    if (field == SequenceField::NodeNumber) {
        lblSetUpNode.setText(tr("Set-up: %1").arg(shown));
    } else {
        const SettingCell cell = CellOf(place);
        fgSettings.at(cell.grid).SetText(cell.row, SetUpColumn, shown);
    }
    ColourSetUp();
}

void frmCommInterface::ColourSetUp() {
    const QColor marked = IsDark(palette()) ? DiffersColorOnDark : DiffersColor;
    const auto colour = [&](std::size_t field) { return differs_.at(field) && OnlineLookShown ? marked : QColor(); };
    for (std::size_t field = 1; field < FieldCount; ++field) {
        const SettingCell cell = CellOf(field);
        fgSettings.at(cell.grid).SetTextColor(cell.row, SetUpColumn, colour(field));
    }
    QPalette node;
    if (const QColor color = colour(0); color.isValid()) node.setColor(QPalette::WindowText, color);
    lblSetUpNode.setPalette(node);
}

void frmCommInterface::ShowDataWord(int row, DataDirection column, const std::string& text) {
    const auto number = WholeNumber(text);
    const WordPlace place{row, column};
    const auto word = number ? std::optional(static_cast<std::uint16_t>(*number)) : std::nullopt;
    words_.Take(place, word, clock_.Now());
    recorder_.Take({SelectedSequence, place}, word, clock_.Now());
    ShowWord(place);
}

void frmCommInterface::ClearData() {
    words_.Clear();
    ShowWords();
}

void frmCommInterface::SetNotation(WordNotation notation) {
    notation_ = notation;
    cboNotation.setCurrentIndex(static_cast<int>(notation));
    ShowWords();
}

void frmCommInterface::ShowWord(WordPlace place) {
    QtFormatGrid& grid = fgSettings[2];
    const int column = static_cast<int>(place.column);
    grid.SetText(place.row, column, Text(words_.Text(place, notation_)));
    const bool grey = OnlineLookShown && words_.IsBeyond(place);
    grid.SetTextColor(place.row, column, grey ? palette().color(QPalette::Disabled, QPalette::Text) : QColor());
    const bool marked = OnlineLookShown && words_.HasChanged(place);
    grid.SetGround(place.row, column,
                   marked ? Between(palette().color(QPalette::Base), palette().color(QPalette::Highlight), ChangedShade)
                          : QColor());
}

void frmCommInterface::ShowWords() {
    for (int row = 1; row <= DataWordCount; ++row) {
        for (const DataDirection column : {DataDirection::Send, DataDirection::Receive})
            ShowWord({row, column});
    }
}

void frmCommInterface::FadeChanges() {
    for (const WordPlace& place : words_.Fade(clock_.Now()))
        ShowWord(place);
}

std::vector<WordPlace> frmCommInterface::FollowedWords() const {
    std::vector<WordPlace> words;
    for (std::size_t slot = 0; slot < WordRecorder::MostWords && plot_ && plot_->isVisible(); ++slot) {
        const auto& word = recorder_.Followed(slot);
        if (word && word->sequence == SelectedSequence) words.push_back(word->place);
    }
    return words;
}

std::vector<WordPlace> frmCommInterface::SelectedWords() const {
    QModelIndexList cells = fgSettings[2].selectionModel()->selectedIndexes();
    std::sort(cells.begin(), cells.end());
    std::vector<WordPlace> words;
    for (const QModelIndex& cell : cells) {
        if (words.size() < WordRecorder::MostWords)
            words.push_back({cell.row() + 1, static_cast<DataDirection>(cell.column() + 1)});
    }
    return words;
}

void frmCommInterface::Plot() {
    const bool first = !plot_;
    if (first) plot_ = new frmPlot(recorder_, document_, SelectedSequence, notation_, clock_, fileDialogs_, this);
    std::vector<WordPlace> words = SelectedWords();
    constexpr WordPlace sent{1, DataDirection::Send};
    constexpr WordPlace received{1, DataDirection::Receive};
    if (words.empty() && recorder_.IsEmpty()) words = {words_.IsBeyond(sent) ? received : sent};
    if (!words.empty()) plot_->Follow(words);
    if (first) PlaceBeside(*plot_, *this);
    plot_->show();
    plot_->raise();
    plot_->activateWindow();
}

} // namespace vantrel
