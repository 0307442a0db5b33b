// How a sequence does, by its status code: the four groups that a person tells apart at a glance. Uses nothing.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace vantrel {

enum class SequenceHealth { Ok, Failing, Disabled, Unknown };

inline constexpr std::array SequenceHealths{SequenceHealth::Ok, SequenceHealth::Failing, SequenceHealth::Disabled,
                                            SequenceHealth::Unknown};

/// Status codes with a meaning of their own here.
inline constexpr std::uint16_t DisabledCode = 0;
inline constexpr std::uint16_t OkCode = 2;

/// `code`: the status word, nothing when it was not read clearly; `node`: the node number as far as it is known. A
/// sequence without a node is disabled, whatever its status word still says.
[[nodiscard]] constexpr SequenceHealth HealthOf(std::optional<std::uint16_t> code, std::optional<std::uint16_t> node) {
    if (!code) return SequenceHealth::Unknown;
    if (*code == DisabledCode || node == std::uint16_t{0}) return SequenceHealth::Disabled;
    return *code == OkCode ? SequenceHealth::Ok : SequenceHealth::Failing;
}

/// As it is shown behind a number: "27 OK", "3 failing".
[[nodiscard]] constexpr std::string_view HealthName(SequenceHealth health) {
    constexpr std::array<std::string_view, 4> names{"OK", "failing", "disabled", "unknown"};
    return names.at(static_cast<std::size_t>(health));
}

} // namespace vantrel
