// What is wrong with a set-up as a whole and the rules of single cells cannot see. Knows the record and the entry
// rules.
#pragma once

#include "document/Configuration.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

enum class Severity {
    Error, ///< The board would destroy data, or cannot do what the set-up asks for.
    Warning, ///< It can be meant, but seldom is.
    Note, ///< It works; somebody will miss it.
};

/// "Error", "Warning", "Note".
[[nodiscard]] std::string_view SeverityName(Severity severity);

struct Finding {
    Severity severity = Severity::Note;
    std::size_t sequence = 0; ///< 0..30; without meaning for the status stack address.
    std::optional<std::size_t> index{}; ///< In the record's value arrays; none for the description.
    std::string text{}; ///< What is wrong, and what to do.

    /// "status stack address", "sequence 3, To TI", "sequence 3, Description".
    [[nodiscard]] std::string Place() const;
};

/// Everything that there is to say, worst first, then by sequence and field. Empty when nothing was found, which does
/// not prove that the plant will run.
[[nodiscard]] std::vector<Finding> CheckSetup(const Configuration& record);

} // namespace vantrel
