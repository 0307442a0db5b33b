// Reads classic sequential text: items separated by commas or line ends, optionally in double quotes. Uses nothing.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vantrel {

/// The classic end of a text, which may stand before the file's.
inline constexpr char ControlZ = '\x1A';

/// A cursor over the bytes of a sequential text. The bytes must outlive it; they are not decoded.
class SequentialText {
public:
    explicit SequentialText(std::string_view bytes);

    /// True when only blanks, blank lines or nothing is left. ControlZ ends the text wherever it stands.
    [[nodiscard]] bool AtEnd() const;
    /// Takes the next item: leading blanks skipped; a quoted item runs to the
    /// closing quote (or the end of the text) without its quotes, and what follows it up to the separator is
    /// skipped. An empty text at the end.
    [[nodiscard]] std::string NextItem();

    /// Where the item that NextItem() took last began: its line, from 1, and its number in that line, from 1.
    [[nodiscard]] std::size_t Line() const { return itemLine_; }
    [[nodiscard]] std::size_t ItemInLine() const { return itemInLine_; }

private:
    std::string_view rest_;
    std::size_t line_ = 1;
    std::size_t nextInLine_ = 1;
    std::size_t itemLine_ = 1;
    std::size_t itemInLine_ = 1;
};

} // namespace vantrel
