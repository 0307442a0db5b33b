// The error by which something ends.
#pragma once

#include "platform/RuntimeError.h"

#include <optional>
#include <string>

namespace vantrel {

/// The `Error` that `action` throws; nothing when it throws none.
template <typename Error = RuntimeError, typename Action> std::optional<Error> Thrown(const Action& action) {
    try {
        (void)action();
    } catch (const Error& error) {
        return error;
    }
    return std::nullopt;
}

/// Its description; empty when nothing is thrown.
template <typename Action> std::string ErrorText(const Action& action) {
    const auto error = Thrown(action);
    return error ? error->Description() : "";
}

} // namespace vantrel
