// Why a sequence may show a status code, and what to look at: one sentence of cause and one of remedy for each code.
// Says no more than the code does. Knows nothing but the codes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vantrel {

struct StatusAdvice {
    std::string_view cause; ///< A sentence.
    std::string_view remedy; ///< A sentence; empty where there is nothing to do.
};

/// Codes above 18 share one, as they share their text; code 1 has its own.
[[nodiscard]] StatusAdvice AdviceOn(std::uint32_t code);
/// Both sentences in one text.
[[nodiscard]] std::string AdviceText(std::uint32_t code);

} // namespace vantrel
