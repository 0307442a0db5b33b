// The tests' person: answers boxes from a list and remembers what was shown.
#pragma once

#include "platform/Dialogs.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace vantrel {

class ScriptedDialogs final : public Dialogs {
public:
    MessageAnswer Show(const MessageBox& box) override {
        shown.push_back(box);
        if (whileShown) whileShown(box);
        if (!answers.empty()) {
            const MessageAnswer answer = answers.front();
            answers.pop_front();
            return answer;
        }
        return box.buttons == MessageButtons::Ok      ? MessageAnswer::Ok
               : box.buttons == MessageButtons::YesNo ? MessageAnswer::No
                                                      : MessageAnswer::Cancel;
    }

    /// Given in order; when they have run out, a box is answered as carefully as it can be.
    std::deque<MessageAnswer> answers;
    std::vector<MessageBox> shown;
    std::function<void(const MessageBox&)> whileShown;
};

} // namespace vantrel
