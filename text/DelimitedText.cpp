// One pass over the characters. Uses nothing.
#include "text/DelimitedText.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace vantrel {

namespace {

/// Takes the cell at `at` and leaves `at` on the separator or line end behind it, or at the end.
std::string TakeCell(std::string_view text, std::size_t& at, char separator) {
    std::string cell;
    bool quoted = at < text.size() && text[at] == '"';
    if (quoted) ++at;
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (quoted && c == '"') {
            const bool doubled = at + 1 < text.size() && text[at + 1] == '"';
            if (doubled) cell += text[++at];
            quoted = doubled;
        } else if (!quoted && (c == separator || c == '\n' || c == '\r')) {
            break;
        } else {
            cell += c;
        }
    }
    return cell;
}

} // namespace

std::vector<TextRow> DelimitedRows(std::string_view text, char separator, std::size_t most) {
    std::vector<TextRow> rows;
    bool rowBegins = true;
    for (std::size_t at = 0; at < text.size() || !rowBegins; ++at) {
        if (rowBegins && rows.size() == most) break;
        if (rowBegins) rows.emplace_back();
        rows.back().push_back(TakeCell(text, at, separator));
        rowBegins = at >= text.size() || text[at] != separator;
        if (text.substr(at).starts_with("\r\n")) ++at;
    }
    return rows;
}

std::string DelimitedLine(const TextRow& cells, char separator) {
    std::string line;
    for (const std::string& cell : cells) {
        if (&cell != &cells.front()) line += separator;
        if (cell.find_first_of(std::string("\"\r\n") + separator) == std::string::npos) {
            line += cell;
            continue;
        }
        line += '"';
        for (const char c : cell)
            line += c == '"' ? std::string("\"\"") : std::string(1, c);
        line += '"';
    }
    return line + "\r\n";
}

char SeparatorOf(std::string_view text) {
    constexpr std::array separators{',', ';', '\t'};
    const std::string_view first = text.substr(0, text.find_first_of("\r\n"));
    return *std::ranges::max_element(separators, {}, [&](char each) { return std::ranges::count(first, each); });
}

} // namespace vantrel
