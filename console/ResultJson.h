// Results as JSON, for other programs. Values stand under the names of their sequences and fields; what was not read
// reliably is null. Knows the record and the memory map only.
#pragma once

#include "document/SettingsTransfer.h"
#include "link/Reading.h"

#include <string>
#include <utility>
#include <vector>

namespace vantrel {

/// A reading and the address that it is of.
struct NamedReading {
    std::string address;
    Reading reading;
};

/// A list of {address, value}, with the sequence and the field where the address is that of a setting.
[[nodiscard]] std::string ReadingsJson(const std::vector<NamedReading>& readings);

/// {file, compared, equal, differences, unread}; "equal" is null when neither was shown: something is unread, or the
/// comparison did not come to its end.
[[nodiscard]] std::string ComparisonJson(const std::string& file, const BoardComparison& comparison);

} // namespace vantrel
