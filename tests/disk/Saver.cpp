// Saves what the windows save beside the document, for the trial with broken calls: `saver settings` writes port
// settings, `saver backup` a safety copy, both into the working folder. 4 when that failed, as the console ends.
#include "document/Backups.h"
#include "link/PortSettings.h"
#include "platform/RuntimeError.h"

#include <filesystem>
#include <iostream>
#include <string_view>

using namespace vantrel;

int main(int count, char** arguments) {
    if (count != 2) return 2;
    try {
        if (std::string_view(arguments[1]) == "backup")
            static_cast<void>(
                Backups(".").Keep(DefaultRecord("VANTREL_R1.0.0", {46095.25}), "plant", "network address 3"));
        else
            WritePortSettings(std::filesystem::current_path() / "RSPort.cfg", {2, "19200"});
        return 0;
    } catch (const RuntimeError& error) {
        std::cerr << error.Description() << '\n';
        return 4;
    }
}
