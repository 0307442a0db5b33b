// The target board interface view: faults, revision, set-up words and clock of the board, refreshed for as long as the
// window is open and the program ONLINE. Carries texts and clicks to BoardMonitor, which decides; borrows link and
// turns.
#pragma once

#include "views/BoardMonitor.h"
#include "views/frmLiveView.h"
#include "widgets/QtEntryField.h"

#include <QFrame>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>

#include <array>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>

namespace vantrel {

class frmTargetBoard final : public frmLiveView, private BoardDisplay {
public:
    /// `applyMode`: see frmLiveView. `alarms` are set by each pass over the codes. Everything handed in must outlive
    /// the window.
    frmTargetBoard(const ProgramFolder& folder, RSComm& link, TurnQueue& turns, Dialogs& dialogs, Clock& clock,
                   AlarmFlags& alarms, std::function<void()> applyMode, QWidget* parent = nullptr);

    /// Takes board type and revision from the user program file, shows the window modally and returns when it is
    /// closed.
    void InitializeForm(const std::filesystem::path& programFile);
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
    /// What one set-up field consists of.
    struct SetupControls {
        QtEntryField* entry = nullptr;
        QLineEdit* txtSetup = nullptr; ///< The entry's box.
        QtUpDown* updSetup = nullptr; ///< The entry's arrows.
        QLabel* lblSetupDesc = nullptr;
        QLabel* lblSetupMark = nullptr; ///< The whole of a value that the box cannot show, and what is wrong with it.
    };
    std::array<SetupControls, SetupFieldCount> Setup{};
    QLabel* lblNetworkAddComment = nullptr;
    QLabel* lblCurrTime = nullptr;
    QLabel* lblCurrDate = nullptr;
    QLabel* lblTargetBoardTime = nullptr;
    QLabel* lblTargetBoardDate = nullptr;
    QLabel* lblClockOff = nullptr; ///< How far the board's clock is off.
    QPushButton* cmdSetToCurrTime = nullptr;
    QPushButton* cmdSetToCurrDate = nullptr;

    // State.
    std::int16_t BoardTypeIndex = 0;

protected:
    void showEvent(QShowEvent* event) override;

private:
    struct ClockControls {
        QLabel* computer;
        QLabel* board;
        QPushButton* button;
    };
    using ClockWrite = TaskOf<WriteOutcome> (BoardMonitor::*)();

    // Building (frmTargetBoardPages.cpp)
    void BuildTabs();
    void BuildFaultPage();
    void LayOutFaultPage();
    void BuildIdentPage();
    void BuildAddressPage();
    void BuildClockPage();
    QWidget* ClockFrame(const QString& title, const ClockControls& controls, std::size_t firstField);
    void BuildSetupField(std::size_t index, QWidget* page);
    void BuildButtons();
    void OrderTabs();
    void LayOut();

    // Its life (frmTargetBoard.cpp)
    void ShowUserProgram(const UserProgram& program);
    void ShowOnlineLook() override;
    void ShowOfflineLook() override;
    [[nodiscard]] Task Refresh() override;
    void ShowComputerClock();
    void ShowClockOff();
    void CompareRevisions();

    // Commands (frmTargetBoard.cpp). One of a kind at a time; the link serves them in their order.
    enum class Command { Reset, Time, Date };
    void Start(Command which, Task command);
    void ResetFaults();
    [[nodiscard]] Task Reset();
    void SetClock(Command which, ClockWrite write);
    [[nodiscard]] Task WriteClock(Command which, ClockWrite write);

    // Entries and pages (frmTargetBoardEntry.cpp)
    [[nodiscard]] TaskOf<bool> Take(QtEntryField& field) override;
    [[nodiscard]] Task Write(std::size_t index, std::string value);
    /// `reached`: what else there is to say of the write.
    void Tell(MessageBox box, const std::string& reached);
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

    BoardMonitor passes_;
    bool firstPass_ = true; ///< Is due.
    bool afterReset_ = false; ///< The next first pass shows what a reset has left.
    int page_ = 0;
    QTimer tick_{this}; ///< For the computer's clock, which goes on while OFFLINE, too.
    std::array<Task, 3> commands_;
};

} // namespace vantrel
