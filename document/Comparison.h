// Two set-ups side by side, or one beside the board: what differs, in the editor's notation, and the list as it is
// handed over. Knows the record and what a comparison with the board has read.
#pragma once

#include "document/Configuration.h"
#include "document/SettingsTransfer.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vantrel {

/// A value or a description that is not the same on both sides.
struct Difference {
    std::size_t sequence = 0; ///< 0..30; without meaning for the status stack address.
    std::optional<std::size_t> index{}; ///< In the record's value arrays; none for the description.
    std::string here{};
    std::string there{};
    bool doubtful = false; ///< What is there could not be read clearly: it may differ or not.

    /// What it is: "To Node", "Description", "status stack address".
    [[nodiscard]] std::string Field() const;
};

/// By sequence and field, the status stack address first.
void PutInOrder(std::vector<Difference>& differences);

/// In that order. How a number is written is no difference.
[[nodiscard]] std::vector<Difference> DifferencesBetween(const Configuration& here, const Configuration& there);

/// The same beside the board, which holds no descriptions. `here` is the record that was compared.
[[nodiscard]] std::vector<Difference> DifferencesFrom(const Configuration& here, const BoardComparison& board);

/// What stands on paper about a comparison.
struct ComparisonReport {
    std::string here; ///< The name of one side, "plant.sdt".
    std::string there; ///< And of the other, "the board, network address 3, ...".
    std::string date; ///< When the values were those that are listed.
    std::string remark; ///< What keeps the list from being whole; empty for nothing.
    std::vector<Difference> differences;
};

/// A heading, both names and the date, and a line for each difference under its sequence. "No differences." is said
/// only where there is no remark.
[[nodiscard]] std::string ComparisonText(const ComparisonReport& report);
/// The differences as a table for a spreadsheet; see RecordCsv for its form.
[[nodiscard]] std::string ComparisonCsv(const ComparisonReport& report);

} // namespace vantrel
