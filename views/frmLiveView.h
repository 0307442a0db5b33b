// What the two live views have in common: their life, from the first look to the way out, and their entries. Borrows
// link and turns; knows nothing of what is shown.
#pragma once

#include "link/RSComm.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/Signal.h"
#include "platform/Task.h"
#include "widgets/QtEntryField.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include <functional>
#include <vector>

namespace vantrel {

/// A modal window that shows what the board does for as long as it is open. ONLINE and in sight it reads, one pass
/// after another; OFFLINE or minimised it sleeps. An entry is taken in a turn of its own after the click or key that
/// has left its box.
///
/// Closing: Ok takes open entries first, and a refusal keeps the window; every other way drops them. A silent board is
/// given up. The window goes at once, unless a box is up or a write is under way: a board that answers ends it first.
class frmLiveView : public QDialog {
public:
    ~frmLiveView() override;

    /// Call whenever a mode has been applied.
    void ModeChanged();
    /// Every way to close comes through here.
    void done(int result) override;

    // Controls and state, by their names.
    QPushButton cmdGoOnline;
    QPushButton cmdOk;
    QLabel lblNotRefreshed; ///< Says that what is shown is old, while the board is silent; for each view's layout.
    QTimer tmrNotRefreshed;
    bool ViewActive = false;
    bool OnlineLookShown = false;
    bool OfflineLookShown = false;

protected:
    // So many lines stay in sight of what may be longer.
    static constexpr int DescriptionLines = 2;
    static constexpr int AdviceLines = 4;

    /// `applyMode`: the program's ONLINE/OFFLINE switch, which acts on the link's `OnlineMode`. It only begins to; when
    /// it is through, and that may be at once, ModeChanged() has to be called. Everything handed in must outlive the
    /// window.
    frmLiveView(RSComm& link, TurnQueue& turns, Dialogs& dialogs, const Clock& clock, std::function<void()> applyMode,
                QWidget* parent);

    /// From now on `field`, which must live as long as the window, is one of its entries.
    void Add(QtEntryField& field);
    /// Shows the window modally and returns when it is closed.
    void RunModal();

    virtual void ShowOnlineLook() = 0;
    virtual void ShowOfflineLook() = 0;
    /// One round of passes; yields at least once.
    [[nodiscard]] virtual Task Refresh() = 0;
    /// Takes what stands in an open field, or refuses it in a box of its own: false.
    [[nodiscard]] virtual TaskOf<bool> Take(QtEntryField& field) = 0;

    /// No code of a task and no box is on the stack.
    [[nodiscard]] bool Idle() const;
    /// Does `then` when every open entry has been taken; not at all when one is refused. At once when none is open.
    void AfterEntries(std::function<void()> then);
    void DropEntries();
    [[nodiscard]] bool EntryOpen() const;

    /// A write that the user has asked for, and what he has to be told of it: the window stays until it is over.
    class Writing {
    public:
        explicit Writing(frmLiveView& view) : view_(view) { ++view_.writing_; }
        Writing(const Writing&) = delete;
        Writing& operator=(const Writing&) = delete;
        ~Writing() {
            --view_.writing_;
            view_.wake_.Raise();
        }

    private:
        frmLiveView& view_;
    };

    void changeEvent(QEvent* event) override;

    RSComm& link_;
    TurnQueue& turns_;
    Dialogs& dialogs_;
    const Clock& clock_;

private:
    [[nodiscard]] Task Live();
    void ShowWaiting();
    void FollowMode();
    void SwitchMode();
    void GoOnline();
    void FocusMoved(const QWidget* to);
    void LookAtEntries();
    [[nodiscard]] Task TakeEntries();
    void Leave(int result);
    [[nodiscard]] Task LeaveWhenIdle(int result);

    std::function<void()> applyMode_;
    std::vector<QtEntryField*> fields_;
    bool switching_ = false; ///< The mode is on its way.
    int writing_ = 0;
    bool lookAgain_ = false; ///< The focus has moved since the entries were looked at.
    std::vector<std::function<void()>> then_; ///< What waits for the open entries.
    Signal wake_;
    Task live_;
    Task taking_;
    Task leaving_;
};

} // namespace vantrel
