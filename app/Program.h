// The one place of program-wide state. Whoever runs the program owns it (the main frame, the console); everything else
// borrows it.
#pragma once

#include "document/Document.h"
#include "document/SettingsTransfer.h"
#include "platform/Clock.h"
#include "platform/Folders.h"

#include <filesystem>
#include <string>

namespace vantrel {

/// "VANTREL_R" + major.minor.revision of this build.
[[nodiscard]] std::string ProgramVersion();

struct Program {
    Program(ProgramFolder programFolder, const Clock& clock);

    ProgramFolder folder;
    Document document;
    TransferMode transferMode = TransferMode::UploadData;
    /// Asks the background update to read the board's faults again.
    bool refreshTargetStatus = false;

    /// Where `RSPort.cfg` is kept, whether or not it exists.
    [[nodiscard]] std::filesystem::path CommSettingsFile() const;
};

} // namespace vantrel
