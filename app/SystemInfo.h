// Finds and starts the host's system-information tool. Asks the registry and the file system through its arguments.
#pragma once

#include "platform/Dialogs.h"
#include "platform/Registry.h"

#include <functional>
#include <optional>
#include <string>

namespace vantrel {

struct SystemInfoHost {
    /// As GetKeyValue.
    std::function<std::optional<std::string>(RegistryRoot, const std::string&, const std::string&)> registry;
    std::function<bool(const std::string& path)> fileExists;
    /// Starts a program with a normal, focused window; false when it does not start.
    std::function<bool(const std::string& path)> start;
};

/// The tool's path as the registry tells it; nothing when it is not installed.
[[nodiscard]] std::optional<std::string> SystemInfoPath(const SystemInfoHost& host);

/// Starts the tool, or says "System Information Is Unavailable At This Time".
void StartSysInfo(const SystemInfoHost& host, Dialogs& dialogs);

} // namespace vantrel
