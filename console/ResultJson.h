// Results as JSON, for other programs. Values stand under the names of their sequences and fields; what was not read
// reliably is null. Knows the record and the memory map only.
#pragma once

#include "document/SettingsTransfer.h"
#include "link/Reading.h"

#include <array>
#include <cstddef>
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

// Of texts as the windows show them: "-" and its kin become null, whole numbers become numbers.

struct SequenceStatus {
    std::string node;
    std::string status; ///< "02: Comm to Node OK"
};

/// A list of {sequence, NodeNumber, statusCode, status}.
[[nodiscard]] std::string StatusJson(const std::vector<SequenceStatus>& sequences);

/// The same of one sequence, with description, fields and data words; `settings` and `data` sent, then received.
[[nodiscard]] std::string SequenceJson(std::size_t sequence, const std::string& description,
                                       const SequenceStatus& status,
                                       const std::array<std::array<std::string, 3>, 2>& settings,
                                       const std::array<std::vector<std::string>, 2>& data);

/// An object of names and texts, in order; a name of two parts, "clock.hour", is one within an object of its own.
[[nodiscard]] std::string ObjectJson(const std::vector<std::pair<std::string, std::string>>& members);

} // namespace vantrel
