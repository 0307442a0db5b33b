// What the program asks of the person in front of it: message boxes with fixed texts, titles and buttons.
#pragma once

#include <string>

namespace vantrel {

enum class MessageIcon { Information, Question, Exclamation, Critical };
enum class MessageButtons { Ok, YesNo, YesNoCancel, RetryCancel };
enum class MessageAnswer { Ok, Cancel, Retry, Yes, No };

/// One modal message box. A line break inside the text is "\n"; the host shows it as its own.
struct MessageBox {
    std::string title;
    std::string text;
    MessageIcon icon = MessageIcon::Information;
    MessageButtons buttons = MessageButtons::Ok;
    /// Yes destroys something that was not asked for: Enter does not choose it.
    bool destroys = false;
    /// It comes up by itself, perhaps under the user's hands: keys and clicks that come at once are not meant for it.
    bool unasked = false;
};

class Dialogs {
public:
    Dialogs() = default;
    Dialogs(const Dialogs&) = delete;
    Dialogs& operator=(const Dialogs&) = delete;
    virtual ~Dialogs() = default;

    /// Shows the box and returns the button that the user chose (one of the box's own buttons).
    virtual MessageAnswer Show(const MessageBox& box) = 0;
};

class RuntimeError;

/// Shows an unexpected error as "Error Number = " + number, line break, description, titled with `label`, the
/// name of the procedure that it ended.
void ReportRuntimeError(Dialogs& dialogs, const std::string& label, const RuntimeError& error);

} // namespace vantrel
