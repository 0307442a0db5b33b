// The communication interface view: one sequence's settings, status and data words as the board holds them, refreshed
// for as long as the window is open and the program ONLINE. Borrows document, link and turns.
#pragma once

#include "document/Document.h"
#include "platform/DocumentDialogs.h"
#include "views/DataWords.h"
#include "views/SequenceMonitor.h"
#include "views/WordRecorder.h"
#include "views/frmLiveView.h"
#include "widgets/QtEntryField.h"
#include "widgets/QtFormatGrid.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include <array>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

class QFormLayout;

namespace vantrel {

class frmPlot;

class frmCommInterface final : public frmLiveView, private SequenceDisplay {
public:
    /// `selectedSequence`: the program's; the view begins on it and leaves its own choice there. `applyMode`: see
    /// frmLiveView. Everything handed in must outlive the window.
    frmCommInterface(Document& document, RSComm& link, TurnQueue& turns, DocumentDialogs& dialogs, const Clock& clock,
                     std::int16_t& selectedSequence, std::function<void()> applyMode, QWidget* parent = nullptr);

    /// Shows the window modally and returns when it is closed.
    void InitializeForm();
    /// How the data words are written; decimal until it is set.
    void SetNotation(WordNotation notation);
    /// `chosen` is called whenever the user has chosen another one.
    void SetOnNotationChosen(std::function<void(WordNotation)> chosen) { notationChosen_ = std::move(chosen); }

    // Controls, by their names.
    std::array<QGroupBox, 2> fraSettngs; ///< The data; the settings.
    std::array<QtFormatGrid, 3> fgSettings; ///< Send settings, receive settings, data words.
    QtEntryField Entry;
    QLineEdit& txtSetup = Entry.box;
    QtUpDown& updSetup = Entry.arrows;
    std::array<QLabel, 3> lblSetting; ///< Node number, description, status.
    QLabel lblSetUpNode; ///< The node number of the open document.
    QComboBox cboNotation;
    QPushButton cmdPlot;
    QTimer tmrFade; ///< Takes the marks of changed words away.
    QLabel lblAdvice; ///< Why the status may be what it is, and what to look at.
    QPushButton cmdDefault; ///< Has the focus while no number is entered; the user does not see it.

    // State.
    std::int16_t SettingsBase = 0;

protected:
    void changeEvent(QEvent* event) override;

private:
    // Building (frmCommInterfaceLayout.cpp)
    [[nodiscard]] QtEntryField::Rules EntryRules() const;
    void BuildEntry();
    void BuildLabels();
    void LayOutGrids();
    void BuildButtons();
    void LayOutWindow();
    void LayOutForm(QFormLayout& form);
    void BuildNotation();
    void OrderTabs();
    void PlaceOnScreen();

    // Its life
    void ShowOnlineLook() override;
    void ShowOfflineLook() override;
    void ColourGrids();
    [[nodiscard]] Task Refresh() override;
    void StartSettings();

    // The sequence number
    [[nodiscard]] TaskOf<bool> Take(QtEntryField& field) override;
    void TakeStep();
    void TakeSequence(std::int16_t sequence);

    // What the passes show
    [[nodiscard]] bool Active() const override { return ViewActive; }
    [[nodiscard]] bool RowVisible(int row) const override;
    [[nodiscard]] std::vector<WordPlace> FollowedWords() const override;
    void ShowDescription(const std::string& text) override;
    void ShowNodeNumber(const std::string& text) override;
    void ShowSetting(SettingsGrid grid, int row, const std::string& text) override;
    void ShowStatus(const std::string& text) override;
    // (frmCommInterfaceData.cpp)
    void ShowSetUp(SequenceField field, const std::string& text, bool differs) override;
    void ShowDataWord(int row, DataDirection column, const std::string& text) override;
    void ClearData() override;

    // Data words and set-up (frmCommInterfaceData.cpp)
    void ColourSetUp();
    void ShowWord(WordPlace place);
    void ShowWords();
    void FadeChanges();
    /// The selected words over time, in a window beside this one; what was followed goes on when none is selected.
    void Plot();
    [[nodiscard]] std::vector<WordPlace> SelectedWords() const;

    const Document& document_;
    std::int16_t& SelectedSequence;
    SequenceMonitor passes_;
    DataWords words_;
    WordNotation notation_ = WordNotation::Decimal;
    std::function<void(WordNotation)> notationChosen_;
    WordRecorder recorder_;
    frmPlot* plot_ = nullptr; ///< Qt's child of this window, once it was asked for.
    DocumentDialogs& fileDialogs_;
    std::array<bool, FieldCount> differs_{}; ///< From the document.
    Task settingsPass_;
};

} // namespace vantrel
