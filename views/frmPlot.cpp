#include "views/frmPlot.h"

#include "document/DocumentFiles.h"
#include "document/FileQuestions.h"
#include "link/TargetMap.h"
#include "platform/QtText.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"

#include <QBuffer>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <chrono>
#include <string>
#include <vector>

namespace vantrel {

namespace {

using namespace std::chrono_literals;

constexpr int DrawMilliseconds = 200;

struct Span {
    const char* name;
    std::chrono::seconds time;
};
constexpr std::array Spans{Span{"30 seconds", 30s}, Span{"1 minute", 60s},    Span{"2 minutes", 120s},
                           Span{"5 minutes", 300s}, Span{"10 minutes", 600s}, Span{"30 minutes", 1800s},
                           Span{"1 hour", 3600s},   Span{"8 hours", 28800s}};
constexpr int UsualSpan = 1;

constexpr int NoWord = 0;

double Seconds(MonotonicTime time) { return std::chrono::duration<double>(time).count(); }

MessageBox NotSaved(const std::string& text) {
    return {.title = "Plot", .text = text, .icon = MessageIcon::Exclamation, .buttons = MessageButtons::Ok};
}

} // namespace

frmPlot::frmPlot(WordRecorder& recorder, const Document& document, const std::int16_t& sequence,
                 const WordNotation& notation, const Clock& clock, DocumentDialogs& dialogs, QWidget* parent)
    : QDialog(parent), recorder_(recorder), document_(document), sequence_(sequence), notation_(notation),
      clock_(clock), dialogs_(dialogs), shownUntil_(clock.Now()) {
    setObjectName(QStringLiteral("frmPlot"));
    setWindowTitle(tr("Plot of Data Words"));
    setSizeGripEnabled(true);
    chart.setAccessibleName(tr("Data words over time"));
    chart.SetEmptyText(tr("Nothing has been read yet of the words chosen below."));
    auto* words = new QHBoxLayout;
    BuildWords(*words);
    auto* buttons = new QHBoxLayout;
    BuildButtons(*buttons);
    lblNote.setObjectName(QStringLiteral("lblNote"));
    lblNote.setTextFormat(Qt::PlainText);
    auto* all = new QVBoxLayout(this);
    all->addWidget(&chart, 1);
    all->addLayout(words);
    all->addWidget(&lblNote);
    all->addLayout(buttons);
    tmrDraw.setObjectName(QStringLiteral("tmrDraw"));
    tmrDraw.setInterval(DrawMilliseconds);
    tmrDraw.callOnTimeout(this, [this] { DrawIfDue(); });
}

void frmPlot::BuildWords(QBoxLayout& row) {
    for (std::size_t slot = 0; slot < WordRecorder::MostWords; ++slot) {
        QComboBox& column = cboColumn.at(slot);
        column.setObjectName(QStringLiteral("cboColumn%1").arg(slot));
        column.setAccessibleName(tr("Line %1").arg(slot + 1));
        column.addItems({tr("None"), tr("Send"), tr("Receive")});
        QSpinBox& word = spnRow.at(slot);
        word.setObjectName(QStringLiteral("spnRow%1").arg(slot));
        word.setAccessibleName(tr("Word of line %1").arg(slot + 1));
        word.setRange(1, DataWordCount);
        // Not a new line for every digit that is typed.
        word.setKeyboardTracking(false);
        auto* number = new QLabel(tr("Line &%1:").arg(slot + 1), this);
        number->setBuddy(&column);
        row.addWidget(number);
        row.addWidget(&column);
        row.addWidget(&word);
        row.addStretch();
        connect(&column, &QComboBox::activated, this, [this, slot] { WordChosen(slot); });
        connect(&word, &QSpinBox::valueChanged, this, [this, slot] { WordChosen(slot); });
        ShowSlot(slot);
    }
}

void frmPlot::BuildButtons(QBoxLayout& row) {
    cboSpan.setObjectName(QStringLiteral("cboSpan"));
    for (const Span& span : Spans)
        cboSpan.addItem(tr(span.name));
    cboSpan.setCurrentIndex(UsualSpan);
    connect(&cboSpan, &QComboBox::activated, this, [this] { Draw(); });
    auto* span = new QLabel(tr("S&how:"), this);
    span->setBuddy(&cboSpan);
    row.addWidget(span);
    row.addWidget(&cboSpan);
    row.addStretch();
    const auto add = [&](QPushButton& button, const char* name, const QString& caption) {
        button.setObjectName(QLatin1String(name));
        button.setText(caption);
        button.setAutoDefault(false);
        row.addWidget(&button);
    };
    add(cmdPause, "cmdPause", tr("&Pause"));
    add(cmdClear, "cmdClear", tr("Cl&ear"));
    add(cmdSavePicture, "cmdSavePicture", tr("Save P&icture..."));
    add(cmdSaveTable, "cmdSaveTable", tr("Save &Table..."));
    add(cmdClose, "cmdClose", tr("&Close"));
    cmdPause.setCheckable(true);
    cmdPause.setToolTip(tr("The picture stands still; the words are recorded all the same"));
    connect(&cmdPause, &QPushButton::toggled, this, [this] { Draw(); });
    connect(&cmdClear, &QPushButton::clicked, this, [this] {
        recorder_.Clear();
        Draw();
    });
    connect(&cmdSavePicture, &QPushButton::clicked, this, [this] { SavePicture(); });
    connect(&cmdSaveTable, &QPushButton::clicked, this, [this] { SaveTable(); });
    connect(&cmdClose, &QPushButton::clicked, this, &QDialog::close);
}

void frmPlot::Follow(std::span<const WordPlace> places) {
    for (std::size_t slot = 0; slot < WordRecorder::MostWords; ++slot) {
        if (slot < places.size()) {
            recorder_.Follow(slot, RecordedWord{sequence_, places[slot]});
        } else {
            recorder_.Follow(slot, std::nullopt);
        }
        ShowSlot(slot);
    }
    Draw();
}

void frmPlot::ShowSlot(std::size_t slot) {
    const auto& word = recorder_.Followed(slot);
    const QSignalBlocker quiet(spnRow.at(slot));
    cboColumn.at(slot).setCurrentIndex(word ? static_cast<int>(word->place.column) : NoWord);
    if (word) spnRow.at(slot).setValue(word->place.row);
    spnRow.at(slot).setEnabled(word.has_value());
}

void frmPlot::WordChosen(std::size_t slot) {
    const int column = cboColumn.at(slot).currentIndex();
    std::optional<RecordedWord> word;
    if (column != NoWord) word = {sequence_, {spnRow.at(slot).value(), static_cast<DataDirection>(column)}};
    recorder_.Follow(slot, word);
    ShowSlot(slot);
    Draw();
}

std::vector<StripCurve> frmPlot::Curves() const {
    const MonotonicTime since = shownUntil_ - Shown();
    std::vector<StripCurve> curves;
    for (std::size_t slot = 0; slot < WordRecorder::MostWords; ++slot) {
        StripCurve curve;
        if (const auto& word = recorder_.Followed(slot)) curve.name = Text(RecordedWordName(*word));
        for (const WordRecorder::Point& point : recorder_.Points(slot, notation_, since)) {
            if (point.seconds <= Seconds(shownUntil_ - recorder_.Begun()))
                curve.points.push_back({point.seconds, point.value, point.joined});
        }
        curves.push_back(std::move(curve));
    }
    return curves;
}

MonotonicTime frmPlot::Shown() const { return Spans.at(static_cast<std::size_t>(cboSpan.currentIndex())).time; }

void frmPlot::DrawIfDue() {
    // A long time with all its readings moves by less than a pixel meanwhile.
    constexpr int pixels = 2000;
    if (clock_.Now() - shownUntil_ >= Shown() / pixels) Draw();
}

void frmPlot::Draw() {
    if (!cmdPause.isChecked()) shownUntil_ = clock_.Now();
    const double until = Seconds(shownUntil_ - recorder_.Begun());
    chart.SetTimes(until - Seconds(Shown()), until);
    chart.SetOrigin(Seconds(recorder_.BegunLocal() - std::chrono::floor<std::chrono::days>(recorder_.BegunLocal())));
    chart.SetTitles(tr("Time of the computer (h:min:s)"), notation_ == WordNotation::Signed
                                                              ? tr("Value (signed, -32768 to 32767)")
                                                              : tr("Value (decimal, 0 to 65535)"));
    chart.SetCurves(Curves());
    bool others = false;
    for (std::size_t slot = 0; slot < WordRecorder::MostWords; ++slot) {
        const auto& word = recorder_.Followed(slot);
        others = others || (word && word->sequence != sequence_);
    }
    const QString note = others ? tr("Sequence %1 is being read; the words of another one stand still.").arg(sequence_)
                         : cmdPause.isChecked() ? tr("The picture stands still; recording goes on.")
                                                : QString();
    if (lblNote.text() != note) lblNote.setText(note);
    const bool any = !recorder_.IsEmpty();
    for (QPushButton* button : {&cmdClear, &cmdSavePicture, &cmdSaveTable})
        button->setEnabled(any);
}

void frmPlot::SavePicture() {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !chart.Picture().save(&buffer, "PNG")) {
        dialogs_.Show(NotSaved("The picture could not be made."));
        return;
    }
    Save("Picture(*.png)", "Save Picture As", ".png",
         {reinterpret_cast<const std::uint8_t*>(bytes.constData()), static_cast<std::size_t>(bytes.size())});
}

void frmPlot::SaveTable() {
    const std::string table = recorder_.Csv(notation_);
    Save("Table(*.csv)", "Save Table As", ".csv", {reinterpret_cast<const std::uint8_t*>(table.data()), table.size()});
}

void frmPlot::Save(const std::string& kind, const std::string& title, const std::string& extension,
                   std::span<const std::uint8_t> bytes) {
    const auto choice = dialogs_.SaveFile({.filters = {{.name = kind, .pattern = "*" + extension}},
                                           .initial = NameAbout(document_, "data words" + extension),
                                           .title = title});
    // The view beside it comes up as the dialog's owner.
    raise();
    activateWindow();
    if (!choice) return;
    std::filesystem::path file = choice->path;
    if (!HasExtension(file, extension)) file += extension;
    if (file != choice->path && !MayReplace(file, dialogs_)) return;
    try {
        ReplaceFile(file, bytes, OldTail::Drop, [this](const std::string& text) { dialogs_.Show(NotSaved(text)); });
    } catch (const RuntimeError& error) {
        dialogs_.Show(NotSaved(QuotedPath(file) + ": " + error.Description()));
    }
}

void frmPlot::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    Draw();
    tmrDraw.start();
}

void frmPlot::hideEvent(QHideEvent* event) {
    tmrDraw.stop();
    QDialog::hideEvent(event);
}

} // namespace vantrel
