// The communication interface view: one sequence's settings, status and data words as the board holds them, refreshed
// for as long as the window is open and the program ONLINE. Borrows document, link and turns.
#pragma once

#include "document/Document.h"
#include "link/RSComm.h"
#include "platform/Signal.h"
#include "views/SequenceMonitor.h"
#include "widgets/QtFormatGrid.h"
#include "widgets/QtUpDown.h"

#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <array>
#include <cstdint>
#include <functional>

class QFormLayout;

namespace vantrel {

class frmCommInterface final : public QDialog, private SequenceDisplay {
public:
    /// `selectedSequence`: the program's; the view begins on it and leaves its own choice there. `applyMode`: the
    /// program's ONLINE/OFFLINE switch, which acts on the link's `OnlineMode`; it may show boxes and must end in
    /// ModeChanged(). Everything handed in must outlive the window.
    frmCommInterface(Document& document, RSComm& link, TurnQueue& turns, Dialogs& dialogs,
                     std::int16_t& selectedSequence, std::function<void()> applyMode, QWidget* parent = nullptr);

    ~frmCommInterface() override;

    /// Shows the window modally and returns when it is closed.
    void InitializeForm();
    /// Call whenever a mode has been applied: OFFLINE the view sleeps until then.
    void ModeChanged() { modeChanged_.Raise(); }

    /// Every way to close comes through here. While the link is busy or a box is up the view stops at once, but goes
    /// only afterwards.
    void done(int result) override;

    // Controls, by their names.
    std::array<QGroupBox, 2> fraSettngs; ///< The data; the settings.
    std::array<QtFormatGrid, 3> fgSettings; ///< Send settings, receive settings, data words.
    QLineEdit txtSetup;
    QtUpDown updSetup{txtSetup, [this](int direction) { Step(direction); }, nullptr};
    std::array<QLabel, 3> lblSetting; ///< Node number, description, status.
    QPushButton cmdGoOnline;
    QPushButton cmdOk;
    QPushButton cmdDefault; ///< Has the focus while no number is entered; the user does not see it.

    // State.
    bool ViewActive = false;
    std::int16_t SettingsBase = 0;
    bool OnlineLookShown = false;
    bool OfflineLookShown = false;
    bool Editing = false; ///< The number in the box is the user's and not taken yet.
    bool EscapePending = false; ///< The next Escape leaves the box.
    std::int16_t SavedEntry = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // Building (frmCommInterfaceLayout.cpp)
    void BuildEntry();
    void BuildLabels();
    void LayOutGrids();
    void BuildButtons();
    void LayOutWindow();
    void LayOutForm(QFormLayout& form);
    void OrderTabs();
    void PlaceOnScreen();

    // The looks
    void ShowOnlineLook();
    void ShowOfflineLook();
    void ColourGrids();

    // Refreshing
    [[nodiscard]] Task MonitorLoop();
    void StartSettings();
    [[nodiscard]] bool Idle() const;
    [[nodiscard]] Task CloseWhenIdle(int result);

    // The sequence number
    void BeginEntry();
    bool EntryKey(int key);
    void Escape();
    void FocusMoved(const QWidget* from, const QWidget* to);
    [[nodiscard]] Task CheckWhenIdle();
    /// Takes the number in the box, or refuses it in a box of its own.
    bool CheckEntry();
    void TakeSequence(std::int16_t sequence);
    void ClearData();
    void Step(int direction);
    void GoOnline();
    void Ok();

    [[nodiscard]] bool Active() const override { return ViewActive; }
    [[nodiscard]] bool RowVisible(int row) const override;
    void ShowDescription(const std::string& text) override;
    void ShowNodeNumber(const std::string& text) override;
    void ShowSetting(SettingsGrid grid, int row, const std::string& text) override;
    void ShowStatus(const std::string& text) override;
    void ShowDataWord(int row, DataDirection column, const std::string& text) override;

    RSComm& link_;
    TurnQueue& turns_;
    Dialogs& dialogs_;
    std::int16_t& SelectedSequence;
    std::function<void()> applyMode_;
    SequenceMonitor passes_;
    Signal modeChanged_;
    Task monitor_;
    Task settingsPass_;
    Task check_; ///< Of the number that the focus has left.
    Task closing_;
};

} // namespace vantrel
