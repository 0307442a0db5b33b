// Results in columns, for people. Uses nothing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

using Row = std::vector<std::string>;

/// Rows of printable text, two blanks between their columns and none at the ends of the lines. `edges`: "l" or "r" for
/// each column, the edge at which it is straight.
[[nodiscard]] std::string TableText(const std::vector<Row>& rows, std::string_view edges);

} // namespace vantrel
