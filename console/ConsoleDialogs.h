// Message boxes as lines of a terminal. Where nobody is there to ask, the careful answer is given and said.
#pragma once

#include "console/ConsoleHost.h"
#include "console/ProgressBar.h"
#include "platform/Dialogs.h"

#include <atomic>
#include <functional>
#include <utility>

namespace vantrel {

class ConsoleDialogs final : public Dialogs {
public:
    /// `answersYes`: every question that has the answer Yes gets it. Retry is never given without a person.
    ConsoleDialogs(ConsoleHost& host, ProgressBar& progress, bool answersYes)
        : host_(host), progress_(progress), answersYes_(answersYes) {}

    MessageAnswer Show(const MessageBox& box) override;

    /// Once this flag is up, questions get the careful answer without being asked; `look` is called when it has gone up
    /// at a question.
    void HeedInterrupts(const std::atomic<bool>& interrupted, std::function<void()> look) {
        interrupted_ = &interrupted;
        look_ = std::move(look);
    }
    void LookNoMore() { look_ = nullptr; }

private:
    MessageAnswer Ask(MessageButtons buttons);
    [[nodiscard]] bool Interrupted() const { return interrupted_ && *interrupted_; }

    ConsoleHost& host_;
    ProgressBar& progress_;
    bool answersYes_;
    const std::atomic<bool>* interrupted_ = nullptr;
    std::function<void()> look_;
};

} // namespace vantrel
