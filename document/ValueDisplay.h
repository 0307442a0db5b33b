// How a set-up value reads in its notation, for grid, report and console alike. Knows the record only.
#pragma once

#include "document/Configuration.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vantrel {

/// `value` in the notation of a type letter, in either case: "V100" for V, "W32" for W, "20H" for H (upper-case
/// hexadecimal), plain decimal for "#" and everything else.
[[nodiscard]] std::string DisplayValue(std::int32_t value, std::string_view type);

/// A number in the place of value `index`, as the editor's grid shows it: an address in node memory by its type letter,
/// "W" unless that is "H"; every other value in the notation that its field always has, whatever a file's letter says.
[[nodiscard]] std::string DisplayValue(std::size_t index, std::int32_t value, std::string_view type);
/// Value `index` of a record likewise.
[[nodiscard]] std::string DisplayValue(const Configuration& record, std::size_t index);

} // namespace vantrel
