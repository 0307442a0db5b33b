#include "app/Program.h"

#include <utility>

namespace vantrel {

std::string VersionNumber() {
    return std::to_string(VANTREL_VERSION_MAJOR) + "." + std::to_string(VANTREL_VERSION_MINOR) + "." +
           std::to_string(VANTREL_VERSION_REVISION);
}

std::string ProgramVersion() { return "VANTREL_R" + VersionNumber(); }

Program::Program(ProgramFolder programFolder, const Clock& clock)
    : folder(std::move(programFolder)), document(ProgramVersion(), clock) {}

void Program::InitDefaults() {
    document.InitDefaults();
    document.FilePath = folder.Path() / "*.sdt";
}

std::filesystem::path Program::CommSettingsFile() const { return folder.WritableSupportFile("RSPort.cfg"); }

} // namespace vantrel
