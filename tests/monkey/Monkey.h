// A user who does anything: keys, clicks, drags, the wheel, sizes, commands, closing, to every window that is there,
// one action an event, so that it goes on inside whatever dialog comes up. Knows windows by what Qt tells of them.
#pragma once

#include "tests/monkey/Stage.h"

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <QWindow>

#include <cstddef>
#include <deque>
#include <functional>
#include <set>
#include <string>

namespace vantrel::monkey {

class Monkey final : public QObject {
public:
    /// `alive` is called before every action.
    Monkey(Stage& stage, Chance& chance, std::function<void()> alive);

    /// Acts from the event loop's next turn on, so many times, then has all dialogs gone and ends the event loop.
    void Begin(int actions);
    /// Every action has been done and every dialog has gone.
    [[nodiscard]] bool Ended() const { return left_ == 0; }
    /// From now on it does nothing but send away what comes up; when it is not let be, it says so (empty: all is well).
    [[nodiscard]] const std::string& Trouble() const { return trouble_; }
    /// Lets events through until the program rests; false when it does not.
    [[nodiscard]] bool Pump();
    /// What it did last, oldest first.
    [[nodiscard]] std::string LastActions() const;
    /// The windows that it has met so far, and how many of its actions met the program ONLINE.
    static inline std::set<std::string> windowsMet;
    static inline int metOnline = 0;
    bool aloud = false; ///< Says every action.

private:
    bool event(QEvent* event) override;
    void Post();
    void Step();
    /// Sends away the dialog in front; nothing when there is none.
    void SendAway();
    void LetGo();
    void Act();

    void Note(const std::string& action);
    [[nodiscard]] QWidget* FrontWindow();
    [[nodiscard]] QWidget* AnyChild(QWidget& window);
    void Key();
    void Text();
    void Click();
    void Drag();
    void Wheel();
    void Resize();
    void Command();
    void Close();
    void Answer();
    void Drop();
    void Strike(QWindow& window, int key, Qt::KeyboardModifiers held, const QString& text = {});
    void Mouse(const QPointer<QWindow>& window, QEvent::Type type, const QPoint& at, Qt::MouseButton button);

    Stage& stage_;
    Chance& chance_;
    std::function<void()> alive_;
    std::deque<std::string> last_;
    std::string trouble_;
    int left_ = 0;
    int done_ = 0;
    int idle_ = 0; ///< Events for which it does nothing.
    int resting_ = 0; ///< Events since it began to send everything away.
    int mouseTime_ = 0; ///< Milliseconds.
    bool posted_ = false;
    bool pumping_ = false; ///< In Pump(), where there is no event loop but those of dialogs.
};

} // namespace vantrel::monkey
