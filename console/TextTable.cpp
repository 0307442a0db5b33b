// Columns as wide as their widest text.
#include "console/TextTable.h"

#include "text/Padding.h"
#include "text/PrintableText.h"

#include <algorithm>

namespace vantrel {

std::string TableText(const std::vector<Row>& rows, std::string_view edges) {
    constexpr std::size_t gap = 2;
    std::vector<std::size_t> widths(edges.size(), 0);
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], row[i].size());
    }
    std::string text;
    for (const Row& row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string cell = PrintableText(row[i], Layout::Drop);
            line += edges[i] == 'r' ? PadLeft(cell, widths[i]) : PadRight(cell, widths[i]);
            line.append(gap, ' ');
        }
        text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
    }
    return text;
}

} // namespace vantrel
