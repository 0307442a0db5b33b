// Inches to columns and lines.
#include "console/TextPrinter.h"

#include "text/PrintableText.h"
#include "text/Utf8.h"

#include <algorithm>
#include <cmath>

namespace vantrel {

namespace {

constexpr double ColumnsPerInch = 10;
constexpr double LinesPerInch = 6;
constexpr double Columns = 80;
constexpr double LinesOfPage = 66;

/// The characters of a UTF-8 text.
std::vector<std::string> Characters(std::string_view text) {
    const std::string printable = PrintableText(text, Layout::Drop);
    std::vector<std::string> characters;
    for (std::string_view rest = printable; !rest.empty();)
        characters.emplace_back(TakeCharacter(rest).bytes);
    return characters;
}

std::size_t Cell(double inches, double perInch) {
    return static_cast<std::size_t>(std::max(0L, std::lround(inches * perInch)));
}

std::string LineText(const std::vector<std::string>& cells) {
    std::string text;
    for (const std::string& cell : cells)
        text += cell;
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

} // namespace

double TextPrinter::PageWidth() const { return Columns / ColumnsPerInch; }
double TextPrinter::PageHeight() const { return LinesOfPage / LinesPerInch; }
double TextPrinter::TextHeight(std::string_view /*text*/) const { return 1 / LinesPerInch; }
double TextPrinter::TextWidth(std::string_view text) const {
    return static_cast<double>(Characters(text).size()) / ColumnsPerInch;
}

void TextPrinter::Draw(std::string_view text, double x, double y) {
    const std::size_t line = Cell(y, LinesPerInch);
    const std::size_t column = Cell(x, ColumnsPerInch);
    const std::vector<std::string> characters = Characters(text);
    if (lines_.size() <= line) lines_.resize(line + 1);
    std::vector<std::string>& cells = lines_[line];
    cells.resize(std::max(cells.size(), column + characters.size()), " ");
    std::copy(characters.begin(), characters.end(), cells.begin() + static_cast<std::ptrdiff_t>(column));
}

void TextPrinter::BeginPage() {
    EndPage();
    document_ += '\f';
    ++page_;
}

void TextPrinter::EndPage() {
    for (const std::vector<std::string>& line : lines_)
        document_ += LineText(line) + '\n';
    lines_.clear();
}

void TextPrinter::EndDocument() { EndPage(); }

} // namespace vantrel
