// The host's registry, read only. Hosts that have none find nothing.
#pragma once

#include <optional>
#include <string>

namespace vantrel {

enum class RegistryRoot { LocalMachine, CurrentUser };

/// One text value; nothing when key or value is missing or the value is no text. `keyPath` is separated by "\".
[[nodiscard]] std::optional<std::string> GetKeyValue(RegistryRoot root, const std::string& keyPath,
                                                     const std::string& valueName);

} // namespace vantrel
