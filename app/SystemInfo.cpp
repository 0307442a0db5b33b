#include "app/SystemInfo.h"

namespace vantrel {

std::optional<std::string> SystemInfoPath(const SystemInfoHost& host) {
    constexpr const char* toolKey = R"(SOFTWARE\Microsoft\Shared Tools\MSINFO)";
    constexpr const char* folderKey = R"(SOFTWARE\Microsoft\Shared Tools Location)";
    if (auto tool = host.registry(RegistryRoot::LocalMachine, toolKey, "PATH")) return tool;
    const auto folder = host.registry(RegistryRoot::LocalMachine, folderKey, "MSINFO");
    if (!folder) return std::nullopt;
    const std::string tool = *folder + "\\MSINFO32.EXE";
    if (!host.fileExists(tool)) return std::nullopt;
    return tool;
}

void StartSysInfo(const SystemInfoHost& host, Dialogs& dialogs) {
    const auto tool = SystemInfoPath(host);
    if (tool && host.start(*tool)) return;
    dialogs.Show({.title = "VANTREL",
                  .text = "System Information Is Unavailable At This Time",
                  .icon = MessageIcon::Information,
                  .buttons = MessageButtons::Ok});
}

} // namespace vantrel
