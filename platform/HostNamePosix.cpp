#include "platform/HostName.h"

#include <sys/utsname.h>

#include <algorithm>
#include <fstream>
#include <string_view>

namespace vantrel {

namespace {

/// What the distribution calls itself; empty where it does not say.
std::string PrettyName() {
    constexpr std::string_view key = "PRETTY_NAME=";
    std::ifstream file("/etc/os-release");
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with(key)) continue;
        std::string name = line.substr(key.size());
        std::erase(name, '"');
        return name + ", ";
    }
    return {};
}

} // namespace

std::string HostName() {
    utsname host{};
    if (uname(&host) != 0) return "not known";
    // Not its node name, which is nobody's business.
    return PrettyName() + host.sysname + " " + host.release + " " + host.machine;
}

} // namespace vantrel
