#include "platform/Registry.h"

namespace vantrel {

std::optional<std::string> GetKeyValue(RegistryRoot /*root*/, const std::string& /*keyPath*/,
                                       const std::string& /*valueName*/) {
    return std::nullopt;
}

} // namespace vantrel
