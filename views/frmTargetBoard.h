// The target board interface view: faults, revision, set-up words and clock of the board, refreshed for as long as the
// window is open and the program ONLINE. Carries texts and clicks to BoardMonitor, which decides; borrows link and
// turns.
#pragma once

#include "platform/Signal.h"
#include "views/BoardMonitor.h"
#include "widgets/QtUpDown.h"

#include <QDialog>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>

#include <array>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>

namespace vantrel {

class frmTargetBoard final : public QDialog, private BoardDisplay {
public:
    /// `applyMode`: the program's ONLINE/OFFLINE switch, which acts on the link's `OnlineMode`; it may show boxes and
    /// must end in ModeChanged(). `alarms` are set by each first pass; when others change them, the pass
    /// is run again. Everything handed in must outlive the window.
    frmTargetBoard(const ProgramFolder& folder, RSComm& link, TurnQueue& turns, Dialogs& dialogs, Clock& clock,
                   AlarmFlags& alarms, std::function<void()> applyMode, QWidget* parent = nullptr);

    /// Takes board type and revision from the user program file, shows the window modally and returns when it is
    /// closed.
    void InitializeForm(const std::filesystem::path& programFile);
    /// Call whenever a mode has been applied.
    void ModeChanged();

    /// Every way to close comes through here. An entry that is refused keeps the window open. While the link is busy or
    /// a box is up the view stops at once, but goes only afterwards, and an open entry is dropped.
    void done(int result) override;

    // Controls, by their names.
    QTabWidget* tabTargetBoard = nullptr;
    std::array<QFrame*, 4> fraTargetBoard{};
    std::array<QLabel*, BoardCodeCount> lblTargetBoard{};
    std::array<QPlainTextEdit*, BoardCodeCount> txtTargetBoard{};
    QPushButton* cmdResetFaults = nullptr;
    std::array<QLabel*, 3> lblRevIdentInPLC{}; ///< Ident, first and second revision number.
    QLabel* lblRevIdentOnDisk = nullptr;
    std::array<QLabel*, 2> lblRevNumberOnDisk{};
    QLabel* lblRevComparison = nullptr;
    std::array<QLineEdit*, SetupFieldCount> txtSetup{};
    std::array<QtUpDown*, SetupFieldCount> updSetup{};
    std::array<QLabel*, SetupFieldCount> lblSetupDesc{};
    QLabel* lblNetworkAddComment = nullptr;
    QLabel* lblCurrTime = nullptr;
    QLabel* lblCurrDate = nullptr;
    QLabel* lblTargetBoardTime = nullptr;
    QLabel* lblTargetBoardDate = nullptr;
    QPushButton* cmdSetToCurrTime = nullptr;
    QPushButton* cmdSetToCurrDate = nullptr;
    QPushButton* cmdGoOnline = nullptr;
    QPushButton* cmdOk = nullptr;

    // State.
    bool ViewActive = false;
    std::int16_t BoardTypeIndex = 0;
    bool OnlineLookShown = false;
    bool OfflineLookShown = false;
    std::array<bool, SetupFieldCount> Editing{}; ///< The text in the box is the user's and not taken yet.
    bool EscapePending = false; ///< The next Escape leaves the box.

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    struct ClockControls {
        QLabel* computer;
        QLabel* board;
        QPushButton* button;
    };
    using ClockWrite = WriteOutcome (BoardMonitor::*)();

    // Building (frmTargetBoardPages.cpp)
    void BuildTabs();
    void BuildFaultPage();
    void LayOutFaultPage();
    void BuildIdentPage();
    void BuildAddressPage();
    void BuildClockPage();
    QWidget* ClockFrame(const QString& title, const ClockControls& controls, std::size_t firstField);
    void BuildSetupField(std::size_t index, QWidget* page);
    QWidget* FieldWithArrows(std::size_t index);
    void BuildButtons();
    void OrderTabs();
    void LayOut();

    // The view and its loop (frmTargetBoard.cpp)
    [[nodiscard]] Task BoardMonitorLoop();
    void StartLoop();
    void ShowUserProgram(const UserProgram& program);
    void ShowOfflineLook();
    void ShowComputerClock();
    void CompareRevisions();
    [[nodiscard]] bool Idle() const;
    [[nodiscard]] Task CloseWhenIdle(int result);
    void ResetFaults();
    void SetClock(ClockWrite write);
    void GoOnline();

    // Entries and pages (frmTargetBoardEntry.cpp)
    void FocusMoved(const QWidget* to);
    bool EntryKey(std::size_t index, int key);
    void Escape(std::size_t index);
    void StepField(std::size_t index, int direction);
    void LookAtEntries();
    [[nodiscard]] Task CheckWhenIdle();
    void CheckLeftEntries();
    /// Takes the text in the box, or refuses it in a box of its own.
    bool CheckEntry(std::size_t index);
    /// False when an open entry is refused.
    bool CheckEntries();
    void BackToEntry(std::size_t index);
    /// What the field holds now, outside of the user's entry.
    void Keep(std::size_t index, const std::string& value);
    void ShowKept(std::size_t index);
    /// Whether the text in the box is the user's own; what looks like the old value may be another.
    [[nodiscard]] bool Entered(std::size_t index) const;
    void DropEntries();
    [[nodiscard]] bool EntryOpen() const;
    void PageChanged(int index);
    void ShowPage(int index);

    // What the passes show
    [[nodiscard]] bool Active() const override { return ViewActive; }
    [[nodiscard]] bool SetupWanted(std::size_t field) const override;
    void EnableOnline(bool hasClock) override;
    void EnableSetup(bool enabled);
    void EnableClock(bool enabled);
    void EnableReset(bool enabled) override;
    void ShowCaption(BoardCode which, const std::string& text) override;
    void ShowDescription(BoardCode which, const std::string& text) override;
    void ShowSetup(std::size_t field, const std::string& value) override;
    void ShowRevision(std::size_t label, const std::string& text) override;
    void ShowGoOnline(bool visible) override;

    RSComm& link_;
    TurnQueue& turns_;
    Dialogs& dialogs_;
    const Clock& clock_;
    const AlarmFlags& alarms_;
    AlarmFlags alarmsShown_{}; ///< As they were when the last first pass ended.
    std::function<void()> applyMode_;
    BoardMonitor passes_;
    std::array<std::string, SetupFieldCount> kept_; ///< The fields' whole values, of which the boxes show two digits.
    std::array<QString, SetupFieldCount> given_; ///< What the program put into the boxes; Escape brings it back.
    std::array<bool, SetupFieldCount> typed_{}; ///< Or stepped, since then.
    int page_ = 0;
    std::optional<int> wantedPage_; ///< Comes up as soon as the open entry is taken.
    bool lookAgain_ = false; ///< The focus has moved since the entries were looked at.
    Signal wake_;
    QTimer tick_; ///< Wakes the loop while OFFLINE, so that the computer's clock goes on.
    Task monitor_;
    Task check_; ///< Of the entries that the focus or the page leaves.
    Task closing_;
};

} // namespace vantrel
