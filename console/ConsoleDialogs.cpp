// Boxes as text, buttons as letters to type.
#include "console/ConsoleDialogs.h"

#include "console/PrintableText.h"

#include <array>
#include <istream>
#include <ostream>
#include <string>
#include <string_view>

namespace vantrel {

namespace {

struct Choice {
    char key;
    std::string_view word;
    MessageAnswer answer;
};

/// A set of buttons as a question. The last choice is the careful one: it changes nothing.
struct Question {
    std::string_view prompt;
    std::array<Choice, 3> choices;
    std::size_t count;
    [[nodiscard]] const Choice& Careful() const { return choices.at(count - 1); }
};

Question QuestionOf(MessageButtons buttons) {
    constexpr Choice yes{'y', "yes", MessageAnswer::Yes};
    constexpr Choice no{'n', "no", MessageAnswer::No};
    constexpr Choice cancel{'c', "cancel", MessageAnswer::Cancel};
    constexpr Choice retry{'r', "retry", MessageAnswer::Retry};
    switch (buttons) {
    case MessageButtons::YesNo:
        return {"[y/n] ", {yes, no}, 2};
    case MessageButtons::YesNoCancel:
        return {"[y/n/c] ", {yes, no, cancel}, 3};
    case MessageButtons::RetryCancel:
        return {"[r/c] ", {retry, cancel}, 2};
    case MessageButtons::Ok:
        break;
    }
    return {"", {Choice{'o', "ok", MessageAnswer::Ok}}, 1};
}

/// The choice that a typed line names, by its letter or its word.
const Choice* ChoiceNamed(const Question& question, std::string line) {
    for (char& c : line) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    std::erase_if(line, [](char c) { return c == ' ' || c == '\t' || c == '\r'; });
    for (std::size_t i = 0; i < question.count; ++i) {
        const Choice& choice = question.choices.at(i);
        if (line == std::string(1, choice.key) || line == choice.word) return &choice;
    }
    return nullptr;
}

} // namespace

MessageAnswer ConsoleDialogs::Show(const MessageBox& box) {
    progress_.EndLine();
    host_.err << box.title << ": " << PrintableText(box.text, Layout::Keep) << '\n' << std::flush;
    return box.buttons == MessageButtons::Ok ? MessageAnswer::Ok : Ask(box.buttons);
}

MessageAnswer ConsoleDialogs::Ask(MessageButtons buttons) {
    const Question question = QuestionOf(buttons);
    const bool mayAgree = buttons != MessageButtons::RetryCancel;
    host_.err << question.prompt << std::flush;
    if (mayAgree && answersYes_) {
        host_.err << "yes (--yes)\n";
        return MessageAnswer::Yes;
    }
    std::string line;
    while (host_.personPresent && !Interrupted() && std::getline(host_.in, line)) {
        if (const Choice* choice = ChoiceNamed(question, line)) return choice->answer;
        host_.err << question.prompt << std::flush;
    }
    host_.err << question.Careful().word
              << (host_.personPresent ? "\n"
                  : mayAgree          ? " (no terminal to ask at; --yes answers yes)\n"
                                      : " (no terminal to ask at)\n");
    if (Interrupted() && look_) look_();
    return question.Careful().answer;
}

} // namespace vantrel
