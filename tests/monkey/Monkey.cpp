#include "tests/monkey/Monkey.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QDropEvent>
#include <QFileDialog>
#include <QMenu>
#include <QMimeData>
#include <QPrintDialog>
#include <QScopedValueRollback>
#include <QTest>
#include <QThread>
#include <QUrl>
#include <QWheelEvent>

#include <array>
#include <cstdio>
#include <utility>

namespace vantrel::monkey {

namespace {

const auto StepEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

/// A dialog that reaches out to the host: never touched, only sent away.
bool IsHosts(const QWidget& window) {
    for (const QWidget* w = &window; w; w = w->parentWidget()) {
        if (qobject_cast<const QFileDialog*>(w) || qobject_cast<const QAbstractPrintDialog*>(w)) return true;
    }
    return false;
}

std::string NameOf(const QWidget* widget) {
    if (!widget) return "nothing";
    const std::string name = widget->objectName().toStdString();
    return name.empty() ? widget->metaObject()->className() : name;
}

QWindow* HandleOf(const QWidget* widget) { return widget ? widget->window()->windowHandle() : nullptr; }

/// Whether a user could reach that window now.
bool IsReachable(const QWidget& window) {
    const QWidget* modal = QApplication::activeModalWidget();
    return !modal || modal == &window || modal->isAncestorOf(&window) || window.windowType() == Qt::Popup;
}

} // namespace

Monkey::Monkey(Stage& stage, Chance& chance, std::function<void()> alive)
    : stage_(stage), chance_(chance), alive_(std::move(alive)) {}

void Monkey::Begin(int actions) {
    left_ = actions;
    resting_ = 0;
    Post();
}

void Monkey::Post() {
    // In turn with the program's own tasks.
    if (!std::exchange(posted_, true)) QCoreApplication::postEvent(this, new QEvent(StepEvent), Qt::LowEventPriority);
}

bool Monkey::event(QEvent* event) {
    if (event->type() != StepEvent) return QObject::event(event);
    posted_ = false;
    // First, so that it goes on inside a dialog that the action opens.
    Post();
    alive_();
    Step();
    return true;
}

void Monkey::Step() {
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || !IsHosts(*window)) continue;
        if (qobject_cast<const QFileDialog*>(window)) qFatal("met the host's file dialog");
        if (auto* dialog = qobject_cast<QDialog*>(const_cast<QWidget*>(window))) dialog->reject();
        return;
    }
    if (left_ == 0) {
        LetGo();
    } else if (idle_ > 0) {
        --idle_;
    } else {
        --left_;
        ++done_;
        Act();
    }
}

void Monkey::LetGo() {
    constexpr int patience = 50'000;
    if (++resting_ == patience) trouble_ = "no rest in front of " + NameOf(QApplication::activeModalWidget());
    SendAway();
    const bool away = !QApplication::activeModalWidget() && !QApplication::activePopupWidget();
    // Not from inside a dialog that is about to return. Where nobody is in the event loop, a dialog that comes up later
    // would return at once, and nobody would have answered it.
    if (resting_ >= patience || (away && QThread::currentThread()->loopLevel() == 1 && !pumping_ && resting_ > 10))
        QCoreApplication::exit();
}

void Monkey::SendAway() {
    if (auto* popup = QApplication::activePopupWidget()) {
        popup->close();
        return;
    }
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog) return;
    // Some boxes want an answer, and some windows need time to end.
    if (resting_ % 20 == 19) {
        Answer();
    } else if (resting_ % 20 == 5) {
        dialog->close();
    }
}

bool Monkey::Pump() {
    resting_ = 0;
    const QScopedValueRollback pumping(pumping_, true);
    constexpr int bound = 50'000;
    for (int i = 0, quiet = 0; i < bound; ++i) {
        QCoreApplication::processEvents();
        quiet = stage_.Resting() ? quiet + 1 : 0;
        ++resting_;
        if (quiet > 5) return true;
    }
    return false;
}

std::string Monkey::LastActions() const {
    std::string text;
    for (const std::string& action : last_)
        text += "  " + action + "\n";
    return text;
}

void Monkey::Note(const std::string& action) {
    constexpr std::size_t kept = 25;
    last_.push_back(std::to_string(done_) + " " + action);
    if (last_.size() > kept) last_.pop_front();
    if (aloud) std::fprintf(stderr, "%s\n", last_.back().c_str());
}

void Monkey::Act() {
    metOnline += stage_.frame->Link().OnlineMode() ? 1 : 0;
    if (QWidget* modal = QApplication::activeModalWidget(); modal && !QApplication::activePopupWidget()) {
        // Long work gets some of the time that it needs, and dialogs do not stay for ever.
        if (chance_.OneIn(4)) idle_ = chance_.Below(200);
        if (chance_.OneIn(8)) return Answer();
    }
    using Action = void (Monkey::*)();
    static constexpr std::array<Action, 20> actions{
        &Monkey::Key,     &Monkey::Key,     &Monkey::Key,     &Monkey::Key,   &Monkey::Text,
        &Monkey::Text,    &Monkey::Click,   &Monkey::Click,   &Monkey::Click, &Monkey::Click,
        &Monkey::Click,   &Monkey::Click,   &Monkey::Drag,    &Monkey::Wheel, &Monkey::Resize,
        &Monkey::Command, &Monkey::Command, &Monkey::Command, nullptr,        nullptr};
    if (const Action action = actions.at(static_cast<std::size_t>(chance_.Below(20)))) return (this->*action)();
    switch (chance_.Below(10)) {
    case 0:
        return Close();
    case 1:
        return Drop();
    case 2:
        return Note(stage_.TroubleFiles());
    case 3:
        return Note(stage_.TroubleLine());
    case 4:
        idle_ = chance_.Below(800);
        return Note("waits");
    default:
        stage_.PassTime();
        return Note("time passes");
    }
}

QWidget* Monkey::FrontWindow() {
    if (QWidget* popup = QApplication::activePopupWidget(); popup && !chance_.OneIn(6)) return popup;
    if (QWidget* modal = QApplication::activeModalWidget(); modal && !chance_.OneIn(10)) {
        windowsMet.insert(NameOf(modal));
        return modal;
    }
    QList<QWidget*> windows;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowHandle()) windows << window;
    }
    if (windows.isEmpty()) return nullptr;
    QWidget* window = chance_.Of(windows);
    windowsMet.insert(NameOf(window));
    // As a window manager does at a click.
    if (IsReachable(*window) && !QApplication::activePopupWidget()) window->activateWindow();
    return window;
}

QWidget* Monkey::AnyChild(QWidget& window) {
    QList<QWidget*> children{&window};
    for (QWidget* child : window.findChildren<QWidget*>()) {
        if (child->window() == &window && child->isVisible() && !child->visibleRegion().isEmpty()) children << child;
    }
    return chance_.Of(children);
}

void Monkey::Strike(QWindow& window, int key, Qt::KeyboardModifiers held, const QString& text) {
    const QPointer<QWindow> target(&window);
    qt_handleKeyEvent(target, QEvent::KeyPress, key, held, text);
    if (target) qt_handleKeyEvent(target, QEvent::KeyRelease, key, held, text);
}

void Monkey::Key() {
    static constexpr std::array keys{
        Qt::Key_Up,     Qt::Key_Down,   Qt::Key_Left,      Qt::Key_Right,    Qt::Key_Return,
        Qt::Key_Enter,  Qt::Key_Tab,    Qt::Key_Backtab,   Qt::Key_Escape,   Qt::Key_Space,
        Qt::Key_Delete, Qt::Key_Insert, Qt::Key_Backspace, Qt::Key_Home,     Qt::Key_End,
        Qt::Key_PageUp, Qt::Key_F1,     Qt::Key_F2,        Qt::Key_PageDown, Qt::Key_F10,
        Qt::Key_Menu,   Qt::Key_Alt,    Qt::Key_F4,        Qt::Key_F6,       Qt::Key_Plus};
    static constexpr std::array held{Qt::NoModifier,      Qt::NoModifier,  Qt::NoModifier,   Qt::NoModifier,
                                     Qt::ControlModifier, Qt::AltModifier, Qt::ShiftModifier};
    QWindow* window = HandleOf(FrontWindow());
    if (!window) return;
    const bool letter = chance_.OneIn(3);
    const int key = letter ? Qt::Key_A + chance_.Below(26) : chance_.Of(keys);
    Qt::KeyboardModifiers modifiers = chance_.Of(held);
    if (chance_.OneIn(12)) modifiers |= Qt::ShiftModifier;
    const QString text = letter && !(modifiers & (Qt::ControlModifier | Qt::AltModifier)) ? QString(QChar(key + 32))
                         : key == Qt::Key_Return || key == Qt::Key_Enter                  ? QStringLiteral("\r")
                                                                                          : QString();
    Note("key " +
         QKeySequence(QKeyCombination::fromCombined(key | static_cast<int>(modifiers))).toString().toStdString());
    Strike(*window, key, modifiers, text);
}

void Monkey::Text() {
    static const QStringList texts =
        QStringLiteral(
            "1|V77|W300|65535|65536|-1|0FFH|B105/3|12.5|H'1f|ÄÖ€Ж|a\tb|99999999999999999999|%1|Pump \"north\", 3")
            .arg(QString(300, QLatin1Char('x')))
            .split(QLatin1Char('|'));
    const QPointer<QWindow> window = HandleOf(FrontWindow());
    const QString text = chance_.Of(texts);
    Note("text " + text.left(20).toStdString());
    for (const QChar character : text) {
        if (!window) return;
        const int key = character.isLetter() ? character.toUpper().unicode() : character.unicode();
        Strike(*window, key, {}, QString(character));
    }
}

void Monkey::Mouse(const QPointer<QWindow>& window, QEvent::Type type, const QPoint& at, Qt::MouseButton button) {
    if (!window) return;
    const Qt::MouseButtons down = type == QEvent::MouseButtonRelease ? Qt::NoButton : button;
    const Qt::MouseButton which = type == QEvent::MouseMove ? Qt::NoButton : button;
    qt_handleMouseEvent(window, at, window->mapToGlobal(at), down, which, type, {}, mouseTime_ += 20);
}

void Monkey::Click() {
    QWidget* window = FrontWindow();
    if (!window) return;
    const QWidget* child = AnyChild(*window);
    const QPoint inside(chance_.Below(std::max(child->width(), 1)), chance_.Below(std::max(child->height(), 1)));
    const QPoint at = child->mapTo(window, inside);
    const auto button = chance_.OneIn(8) ? Qt::RightButton : Qt::LeftButton;
    const QPointer<QWindow> handle = window->windowHandle();
    const bool twice = chance_.OneIn(6);
    Note((twice ? "double click " : "click ") + NameOf(child) + " in " + NameOf(window));
    mouseTime_ += 1000;
    for (int i = 0; i <= int{twice}; ++i) {
        Mouse(handle, QEvent::MouseMove, at, Qt::NoButton);
        Mouse(handle, QEvent::MouseButtonPress, at, button);
        Mouse(handle, QEvent::MouseButtonRelease, at, button);
    }
}

void Monkey::Drag() {
    const QPointer<QWidget> window = FrontWindow();
    if (!window) return;
    const QPointer<QWindow> handle = window->windowHandle();
    const auto place = [&]() -> QPoint {
        if (!window) return {};
        const QWidget* child = AnyChild(*window);
        return child->mapTo(window.get(), child->rect().center());
    };
    const QPoint from = place();
    const QPoint to = place();
    Note("drag in " + NameOf(window));
    mouseTime_ += 1000;
    Mouse(handle, QEvent::MouseButtonPress, from, Qt::LeftButton);
    for (const QPoint& at : {from + QPoint(12, 3), (from + to) / 2, to})
        Mouse(handle, QEvent::MouseMove, at, Qt::LeftButton);
    Mouse(handle, QEvent::MouseButtonRelease, to, Qt::LeftButton);
}

void Monkey::Wheel() {
    QWidget* window = FrontWindow();
    if (!window || !window->windowHandle()) return;
    const QPoint at = AnyChild(*window)->mapTo(window, QPoint(5, 5));
    const QPoint turn(0, (chance_.Below(11) - 5) * 120);
    Note("wheel in " + NameOf(window));
    QWheelEvent event(at, window->mapToGlobal(at), {}, turn, Qt::NoButton,
                      chance_.OneIn(5) ? Qt::ControlModifier : Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(window->windowHandle(), &event);
}

void Monkey::Resize() {
    QWidget* window = FrontWindow();
    if (!window || window->windowType() == Qt::Popup) return;
    const QSize size(1 + chance_.Below(1500), 1 + chance_.Below(1100));
    Note("resize " + NameOf(window));
    if (chance_.OneIn(10)) {
        window->setWindowState(chance_.OneIn(2) ? Qt::WindowMaximized : Qt::WindowNoState);
    } else if (chance_.OneIn(4)) {
        window->move(chance_.Below(900) - 200, chance_.Below(700) - 200);
    } else {
        window->resize(size);
    }
}

void Monkey::Command() {
    QList<QAction*> commands;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || !IsReachable(*window)) continue;
        for (QAction* action : window->findChildren<QAction*>()) {
            if (action->isEnabled() && action->isVisible() && !action->isSeparator() && !action->menu())
                commands << action;
        }
    }
    if (commands.isEmpty()) return;
    QAction* command = chance_.Of(commands);
    Note("command " + command->text().toStdString());
    command->trigger();
}

void Monkey::Close() {
    QWidget* window = FrontWindow();
    if (!window || !IsReachable(*window)) return;
    Note("close " + NameOf(window));
    window->close();
}

void Monkey::Answer() {
    QWidget* modal = QApplication::activeModalWidget();
    if (!modal) return;
    QList<QAbstractButton*> buttons;
    for (auto* button : modal->findChildren<QAbstractButton*>()) {
        if (button->isVisible() && button->isEnabled()) buttons << button;
    }
    if (buttons.isEmpty() || chance_.OneIn(5)) {
        Note("close " + NameOf(modal));
        modal->close();
        return;
    }
    auto* button = chance_.Of(buttons);
    Note("answer " + button->text().toStdString() + " to " + NameOf(modal));
    button->click();
}

void Monkey::Drop() {
    if (!IsReachable(*stage_.frame)) return;
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(stage_.AnyFile().string()))});
    Note("drop " + data.urls().front().fileName().toStdString());
    QDropEvent event(QPointF(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(stage_.frame.get(), &event);
}

} // namespace vantrel::monkey
