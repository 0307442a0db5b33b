// The plot beside the communication interface view: up to four data words over time, to look at and to save. Reads
// nothing: the view's passes fill the record that it shows.
#pragma once

#include "document/Document.h"
#include "platform/Clock.h"
#include "platform/DocumentDialogs.h"
#include "views/WordRecorder.h"
#include "widgets/QtStripChart.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

class QBoxLayout;

namespace vantrel {

class frmPlot final : public QDialog {
public:
    /// `sequence`: the one that is being read; a word chosen here is one of it. `document`: gives files their names.
    /// Everything handed in must outlive the window.
    frmPlot(WordRecorder& recorder, const Document& document, const std::int16_t& sequence,
            const WordNotation& notation, const Clock& clock, DocumentDialogs& dialogs, QWidget* parent);

    /// Follows these words of the sequence, in the place of what was followed before.
    void Follow(std::span<const WordPlace> places);

    // Controls, by their names.
    QtStripChart chart;
    std::array<QComboBox, WordRecorder::MostWords> cboColumn; ///< None, Send, Receive.
    std::array<QSpinBox, WordRecorder::MostWords> spnRow;
    QComboBox cboSpan;
    QPushButton cmdPause; ///< Down: the picture stands still; the record goes on.
    QPushButton cmdClear;
    QPushButton cmdSavePicture;
    QPushButton cmdSaveTable;
    QPushButton cmdClose;
    QLabel lblNote;
    QTimer tmrDraw;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void BuildWords(QBoxLayout& row);
    void BuildButtons(QBoxLayout& row);
    void ShowSlot(std::size_t slot);
    void WordChosen(std::size_t slot);
    void DrawIfDue();
    void Draw();
    /// How much time the picture shows.
    [[nodiscard]] MonotonicTime Shown() const;
    [[nodiscard]] std::vector<StripCurve> Curves() const;
    void SavePicture();
    void SaveTable();
    /// `kind`: as shown, with its pattern, "Table(*.csv)".
    void Save(const std::string& kind, const std::string& title, const std::string& extension,
              std::span<const std::uint8_t> bytes);

    WordRecorder& recorder_;
    const Document& document_;
    const std::int16_t& sequence_;
    const WordNotation& notation_;
    const Clock& clock_;
    DocumentDialogs& dialogs_;
    MonotonicTime shownUntil_; ///< The right end of the picture.
};

} // namespace vantrel
