// A number box with its arrows, and what the user has entered in it. Shows and asks; whoever owns it says what an entry
// means and what becomes of it.
#pragma once

#include "widgets/QtUpDown.h"

#include <QLineEdit>
#include <QWidget>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vantrel {

/// The box is open from the click or key that brings the focus until its entry is taken, dropped or found to be none:
/// only what was typed or stepped is an entry. Escape brings the program's value back, a second Escape leaves the box.
class QtEntryField final : public QWidget {
public:
    /// What the numbers of the field are. Values are decimal texts.
    struct Rules {
        /// The value that an entry means; nothing for one that is to be refused.
        std::function<std::optional<std::string>(std::string_view entry)> value;
        /// How the box shows a value; may be less than all of it.
        std::function<std::string(std::string_view value)> shown;
        /// What the box shows one step (1 or -1) beside an entry, or beside a value.
        std::function<std::string(std::string_view from, int direction)> stepped;
    };
    /// What the owner does. All of them have to be there.
    struct Habits {
        std::function<bool()> mayStep; ///< A held arrow goes on stepping, whatever has come up meanwhile.
        std::function<void()> stepped; ///< A step has been entered.
        std::function<void()> entered; ///< Enter: moves the focus on.
        std::function<void()> escaped; ///< The second Escape: moves the focus away.
    };

    QtEntryField(Rules rules, QWidget* parent = nullptr);
    void SetHabits(Habits habits) { habits_ = std::move(habits); }

    /// The value that the field holds, whole. The box shows it unless it holds an entry.
    void Give(std::string value);
    [[nodiscard]] const std::string& Given() const { return value_; }
    /// The text in the box is the user's own; what looks like the value may be another.
    [[nodiscard]] bool Entered() const { return typed_; }
    [[nodiscard]] std::optional<std::string> Entry() const { return rules_.value(box.text().toStdString()); }

    /// The entry is on its way; what is typed from now on is another.
    void Send() { typed_ = false; }
    /// Ends the entry: the box shows what the field holds. Stays open over another entry.
    void Shut();
    /// Brings the value back and the user to it.
    void Refuse();
    /// Forgets the entry.
    void Drop();

    QLineEdit box;
    QtUpDown arrows{box, [this](int direction) { Step(direction); }, this};

    bool Editing = false; ///< The box is open; the program leaves it alone.
    bool EscapePending = false; ///< The next Escape leaves the box.

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool Key(int key);
    void Escape();
    void Step(int direction);
    void ShowGiven();

    Rules rules_;
    Habits habits_;
    std::string value_;
    bool typed_ = false; ///< Or stepped, since the box last showed the value.
};

} // namespace vantrel
