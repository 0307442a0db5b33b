// The item syntax of classic sequential text, item by item. Uses nothing.
#include "text/SequentialText.h"

#include <algorithm>

namespace vantrel {

namespace {

constexpr std::string_view Blanks = " \t";
constexpr std::string_view LineEnds = "\r\n";
constexpr std::string_view BlanksAndLineEnds = " \t\r\n";
constexpr std::string_view Separators = ",\r\n";

std::size_t FindOrEnd(std::string_view text, std::string_view any) {
    return std::min(text.find_first_of(any), text.size());
}

/// Length of the line end at the start of `text`, 0 when there is none. A carriage return and a line feed are one.
std::size_t LineEndLength(std::string_view text) {
    if (text.starts_with("\r\n")) return 2;
    return !text.empty() && LineEnds.find(text.front()) != std::string_view::npos ? 1 : 0;
}

std::size_t CountLineEnds(std::string_view text) {
    std::size_t count = 0;
    for (text.remove_prefix(FindOrEnd(text, LineEnds)); !text.empty(); text.remove_prefix(FindOrEnd(text, LineEnds))) {
        text.remove_prefix(LineEndLength(text));
        ++count;
    }
    return count;
}

} // namespace

SequentialText::SequentialText(std::string_view bytes) : rest_(bytes.substr(0, bytes.find(ControlZ))) {}

bool SequentialText::AtEnd() const { return rest_.find_first_not_of(BlanksAndLineEnds) == std::string_view::npos; }

std::string SequentialText::NextItem() {
    itemLine_ = line_;
    itemInLine_ = nextInLine_++;
    rest_.remove_prefix(std::min(rest_.find_first_not_of(Blanks), rest_.size()));

    std::string_view item;
    if (rest_.starts_with('"')) {
        rest_.remove_prefix(1);
        item = rest_.substr(0, rest_.find('"'));
        rest_.remove_prefix(std::min(item.size() + 1, rest_.size()));
        if (const std::size_t lines = CountLineEnds(item); lines != 0) {
            line_ += lines;
            nextInLine_ = 2;
        }
        rest_.remove_prefix(FindOrEnd(rest_, Separators));
    } else {
        item = rest_.substr(0, FindOrEnd(rest_, Separators));
        rest_.remove_prefix(item.size());
    }

    if (const std::size_t lineEnd = LineEndLength(rest_); lineEnd != 0) {
        rest_.remove_prefix(lineEnd);
        ++line_;
        nextInLine_ = 1;
    } else if (!rest_.empty()) {
        rest_.remove_prefix(1);
    }
    return std::string(item);
}

} // namespace vantrel
