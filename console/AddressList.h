// Addresses of the board's memory as they are listed on a command line, ranges among them. Knows the notation only.
#pragma once

#include <string>
#include <vector>

namespace vantrel {

/// Throws UsageError for a text that is no address.
void RequireAddress(const std::string& text);

/// Every address of `texts`, in order. "W16384-W16396" is a range: all words from the first to the second, as far as
/// they fit in between; likewise of bytes, double words, flags, and bits of a byte. Throws UsageError for a text that
/// is neither an address nor a range.
[[nodiscard]] std::vector<std::string> AddressesIn(const std::vector<std::string>& texts);

} // namespace vantrel
