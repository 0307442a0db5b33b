// The one place of program-wide state. Whoever runs the program owns it (the main frame, the console); everything else
// borrows it.
#pragma once

#include "document/Document.h"
#include "document/SettingsTransfer.h"
#include "link/Alarms.h"
#include "platform/Clock.h"
#include "platform/Folders.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace vantrel {

/// major.minor.revision of this build, in plain decimal.
[[nodiscard]] std::string VersionNumber();
/// "VANTREL_R" + major.minor.revision of this build.
[[nodiscard]] std::string ProgramVersion();

struct Program {
    Program(ProgramFolder programFolder, const Clock& clock);

    ProgramFolder folder;
    Document document;
    TransferMode transferMode = TransferMode::UploadData;
    /// The status stack address may be edited OFFLINE; mirrors the check mark of the menu entry.
    bool offlineEditing = false;
    std::filesystem::path helpFile;
    /// The sequence in view, 0..30, shared by the editor and the communication view.
    std::int16_t SelectedSequence = 0;
    /// What the editor's messages frame shows.
    std::string systemMessage;
    AlarmFlags alarms{};
    /// Asks the background update to read the board's faults again.
    bool refreshTargetStatus = false;

    /// Builds the default document and points the file path at the program folder; once, at start-up.
    void InitDefaults();
    /// Where `RSPort.cfg` is kept, whether or not it exists.
    [[nodiscard]] std::filesystem::path CommSettingsFile() const;
};

} // namespace vantrel
