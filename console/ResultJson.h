// Results as JSON, for other programs. Values stand under the names of their sequences and fields; what was not read
// reliably is null. Knows the record only.
#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <optional>
#include <string>

namespace vantrel {

/// Members stay in the order in which a person would read them.
using Json = nlohmann::ordered_json;

/// As it is printed, whatever bytes a file's texts hold.
[[nodiscard]] std::string JsonText(const Json& json);

/// In one line, for results that come one by one.
[[nodiscard]] std::string JsonLine(const Json& json);

/// {sequence, field}, or {field} alone for the status stack address.
[[nodiscard]] Json NameJson(std::size_t index);

/// Of a text as the windows show it: "-" and its kin become null, whole numbers become numbers.
[[nodiscard]] Json ValueJson(const std::string& text);

template <typename Value> [[nodiscard]] Json ValueJson(const std::optional<Value>& value) {
    return value ? Json(*value) : Json(nullptr);
}

} // namespace vantrel
