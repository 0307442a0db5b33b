// Changes of the record as values: they can be kept, applied, turned around. Knows the record and the entry rules.
#pragma once

#include "document/Configuration.h"
#include "document/EntryRules.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vantrel {

/// What can be edited of a sequence: one of its values, or its description.
struct EditPlace {
    std::size_t sequence = 0; ///< 0..30.
    std::optional<SequenceField> field{}; ///< None: the description.
};

/// A value as the record keeps it: the number, and the letter of its notation.
struct NotedValue {
    std::int32_t value = 0;
    std::string notation{};
    friend bool operator==(const NotedValue&, const NotedValue&) = default;
};

struct ValueEdit {
    std::size_t index = 0; ///< In the record's value arrays.
    NotedValue before{};
    NotedValue after{};
};
struct DescriptionEdit {
    std::size_t sequence = 0;
    std::string before{};
    std::string after{};
};
/// One change of the record. A value by itself: it can be kept, and applied or turned around later.
using Edit = std::variant<ValueEdit, DescriptionEdit>;

/// The edit that takes `edit` back.
[[nodiscard]] Edit TurnedAround(Edit edit);

using EditAnswer = std::variant<Edit, RefusedEntry>;

/// What a text entered at a place comes to; stores nothing. What a set-up file cannot hold of a description becomes
/// "?". Throws as CheckEntry does.
[[nodiscard]] EditAnswer EditOf(const Configuration& record, const EditPlace& place, const std::string& text);

/// Stores an edit in a record, whatever stood there.
void Store(Configuration& record, const Edit& edit);

/// What one command of the user does: edits in the order in which they are made, and the name by which the user knows
/// them, "Paste".
struct EditStep {
    std::string name{};
    std::vector<Edit> edits{};
};

/// The step that takes `step` back.
[[nodiscard]] EditStep TurnedAround(const EditStep& step);

/// What makes `after` of `before`: the values with their notations, then the descriptions. Everything else of a record
/// is no business of an editor.
[[nodiscard]] std::vector<Edit> EditsBetween(const Configuration& before, const Configuration& after);

} // namespace vantrel
