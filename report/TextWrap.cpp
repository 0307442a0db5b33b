// Breaking lines. Knows UTF-8 well enough not to break a character.
#include "report/TextWrap.h"

#include "text/PrintableText.h"
#include "text/Utf8.h"

#include <algorithm>
#include <cstddef>

namespace vantrel {

namespace {

constexpr std::string_view Blank = " ";

/// Where the character that begins at or reaches beyond `at` ends.
std::size_t CharacterEnd(std::string_view text, std::size_t at) {
    at = std::min(at + 1, text.size());
    while (at < text.size() && ContinuesCharacter(text[at]))
        ++at;
    return at;
}

/// The longest start of `text` that fits, at least one character of it. Never measures much more than twice of what
/// fits, so that a long text costs no more a line than a short one.
std::size_t FittingLength(std::string_view text, const std::function<bool(std::string_view)>& fits) {
    std::size_t fitting = CharacterEnd(text, 0);
    std::size_t tooLong = text.size() + 1;
    for (std::size_t next = fitting; fitting < text.size() && tooLong > text.size();) {
        next = CharacterEnd(text, std::min(2 * next, text.size() - 1));
        (fits(text.substr(0, next)) ? fitting : tooLong) = next;
    }
    while (CharacterEnd(text, fitting) < tooLong && fitting < text.size()) {
        const std::size_t middle = CharacterEnd(text, (fitting + tooLong) / 2 - 1);
        const std::size_t next = middle < tooLong ? middle : CharacterEnd(text, fitting);
        (fits(text.substr(0, next)) ? fitting : tooLong) = next;
    }
    return fitting;
}

/// Where to break a text of which `length` bytes fit on the line: at the last blank up to there, else right there.
std::size_t BreakAt(std::string_view text, std::size_t length) {
    const std::size_t blank = text.substr(0, length + 1).find_last_of(Blank);
    return blank == std::string_view::npos || blank == 0 ? length : blank;
}

std::string WithoutTrailingBlanks(std::string_view text) {
    return std::string(text.substr(0, text.find_last_not_of(Blank) + 1));
}

} // namespace

std::vector<std::string> WrappedText(std::string_view text, const std::function<bool(std::string_view)>& fits) {
    const std::string oneLine = OnOneLine(text);
    std::string_view rest = oneLine;
    std::vector<std::string> lines;
    while (!rest.empty()) {
        const std::size_t length = FittingLength(rest, fits);
        if (length == rest.size()) break;
        const std::size_t end = BreakAt(rest, length);
        lines.push_back(WithoutTrailingBlanks(rest.substr(0, end)));
        rest.remove_prefix(std::min(rest.size(), rest.find_first_not_of(Blank, end)));
    }
    if (lines.empty() || !rest.empty()) lines.emplace_back(rest);
    return lines;
}

} // namespace vantrel
