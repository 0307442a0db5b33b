// What may be entered for a value, in every notation: limits, refusal texts, rounding. Knows the field table and
// the notations only.
#pragma once

#include "document/FieldTable.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace vantrel {

/// Title of the box that shows a refusal.
inline constexpr const char* EntryRefusalTitle = "VANTREL Configuration";

struct AcceptedEntry {
    std::int32_t value = 0;
    char notation = '#'; ///< "#", "V", "W" or "H": the type letter to store with it.
};
struct RefusedEntry {
    std::string text; ///< The message, with the limits in the notation that was tried.
};
using EntryAnswer = std::variant<AcceptedEntry, RefusedEntry>;

/// Judges a text entered for a field of a sequence. Numbers may have sign, decimals and an exponent and are rounded,
/// halves to even. Throws RuntimeError 5 (invalid procedure call) for a hexadecimal entry with fewer than two digits
/// before its "H".
[[nodiscard]] EntryAnswer CheckEntry(SequenceField field, std::string_view text);

/// A description as it is stored when `text` (UTF-8) is entered or pasted: on one line, a blank for every control
/// character and line end; "?" for every character that a set-up file cannot hold.
[[nodiscard]] std::string DescriptionToStore(std::string_view text);

} // namespace vantrel
