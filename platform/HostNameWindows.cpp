#include "platform/HostName.h"

#include "platform/Registry.h"

namespace vantrel {

std::string HostName() {
    constexpr const char* key = R"(SOFTWARE\Microsoft\Windows NT\CurrentVersion)";
    const auto value = [&](const char* name) { return GetKeyValue(RegistryRoot::LocalMachine, key, name); };
    return value("ProductName").value_or("Windows") + ", build " + value("CurrentBuild").value_or("not known") + ", " +
           (sizeof(void*) == 8 ? "x86_64" : "x86");
}

} // namespace vantrel
