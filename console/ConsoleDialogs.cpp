// Boxes as text, buttons as letters to type.
#include "console/ConsoleDialogs.h"

#include "document/FileQuestions.h"
#include "text/AsciiCase.h"
#include "text/PrintableText.h"

#include <array>
#include <istream>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace vantrel {

namespace {

/// What the program says of itself is a note or a warning here.
std::string HeadingOf(const MessageBox& box) {
    if (box.title != ProgramTitle) return box.title;
    return box.icon == MessageIcon::Information ? "Note" : "Warning";
}

/// The answers to a set of buttons. The last one is the careful one: it changes nothing.
std::vector<MessageAnswer> AnswersTo(MessageButtons buttons) {
    using enum MessageAnswer;
    switch (buttons) {
    case MessageButtons::YesNo:
        return {Yes, No};
    case MessageButtons::YesNoCancel:
        return {Yes, No, Cancel};
    case MessageButtons::RetryCancel:
        return {Retry, Cancel};
    case MessageButtons::Ok:
        break;
    }
    return {Ok};
}

std::string WordOf(MessageAnswer answer) {
    constexpr std::array words{"ok", "cancel", "retry", "yes", "no"};
    return words.at(static_cast<std::size_t>(answer));
}

/// "[y/n/c] "
std::string PromptOf(const std::vector<MessageAnswer>& answers) {
    std::string letters;
    for (const MessageAnswer answer : answers)
        letters += std::string("/") + WordOf(answer).front();
    return "[" + letters.substr(1) + "] ";
}

/// The answer that a typed line names, by its letter or its word.
std::optional<MessageAnswer> AnswerNamed(const std::vector<MessageAnswer>& answers, std::string line) {
    std::erase_if(line, [](char c) { return c == ' ' || c == '\t' || c == '\r'; });
    for (const MessageAnswer answer : answers) {
        const std::string word = WordOf(answer);
        if (SameIgnoringCase(line, word) || SameIgnoringCase(line, word.substr(0, 1))) return answer;
    }
    return std::nullopt;
}

} // namespace

MessageAnswer ConsoleDialogs::Show(const MessageBox& box) {
    progress_.EndLine();
    host_.err << HeadingOf(box) << ": " << PrintableText(box.text, Layout::Keep) << '\n' << std::flush;
    return box.buttons == MessageButtons::Ok ? MessageAnswer::Ok : Ask(box.buttons);
}

MessageAnswer ConsoleDialogs::Ask(MessageButtons buttons) {
    const std::vector<MessageAnswer> answers = AnswersTo(buttons);
    const bool mayAgree = buttons != MessageButtons::RetryCancel;
    const std::string prompt = PromptOf(answers);
    host_.err << prompt << std::flush;
    if (mayAgree && answersYes_) {
        host_.err << "yes (--yes)\n";
        return MessageAnswer::Yes;
    }
    std::string line;
    while (host_.personPresent && !Interrupted() && std::getline(host_.in, line)) {
        if (const auto answer = AnswerNamed(answers, line)) return *answer;
        host_.err << prompt << std::flush;
    }
    host_.err << WordOf(answers.back())
              << (host_.personPresent ? "\n"
                  : mayAgree          ? " (no terminal to ask at; --yes answers yes)\n"
                                      : " (no terminal to ask at)\n");
    if (Interrupted() && look_) look_();
    return answers.back();
}

} // namespace vantrel
